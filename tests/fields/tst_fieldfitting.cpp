// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
const QString high = QChar(0xd83d), low = QChar(0xde00); // together one character

/// What a check against the empty text leaves where "old" stood.
QString messageFor(const QString &text)
{
    return text.isEmpty() ? u"old"_s : u"\""_s + text + u"\" not in('')"_s;
}

int columnsOf(QChar unit)
{
    if (unit >= QChar(0xdc00) && unit <= QChar(0xdfff))
        return 0;
    if (unit >= QChar(0xff66) && unit <= QChar(0xff9f))
        return 1;
    return unit <= QChar(0x7f) ? 1 : 2;
}

/// The rule step by step.
QString truncatedByTheRule(const QString &text, int columns)
{
    if (columns < 0)
        return QString();
    qsizetype position = 0;
    qint64 width = 0;
    while (position < text.size()) {
        const qsizetype p = position;
        width += columnsOf(text.at(p));
        if (width > columns)
            return text.left(p);
        ++position;
        if (text.at(p).isHighSurrogate() && position < text.size() && text.at(position).isLowSurrogate())
            ++position;
    }
    return text;
}

QString normalisedByTheRule(const QString &text)
{
    if (text.isEmpty())
        return u"0"_s;
    QString sign;
    qsizetype start = 0;
    if (text.at(0) == u'-') {
        sign = u"-"_s;
        start = 1;
    }
    while (start < text.size() && text.at(start) == u'0')
        ++start;
    qsizetype end = text.size();
    if (text.contains(u'.') && text.size() >= 2) {
        for (qsizetype at = text.size() - 1; at >= 1; --at) {
            if (text.at(at) == u'0') {
                end = at;
            } else if (text.at(at) == u'.') {
                end = at;
                break;
            } else {
                break;
            }
        }
    }
    if (start >= end)
        return u"0"_s;
    return sign + (text.at(start) == u'.' ? u"0"_s : u""_s) + text.mid(start, end - start);
}

} // namespace

class FieldFittingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void truncateToWidth_data();
    void truncateToWidth();
    void truncateToWidthOfEveryUnit();
    void truncateToWidthOfRandomTexts();
    void truncateToWidthStaysWithOtherClasses();
    void fitToWidth_data();
    void fitToWidth();
    void nextCodeChar_data();
    void nextCodeChar();
    void nextCodeCharOfEveryUnit();
    void normaliseNumber_data();
    void normaliseNumber();
    void normaliseNumberOfEveryShortText();
    void truncateToWidthAndOthersTakeTheMessage();

private:
    void compareTheRest() const;

    AppRuntime m_runtime{u"TEST"_s};
};

void FieldFittingTest::init()
{
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void FieldFittingTest::compareTheRest() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void FieldFittingTest::truncateToWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &text, int columns, const QString &expected) {
        QTest::newRow(name) << text << columns << expected;
    };
    row("empty", u""_s, 3, u""_s);
    row("empty at no columns", u""_s, 0, u""_s);
    row("empty at negative columns", u""_s, -1, u""_s);
    row("null", QString(), 3, u""_s);
    row("no columns", u"abc"_s, 0, u""_s);
    row("negative columns", u"abc"_s, -1, u""_s);
    row("smallest columns", u"abc"_s, least, u""_s);
    row("largest columns", u"abc"_s, most, u"abc"_s);
    row("one column", u"abc"_s, 1, u"a"_s);
    row("one below", u"abc"_s, 2, u"ab"_s);
    row("exact", u"abc"_s, 3, u"abc"_s);
    row("one above", u"abc"_s, 4, u"abc"_s);
    row("blanks count", u"  a"_s, 2, u"  "_s);
    row("NUL takes a column", QString(u"a\0b"_s), 2, u"a"_s + QChar(u'\0'));
    row("control characters take a column", u"\t\n\u007f"_s, 2, u"\t\n"_s);

    row("half-width kana", u"ｱｲｳ"_s, 2, u"ｱｲ"_s);
    row("half-width mark takes a column", u"ｶﾞｷ"_s, 2, u"ｶﾞ"_s);
    row("half-width punctuation takes two", u"｡｢"_s, 3, u"｡"_s);
    row("wide, odd limit", u"アイウ"_s, 5, u"アイ"_s);
    row("wide, even limit", u"アイウ"_s, 4, u"アイ"_s);
    row("wide, exact", u"アイウ"_s, 6, u"アイウ"_s);
    row("wide at one column", u"アイウ"_s, 1, u""_s);
    row("wide behind narrow", u"aア"_s, 2, u"a"_s);
    row("narrow behind wide", u"アa"_s, 2, u"ア"_s);
    row("what overflows ends it", u"aアb"_s, 2, u"a"_s);
    row("Latin-1 takes two", u"ééé"_s, 5, u"éé"_s);
    row("U+007F and U+0080", u"\u007f\u0080"_s, 2, u"\u007f"_s);
    row("U+FF65 to U+FF66", u"\uff65\uff66\uff66"_s, 3, u"\uff65\uff66"_s);
    row("U+FF9F to U+FFA0", u"\uff9f\uffa0\uffff"_s, 3, u"\uff9f\uffa0"_s);
    row("combining mark takes two", u"e\u0301"_s, 2, u"e"_s);

    row("pair within", u"a😀b"_s, 4, u"a😀b"_s);
    row("pair at the limit", u"a😀b"_s, 3, u"a😀"_s);
    row("pair one past the limit", u"a😀b"_s, 2, u"a"_s);
    row("pair at one column", u"😀"_s, 1, u""_s);
    row("pair at two columns", u"😀"_s, 2, u"😀"_s);
    row("pairs, odd limit", u"😀😀😀"_s, 5, u"😀😀"_s);
    row("lone high at the limit", high + u"a"_s, 2, high);
    row("lone high one past the limit", u"a"_s + high, 2, u"a"_s);
    row("lone high takes no other unit", high + u"ab"_s, 3, high + u"a"_s);
    row("lone high at the end", u"a"_s + high, 3, u"a"_s + high);
    row("two highs and a low", high + high + low, 4, high + high + low);
    row("two highs and a low, cut", high + high + low, 3, high);
    row("lone low at no columns", low + u"a"_s, 0, low);
    row("lone low at negative columns", low + u"a"_s, -5, u""_s);
    row("lone low at the least columns", QString(low), least, u""_s);
    row("lone low behind the limit", u"ab"_s + low + u"c"_s, 2, u"ab"_s + low);
    row("lows take nothing", low + low + low, 0, low + low + low);
    row("pair and a low more", u"😀"_s + low + u"a"_s, 2, u"😀"_s + low);
    row("low before high", low + high, 1, low);
    row("first and last surrogates",
        QString(QChar(0xd800)) + QChar(0xdbff) + QChar(0xdc00) + QChar(0xdfff),
        4,
        QString(QChar(0xd800)) + QChar(0xdbff) + QChar(0xdc00) + QChar(0xdfff));
    row("units beside the surrogates", QString(QChar(0xd7ff)) + QChar(0xe000), 3, QString(QChar(0xd7ff)));

    row("long", QString(100'000, u'漢'), 100'001, QString(50'000, u'漢'));
    row("long, whole", QString(100'000, u'漢'), most, QString(100'000, u'漢'));
}

void FieldFittingTest::truncateToWidth()
{
    QFETCH(QString, text);
    QFETCH(int, columns);
    QFETCH(QString, expected);

    QCOMPARE(m_runtime.truncateToWidth(text, columns), expected);
    QCOMPARE(m_runtime.checkMessage, messageFor(text));
    compareTheRest();
    QCOMPARE(truncatedByTheRule(text, columns), expected);
}

void FieldFittingTest::truncateToWidthOfEveryUnit()
{
    for (int code = 0; code <= 0xffff; ++code) {
        const QString text = QChar(code);
        const int columns = columnsOf(QChar(code));
        if (columns > 0)
            QCOMPARE(m_runtime.truncateToWidth(text, columns - 1), u""_s);
        QCOMPARE(m_runtime.truncateToWidth(text, columns), text);
        QCOMPARE(m_runtime.truncateToWidth(text + u"a"_s, columns), text);
    }
}

void FieldFittingTest::truncateToWidthOfRandomTexts()
{
    const QString alphabet = u"aｱア漢 é"_s + high + low;
    QRandomGenerator random(20240131);
    for (int round = 0; round < 20'000; ++round) {
        QString text(random.bounded(12), Qt::Uninitialized);
        for (QChar &unit : text)
            unit = alphabet.at(random.bounded(int(alphabet.size())));
        const int columns = random.bounded(-2, 26);
        const QString cut = m_runtime.truncateToWidth(text, columns);
        QCOMPARE(cut, truncatedByTheRule(text, columns));
        QCOMPARE(m_runtime.truncateToWidth(cut, columns), cut);
        const QString fitted = m_runtime.fitToWidth(text, columns);
        QVERIFY(fitted.startsWith(cut));
        QCOMPARE(fitted.size(), qMax(cut.size(), qMax(columns, 0)));
        QCOMPARE(fitted.mid(cut.size()), QString(fitted.size() - cut.size(), u' '));
    }
}

// Two programs that share stored values must cut them alike, whatever classes they have set for themselves.
void FieldFittingTest::truncateToWidthStaysWithOtherClasses()
{
    AppRuntime runtime(u"TEST"_s);
    const QString text = u"aｱア"_s + high + low + low + u"b"_s; // 1, 1, 2, 2, 0 and 1 columns
    const auto compareWidths = [&runtime, &text] {
        const int units[] = {0, 1, 2, 2, 3, 3, 6, 7, 7};
        for (int columns = 0; columns < 9; ++columns) {
            QCOMPARE(runtime.truncateToWidth(text, columns), text.left(units[columns]));
            QCOMPARE(runtime.fitToWidth(text, columns).trimmed(), text.left(units[columns]));
        }
    };
    compareWidths();

    runtime.charClassNarrow = 20;
    runtime.charClassWide = 10;
    runtime.charClassHalfKana = -1;
    runtime.charClassHighSurrogate = 1;
    runtime.charClassLowSurrogate = 2;
    compareWidths();

    runtime.charClassNone = runtime.charClassNarrow = runtime.charClassWide = runtime.charClassHalfKana
        = runtime.charClassHighSurrogate = runtime.charClassLowSurrogate = 0;
    compareWidths();
}

void FieldFittingTest::fitToWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &text, int columns, const QString &expected) {
        QTest::newRow(name) << text << columns << expected;
    };
    row("empty", u""_s, 3, u"   "_s);
    row("empty at no columns", u""_s, 0, u""_s);
    row("null", QString(), 2, u"  "_s);
    row("padded", u"ab"_s, 4, u"ab  "_s);
    row("one below", u"abc"_s, 4, u"abc "_s);
    row("exact", u"abcd"_s, 4, u"abcd"_s);
    row("cut", u"abcdef"_s, 4, u"abcd"_s);
    row("no columns", u"ab"_s, 0, u""_s);
    row("negative columns", u"ab"_s, -1, u""_s);
    row("lone low at negative columns", low + u"a"_s, -1, u""_s);
    row("lone low at the least columns", QString(low), least, u""_s);
    row("lone low at no columns", low + u"a"_s, 0, low);
    row("smallest columns", u"ab"_s, least, u""_s);
    row("blanks at the end stay", u"a "_s, 3, u"a  "_s);
    row("half-width kana", u"ｱｲ"_s, 3, u"ｱｲ "_s);
    row("wide, padded by characters", u"アイ"_s, 6, u"アイ    "_s);
    row("wide, exact", u"アイ"_s, 4, u"アイ  "_s);
    row("wide, cut at an even limit", u"アイウ"_s, 4, u"アイ  "_s);
    row("wide, cut at an odd limit", u"アイウ"_s, 5, u"アイ   "_s);
    row("wide at one column", u"ア"_s, 1, u" "_s);
    row("pair counts two characters", u"😀"_s, 3, u"😀 "_s);
    row("pair at the limit", u"a😀"_s, 3, u"a😀"_s);
    row("pair one past the limit", u"a😀"_s, 2, u"a "_s);
    row("lone high", high, 2, high + u" "_s);
    row("lone low at no columns", low, 0, low);
    row("lone lows beyond the columns", low + low + low, 2, low + low + low);
    row("long", QString(100'000, u'a'), 100'001, QString(100'000, u'a') + u" "_s);
}

void FieldFittingTest::fitToWidth()
{
    QFETCH(QString, text);
    QFETCH(int, columns);
    QFETCH(QString, expected);

    QCOMPARE(m_runtime.fitToWidth(text, columns), expected);
    QCOMPARE(m_runtime.checkMessage, messageFor(text));
    compareTheRest();
}

void FieldFittingTest::nextCodeChar_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &text, const QString &expected) {
        QTest::newRow(name) << text << expected;
    };
    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);
    row("first digit", u"0"_s, u"1"_s);
    row("last digit but one", u"8"_s, u"9"_s);
    row("last digit", u"9"_s, u"0"_s);
    row("first capital", u"A"_s, u"B"_s);
    row("last capital but one", u"Y"_s, u"Z"_s);
    row("last capital", u"Z"_s, u"A"_s);
    row("first small letter", u"a"_s, u"b"_s);
    row("last small letter but one", u"y"_s, u"z"_s);
    row("last small letter", u"z"_s, u"a"_s);
    row("before and behind the digits", u"/"_s, u"/"_s);
    row("behind the digits", u":"_s, u":"_s);
    row("before the capitals", u"@"_s, u"@"_s);
    row("behind the capitals", u"["_s, u"["_s);
    row("before the small letters", u"`"_s, u"`"_s);
    row("behind the small letters", u"{"_s, u"{"_s);
    row("minus", u"-"_s, u"-"_s);
    row("blank", u" "_s, u" "_s);
    row("rest is ignored", u"Az"_s, u"B"_s);
    row("no carry", u"99"_s, u"0"_s);
    row("rest of another character", u"-1"_s, u"-"_s);
    row("full-width digit", u"１"_s, u"１"_s);
    row("full-width letter", u"Ａ"_s, u"Ａ"_s);
    row("letter beyond ASCII", u"é"_s, u"é"_s);
    row("kana", u"ｱ"_s, u"ｱ"_s);
    row("NUL", QString(u"\0A"_s), QString(QChar(u'\0')));
    row("pair gives its first half", u"😀"_s, high);
    row("lone low", low + u"1"_s, low);
    row("U+FFFF", QString(QChar(0xffff)), QString(QChar(0xffff)));
}

void FieldFittingTest::nextCodeChar()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);

    QCOMPARE(m_runtime.nextCodeChar(text), expected);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    compareTheRest();
}

// Each row of codes is a ring; everything else stays.
void FieldFittingTest::nextCodeCharOfEveryUnit()
{
    const QStringList rings
        = {u"0123456789"_s, u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s, u"abcdefghijklmnopqrstuvwxyz"_s};
    for (int code = 0; code <= 0xffff; ++code) {
        const QString text = QChar(code);
        QString expected = text;
        for (const QString &ring : rings) {
            if (ring.contains(text))
                expected = ring.at((ring.indexOf(text) + 1) % ring.size());
        }
        QCOMPARE(m_runtime.nextCodeChar(text), expected);
    }
}

void FieldFittingTest::normaliseNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *text, const QString &expected) {
        QTest::addRow("\"%s\"", text) << QString::fromUtf8(text) << expected;
    };
    row("", u"0"_s);
    row("0", u"0"_s);
    row("000", u"0"_s);
    row("-", u"0"_s);
    row("-0", u"0"_s);
    row("-000", u"0"_s);
    row("0.0", u"0"_s);
    row("-0.0", u"0"_s);
    row("0.", u"0"_s);
    row("00.00", u"0"_s);
    row("-.", u"0"_s);
    row("-.0", u"0"_s);
    row("-.00", u"0"_s);
    row("--", u"--"_s);
    row("007.500", u"7.5"_s);
    row("-007.500", u"-7.5"_s);
    row("-.5", u"-0.5"_s);
    row(".5", u"0.5"_s);
    row("000.5", u"0.5"_s);
    row("-000.5", u"-0.5"_s);
    row("10.0", u"10"_s);
    row("10.", u"10"_s);
    row("1.", u"1"_s);
    row("1.0", u"1"_s);
    row("1.00", u"1"_s);
    row("1.01", u"1.01"_s);
    row("1.10", u"1.1"_s);
    row("100", u"100"_s);
    row("-100", u"-100"_s);
    row("0100", u"100"_s);
    row("100.00", u"100"_s);
    row("0.001", u"0.001"_s);
    row("9", u"9"_s);
    // The first character is never taken from the end.
    row(".", u"0."_s);
    row(".0", u"0."_s);
    row(".00", u"0."_s);
    row("..", u"0."_s);
    row("..0", u"0."_s);
    // No number, but changed as one.
    row("1.2.30", u"1.2.3"_s);
    row("1..", u"1."_s);
    row("1.0.0", u"1.0"_s);
    row(".100", u"0.1"_s);
    row("1.50x0", u"1.50x"_s);
    row("abc", u"abc"_s);
    row("0abc0", u"abc0"_s);
    row("0abc.0", u"abc"_s);
    row("--05", u"--05"_s);
    row("-0-0", u"--0"_s);
    row("+0.50", u"+0.5"_s);
    row("+05", u"+05"_s);
    row(" 0.50", u" 0.5"_s);
    row("0.50 ", u"0.50 "_s);
    row("0 5", u" 5"_s);
    row(" ", u" "_s);
    row("1e-10.0", u"1e-10"_s);
    row("1,000.00", u"1,000"_s);
    row("０1.0０", u"０1.0０"_s);
    row("0漢.0", u"漢"_s);
    row("−0", u"−0"_s);
    QTest::newRow("null") << QString() << u"0"_s;
    QTest::newRow("lone surrogates") << u"0"_s + low + u".0"_s + high << low + u".0"_s + high;
    QTest::newRow("NUL") << QString(u"0\0.0"_s) << QString(QChar(u'\0'));
    QTest::newRow("long") << u"-"_s + QString(100'000, u'0') + u"1."_s + QString(100'000, u'0') << u"-1"_s;
    QTest::newRow("long, whole") << QString(100'000, u'1') << QString(100'000, u'1');
    QTest::newRow("all zeros and long") << QString(100'000, u'0') << u"0"_s;
}

void FieldFittingTest::normaliseNumber()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);

    QCOMPARE(m_runtime.normaliseNumber(text), expected);
    QCOMPARE(m_runtime.checkMessage, messageFor(text));
    compareTheRest();
}

// All texts of the alphabet up to 7 characters.
void FieldFittingTest::normaliseNumberOfEveryShortText()
{
    QStringList texts = {u""_s};
    for (int length = 0; length <= 7; ++length) {
        QStringList longer;
        for (const QString &text : std::as_const(texts)) {
            const QString shortest = m_runtime.normaliseNumber(text);
            if (shortest != normalisedByTheRule(text))
                QCOMPARE(text + u": "_s + shortest, text + u": "_s + normalisedByTheRule(text));
            for (const QChar next : u"01-."_s)
                longer += text + next;
        }
        texts = longer;
    }
}

void FieldFittingTest::truncateToWidthAndOthersTakeTheMessage()
{
    m_runtime.checkMessage = u"0123"_s;
    QCOMPARE(m_runtime.truncateToWidth(m_runtime.checkMessage, 2), u"01"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"0123\" not in('')"_s);
    m_runtime.checkMessage = u"0123"_s;
    QCOMPARE(m_runtime.truncateToWidth(m_runtime.checkMessage, 9), u"0123"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"0123\" not in('')"_s);
    m_runtime.checkMessage = u"0123"_s;
    QCOMPARE(m_runtime.fitToWidth(m_runtime.checkMessage, 5), u"0123 "_s);
    QCOMPARE(m_runtime.checkMessage, u"\"0123\" not in('')"_s);
    m_runtime.checkMessage = u"0123"_s;
    QCOMPARE(m_runtime.normaliseNumber(m_runtime.checkMessage), u"123"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"0123\" not in('')"_s);
}

QTEST_GUILESS_MAIN(FieldFittingTest)
#include "tst_fieldfitting.moc"
