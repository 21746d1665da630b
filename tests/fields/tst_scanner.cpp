// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
constexpr QChar nul = u'\0';
constexpr QChar high = QChar(0xd842), otherHigh = QChar(0xd83d), low = QChar(0xdfb7);

/// What a scan leaves behind.
struct Scan {
    bool found = false;
    QString token;
    int position = 0;
    QChar delimiter;
    bool operator==(const Scan &) const = default;
};

char *toString(const Scan &scan)
{
    return QTest::toString(u"%1 \"%2\" at %3 by U+%4"_s.arg(
        scan.found ? u"true"_s : u"false"_s,
        scan.token,
        QString::number(scan.position),
        QString::number(scan.delimiter.unicode(), 16)
    ));
}

/// The next token, character by character.
Scan plainNextToken(const QString &text, const QString &delimiters, int position)
{
    const qsizetype start = position < 0 ? 0 : position;
    bool quoted = false;
    for (qsizetype i = start; i < text.size(); ++i) {
        if (text[i] == u'\'')
            quoted = !quoted;
        else if (!quoted && delimiters.contains(text[i]))
            return {true, text.mid(start, i - start).trimmed(), int(i) + 1, text[i]};
    }
    return {false, start < text.size() ? text.mid(start) : QString(), int(text.size()), nul};
}

/// Every text of the given length over the alphabet, one after the other.
template<typename Visit> void forEachText(const QString &alphabet, int length, Visit visit)
{
    QString text(length, alphabet.front());
    QList<int> digits(length, 0);
    while (true) {
        visit(text);
        int i = 0;
        for (; i < length; ++i) {
            digits[i] = (digits[i] + 1) % int(alphabet.size());
            text[i] = alphabet[digits[i]];
            if (digits[i] != 0)
                break;
        }
        if (i == length)
            return;
    }
}

/// An argument vector that outlives the runtime made from it.
struct CommandLine {
    std::array<char, 5> program = {'p', 'r', 'o', 'g', '\0'};
    std::array<char *, 2> argv = {program.data(), nullptr};
};

} // namespace

Q_DECLARE_METATYPE(Scan)

class ScannerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nextToken_data();
    void nextToken();
    void nextTokenAgainstPlainForm();
    void nextTokenStoresNothing();
    void nextTokenTakesItsOwnRecords();
    void nextTokenOfManyTokensIsLinear();
    void acceptKeyword_data();
    void acceptKeyword();
    void acceptKeywordInWordsWithHalves();
    void acceptKeywordAgainstLiteralForm();
    void setScanTextSharesOneScan();
    void acceptKeywordAndNextTokenWithoutScanText();
    void setScanTextTakesItsOwnRecords();
    void setScanTextOnObjectFromANameAlone();

private:
    CommandLine m_commandLine;
    AppRuntime m_runtime{u"TEST"_s, 1, m_commandLine.argv.data()};

    void checkUntouched(const QString &lastError) const
    {
        QCOMPARE(m_runtime.lastError, lastError);
        QCOMPARE(m_runtime.checkMessage, u"old"_s);
        QVERIFY(m_runtime.convertOk);
    }
};

void ScannerTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"old"_s;
    m_runtime.convertOk = true;
    *m_runtime.scanCursor = {};
    *m_runtime.scanSource = {};
    *m_runtime.scanDelimiter = {};
}

void ScannerTest::nextToken_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("delimiters");
    QTest::addColumn<int>("from");
    QTest::addColumn<Scan>("scan");

    const auto found = [](const char *name,
                          const QString &text,
                          const QString &delimiters,
                          int from,
                          const QString &token,
                          int position,
                          QChar delimiter) {
        QTest::newRow(name) << text << delimiters << from << Scan{true, token, position, delimiter};
    };
    const auto ended =
        [](const char *name, const QString &text, const QString &delimiters, int from, const QString &token) {
            QTest::newRow(name) << text << delimiters << from << Scan{false, token, int(text.size()), nul};
        };

    found("first of several", u"a,b,c"_s, u","_s, 0, u"a"_s, 2, u',');
    found("middle one", u"a,b,c"_s, u","_s, 2, u"b"_s, 4, u',');
    ended("last one", u"a,b,c"_s, u","_s, 4, u"c"_s);
    found("from a delimiter on", u"a,b,c"_s, u","_s, 1, u""_s, 2, u',');
    found("in the middle of a token", u"abc,d"_s, u","_s, 1, u"bc"_s, 4, u',');
    found("delimiter at the end", u"abc,"_s, u","_s, 0, u"abc"_s, 4, u',');
    ended("behind the delimiter at the end", u"abc,"_s, u","_s, 4, u""_s);
    found("delimiter alone", u","_s, u","_s, 0, u""_s, 1, u',');
    found("two delimiters in a row", u",,"_s, u","_s, 0, u""_s, 1, u',');
    found("blanks before the delimiter", u" , x"_s, u","_s, 0, u""_s, 2, u',');
    found("blanks round a token", u"  a b\t,"_s, u","_s, 0, u"a b"_s, 7, u',');
    found("Unicode blanks round a token", u"\u3000\u00a0a\u2003\u2028,"_s, u","_s, 0, u"a"_s, 6, u',');
    found(
        "control characters are no white space", u"\u0001a\u001b,"_s, u","_s, 0, u"\u0001a\u001b"_s, 4, u','
    );
    ended("last token keeps its blanks", u"a, b "_s, u","_s, 2, u" b "_s);
    ended("blanks only", u"   "_s, u","_s, 0, u"   "_s);
    ended("empty text", u""_s, u","_s, 0, u""_s);
    ended("null text", QString(), u","_s, 0, u""_s);
    ended("null text from the left", QString(), u","_s, -1, u""_s);
    ended("null text past the end", QString(), u","_s, 1, u""_s);
    ended("everything null", QString(), QString(), 0, u""_s);
    ended("no delimiter in the text", u"abc"_s, u","_s, 0, u"abc"_s);

    found("first of the set", u"a;b,c"_s, u",;"_s, 0, u"a"_s, 2, u';');
    found("second of the set", u"a,b;c"_s, u";,"_s, 0, u"a"_s, 2, u',');
    found("set with one twice", u"a,b"_s, u",,"_s, 0, u"a"_s, 2, u',');
    found("nine in the set", u"ab9c"_s, u"123456789"_s, 0, u"ab"_s, 3, u'9');
    found("case counts", u"axbXc"_s, u"X"_s, 0, u"axb"_s, 4, u'X');
    found("blank as the delimiter", u"a b"_s, u" "_s, 0, u"a"_s, 2, u' ');
    found("blank as the delimiter in front", u" a b"_s, u" "_s, 0, u""_s, 1, u' ');
    found("NUL as the delimiter", u"a\0b"_s, QString(nul), 0, u"a"_s, 2, nul);
    ended("NUL in the text only", u"a\0b"_s, u","_s, 0, u"a\0b"_s);
    found("full width is another character", u"a，b,c"_s, u","_s, 0, u"a，b"_s, 4, u',');
    found("same low byte is another character", u"a\u012cb,c"_s, u","_s, 0, u"a\u012cb"_s, 4, u',');
    found("kana delimiter", u"ア・イ"_s, u"・"_s, 0, u"ア"_s, 2, u'・');
    found("high half as the delimiter", QString(u"a𠮷b"_s), QString(high), 0, u"a"_s, 2, high);
    found("low half as the delimiter", QString(u"a𠮷b"_s), QString(low), 0, u"a"_s + high, 3, low);
    found("pair as the set", QString(u"a𠮷b"_s), u"𠮷"_s, 0, u"a"_s, 2, high);
    found("lone half in the text", u"a"_s + low + u",b"_s, u","_s, 0, u"a"_s + low, 3, u',');

    found("quoted delimiter", u"a='x,y',b"_s, u","_s, 0, u"a='x,y'"_s, 8, u',');
    found("quotes stay", u"'a','b'"_s, u","_s, 0, u"'a'"_s, 4, u',');
    found("blanks in quotes stay", u" ' a ' ,"_s, u","_s, 0, u"' a '"_s, 8, u',');
    found("two quoted stretches", u"'a,'b',c',d"_s, u","_s, 0, u"'a,'b',c'"_s, 10, u',');
    found("two quotes side by side", u"'a'',b',c"_s, u","_s, 0, u"'a'',b'"_s, 8, u',');
    found("empty quotes", u"'',a"_s, u","_s, 0, u"''"_s, 3, u',');
    found("delimiter right behind the opening quote", u"',',a"_s, u","_s, 0, u"','"_s, 4, u',');
    found("double quotes are plain", u"\"a,b\",c"_s, u","_s, 0, u"\"a"_s, 3, u',');
    ended("unclosed quote", u"a='x,y"_s, u","_s, 0, u"a='x,y"_s);
    ended("unclosed quote at the end", u"a,b'"_s, u","_s, 2, u"b'"_s);
    ended("quote alone", u"'"_s, u","_s, 0, u"'"_s);
    ended("unclosed second quote", u"'a'b'c,d"_s, u","_s, 0, u"'a'b'c,d"_s);
    ended("closed quotes at the end", u"'a,b'"_s, u","_s, 0, u"'a,b'"_s);
    ended("unclosed quote keeps its blanks", u" 'a, "_s, u","_s, 0, u" 'a, "_s);
    found("from inside quotes", u"'a,b',c"_s, u","_s, 1, u"a"_s, 3, u',');
    ended("from the closing quote", u"'a,b',c"_s, u","_s, 4, u"',c"_s);
    found(
        "quote before a far delimiter",
        u"'a','"_s + QString(40, u'x') + u"',b"_s,
        u","_s,
        0,
        u"'a'"_s,
        4,
        u','
    );
    found("quote behind the delimiter", u"a,'b"_s, u","_s, 0, u"a"_s, 2, u',');

    ended("quote as the delimiter", u"a'b'c"_s, u"'"_s, 0, u"a'b'c"_s);
    ended("unclosed quote as the delimiter", u"a'b"_s, u"'"_s, 0, u"a'b"_s);
    ended("two quotes as the set", u"a'b'c"_s, u"''"_s, 0, u"a'b'c"_s);
    found("quote in the set", u"a'b,'c,d"_s, u",'"_s, 0, u"a'b,'c"_s, 7, u',');
    found("quote first in the set", u"'b,'c,d"_s, u"',"_s, 0, u"'b,'c"_s, 6, u',');

    ended("empty set", u"a,b c"_s, u""_s, 0, u"a,b c"_s);
    ended("null set", u"a,b c"_s, QString(), 2, u"b c"_s);
    ended("empty set and quotes", u"a'b'c"_s, u""_s, 0, u"a'b'c"_s);
    ended("empty set and an unclosed quote", u" a'b"_s, u""_s, 0, u" a'b"_s);

    found("one before the start", u"a,b"_s, u","_s, -1, u"a"_s, 2, u',');
    found("far before the start", u"a,b"_s, u","_s, least, u"a"_s, 2, u',');
    found("at the last character", u"a,"_s, u","_s, 1, u""_s, 2, u',');
    ended("at the end", u"a,b"_s, u","_s, 3, u""_s);
    ended("one past the end", u"a,b"_s, u","_s, 4, u""_s);
    ended("far past the end", u"a,b"_s, u","_s, most, u""_s);

    const QString field = QString(1'000'000, u'漢');
    found("very long token", field + u',' + field, u","_s, 0, field, 1'000'001, u',');
    ended("very long last token", field + u',' + field, u","_s, 1'000'001, field);
    found("very long set", u"a,b"_s, field + u',', 0, u"a"_s, 2, u',');
}

void ScannerTest::nextToken()
{
    QFETCH(QString, text);
    QFETCH(QString, delimiters);
    QFETCH(int, from);
    QFETCH(Scan, scan);
    const QString error = scan.found ? u"error"_s : u"not found ('"_s + delimiters + u"')"_s;

    ScanCursor token{u'#', 7, 8, 9, u"token"_s}, cursor{u'$', 4, 5, from, u"cursor"_s};
    QChar delimiter = u'?';
    QCOMPARE(m_runtime.nextToken(token, cursor, delimiter, text, delimiters, true), scan.found);
    QCOMPARE((Scan{scan.found, token.text, cursor.position, delimiter}), scan);
    checkUntouched(error);
    // Nothing else of the two is written.
    QVERIFY(token.delimiter == u'#' && token.reserved1 == 7 && token.reserved2 == 8 && token.position == 9);
    QVERIFY(cursor.delimiter == u'$' && cursor.reserved1 == 4 && cursor.reserved2 == 5);
    QCOMPARE(cursor.text, u"cursor"_s);

    // The shared scan is the same scan.
    m_runtime.setScanText(text);
    m_runtime.scanCursor->position = from;
    m_runtime.lastError = u"error"_s;
    token = {u'#', 7, 8, 9, u"token"_s};
    QCOMPARE(m_runtime.nextToken(token, delimiters), scan.found);
    QCOMPARE(
        (Scan{scan.found, token.text, m_runtime.scanCursor->position, m_runtime.scanDelimiter->delimiter}),
        scan
    );
    QCOMPARE(m_runtime.scanSource->text, text);
    QVERIFY(token.delimiter == u'#' && token.position == 9);
    checkUntouched(error);

    // And a step over the token ends where the token does.
    m_runtime.scanCursor->position = from;
    m_runtime.scanDelimiter->delimiter = u'?';
    m_runtime.lastError = u"error"_s;
    QCOMPARE(m_runtime.skipToken(delimiters), scan.found);
    QCOMPARE(m_runtime.scanCursor->position, scan.position);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, scan.delimiter);
    QCOMPARE(m_runtime.scanSource->text, text);
    checkUntouched(error);
}

void ScannerTest::nextTokenAgainstPlainForm()
{
    const QStringList sets = {u""_s, u","_s, u";,"_s, u"'"_s, u"',"_s, u" "_s, u", "_s};
    for (int length = 0; length <= 6; ++length) {
        forEachText(u"a ,'"_s, length, [&](const QString &text) {
            for (const QString &delimiters : sets) {
                for (int from = -1; from <= length + 1; ++from) {
                    ScanCursor token, cursor{u' ', 0, 0, from, {}};
                    Scan scan;
                    scan.found = m_runtime.nextToken(token, cursor, scan.delimiter, text, delimiters, true);
                    scan.token = token.text;
                    scan.position = cursor.position;
                    QCOMPARE(scan, plainNextToken(text, delimiters, from));
                }
            }
        });
    }
}

void ScannerTest::nextTokenStoresNothing()
{
    ScanCursor token{u'#', 7, 8, 9, u"token"_s}, cursor;
    QChar delimiter = u'?';
    QVERIFY(m_runtime.nextToken(token, cursor, delimiter, u" a ,b"_s, u","_s, false));
    QCOMPARE(token.text, u"token"_s);
    QCOMPARE(cursor.position, 4);
    QCOMPARE(delimiter, u',');
    checkUntouched(u"error"_s);

    QVERIFY(!m_runtime.nextToken(token, cursor, delimiter, u" a ,b"_s, u","_s, false));
    QCOMPARE(token.text, u"token"_s);
    QCOMPARE(cursor.position, 5);
    QCOMPARE(delimiter, nul);
    QVERIFY(token.delimiter == u'#' && token.reserved1 == 7 && token.reserved2 == 8 && token.position == 9);
    checkUntouched(u"not found (',')"_s);
}

void ScannerTest::nextTokenTakesItsOwnRecords()
{
    // The cursor takes the token too, its text is the text under scan, its delimiter the one found.
    ScanCursor all{u'?', 0, 0, 0, u" ab , c,d"_s};
    QVERIFY(m_runtime.nextToken(all, all, all.delimiter, all.text, u","_s, true));
    QCOMPARE(all.text, u"ab"_s);
    QCOMPARE(all.position, 5);
    QCOMPARE(all.delimiter, u',');

    all = {u'?', 0, 0, 2, u"a, b "_s};
    QVERIFY(!m_runtime.nextToken(all, all, all.delimiter, all.text, u","_s, true));
    QCOMPARE(all.text, u" b "_s);
    QCOMPARE(all.position, 5);
    QCOMPARE(all.delimiter, nul);

    // The text is the token of the call before.
    ScanCursor token{u' ', 0, 0, 0, u"a=1;b=2"_s}, cursor;
    QChar delimiter;
    QVERIFY(m_runtime.nextToken(token, cursor, delimiter, token.text, u";"_s, true));
    QCOMPARE(token.text, u"a=1"_s);
    cursor.position = 0;
    QVERIFY(m_runtime.nextToken(token, cursor, delimiter, token.text, u"="_s, true));
    QCOMPARE(token.text, u"a"_s);

    // The delimiters are the token's text, or the last error is scanned.
    token.text = u";="_s;
    cursor.position = 0;
    QVERIFY(!m_runtime.nextToken(token, cursor, delimiter, u"abc"_s, token.text, true));
    QCOMPARE(token.text, u"abc"_s);
    QCOMPARE(m_runtime.lastError, u"not found (';=')"_s);
    cursor.position = 0;
    QVERIFY(!m_runtime.nextToken(token, cursor, delimiter, m_runtime.lastError, u"#"_s, true));
    QCOMPARE(token.text, u"not found (';=')"_s);
    cursor.position = 0;
    QVERIFY(!m_runtime.nextToken(token, cursor, delimiter, u"abc"_s, m_runtime.lastError = u"x"_s, true));
    QCOMPARE(m_runtime.lastError, u"not found ('x')"_s);

    // A token that somebody kept stays what it was.
    cursor.position = 0;
    QVERIFY(m_runtime.nextToken(token, cursor, delimiter, u"first,other"_s, u","_s, true));
    const QString kept = token.text;
    QVERIFY(!m_runtime.nextToken(token, cursor, delimiter, u"first,other"_s, u","_s, true));
    QCOMPARE(kept, u"first"_s);
}

void ScannerTest::nextTokenOfManyTokensIsLinear()
{
    // Reading on to a far delimiter or quote at every token would take minutes here.
    constexpr int count = 300'000;
    for (const QString &delimiters : {u","_s, u";,"_s, u",'"_s}) {
        for (const QString &piece : {u"a,"_s, u"'a',"_s, u"'',"_s}) {
            const QString text = piece.repeated(count) + u'\'';
            ScanCursor token, cursor;
            QChar delimiter;
            int tokens = 0;
            while (m_runtime.nextToken(token, cursor, delimiter, text, delimiters, true))
                ++tokens;
            QCOMPARE(tokens, count);
            QCOMPARE(token.text, u"'"_s);
        }
        ScanCursor token, cursor;
        QChar delimiter;
        const QString quotes = u"'a,'"_s.repeated(count);
        QVERIFY(!m_runtime.nextToken(token, cursor, delimiter, quotes, delimiters, true));
        QCOMPARE(token.text, quotes);
    }
}

void ScannerTest::acceptKeyword_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("position"); // -1 where the keyword is not accepted

    const auto row
        = [](const char *name, const QString &text, const QString &keyword, int from, int position) {
              QTest::newRow(name) << text << keyword << from << position;
          };

    row("behind blanks", u"   order by"_s, u"ORDER"_s, 0, 8);
    row("not the first word", u"   order by"_s, u"BY"_s, 0, -1);
    row("second word", u"   order by"_s, u"BY"_s, 8, 11);
    row("without blanks", u"order"_s, u"ORDER"_s, 0, 5);
    row("lower case keyword", u"ORDER"_s, u"order"_s, 0, 5);
    row("mixed case", u"oRdEr"_s, u"OrDeR"_s, 0, 5);
    row("no word boundary", u"SELECTED"_s, u"select"_s, 0, 6);
    row("one character short", u"orde"_s, u"order"_s, 0, -1);
    row("last character differs", u"ordet"_s, u"order"_s, 0, -1);
    row("first character differs", u"border"_s, u"order"_s, 0, -1);
    row("later in the text", u"x order"_s, u"order"_s, 0, -1);
    row("blanks in the keyword count", u" order"_s, u" order"_s, 0, -1);
    row("blank at the keyword's end counts", u"order by"_s, u"order "_s, 0, 6);
    row("blank inside", u"order  by"_s, u"order by"_s, 0, -1);
    row("tab and line end are blanks", u"\t\r\n x"_s, u"X"_s, 0, 5);
    row("control characters are blanks", u"\u0001\u001f\0x"_s, u"x"_s, 0, 4);
    row("exclamation mark is none", u"!x"_s, u"x"_s, 0, -1);
    row("exclamation mark as the keyword", u" !x"_s, u"!"_s, 0, 2);
    row("delete character is none", u"\u007fx"_s, u"x"_s, 0, -1);
    row("no-break space is none", u"\u00a0x"_s, u"x"_s, 0, -1);
    row("ideographic space is none", u"\u3000x"_s, u"x"_s, 0, -1);
    row("empty text", u""_s, u"x"_s, 0, -1);
    row("null text", QString(), u"x"_s, 0, -1);
    row("blanks only", u"   "_s, u"x"_s, 0, -1);
    row("empty keyword", u"  x"_s, u""_s, 0, 2);
    row("null keyword", u"  x"_s, QString(), 0, 2);
    row("empty keyword without blanks", u"x"_s, u""_s, 0, 0);
    row("empty keyword over the empty text", u""_s, u""_s, 0, -1);
    row("null keyword over the null text", QString(), QString(), 0, -1);
    row("empty keyword over blanks only", u"  "_s, u""_s, 0, -1);
    row("empty keyword before a high half", u" "_s + high, u""_s, 0, 1);

    row("one before the start", u" x"_s, u"x"_s, -1, 2);
    row("far before the start", u" x"_s, u"x"_s, least, 2);
    row("at the last character", u"ax"_s, u"x"_s, 1, 2);
    row("at the end", u"ax"_s, u"x"_s, 2, -1);
    row("empty keyword at the end", u"ax"_s, u""_s, 2, -1);
    row("one past the end", u"ax"_s, u"x"_s, 3, -1);
    row("far past the end", u"ax"_s, u"x"_s, most, -1);

    row("umlaut", u"äpfel"_s, u"ÄPFEL"_s, 0, 5);
    row("no decomposition", u"a\u0308"_s, u"Ä"_s, 0, -1);
    row("kanji", u" 漢字"_s, u"漢"_s, 0, 2);
    row("full width letters", u"ａｂ"_s, u"ＡＢ"_s, 0, 2);
    row("width counts", u"ａｂ"_s, u"AB"_s, 0, -1);
    row("sharp s by two letters", u"straße 1"_s, u"STRASSE"_s, 0, 7);
    row("two letters by sharp s", u"STRASSE 1"_s, u"straße"_s, 0, 6);
    row("half of a sharp s", u"ßx"_s, u"s"_s, 0, 1);
    row("past the end by a keyword that is longer than what it is found in", u"ß"_s, u"SS"_s, 0, 2);
    row("past the end, behind blanks", u"  ﬃ"_s, u"ffi"_s, 0, 5);
    row("ligature in the middle", u"oﬃce"_s, u"OFFIC"_s, 0, 5);
    row("dotless i is an i", u"\u0131"_s, u"i"_s, 0, 1);
    row("dotted capital I is none", u"\u0130"_s, u"i"_s, 0, -1);
    row("Kelvin sign is no k", u"\u212a"_s, u"k"_s, 0, -1);
    row("final sigma", u"\u03c2"_s, u"\u03c3"_s, 0, 1);
    row("Deseret pair", QString(u" 𐐨x"_s), u"𐐀"_s, 0, 3);
    row("high half of a Deseret pair", QString(u"𐐨x"_s), QString(QChar(0xd801)), 0, 1);
    row("other pair with the same high half", QString(u"𐐩"_s), u"𐐀"_s, 0, -1);
    row("high half as the keyword", QString(u"𠮷x"_s), QString(high), 0, 1);
    row("other high half as the keyword", QString(u"𠮷x"_s), QString(otherHigh), 0, -1);
    row("lone low half", low + u"x"_s, QString(low) + u"X"_s, 0, 2);
    row("lone high half at the end", u"x"_s + high, u"X"_s + high, 0, 2);
    row("behind a lone high half", high + u"x"_s, high + u"x"_s, 0, 2);
    row("lone high half behind a change", u"a"_s + high + u"b"_s, u"A\ufffd"_s, 0, 2);
    row("lone high half behind a change as itself", u"a"_s + high + u"b"_s, u"A"_s + high, 0, -1);
    row("lone high half behind no change", u"A"_s + high + u"b"_s, u"A"_s + high, 0, 2);
    row("lone high half behind a change at the end", u"a"_s + high, u"A"_s + high, 0, 2);
    row("run of high halves up to the end", u"a"_s + high + high + high, u"A"_s + high, 0, 2);
    row("run of high halves before a letter", u"a"_s + high + high + u'x', u"A\ufffd"_s, 0, 2);
    row("run of high halves before a low one", u"a"_s + high + high + low, u"A\ufffd"_s + high + low, 0, 4);
    row("high half at the end behind a longer one", u"ß"_s + high, u"SS\ufffd"_s, 0, -1);
    row("high half at the end behind a longer one as itself", u"ß"_s + high, u"SS"_s + high, 0, 3);
    row("the same text with a high half behind a longer one", u"ß"_s + high, u"ß"_s + high, 0, 2);
    row("lone high half alone before a pair", high + u"𐐨"_s, QString(high), 0, 1);

    row("very long rest", u" order"_s + QString(1'000'000, u'x'), u"ORDER"_s, 0, 6);
    row("very many sharp s", QString(500'000, u'ß'), QString(1'000'000, u's'), 0, 1'000'000);
    row("very many high halves", u"a"_s + QString(1'000'000, high) + u'x', u"A\ufffd"_s, 0, 2);
    row("very many blanks", QString(1'000'000, u' ') + u"x"_s, u"x"_s, 0, 1'000'001);
    row("very long keyword", QString(1'000'000, u'x'), QString(1'000'000, u'X'), 0, 1'000'000);
    row("very long keyword one short", QString(999'999, u'x'), QString(1'000'000, u'X'), 0, -1);
}

void ScannerTest::acceptKeyword()
{
    QFETCH(QString, text);
    QFETCH(QString, keyword);
    QFETCH(int, from);
    QFETCH(int, position);
    const bool accepted = position >= 0;
    const int left = accepted ? position : from;

    ScanCursor cursor{u'$', 4, 5, from, u"cursor"_s};
    QCOMPARE(m_runtime.acceptKeyword(cursor, keyword, text), accepted);
    QCOMPARE(cursor.position, left);
    QVERIFY(cursor.delimiter == u'$' && cursor.reserved1 == 4 && cursor.reserved2 == 5);
    QCOMPARE(cursor.text, u"cursor"_s);

    // A cursor may hold the text itself.
    cursor.position = from;
    cursor.text = text;
    QCOMPARE(m_runtime.acceptKeyword(cursor, keyword, cursor.text), accepted);
    QCOMPARE(cursor.position, left);
    QCOMPARE(cursor.text, text);

    m_runtime.setScanText(text);
    m_runtime.scanCursor->position = from;
    QCOMPARE(m_runtime.acceptKeyword(keyword), accepted);
    QCOMPARE(m_runtime.scanCursor->position, left);
    QCOMPARE(m_runtime.scanSource->text, text);
    QCOMPARE(m_runtime.scanSource->position, 0);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, u' ');

    if (from <= 0)
        QCOMPARE(m_runtime.acceptKeyword(keyword, text), accepted);
    QCOMPARE(m_runtime.scanCursor->position, left);
    checkUntouched(u"error"_s);
}

void ScannerTest::acceptKeywordInWordsWithHalves()
{
    // More than a minute where the whole rest is converted for a word.
    constexpr int words = 100'000;
    m_runtime.setScanText((u"a"_s + high + u"x,"_s).repeated(words));
    int accepted = 0, tokens = 0;
    ScanCursor token;
    do {
        accepted += m_runtime.acceptKeyword(u"A\ufffd"_s) ? 1 : 0;
        accepted += m_runtime.acceptKeyword(u"b\ufffd"_s) ? 1 : 0;
        ++tokens;
    } while (m_runtime.nextToken(token, u","_s));
    QCOMPARE(accepted, words);
    QCOMPARE(tokens, words + 1);
}

void ScannerTest::acceptKeywordAgainstLiteralForm()
{
    // Letters whose upper case is longer, shorter in bytes, a pair, or none; and halves that stand alone.
    const QString letters = u"aAsSfFiIxßŉǰΐﬀﬃﬓıİςσΣéÀ漢ｱ1 \u0149\u0345\u0308\u00d0\u2461\u24d0"_s + u"𐐨"_s
        + u"𐐀"_s + high + otherHigh + low + QChar(0xd800) + QChar(0xd801) + QChar(0xdc00) + QChar(0xdc28);
    QRandomGenerator random(20240131);
    const auto textOf = [&](int size) {
        QString text;
        for (int i = 0; i < size; ++i)
            text += letters[random.bounded(int(letters.size()))];
        return text;
    };

    constexpr int rounds = 200'000;
    int accepted = 0;
    for (int i = 0; i < rounds; ++i) {
        const QString text = textOf(random.bounded(12));
        // Every other keyword is taken from the text, or hardly any would be accepted.
        QString keyword = textOf(random.bounded(4));
        if (i % 2 == 0) {
            qsizetype begin = 0;
            while (begin < text.size() && text[begin] <= u' ')
                ++begin;
            keyword = text.mid(begin, random.bounded(8));
            if (i % 4 == 0)
                keyword = keyword.toUpper();
        }

        qsizetype begin = 0;
        while (begin < text.size() && text[begin] <= u' ')
            ++begin;
        // Constant as the keyword is: QString upper-cases a high half at the end of a temporary otherwise.
        const QString rest = text.mid(begin);
        const bool expected = begin < text.size() && rest.toUpper().startsWith(keyword.toUpper());
        ScanCursor cursor;
        if (m_runtime.acceptKeyword(cursor, keyword, text) != expected) {
            QFAIL(qPrintable(u"text %1 keyword %2"_s.arg(
                QString::fromLatin1(text.toUtf8().toHex()), QString::fromLatin1(keyword.toUtf8().toHex())
            )));
        }
        QCOMPARE(cursor.position, expected ? int(begin + keyword.size()) : 0);
        accepted += expected ? 1 : 0;
    }
    QVERIFY(accepted > rounds / 10);
    checkUntouched(u"error"_s);
}

void ScannerTest::setScanTextSharesOneScan()
{
    ScanCursor token;
    m_runtime.setScanText(u" select a , 'b,c';d"_s);
    QVERIFY(!m_runtime.acceptKeyword(u"insert"_s));
    QCOMPARE(m_runtime.scanCursor->position, 0);
    QVERIFY(m_runtime.acceptKeyword(u"SELECT"_s));
    QCOMPARE(m_runtime.scanCursor->position, 7);
    QVERIFY(m_runtime.nextToken(token, u",;"_s));
    QCOMPARE(token.text, u"a"_s);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, u',');
    QVERIFY(m_runtime.skipToken(u",;"_s));
    QCOMPARE(token.text, u"a"_s);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, u';');
    checkUntouched(u"error"_s);
    QVERIFY(!m_runtime.nextToken(token, u",;"_s));
    QCOMPARE(token.text, u"d"_s);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, nul);
    QCOMPARE(m_runtime.scanCursor->position, 19);
    checkUntouched(u"not found (',;')"_s);

    // Nothing starts again by itself.
    QVERIFY(!m_runtime.acceptKeyword(u"select"_s));
    QVERIFY(!m_runtime.acceptKeyword(u""_s));
    QVERIFY(!m_runtime.nextToken(token, u"#"_s));
    QCOMPARE(token.text, u""_s);
    QVERIFY(!m_runtime.skipToken(u"+"_s));
    checkUntouched(u"not found ('+')"_s);
    QCOMPARE(m_runtime.scanCursor->position, 19);

    // The other forms leave the shared scan where it is.
    m_runtime.scanCursor->position = 3;
    ScanCursor cursor;
    QChar delimiter;
    QVERIFY(m_runtime.nextToken(token, cursor, delimiter, u"x,y"_s, u","_s, true));
    QVERIFY(m_runtime.acceptKeyword(u"x"_s, u"x,y"_s));
    QCOMPARE(m_runtime.scanCursor->position, 3);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, nul);

    // A new text starts at its beginning and leaves everything else.
    m_runtime.setScanText(u"new"_s);
    QCOMPARE(m_runtime.scanSource->text, u"new"_s);
    QCOMPARE(m_runtime.scanCursor->position, 0);
    QCOMPARE(m_runtime.scanCursor->text, u""_s);
    QCOMPARE(m_runtime.scanSource->position, 0);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, nul);
    checkUntouched(u"not found ('+')"_s);
}

void ScannerTest::acceptKeywordAndNextTokenWithoutScanText()
{
    ScanCursor token{u' ', 0, 0, 0, u"token"_s};
    QVERIFY(!m_runtime.acceptKeyword(u"x"_s));
    checkUntouched(u"error"_s);
    QVERIFY(!m_runtime.nextToken(token, u","_s));
    QCOMPARE(token.text, u""_s);
    QCOMPARE(m_runtime.scanDelimiter->delimiter, nul);
    checkUntouched(u"not found (',')"_s);
}

void ScannerTest::setScanTextTakesItsOwnRecords()
{
    m_runtime.setScanText(u"a;b,c"_s);
    m_runtime.setScanText(m_runtime.scanSource->text);
    QCOMPARE(m_runtime.scanSource->text, u"a;b,c"_s);
    QVERIFY(m_runtime.nextToken(*m_runtime.scanCursor, u";"_s));
    QCOMPARE(m_runtime.scanCursor->text, u"a"_s);
    QCOMPARE(m_runtime.scanCursor->position, 2);
    QVERIFY(m_runtime.nextToken(*m_runtime.scanSource, u","_s));
    QCOMPARE(m_runtime.scanSource->text, u"b"_s);
    QCOMPARE(m_runtime.scanCursor->position, 4);
    m_runtime.setScanText(u"order"_s);
    QVERIFY(m_runtime.acceptKeyword(m_runtime.scanSource->text));
    QCOMPARE(m_runtime.scanCursor->position, 5);
}

void ScannerTest::setScanTextOnObjectFromANameAlone()
{
    AppRuntime runtime(u"TEST"_s);
    QVERIFY(!runtime.scanCursor && !runtime.scanSource && !runtime.scanDelimiter);
    runtime.lastError = u"error"_s;
    runtime.checkMessage = u"old"_s;
    runtime.convertOk = true;

    ScanCursor token{u'#', 7, 8, 9, u"token"_s};
    runtime.setScanText(u"a,b"_s);
    QVERIFY(!runtime.acceptKeyword(u"a"_s));
    QVERIFY(!runtime.acceptKeyword(u""_s));
    QVERIFY(!runtime.nextToken(token, u","_s));
    QVERIFY(!runtime.skipToken(u","_s));
    QCOMPARE(token.text, u"token"_s);
    QVERIFY(token.delimiter == u'#' && token.reserved1 == 7 && token.reserved2 == 8 && token.position == 9);
    QVERIFY(!runtime.scanCursor && !runtime.scanSource && !runtime.scanDelimiter);
    QCOMPARE(runtime.lastError, u"error"_s);
    QCOMPARE(runtime.checkMessage, u"old"_s);
    QVERIFY(runtime.convertOk);

    // With a cursor of their own they work here too.
    ScanCursor cursor;
    QChar delimiter;
    QVERIFY(runtime.acceptKeyword(u"A"_s, u"a,b"_s));
    QVERIFY(runtime.acceptKeyword(cursor, u"A"_s, u"a,b"_s));
    QVERIFY(runtime.nextToken(token, cursor, delimiter, u"a,b"_s, u","_s, true));
    QCOMPARE(token.text, u""_s);
    QVERIFY(!runtime.nextToken(token, cursor, delimiter, u"a,b"_s, u","_s, true));
    QCOMPARE(token.text, u"b"_s);
    QCOMPARE(runtime.lastError, u"not found (',')"_s);

    // Any one record that is missing stops the members that need it.
    for (int missing = 0; missing < 3; ++missing) {
        runtime.scanCursor = missing == 0 ? nullptr : std::make_unique<ScanCursor>();
        runtime.scanSource = missing == 1 ? nullptr : std::make_unique<ScanCursor>();
        runtime.scanDelimiter = missing == 2 ? nullptr : std::make_unique<ScanCursor>();
        runtime.lastError = u"error"_s;
        runtime.setScanText(u"a,b"_s);
        QCOMPARE(runtime.acceptKeyword(u"a"_s), missing == 2);
        QVERIFY(!runtime.nextToken(token, u","_s));
        QVERIFY(!runtime.skipToken(u","_s));
        QCOMPARE(runtime.lastError, u"error"_s);
    }
}

QTEST_GUILESS_MAIN(ScannerTest)
#include "tst_scanner.moc"
