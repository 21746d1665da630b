// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

// Ten alternatives, or none, must not compile.
template<typename... Alternatives>
concept TextCheck = requires(AppRuntime &runtime, QString value, Alternatives... alternatives)
{
    {
        runtime.checkIn(value, alternatives...)
        } -> std::same_as<bool>;
};
template<typename... Alternatives>
concept CharCheck = requires(const AppRuntime &runtime, QChar value, Alternatives... alternatives)
{
    {
        runtime.charIn(value, alternatives...)
        } -> std::same_as<bool>;
};
template<typename... Alternatives>
concept NumberCheck = requires(const AppRuntime &runtime, qint32 value, Alternatives... alternatives)
{
    {
        runtime.intIn(value, alternatives...)
        } -> std::same_as<bool>;
};
using S = QString;
using C = QChar;
using I = qint32;
static_assert(!TextCheck<> && TextCheck<S> && TextCheck<S, S, S, S, S, S, S, S, S>);
static_assert(!TextCheck<S, S, S, S, S, S, S, S, S, S>);
static_assert(!TextCheck<I> && TextCheck<QLatin1StringView>);
static_assert(!CharCheck<> && CharCheck<C> && CharCheck<C, C, C, C, C, C, C, C, C>);
static_assert(!CharCheck<C, C, C, C, C, C, C, C, C, C>);
static_assert(!CharCheck<S> && CharCheck<char16_t>);
static_assert(!NumberCheck<> && NumberCheck<I> && NumberCheck<I, I, I, I, I, I, I, I, I>);
static_assert(!NumberCheck<I, I, I, I, I, I, I, I, I, I>);
static_assert(!NumberCheck<S>);

bool checkAll(AppRuntime &runtime, const QString &value, const QStringList &list)
{
    switch (list.size()) {
    case 1: return runtime.checkIn(value, list[0]);
    case 2: return runtime.checkIn(value, list[0], list[1]);
    case 3: return runtime.checkIn(value, list[0], list[1], list[2]);
    case 4: return runtime.checkIn(value, list[0], list[1], list[2], list[3]);
    case 5: return runtime.checkIn(value, list[0], list[1], list[2], list[3], list[4]);
    case 6: return runtime.checkIn(value, list[0], list[1], list[2], list[3], list[4], list[5]);
    case 7: return runtime.checkIn(value, list[0], list[1], list[2], list[3], list[4], list[5], list[6]);
    case 8:
        return runtime.checkIn(value, list[0], list[1], list[2], list[3], list[4], list[5], list[6], list[7]);
    default:
        return runtime.checkIn(
            value, list[0], list[1], list[2], list[3], list[4], list[5], list[6], list[7], list[8]
        );
    }
}

} // namespace

class ValueChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkIn_data();
    void checkIn();
    void checkInTakesItsOwnMessage();
    void checkInTakesOtherTexts();
    void checkInLeavesCopiesOfItsMessage();
    void checkInCopiesEveryLength();
    void charIn_data();
    void charIn();
    void intIn_data();
    void intIn();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void ValueChecksTest::checkIn_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("alternatives");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("message"); // "old" where the check leaves it alone

    const auto row =
        [](const char *name, const QString &value, const QStringList &alternatives, const QString &message) {
            QTest::newRow(name) << value << alternatives << (message == u"old") << message;
        };
    const QStringList nine = {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s, u"h"_s, u"i"_s};

    row("empty in empty", u""_s, {u""_s}, u"old"_s);
    row("null in empty", QString(), {u""_s}, u"old"_s);
    row("empty in null", u""_s, {QString()}, u"old"_s);
    row("null in null", QString(), {QString()}, u"old"_s);
    row("text in empty", u"abc"_s, {u""_s}, u"\"abc\" not in('')"_s);
    row("empty in text", u""_s, {u"abc"_s}, u"\"\" not in('abc')"_s);
    row("equal", u"abc"_s, {u"abc"_s}, u"old"_s);
    row("case counts", u"double"_s, {u"DOUBLE"_s, u"FLOAT"_s}, u"\"double\" not in('DOUBLE','FLOAT')"_s);
    row("leading blank counts", u" A"_s, {u"A"_s}, u"\" A\" not in('A')"_s);
    row("trailing blank counts", u"A "_s, {u"A"_s}, u"\"A \" not in('A')"_s);
    row("shorter is not equal", u"AB"_s, {u"ABC"_s}, u"\"AB\" not in('ABC')"_s);
    row("longer is not equal", u"ABC"_s, {u"AB"_s}, u"\"ABC\" not in('AB')"_s);
    row("no normalisation", u"\u00e9"_s, {u"e\u0301"_s}, u"\"\u00e9\" not in('e\u0301')"_s);
    row("kanji", u"漢字"_s, {u"漢字"_s}, u"old"_s);
    row("kana width counts", u"ｱ"_s, {u"ア"_s}, u"\"ｱ\" not in('ア')"_s);
    row("quotes are not escaped", u"a'\"b"_s, {u"'"_s, u"\""_s}, u"\"a'\"b\" not in(''','\"')"_s);
    row("lone surrogate found", QString(QChar(0xd800)), {QString(QChar(0xd800))}, u"old"_s);
    row("lone surrogate not found",
        QString(QChar(0xd800)),
        {QString(QChar(0xdc00))},
        u'"' + QString(QChar(0xd800)) + u"\" not in('"_s + QString(QChar(0xdc00)) + u"')"_s);
    row("NUL counts", u"a"_s, {QString(u"a\0"_s)}, u"\"a\" not in('a"_s + QChar(u'\0') + u"')"_s);
    row("per cent signs are plain", u"%1"_s, {u"%2"_s, u"%1%1"_s}, u"\"%1\" not in('%2','%1%1')"_s);
    row("one duplicate among two", u"b"_s, {u"a"_s, u"a"_s}, u"\"b\" not in('a','a')"_s);

    static const char *const hits[]
        = {"first of nine",
           "second of nine",
           "third of nine",
           "fourth of nine",
           "fifth of nine",
           "sixth of nine",
           "seventh of nine",
           "eighth of nine",
           "ninth of nine"};
    static const char *const misses[]
        = {"none of one",
           "none of two",
           "none of three",
           "none of four",
           "none of five",
           "none of six",
           "none of seven",
           "none of eight",
           "none of nine"};
    static const char *const lasts[]
        = {"only one",
           "last of two",
           "last of three",
           "last of four",
           "last of five",
           "last of six",
           "last of seven",
           "last of eight",
           "last of nine"};
    for (qsizetype i = 0; i < nine.size(); ++i) {
        row(hits[i], nine[i], nine, u"old"_s);
        row(lasts[i], nine[i], nine.first(i + 1), u"old"_s);
        row(misses[i],
            u"z"_s,
            nine.first(i + 1),
            u"\"z\" not in('"_s + nine.first(i + 1).join(u"','"_s) + u"')"_s);
    }
}

void ValueChecksTest::checkIn()
{
    QFETCH(QString, value);
    QFETCH(QStringList, alternatives);
    QFETCH(bool, found);
    QFETCH(QString, message);

    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
    QCOMPARE(checkAll(m_runtime, value, alternatives), found);
    QCOMPARE(m_runtime.checkMessage, message);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void ValueChecksTest::checkInTakesItsOwnMessage()
{
    m_runtime.checkMessage = u"old"_s;
    QVERIFY(!m_runtime.checkIn(m_runtime.checkMessage, u"x"_s));
    QCOMPARE(m_runtime.checkMessage, u"\"old\" not in('x')"_s);
    QVERIFY(!m_runtime.checkIn(u"x"_s, m_runtime.checkMessage));
    QCOMPARE(m_runtime.checkMessage, u"\"x\" not in('\"old\" not in('x')')"_s);
    QVERIFY(m_runtime.checkIn(m_runtime.checkMessage, m_runtime.checkMessage));

    // With room for the new words, they would be written over the old ones while these are being read.
    m_runtime.checkMessage = u"old"_s;
    m_runtime.checkMessage.reserve(1000);
    QVERIFY(!m_runtime.checkIn(u"x"_s, u"y"_s, m_runtime.checkMessage, u"z"_s));
    QCOMPARE(m_runtime.checkMessage, u"\"x\" not in('y','old','z')"_s);
    m_runtime.checkMessage = u"old"_s;
    m_runtime.checkMessage.reserve(1000);
    QVERIFY(!m_runtime.checkIn(m_runtime.checkMessage, u"x"_s));
    QCOMPARE(m_runtime.checkMessage, u"\"old\" not in('x')"_s);

    // A copy that somebody kept stays what it was.
    const QString kept = m_runtime.checkMessage;
    const QString copy = QString(kept.constData(), kept.size());
    QVERIFY(!m_runtime.checkIn(u"y"_s, u"x"_s));
    QCOMPARE(kept, copy);
}

void ValueChecksTest::checkInTakesOtherTexts()
{
    QVERIFY(m_runtime.checkIn(u"漢"_s, u"a"_s, QChar(0x6f22)));
    QVERIFY(m_runtime.checkIn(u"abc"_s, "abc"_L1));
    QVERIFY(!m_runtime.checkIn(u"abc"_s, "x"_L1, QChar(u'y'), u"z"_s));
    QCOMPARE(m_runtime.checkMessage, u"\"abc\" not in('x','y','z')"_s);
}

void ValueChecksTest::checkInLeavesCopiesOfItsMessage()
{
    QVERIFY(!m_runtime.checkIn(u"abc"_s, u"x"_s));
    const QString copy = m_runtime.checkMessage;
    QVERIFY(!m_runtime.checkIn(u"def"_s, u"y"_s)); // a message of the same length
    QCOMPARE(copy, u"\"abc\" not in('x')"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"def\" not in('y')"_s);
    QVERIFY(!m_runtime.checkIn(u"gh"_s, u"yz"_s));
    QCOMPARE(m_runtime.checkMessage, u"\"gh\" not in('yz')"_s);
}

void ValueChecksTest::checkInCopiesEveryLength()
{
    QString value;
    for (char16_t unit = 0x4e00; value.size() <= 130; ++unit) {
        const QString other = value + u'y';
        const QString message = u"\"%1\" not in('x','%2')"_s.arg(value, other);
        QVERIFY(!m_runtime.checkIn(value, u"x"_s, other));
        QCOMPARE(m_runtime.checkMessage, message);
        value += QChar(unit);
    }
}

void ValueChecksTest::charIn_data()
{
    QTest::addColumn<QChar>("value");
    QTest::addColumn<int>("position"); // of the value among the nine, -1 when it is none of them

    QTest::newRow("first") << QChar(u'a') << 0;
    QTest::newRow("fifth") << QChar(u'e') << 4;
    QTest::newRow("ninth") << QChar(u'i') << 8;
    QTest::newRow("none") << QChar(u'j') << -1;
    QTest::newRow("case counts") << QChar(u'A') << -1;
    QTest::newRow("full width counts") << QChar(u'ａ') << -1;
    QTest::newRow("NUL") << QChar(u'\0') << -1;
    QTest::newRow("same low byte") << QChar(0x6161) << -1;
}

void ValueChecksTest::charIn()
{
    QFETCH(QChar, value);
    QFETCH(int, position);

    m_runtime.checkMessage = u"old"_s;
    const QChar a = u'a', b = u'b', c = u'c', d = u'd', e = u'e', f = u'f', g = u'g', h = u'h', i = u'i';
    const bool found[] = {
        m_runtime.charIn(value, a),
        m_runtime.charIn(value, a, b),
        m_runtime.charIn(value, a, b, c),
        m_runtime.charIn(value, a, b, c, d),
        m_runtime.charIn(value, a, b, c, d, e),
        m_runtime.charIn(value, a, b, c, d, e, f),
        m_runtime.charIn(value, a, b, c, d, e, f, g),
        m_runtime.charIn(value, a, b, c, d, e, f, g, h),
        m_runtime.charIn(value, a, b, c, d, e, f, g, h, i),
    };
    for (int last = 0; last < 9; ++last)
        QCOMPARE(found[last], position >= 0 && position <= last);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
}

void ValueChecksTest::intIn_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("position");

    QTest::newRow("first") << 0 << 0;
    QTest::newRow("negative") << -1 << 1;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << 2;
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << 3;
    QTest::newRow("ninth") << 9 << 8;
    QTest::newRow("none") << 1 << -1;
    QTest::newRow("same low bits") << 0x10009 << -1;
}

void ValueChecksTest::intIn()
{
    QFETCH(int, value);
    QFETCH(int, position);

    m_runtime.checkMessage = u"old"_s;
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    const bool found[] = {
        m_runtime.intIn(value, 0),
        m_runtime.intIn(value, 0, -1),
        m_runtime.intIn(value, 0, -1, most),
        m_runtime.intIn(value, 0, -1, most, least),
        m_runtime.intIn(value, 0, -1, most, least, 5),
        m_runtime.intIn(value, 0, -1, most, least, 5, 6),
        m_runtime.intIn(value, 0, -1, most, least, 5, 6, 7),
        m_runtime.intIn(value, 0, -1, most, least, 5, 6, 7, 8),
        m_runtime.intIn(value, 0, -1, most, least, 5, 6, 7, 8, 9),
    };
    for (int last = 0; last < 9; ++last)
        QCOMPARE(found[last], position >= 0 && position <= last);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
}

QTEST_GUILESS_MAIN(ValueChecksTest)
#include "tst_valuechecks.moc"
