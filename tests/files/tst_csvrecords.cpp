// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

const QString csv = u"CSV"_s, tsv = u"TSV"_s;

QString fromCode(int code, int size, const QString &alphabet)
{
    QString text;
    for (int i = 0; i < size; ++i) {
        text.append(alphabet[code % int(alphabet.size())]);
        code /= int(alphabet.size());
    }
    return text;
}

bool trailsBlank(const QString &text)
{
    return !text.isEmpty() && text.back().unicode() <= 0x20;
}

/// The rules of the two kinds, step by step.
QStringList recordByRule(const QString &line, bool commas)
{
    QStringList fields;
    if (!commas) {
        fields = line.split(u'\t');
        for (QString &field : fields) {
            while (trailsBlank(field))
                field.chop(1);
        }
        return fields;
    }

    const auto addField = [&](QString field) {
        field = field.trimmed();
        if (field.size() >= 2 && field.startsWith(u'"') && field.endsWith(u'"'))
            field = field.mid(1, field.size() - 2);
        field.replace(u"\"\""_s, u"\""_s);
        while (trailsBlank(field))
            field.chop(1);
        fields.append(field);
    };
    qsizetype start = 0;
    bool inQuotes = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == u'"')
            inQuotes = !inQuotes;
        if (line[i] == u',' && !inQuotes) {
            addField(line.mid(start, i - start));
            start = i + 1;
        }
    }
    addField(line.mid(start));
    return fields;
}

bool hasLineBreak(const QString &value)
{
    return value.contains(u'\r') || value.contains(u'\n');
}

/// Whether a value written by csvField() comes back from splitRecord().
bool survives(const QString &value, bool commas)
{
    if (hasLineBreak(value) || trailsBlank(value))
        return false;
    if (!commas)
        return !value.contains(u'\t');
    const bool quoted = value.contains(u',') || value.contains(u'"');
    return quoted || value == value.trimmed();
}

} // namespace

class CsvRecordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;

    void isCsvKind_data();
    void isCsvKind();
    void isCsvKindOfEveryCharacter();
    void splitRecord_data();
    void splitRecord();
    void splitRecordTakesEveryKind();
    void splitRecordOfEveryWhiteSpace();
    void splitRecordOfEveryShortLine();
    void splitRecordOfRandomLines();
    void splitRecordOfEveryLength();
    void splitRecordTakesItsOwnElement();
    void splitRecordTakesItsOwnKind();
    void splitRecordLeavesOtherOwners();
    void splitRecordKeepsRoom();
    void splitRecordOfLongLines();
    void csvField_data();
    void csvField();
    void csvFieldTakesItsOwnSeparator();
    void csvFieldLeavesItsArguments();
    void csvFieldThereAndBack_data();
    void csvFieldThereAndBack();
    void csvFieldThereAndBackOfEveryShortText();
    void csvFieldThereAndBackInRandomRecords();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void CsvRecordsTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"old"_s;
    m_runtime.convertOk = true;
}

void CsvRecordsTest::cleanup() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QVERIFY(m_runtime.convertOk);
}

void CsvRecordsTest::isCsvKind_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("csv");

    QTest::newRow("null") << QString() << false;
    QTest::newRow("empty") << u""_s << false;
    QTest::newRow("upper case") << u"CSV"_s << true;
    QTest::newRow("lower case") << u"csv"_s << true;
    QTest::newRow("mixed case") << u"cSv"_s << true;
    QTest::newRow("one letter before") << u"XCSV"_s << true;
    QTest::newRow("letters before") << u"mycsv"_s << true;
    QTest::newRow("kanji before") << u"漢字CSV"_s << true;
    QTest::newRow("blank before") << u" CSV"_s << true;
    QTest::newRow("twice") << u"CSVcsv"_s << true;
    QTest::newRow("one letter behind") << u"CSV2"_s << false;
    QTest::newRow("blank behind") << u"CSV "_s << false;
    QTest::newRow("NUL behind") << u"CSV\0"_s << false;
    QTest::newRow("NUL before") << u"\0CSV"_s << true;
    QTest::newRow("only the end of it") << u"SV"_s << false;
    QTest::newRow("letter between") << u"CSxV"_s << false;
    QTest::newRow("tab-separated") << u"TSV"_s << false;
    QTest::newRow("anything else") << u"TEXT"_s << false;
    QTest::newRow("full width is another letter") << u"ＣＳＶ"_s << false;
    QTest::newRow("full width, lower case") << u"ｃｓｖ"_s << false;
    QTest::newRow("long s becomes S") << u"cſv"_s << true;
    QTest::newRow("long s in upper case letters") << u"XCſV"_s << true;
    QTest::newRow("sharp s becomes SS") << u"cßv"_s << false;
    QTest::newRow("sharp s before") << u"ßcsv"_s << true;
    QTest::newRow("sharp s in place of CS") << u"ßv"_s << false;
    QTest::newRow("ligature st becomes ST") << u"cﬆv"_s << false;
    QTest::newRow("small roman numerals stay numerals") << u"ⅽsⅴ"_s << false;
    QTest::newRow("Cyrillic letters of the same look") << u"СЅV"_s << false;
    QTest::newRow("accent behind") << u"csv\u0301"_s << false;
    QTest::newRow("accent inside") << u"c\u0301sv"_s << false;
    QTest::newRow("pair before") << u"\U00010428csv"_s << true;
    QTest::newRow("lone surrogate before") << QChar(0xd842) + u"csv"_s << true;
    QTest::newRow("lone surrogate behind") << u"csv"_s + QChar(0xd842) << false;
}

void CsvRecordsTest::isCsvKind()
{
    QFETCH(QString, kind);
    const AppRuntime &runtime = m_runtime;
    QTEST(runtime.isCsvKind(kind), "csv");
}

void CsvRecordsTest::isCsvKindOfEveryCharacter()
{
    // Besides the letters themselves only one character becomes one of them.
    const QString pattern = u"csv"_s;
    for (qsizetype place = 0; place < pattern.size(); ++place) {
        QString found;
        for (int code = 0; code <= 0xffff; ++code) {
            QString kind = pattern;
            kind[place] = QChar(code);
            const bool accepted = m_runtime.isCsvKind(kind);
            QCOMPARE(accepted, kind.toUpper().endsWith(u"CSV"_s));
            if (accepted)
                found.append(QChar(code));
        }
        static const QString letters[] = {u"Cc"_s, u"Ssſ"_s, u"Vv"_s};
        QCOMPARE(found, letters[place]);
    }
    // No character becomes several of them, of one code unit or two.
    for (char32_t code = 0; code <= 0x10ffff; ++code) {
        const QString character = QString::fromUcs4(&code, 1);
        for (const QString &kind :
             {character,
              u"c"_s + character,
              character + u"v"_s,
              u"cs"_s + character,
              u"c"_s + character + u"v"_s}) {
            if (m_runtime.isCsvKind(kind) != kind.toUpper().endsWith(u"CSV"_s))
                QFAIL(qPrintable(u"U+%1"_s.arg(uint(code), 4, 16)));
        }
    }
}

void CsvRecordsTest::splitRecord_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("fields");

    const auto row = [](const char *name, const QString &line, const QStringList &fields) {
        QTest::newRow(name) << line << csv << fields;
    };
    row("null", QString(), {u""_s});
    row("empty", u""_s, {u""_s});
    row("one field", u"abc"_s, {u"abc"_s});
    row("three fields", u"a,b,c"_s, {u"a"_s, u"b"_s, u"c"_s});
    row("blanks, quotes and doubled quotes", u"a, \"b,c\" ,\"d\"\"e\""_s, {u"a"_s, u"b,c"_s, u"d\"e"_s});
    row("only a comma", u","_s, {u""_s, u""_s});
    row("only commas", u",,,"_s, {u""_s, u""_s, u""_s, u""_s});
    row("comma at the end", u"a,"_s, {u"a"_s, u""_s});
    row("commas at the end", u"a,,"_s, {u"a"_s, u""_s, u""_s});
    row("comma and a blank at the end", u"a, "_s, {u"a"_s, u""_s});
    row("comma in front", u",a"_s, {u""_s, u"a"_s});
    row("empty field inside", u"a,,b"_s, {u"a"_s, u""_s, u"b"_s});
    row("quoted field and a comma at the end", u"\"a\","_s, {u"a"_s, u""_s});
    row("quoted comma at the end", u"\"a,\""_s, {u"a,"_s});
    row("blank line", u"   "_s, {u""_s});
    row("tabs are white space", u"\ta\t,\tb\t"_s, {u"a"_s, u"b"_s});
    row("tabs do not separate", u"a\tb,c"_s, {u"a\tb"_s, u"c"_s});

    row("quoted", u"\"abc\""_s, {u"abc"_s});
    row("quoted empty", u"\"\""_s, {u""_s});
    row("quoted empty among others", u"a,\"\",b"_s, {u"a"_s, u""_s, u"b"_s});
    row("quoted comma", u"\"a,b\",c"_s, {u"a,b"_s, u"c"_s});
    row("only quoted commas", u"\",,\""_s, {u",,"_s});
    row("white space around quotes", u" \t\"a\"\u3000,\u00a0\"b\" "_s, {u"a"_s, u"b"_s});
    row("blanks in front inside quotes stay", u"\"  a\""_s, {u"  a"_s});
    row("blanks behind inside quotes go", u"\"060  \",x"_s, {u"060"_s, u"x"_s});
    row("blanks only inside quotes go", u"\"   \",x"_s, {u""_s, u"x"_s});
    row("one blank inside quotes", u"\" \""_s, {u""_s});
    row("control characters behind inside quotes go", u"\"a\t\x01\x1f\0\""_s, {u"a"_s});
    row("control character in front inside quotes stays", u"\"\x01 a\""_s, {u"\x01 a"_s});
    row("U+0021 inside quotes stays", u"\"a!\""_s, {u"a!"_s});
    row("U+007F inside quotes stays", u"\"a\x7f\""_s, {u"a\x7f"_s});
    row("ideographic space behind inside quotes stays", u"\"a\u3000\""_s, {u"a\u3000"_s});
    row("ideographic space in front inside quotes stays", u"\"\u3000a\""_s, {u"\u3000a"_s});
    row("blank behind an ideographic space inside quotes", u"\"a \u3000 \""_s, {u"a \u3000"_s});
    row("no-break space behind inside quotes stays", u"\"a\u00a0\""_s, {u"a\u00a0"_s});
    row("ideographic spaces only inside quotes stay", u"\"\u3000\""_s, {u"\u3000"_s});

    row("blanks at the ends go", u"  a b  ,  c  "_s, {u"a b"_s, u"c"_s});
    row("ideographic spaces at the ends go", u"\u3000a\u3000b\u3000"_s, {u"a\u3000b"_s});
    row("control character in front stays", u"\x01 a"_s, {u"\x01 a"_s});
    row("control character behind goes", u"a\x01"_s, {u"a"_s});
    row("control character behind, then what it kept", u"a \x01"_s, {u"a"_s});
    row("ideographic space kept by a control character", u"a\u3000\x01"_s, {u"a\u3000"_s});
    row("ideographic space behind a control character", u"a\x01\u3000"_s, {u"a"_s});
    row("ideographic space kept by two controls", u"a\u3000\x01\u3000\x02 "_s, {u"a\u3000\x01\u3000"_s});
    row("only a control character", u"\x01"_s, {u""_s});
    row("only an ideographic space", u"\u3000"_s, {u""_s});
    row("ideographic space before quotes", u"\u3000\"a,b\"\u3000"_s, {u"a,b"_s});
    row("line break at the end is white space", u"a,b\r\n"_s, {u"a"_s, u"b"_s});
    row("line break inside stays", u"a\r\nb"_s, {u"a\r\nb"_s});
    row("zero-width space is none", u"\u200ba\u200b"_s, {u"\u200ba\u200b"_s});
    row("byte order mark is none", u"\ufeff\"a\",b"_s, {u"\ufeff\"a\""_s, u"b"_s});

    row("doubled quotes fold inside quotes", u"\"a\"\"b\""_s, {u"a\"b"_s});
    row("doubled quotes fold outside quotes", u"x\"\"y"_s, {u"x\"y"_s});
    row("two quotes are an empty field", u"\"\""_s, {u""_s});
    row("three quotes", u"\"\"\""_s, {u"\""_s});
    row("four quotes", u"\"\"\"\""_s, {u"\""_s});
    row("five quotes", u"\"\"\"\"\""_s, {u"\"\""_s});
    row("six quotes", u"\"\"\"\"\"\""_s, {u"\"\""_s});
    row("seven quotes", u"\"\"\"\"\"\"\""_s, {u"\"\"\""_s});
    row("three quotes outside fold from the left", u"x\"\"\"y"_s, {u"x\"\"y"_s});
    row("four quotes outside", u"x\"\"\"\"y"_s, {u"x\"\"y"_s});
    row("quoted part in a field", u"a\"b,c\"d,e"_s, {u"a\"b,c\"d"_s, u"e"_s});
    row("quoted parts side by side", u"\"a\"\"b\",\"c\" \"d\""_s, {u"a\"b"_s, u"c\" \"d"_s});
    row("quote at the front only", u"\"a\"b,c"_s, {u"\"a\"b"_s, u"c"_s});
    row("quote at the end only", u"a\"b\",c"_s, {u"a\"b\""_s, u"c"_s});
    row("text behind a closing quote", u"\"a\"x\"b\",c"_s, {u"a\"x\"b"_s, u"c"_s});
    row("quotes apart do not fold", u"\" \"\" \",c"_s, {u" \""_s, u"c"_s});
    row("blanks at the end before a folded pair", u"\"a  \"\"\""_s, {u"a  \""_s});
    row("blanks behind a folded pair", u"\"a\"\"  \""_s, {u"a\""_s});
    row("a folded pair is not enclosing", u"\"\"a\"\""_s, {u"\"a\""_s});

    row("never closed", u"a,\"b,c"_s, {u"a"_s, u"\"b,c"_s});
    row("never closed at the end", u"a,b\""_s, {u"a"_s, u"b\""_s});
    row("never closed before a comma at the end", u"a,\"b,"_s, {u"a"_s, u"\"b,"_s});
    row("never closed, trimmed", u"a, \"b , "_s, {u"a"_s, u"\"b ,"_s});
    row("only a quote", u"\""_s, {u"\""_s});
    row("a quote and a comma", u"\","_s, {u"\","_s});
    row("quote in blanks", u" \" "_s, {u"\""_s});
    row("quote in the middle takes in the rest", u"a\"b,c,d"_s, {u"a\"b,c,d"_s});
    row("quote in the middle closed by another", u"a\"b,c\",d"_s, {u"a\"b,c\""_s, u"d"_s});
    row("never closed, ends in a quote of its own", u"\"a\"\""_s, {u"a\""_s});
    row("third quote takes in the rest", u"\"a\",\"b\"\",c"_s, {u"a"_s, u"\"b\",c"_s});
    row("single quotes mean nothing", u"'a,b'"_s, {u"'a"_s, u"b'"_s});
    row("full-width signs mean nothing", u"＂a，b＂"_s, {u"＂a，b＂"_s});
    row("typographic quotes mean nothing", u"“a,b”"_s, {u"“a"_s, u"b”"_s});
    row("backslash escapes nothing", u"\"a\\\",b\""_s, {u"a\\"_s, u"b\""_s});

    row("kanji and kana", u"\"北海道\",ﾎｯｶｲﾄﾞｳ,札幌市"_s, {u"北海道"_s, u"ﾎｯｶｲﾄﾞｳ"_s, u"札幌市"_s});
    row("NUL inside", u"a\0b,\0c"_s, {u"a\0b"_s, u"\0c"_s});
    row("NUL at the end", u"a\0,b\0\0"_s, {u"a"_s, u"b"_s});
    row("only NUL", u"\0"_s, {u""_s});
    row("pairs", u"\U00020bb7,\"\U00020bb7\""_s, {u"\U00020bb7"_s, u"\U00020bb7"_s});
    row("lone surrogates",
        QChar(0xdfb7) + u",\""_s + QChar(0xd842) + u"\",\""_s + QChar(0xd842),
        {QString(QChar(0xdfb7)), QString(QChar(0xd842)), u'"' + QString(QChar(0xd842))});
    row("postal record",
        u"01101,\"060  \",\"0600000\",\"ﾎｯｶｲﾄﾞｳ\",\"ｻｯﾎﾟﾛｼ\",\"ｲｶﾆ\",\"北海道\",\"札幌市\",\"以下\",0,0,0,0,0,0"_s,
        {u"01101"_s,
         u"060"_s,
         u"0600000"_s,
         u"ﾎｯｶｲﾄﾞｳ"_s,
         u"ｻｯﾎﾟﾛｼ"_s,
         u"ｲｶﾆ"_s,
         u"北海道"_s,
         u"札幌市"_s,
         u"以下"_s,
         u"0"_s,
         u"0"_s,
         u"0"_s,
         u"0"_s,
         u"0"_s,
         u"0"_s});

    const auto tabRow = [](const char *name, const QString &line, const QStringList &fields) {
        QTest::newRow(name) << line << tsv << fields;
    };
    tabRow("tabs: null", QString(), {u""_s});
    tabRow("tabs: empty", u""_s, {u""_s});
    tabRow("tabs: one field", u"abc"_s, {u"abc"_s});
    tabRow("tabs: only trailing blanks go", u" a \t b "_s, {u" a"_s, u" b"_s});
    tabRow("tabs: only a tab", u"\t"_s, {u""_s, u""_s});
    tabRow("tabs: only tabs", u"\t\t\t"_s, {u""_s, u""_s, u""_s, u""_s});
    tabRow("tabs: tab at the end", u"a\t"_s, {u"a"_s, u""_s});
    tabRow("tabs: tab and blanks at the end", u"a\t  "_s, {u"a"_s, u""_s});
    tabRow("tabs: tab in front", u"\ta"_s, {u""_s, u"a"_s});
    tabRow("tabs: empty field inside", u"a\t\tb"_s, {u"a"_s, u""_s, u"b"_s});
    tabRow("tabs: blank fields", u" \t  \t"_s, {u""_s, u""_s, u""_s});
    tabRow(
        "tabs: commas and quotes mean nothing",
        u"\"a,b\"\t\"c\td\"\"e\""_s,
        {u"\"a,b\""_s, u"\"c"_s, u"d\"\"e\""_s}
    );
    tabRow("tabs: control characters behind go", u"a\x01\x1f\0\tb\r\n"_s, {u"a"_s, u"b"_s});
    tabRow("tabs: control characters in front stay", u"\x01 a\t\nb"_s, {u"\x01 a"_s, u"\nb"_s});
    tabRow(
        "tabs: ideographic space behind stays",
        u"\u3000a\u3000\tb\u3000 "_s,
        {u"\u3000a\u3000"_s, u"b\u3000"_s}
    );
    tabRow("tabs: no-break space behind stays", u"a\u00a0\tb"_s, {u"a\u00a0"_s, u"b"_s});
    tabRow("tabs: U+0021 stays", u"a!\tb"_s, {u"a!"_s, u"b"_s});
    tabRow("tabs: NUL inside", u"a\0b\t\0c"_s, {u"a\0b"_s, u"\0c"_s});
    tabRow(
        "tabs: lone surrogates",
        QChar(0xdfb7) + u"\t"_s + QChar(0xd842),
        {QString(QChar(0xdfb7)), QString(QChar(0xd842))}
    );
}

void CsvRecordsTest::splitRecord()
{
    QFETCH(QString, line);
    QFETCH(QString, kind);
    QFETCH(QStringList, fields);

    const QString copy = QString(line.constData(), line.size());
    QStringList list;
    m_runtime.splitRecord(list, line, kind);
    QCOMPARE(list, fields);
    m_runtime.splitRecord(list, line, kind);
    QCOMPARE(list, fields);

    // The former elements leave no trace, whether they are more or fewer, longer or shorter.
    list = {u"something long enough to be seen"_s, u""_s, QString(), u"x"_s, u"y"_s, u"z"_s, u"xyz"_s};
    list[1].append(u"y"_s);
    list[4].append(u"\"\"\"\"   "_s);
    m_runtime.splitRecord(list, line, kind);
    QCOMPARE(list, fields);
    list = QStringList(30, u"z"_s);
    m_runtime.splitRecord(list, line, kind);
    QCOMPARE(list, fields);

    QCOMPARE(recordByRule(line, kind == csv), fields);
    QCOMPARE(line, copy);
}

void CsvRecordsTest::splitRecordTakesEveryKind()
{
    const QString line = u"a,b\tc "_s;
    const QStringList commas = {u"a"_s, u"b\tc"_s}, tabs = {u"a,b"_s, u"c"_s};
    QStringList fields;
    for (const QString &kind : {u"CSV"_s, u"csv"_s, u"ACSV"_s, u"cſv"_s}) {
        m_runtime.splitRecord(fields, line, kind);
        QCOMPARE(fields, commas);
    }
    for (const QString &kind : {u"TSV"_s, u"CSV2"_s, u"CSV "_s, u""_s, QString(), u"\t"_s, u","_s}) {
        m_runtime.splitRecord(fields, line, kind);
        QCOMPARE(fields, tabs);
    }
}

void CsvRecordsTest::splitRecordOfEveryWhiteSpace()
{
    // The two trims take away different characters, at different ends.
    QStringList fields;
    for (int code = 0; code <= 0xffff; ++code) {
        const QChar c(code);
        if (c == u'"' || c == u',' || c == u'\t')
            continue;
        const bool white = c.isSpace(), low = code <= 0x20;
        m_runtime.splitRecord(fields, c + u"a"_s + c + u",\""_s + c + u"a"_s + c + u"\""_s, csv);
        QCOMPARE(fields.size(), 2);
        QCOMPARE(fields[0], (white ? u""_s : QString(c)) + u'a' + (white || low ? u""_s : QString(c)));
        QCOMPARE(fields[1], c + u"a"_s + (low ? u""_s : QString(c)));
        m_runtime.splitRecord(fields, c + u"a"_s + c + u"\tb"_s, tsv);
        QCOMPARE(fields.size(), 2);
        QCOMPARE(fields[0], c + u"a"_s + (low ? u""_s : QString(c)));
    }
}

void CsvRecordsTest::splitRecordOfEveryShortLine()
{
    const QString alphabet = u"a,\" \u3000\t\x01"_s;
    QStringList fields;
    for (int size = 0, count = 1; size <= 6; ++size, count *= int(alphabet.size())) {
        for (int code = 0; code < count; ++code) {
            const QString line = fromCode(code, size, alphabet);
            for (const bool commas : {true, false}) {
                m_runtime.splitRecord(fields, line, commas ? csv : tsv);
                if (fields != recordByRule(line, commas))
                    QFAIL(qPrintable(u"\"%1\" gives \"%2\""_s.arg(line, fields.join(u'|'))));
            }
        }
    }
}

void CsvRecordsTest::splitRecordOfRandomLines()
{
    const QString alphabet = u"abc,,,\"\"\"\"  \u3000\u00a0\t\x01\0漢ｶﾞ\U00020bb7"_s;
    QRandomGenerator random(20240401);
    QStringList fields;
    for (int i = 0; i < 20000; ++i) {
        QString line;
        for (int size = random.bounded(80); size > 0; --size)
            line.append(alphabet[random.bounded(int(alphabet.size()))]);
        const bool commas = random.bounded(4) != 0;
        m_runtime.splitRecord(fields, line, commas ? csv : tsv);
        QCOMPARE(fields, recordByRule(line, commas));
    }
}

// What ends a field, and what does not, at every position of lines of every length up to 100.
void CsvRecordsTest::splitRecordOfEveryLength()
{
    QStringList fields;
    for (int length = 0; length <= 100; ++length) {
        for (int position = 0; position <= length; ++position) {
            for (const QString &part : {u","_s, u"\t"_s, u"\""_s, u"\"\""_s, u",\"a,b\"\"\","_s}) {
                const QString line = QString(length, u'x').insert(position, part);
                for (const bool commas : {true, false}) {
                    m_runtime.splitRecord(fields, line, commas ? csv : tsv);
                    if (fields != recordByRule(line, commas))
                        QFAIL(qPrintable(u"\"%1\" gives \"%2\""_s.arg(line, fields.join(u'|'))));
                }
            }
        }
    }
}

void CsvRecordsTest::splitRecordTakesItsOwnElement()
{
    const QString lines[]
        = {u"one, \"two \"\"2\"\"\",\"three,3\",four,five"_s, u"one\ttwo\tthree\tfour\tfive"_s};
    for (const bool commas : {true, false}) {
        const QString line = lines[commas ? 0 : 1];
        for (int element = 0; element < 4; ++element) {
            QStringList list = {u"a"_s, u"bb"_s, u"ccc"_s, u"dddd"_s};
            list[element] = QString(line.constData(), line.size());
            m_runtime.splitRecord(list, list[element], commas ? csv : tsv);
            QCOMPARE(list, recordByRule(line, commas));
        }
    }
}

void CsvRecordsTest::splitRecordTakesItsOwnKind()
{
    QStringList list = {QString(csv.constData(), 3), u"x"_s};
    m_runtime.splitRecord(list, u"longer than the kind,b"_s, list[0]);
    QCOMPARE(list, QStringList({u"longer than the kind"_s, u"b"_s}));
}

void CsvRecordsTest::splitRecordLeavesOtherOwners()
{
    QStringList list;
    m_runtime.splitRecord(list, u"one,two,three"_s, csv);
    const QStringList whole = list;
    m_runtime.splitRecord(list, u"1,2"_s, csv);
    QCOMPARE(whole, QStringList({u"one"_s, u"two"_s, u"three"_s}));
    QCOMPARE(list, QStringList({u"1"_s, u"2"_s}));

    // A text of the same size, a shorter and a longer one, and a field with quotes to fold.
    const QString element = list[1];
    for (const QString &line : {u"x,y,z"_s, u"x,,z"_s, u"x,longer,z"_s, u"x,\"a\"\"b\"\"c\",z"_s}) {
        list[1] = element;
        m_runtime.splitRecord(list, line, csv);
        QCOMPARE(list, recordByRule(line, true));
        QCOMPARE(element, u"2"_s);
    }
    list[2] = element;
    m_runtime.splitRecord(list, u"x\ty\tz"_s, tsv);
    QCOMPARE(list, QStringList({u"x"_s, u"y"_s, u"z"_s}));
    QCOMPARE(element, u"2"_s);

    // A text over constant characters is not written into.
    static const QChar constant[] = {u'a', u'b', u'c'};
    list[0] = QString::fromRawData(constant, 3);
    m_runtime.splitRecord(list, u"xyz,b"_s, csv);
    QCOMPARE(list, QStringList({u"xyz"_s, u"b"_s}));
    QCOMPARE(QString(constant, 3), u"abc"_s);
}

void CsvRecordsTest::splitRecordKeepsRoom()
{
    QStringList list;
    m_runtime.splitRecord(list, u"a long first field,\"a \"\"long\"\" second field\",third"_s, csv);
    const QChar *const first = list[0].constData();
    const QChar *const second = list[1].constData();
    const QString *const elements = list.constData();
    for (const QString &line : {u"b,\"c\"\"d\",e"_s, u",,"_s, u"a field,second,third"_s, u"x,\"  \",z"_s}) {
        m_runtime.splitRecord(list, line, csv);
        QCOMPARE(list, recordByRule(line, true));
        QCOMPARE(list.constData(), elements);
        QCOMPARE(list[0].constData(), first);
        QCOMPARE(list[1].constData(), second);
    }
}

void CsvRecordsTest::splitRecordOfLongLines()
{
    QStringList list;
    m_runtime.splitRecord(list, QString(100000, u','), csv);
    QCOMPARE(list, QStringList(100001, u""_s));
    m_runtime.splitRecord(list, QString(100000, u'"'), csv);
    QCOMPARE(list, QStringList{QString(49999, u'"')});
    m_runtime.splitRecord(list, u'a' + QString(1000000, u' ') + u",b"_s, csv);
    QCOMPARE(list, QStringList({u"a"_s, u"b"_s}));
    m_runtime.splitRecord(list, QString(1000000, u'漢') + u"\tb"_s, tsv);
    QCOMPARE(list, QStringList({QString(1000000, u'漢'), u"b"_s}));
}

void CsvRecordsTest::csvField_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("withCommas");
    QTest::addColumn<QString>("withTabs");

    const auto same = [](const char *name, const QString &value) {
        QTest::newRow(name) << value << value << value;
    };
    same("null", QString());
    same("empty", u""_s);
    same("plain", u"abc"_s);
    same("blanks at the ends", u" x "_s);
    same("only a blank", u" "_s);
    same("ideographic spaces at the ends", u"\u3000x\u3000"_s);
    same("tab", u"a\tb"_s);
    same("tabs at the ends", u"\ta\t"_s);
    same("single quotes", u"'a'"_s);
    same("semicolon", u"a;b"_s);
    same("question mark", u"a?b"_s);
    same("full-width comma and quote", u"a，b＂"_s);
    same("typographic quotes", u"“a”"_s);
    same("kanji and kana", u"札幌市ｻｯﾎﾟﾛｼ"_s);
    same("NUL and control characters", u"\0a\x01\x1f\x7f"_s);
    same("other line separators", u"a\u2028b\u2029c\u0085d\v\fe"_s);
    same("pair", u"\U00020bb7"_s);
    same("lone surrogates", QChar(0xdfb7) + u"a"_s + QChar(0xd842));
    QTest::newRow("comma") << u"a,b"_s << u"\"a,b\""_s << u"a,b"_s;
    QTest::newRow("only a comma") << u","_s << u"\",\""_s << u","_s;
    QTest::newRow("quotes") << u"say \"hi\""_s << u"\"say \"\"hi\"\"\""_s << u"say \"hi\""_s;
    QTest::newRow("only a quote") << u"\""_s << u"\"\"\"\""_s << u"\""_s;
    QTest::newRow("two quotes") << u"\"\""_s << u"\"\"\"\"\"\""_s << u"\"\""_s;
    QTest::newRow("quote in the middle") << u"5\"x"_s << u"\"5\"\"x\""_s << u"5\"x"_s;
    QTest::newRow("comma and quote") << u"a,\"b"_s << u"\"a,\"\"b\""_s << u"a,\"b"_s;
    QTest::newRow("comma and blanks at the ends") << u" a,b "_s << u"\" a,b \""_s << u" a,b "_s;
    QTest::newRow("quoted already") << u"\"a,b\""_s << u"\"\"\"a,b\"\"\""_s << u"\"a,b\""_s;
    QTest::newRow("carriage return and line feed") << u"a\r\nb"_s << u"a??b"_s << u"a??b"_s;
    QTest::newRow("line feed") << u"a\nb"_s << u"a?b"_s << u"a?b"_s;
    QTest::newRow("carriage return") << u"a\rb"_s << u"a?b"_s << u"a?b"_s;
    QTest::newRow("line feed and carriage return") << u"\n\r"_s << u"??"_s << u"??"_s;
    QTest::newRow("line break does not quote") << u"\na\n"_s << u"?a?"_s << u"?a?"_s;
    QTest::newRow("line break and comma") << u"a,\nb"_s << u"\"a,?b\""_s << u"a,?b"_s;
    QTest::newRow("line break and quote") << u"\"\r\n"_s << u"\"\"\"??\""_s << u"\"??"_s;
    QTest::newRow("NUL and comma") << u"\0,\0"_s << u"\"\0,\0\""_s << u"\0,\0"_s;
    QTest::newRow("many quotes") << QString(10000, u'"') << QString(20002, u'"') << QString(10000, u'"');
}

void CsvRecordsTest::csvField()
{
    QFETCH(QString, value);
    QFETCH(QString, withCommas);
    QFETCH(QString, withTabs);

    CsvRecord record;
    QCOMPARE(record.separator, u""_s);
    for (const QString &kind : {u"CSV"_s, u"csv"_s, u"ACSV"_s, u"cſv"_s}) {
        record.separator = u"old"_s;
        QCOMPARE(m_runtime.csvField(record, value, kind), withCommas);
        QCOMPARE(record.separator, u","_s);
    }
    for (const QString &kind : {u"TSV"_s, u"CSV2"_s, u""_s, QString(), u","_s}) {
        record.separator = u"old"_s;
        QCOMPARE(m_runtime.csvField(record, value, kind), withTabs);
        QCOMPARE(record.separator, u"\t"_s);
    }
}

void CsvRecordsTest::csvFieldTakesItsOwnSeparator()
{
    CsvRecord record{u"a,b"_s};
    QCOMPARE(m_runtime.csvField(record, record.separator, csv), u"\"a,b\""_s);
    QCOMPARE(record.separator, u","_s);
    QCOMPARE(m_runtime.csvField(record, record.separator, tsv), u","_s);
    QCOMPARE(record.separator, u"\t"_s);
    record.separator = csv;
    QCOMPARE(m_runtime.csvField(record, u"a,b"_s, record.separator), u"\"a,b\""_s);
    QCOMPARE(record.separator, u","_s);
}

void CsvRecordsTest::csvFieldLeavesItsArguments()
{
    CsvRecord record;
    const QString value = u"a,\"b\"\r\n"_s, copy = QString(value.constData(), value.size());
    QString field = m_runtime.csvField(record, value, csv);
    field = m_runtime.csvField(record, value, tsv);
    field[0] = u'x';
    QCOMPARE(value, copy);

    const QString plain = u"abc"_s;
    field = m_runtime.csvField(record, plain, csv);
    field[0] = u'x';
    QCOMPARE(plain, u"abc"_s);
}

void CsvRecordsTest::csvFieldThereAndBack_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("fromCommas");
    QTest::addColumn<QString>("fromTabs");

    const auto same = [](const char *name, const QString &value) {
        QTest::newRow(name) << value << value << value;
    };
    same("empty", u""_s);
    same("plain", u"abc"_s);
    same("blank inside", u"a b"_s);
    same("comma", u"a,b"_s);
    same("only a comma", u","_s);
    same("one lone quote", u"\""_s);
    same("two quotes", u"\"\""_s);
    same("three quotes", u"\"\"\""_s);
    same("doubled quotes inside", u"x\"\"y"_s);
    same("odd quote and comma", u"a\",b"_s);
    same("quoted already", u"\"a,b\""_s);
    same(
        "control character in front",
        u"\x01"
        "a"_s
    );
    same("U+007F at the end", u"a\x7f"_s);
    same("zero-width space at the ends", u"\u200ba\u200b"_s);
    same("NUL inside", u"a\0b"_s);
    same("lone surrogates at the ends", QChar(0xdfb7) + u"a"_s + QChar(0xd842));

    // The exceptions that have no white space at their ends and no line break.
    QTest::newRow("control character at the end") << u"a\x01"_s << u"a"_s << u"a"_s;
    QTest::newRow("NUL at the end") << u"a\0"_s << u"a"_s << u"a"_s;
    QTest::newRow("U+001F at the end") << u"a\x1f"_s << u"a"_s << u"a"_s;
    QTest::newRow("control character at the end, quoted") << u"a,\x01"_s << u"a,"_s << u"a,"_s;
    QTest::newRow("only a control character") << u"\x01"_s << u""_s << u""_s;
    QTest::newRow("control characters and what they kept") << u"a \x01"_s << u"a"_s << u"a"_s;

    // What has white space at its ends: the quotes keep some of it.
    QTest::newRow("blanks at the ends") << u" a "_s << u"a"_s << u" a"_s;
    QTest::newRow("blanks at the ends, quoted") << u" a,b "_s << u" a,b"_s << u" a,b"_s;
    QTest::newRow("ideographic spaces at the ends") << u"\u3000a\u3000"_s << u"a"_s << u"\u3000a\u3000"_s;
    same("ideographic spaces at the ends, quoted", u"\u3000a,b\u3000"_s);
    QTest::newRow("only a blank") << u" "_s << u""_s << u""_s;
    QTest::newRow("only an ideographic space") << u"\u3000"_s << u""_s << u"\u3000"_s;
    QTest::newRow("line break") << u"a\r\nb"_s << u"a??b"_s << u"a??b"_s;
    QTest::newRow("line break at the end") << u"a\n"_s << u"a?"_s << u"a?"_s;
}

void CsvRecordsTest::csvFieldThereAndBack()
{
    QFETCH(QString, value);
    QFETCH(QString, fromCommas);
    QFETCH(QString, fromTabs);

    CsvRecord record;
    QStringList fields;
    m_runtime.splitRecord(fields, m_runtime.csvField(record, value, csv), csv);
    QCOMPARE(fields, QStringList{fromCommas});
    QCOMPARE(survives(value, true), fromCommas == value);
    m_runtime.splitRecord(fields, m_runtime.csvField(record, value, tsv), tsv);
    QCOMPARE(fields, QStringList{fromTabs});
    QCOMPARE(survives(value, false), fromTabs == value);
}

void CsvRecordsTest::csvFieldThereAndBackOfEveryShortText()
{
    const QString alphabet = u"a,\" \u3000\t\x01\n"_s;
    CsvRecord record;
    QStringList fields;
    for (int size = 0, count = 1; size <= 5; ++size, count *= int(alphabet.size())) {
        for (int code = 0; code < count; ++code) {
            const QString value = fromCode(code, size, alphabet);
            for (const bool commas : {true, false}) {
                const QString &kind = commas ? csv : tsv;
                const QString field = m_runtime.csvField(record, value, kind);
                // Between two neighbours: with commas none can spill over, with tabs only a tab does.
                const QString line = u"x"_s + record.separator + field + record.separator + u"y"_s;
                m_runtime.splitRecord(fields, line, kind);
                QCOMPARE(fields.size(), commas ? 3 : 3 + value.count(u'\t'));
                QCOMPARE(fields.first(), u"x"_s);
                QCOMPARE(fields.last(), u"y"_s);
                if ((fields.size() == 3 && fields[1] == value) != survives(value, commas))
                    QFAIL(qPrintable(u"\"%1\" as \"%2\" gives \"%3\""_s.arg(value, field, fields[1])));
            }
        }
    }
}

void CsvRecordsTest::csvFieldThereAndBackInRandomRecords()
{
    const QString alphabet = u"abc,,\"\"\"  \u3000\u00a0\x01\0漢ｶﾞ?;'"_s;
    QRandomGenerator random(20240401);
    CsvRecord record;
    QStringList fields;
    int checked = 0;
    for (int i = 0; i < 5000; ++i) {
        const bool commas = random.bounded(2) == 0;
        const QString &kind = commas ? csv : tsv;
        QStringList values, written;
        for (int count = random.bounded(1, 20); count > 0;) {
            QString value;
            for (int size = random.bounded(20); size > 0; --size)
                value.append(QChar(
                    random.bounded(5) == 0 ? random.bounded(0x10000)
                                           : alphabet[random.bounded(int(alphabet.size()))].unicode()
                ));
            // Only what is named above does not come back.
            if (hasLineBreak(value) || value != value.trimmed() || trailsBlank(value)
                || (!commas && value.contains(u'\t')))
                continue;
            values.append(value);
            written.append(m_runtime.csvField(record, value, kind));
            --count;
            ++checked;
        }
        m_runtime.splitRecord(fields, written.join(record.separator), kind);
        QCOMPARE(fields, values);
    }
    QVERIFY(checked > 40000);
}

QTEST_GUILESS_MAIN(CsvRecordsTest)
#include "tst_csvrecords.moc"
