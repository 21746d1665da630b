// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>
#include <QTime>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
const QString full = u"20240131235959123"_s;

/// The rule step by step, a character at a time.
QString formattedByTheRule(const QString &value, int style, const QString &order, const QString &separator)
{
    const auto c = [&value](qsizetype i) {
        return i < value.size() ? QString(value.at(i)) : u" "_s;
    };
    const qsizetype n = value.size();
    const QString date = style == 0 ? u""_s : style == 1 ? separator : u"-"_s;
    const QString day = style == 0 ? u""_s : u" "_s;
    const QString time = style == 0 ? u""_s : u":"_s;
    const QString fraction = style == 0 ? u""_s : u"."_s;
    if (n <= 7)
        return value;
    const QString yyyy = c(0) + c(1) + c(2) + c(3), mm = c(4) + c(5), dd = c(6) + c(7);
    QString result;
    if (order == u"Y"_s || style == 2)
        result = yyyy + date + mm + date + dd;
    else if (order == u"M"_s)
        result = mm + date + dd + date + yyyy;
    else
        result = dd + date + mm + date + yyyy;
    if (n > 11)
        result += day + c(8) + c(9) + time + c(10) + c(11);
    if (n > 13)
        result += time + c(12) + c(13);
    if (n > 16)
        result += fraction + c(14) + c(15) + c(16);
    return result;
}

/// What the comparisons of the order leave where "old" stood.
QString messageByTheRule(qsizetype length, int style, const QString &order)
{
    if (length <= 7 || order == u"Y"_s)
        return u"old"_s;
    if (style == 2 || order == u"M"_s)
        return u"\""_s + order + u"\" not in('Y')"_s;
    return u"\""_s + order + u"\" not in('M')"_s;
}

} // namespace

class DateTimeDisplayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatDateTime_data();
    void formatDateTime();
    void formatDateTimeOfEveryLength();
    void formatDateTimeTakesItsFields();
    void formatDateTimeMovesWhatIsShort();
    void previousSecond_data();
    void previousSecond();
    void previousSecondOfEveryTime();
    void previousSecondOfEveryShortText();
};

void DateTimeDisplayTest::formatDateTime_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("order");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("message"); // "old" where it is left alone

    const auto row = [](const char *name,
                        const QString &value,
                        int style,
                        const QString &order,
                        const QString &separator,
                        const QString &expected,
                        const QString &message) {
        QTest::newRow(name) << value << style << order << separator << expected << message;
    };
    const QString old = u"old"_s, minus = u"-"_s, slash = u"/"_s, y = u"Y"_s, m = u"M"_s, d = u"D"_s;
    const QString mNotY = u"\"M\" not in('Y')"_s, dNotY = u"\"D\" not in('Y')"_s,
                  dNotM = u"\"D\" not in('M')"_s;

    row("date", u"20240131"_s, 1, y, minus, u"2024-01-31"_s, old);
    row("date, month first", u"20240131"_s, 1, m, slash, u"01/31/2024"_s, mNotY);
    row("date, day first", u"20240131"_s, 1, d, slash, u"31/01/2024"_s, dNotM);

    row("style 0", full, 0, y, minus, u"20240131235959123"_s, old);
    row("style 0, month first", full, 0, m, minus, u"01312024235959123"_s, mNotY);
    row("style 0, day first", full, 0, d, minus, u"31012024235959123"_s, dNotM);
    row("style 1", full, 1, y, slash, u"2024/01/31 23:59:59.123"_s, old);
    row("style 1, month first", full, 1, m, slash, u"01/31/2024 23:59:59.123"_s, mNotY);
    row("style 1, day first", full, 1, d, slash, u"31/01/2024 23:59:59.123"_s, dNotM);
    row("style 2", full, 2, y, slash, u"2024-01-31 23:59:59.123"_s, old);
    row("style 2 has no use for M", full, 2, m, slash, u"2024-01-31 23:59:59.123"_s, mNotY);
    row("style 2 compares no second time", full, 2, d, slash, u"2024-01-31 23:59:59.123"_s, dNotY);
    row("style 3", full, 3, y, slash, u"2024-01-31 23:59:59.123"_s, old);
    row("style 3, month first", full, 3, m, slash, u"01-31-2024 23:59:59.123"_s, mNotY);
    row("style 3, day first", full, 3, d, slash, u"31-01-2024 23:59:59.123"_s, dNotM);
    row("style -1, day first", full, -1, d, slash, u"31-01-2024 23:59:59.123"_s, dNotM);
    row("style -2, month first", full, -2, m, slash, u"01-31-2024 23:59:59.123"_s, mNotY);
    row("largest style", full, most, d, slash, u"31-01-2024 23:59:59.123"_s, dNotM);
    row("smallest style", full, least, d, slash, u"31-01-2024 23:59:59.123"_s, dNotM);
    row("style 256", full, 256, d, slash, u"31-01-2024 23:59:59.123"_s, dNotM);

    row("empty", u""_s, 1, d, minus, u""_s, old);
    row("null", QString(), 1, d, minus, u""_s, old);
    row("7 units, style 0", u"2024013"_s, 0, d, slash, u"2024013"_s, old);
    row("7 units, style 1", u"2024013"_s, 1, d, slash, u"2024013"_s, old);
    row("7 units, style 2", u"2024013"_s, 2, d, slash, u"2024013"_s, old);
    row("7 units, style 3", u"2024013"_s, 3, d, slash, u"2024013"_s, old);
    row("9 units", u"202401312"_s, 1, y, minus, u"2024-01-31"_s, old);
    row("11 units", u"20240131235"_s, 1, y, minus, u"2024-01-31"_s, old);
    row("12 units", u"202401312359"_s, 1, y, minus, u"2024-01-31 23:59"_s, old);
    row("13 units", u"2024013123595"_s, 1, y, minus, u"2024-01-31 23:59"_s, old);
    row("14 units", u"20240131235958"_s, 1, y, minus, u"2024-01-31 23:59:58"_s, old);
    row("16 units", u"2024013123595812"_s, 1, y, minus, u"2024-01-31 23:59:58"_s, old);
    row("17 units", u"20240131235958123"_s, 1, y, minus, u"2024-01-31 23:59:58.123"_s, old);
    row("18 units", u"202401312359581234"_s, 1, y, minus, u"2024-01-31 23:59:58.123"_s, old);
    row("18 units, style 0", u"202401312359581234"_s, 0, y, minus, u"20240131235958123"_s, old);
    row("13 units, style 0", u"2024013123595"_s, 0, y, minus, u"202401312359"_s, old);
    row("very long", full + QString(100'000, u'9'), 1, y, minus, u"2024-01-31 23:59:59.123"_s, old);

    row("empty separator", full, 1, d, u""_s, u"31012024 23:59:59.123"_s, dNotM);
    row("null separator", full, 1, y, QString(), u"20240131 23:59:59.123"_s, old);
    row("long separator", u"20240131"_s, 1, m, u" of the "_s, u"01 of the 31 of the 2024"_s, mNotY);
    row("per cent signs are plain", u"20240131"_s, 1, y, u"%1"_s, u"2024%101%131"_s, old);
    row("very long separator",
        u"20240131"_s,
        1,
        y,
        QString(10'000, u'/'),
        u"2024"_s + QString(10'000, u'/') + u"01"_s + QString(10'000, u'/') + u"31"_s,
        old);
    row("kanji separator", u"20240131"_s, 1, y, u"・"_s, u"2024・01・31"_s, old);
    row("lone surrogate as separator",
        u"20240131"_s,
        1,
        y,
        QString(QChar(0xd800)),
        u"2024"_s + QChar(0xd800) + u"01"_s + QChar(0xd800) + u"31"_s,
        old);

    row("small letter is day first", u"20240131"_s, 1, u"y"_s, minus, u"31-01-2024"_s, u"\"y\" not in('M')"_s
    );
    row("small m is day first", u"20240131"_s, 1, u"m"_s, minus, u"31-01-2024"_s, u"\"m\" not in('M')"_s);
    row("whole order is day first",
        u"20240131"_s,
        1,
        u"YMD"_s,
        minus,
        u"31-01-2024"_s,
        u"\"YMD\" not in('M')"_s);
    row("blanks count", u"20240131"_s, 1, u"Y "_s, minus, u"31-01-2024"_s, u"\"Y \" not in('M')"_s);
    row("empty order is day first", u"20240131"_s, 1, u""_s, minus, u"31-01-2024"_s, u"\"\" not in('M')"_s);
    row("null order is day first", u"20240131"_s, 1, QString(), minus, u"31-01-2024"_s, u"\"\" not in('M')"_s
    );
    row("empty order, style 2", u"20240131"_s, 2, u""_s, minus, u"2024-01-31"_s, u"\"\" not in('Y')"_s);

    row("no digits", u"abcdefghijklmnopq"_s, 1, d, slash, u"gh/ef/abcd ij:kl:mn.opq"_s, dNotM);
    row("blanks", u"        "_s, 1, y, minus, u"    -  -  "_s, old);
    row("separators inside", u"2024-01-31"_s, 1, y, minus, u"2024--0-1-"_s, old);
    row("full-width digits", u"２０２４０１３１"_s, 1, m, slash, u"０１/３１/２０２４"_s, mNotY);
    row("NUL inside",
        u"2024"_s + QChar(u'\0') + u"131"_s,
        1,
        y,
        minus,
        u"2024-"_s + QChar(u'\0') + u"1-31"_s,
        old);
    // Units, not characters: a pair that begins at the end of a part comes apart.
    row("surrogate pair across parts",
        u"202😀131"_s,
        0,
        d,
        minus,
        u"31"_s + QChar(0xde00) + u"1202"_s + QChar(0xd83d),
        dNotM);
    row("lone surrogate",
        u"2024013"_s + QChar(0xd800),
        1,
        d,
        slash,
        u"3"_s + QChar(0xd800) + u"/01/2024"_s,
        dNotM);
}

void DateTimeDisplayTest::formatDateTime()
{
    QFETCH(QString, value);
    QFETCH(int, style);
    QFETCH(QString, order);
    QFETCH(QString, separator);
    QFETCH(QString, expected);
    QFETCH(QString, message);

    AppRuntime runtime(u"TEST"_s);
    runtime.dateOrder = order;
    runtime.dateSeparator = separator;
    runtime.checkMessage = u"old"_s;
    runtime.lastError = u"error"_s;
    runtime.convertOk = true;
    QCOMPARE(runtime.formatDateTime(value, style), expected);
    QCOMPARE(runtime.checkMessage, message);
    QCOMPARE(runtime.lastError, u"error"_s);
    QVERIFY(runtime.convertOk);
    QCOMPARE(runtime.dateOrder, order);
    QCOMPARE(runtime.dateSeparator, separator);
    QCOMPARE(formattedByTheRule(value, style, order, separator), expected);
    QCOMPARE(messageByTheRule(value.size(), style, order), message);
}

void DateTimeDisplayTest::formatDateTimeOfEveryLength()
{
    AppRuntime runtime(u"TEST"_s);
    const QString longest = u"abcdefghijklmnopqrstu"_s;
    for (qsizetype length = 0; length <= longest.size(); ++length) {
        for (const int style : {least, -1, 0, 1, 2, 3, most}) {
            for (const QString &order : {u"Y"_s, u"M"_s, u"D"_s, u""_s, u"y"_s}) {
                for (const QString &separator : {u"-"_s, u""_s, u"<=>"_s}) {
                    const QString value = longest.first(length);
                    runtime.dateOrder = order;
                    runtime.dateSeparator = separator;
                    runtime.checkMessage = u"old"_s;
                    QCOMPARE(
                        runtime.formatDateTime(value, style),
                        formattedByTheRule(value, style, order, separator)
                    );
                    QCOMPARE(runtime.checkMessage, messageByTheRule(length, style, order));
                }
            }
        }
    }
}

void DateTimeDisplayTest::formatDateTimeTakesItsFields()
{
    AppRuntime runtime(u"TEST"_s);
    runtime.checkMessage = u"20240131"_s;
    runtime.dateOrder = u"D"_s;
    QCOMPARE(runtime.formatDateTime(runtime.checkMessage, 1), u"31-01-2024"_s);
    QCOMPARE(runtime.checkMessage, u"\"D\" not in('M')"_s);
    runtime.dateSeparator = u"20240131"_s;
    QCOMPARE(runtime.formatDateTime(runtime.dateSeparator, 1), u"31202401310120240131"_s + u"2024"_s);
    QCOMPARE(runtime.dateSeparator, u"20240131"_s);
}

// A text that is only handed through keeps its buffer.
void DateTimeDisplayTest::formatDateTimeMovesWhatIsShort()
{
    AppRuntime runtime(u"TEST"_s);
    QString value(7, u'1');
    const QChar *const buffer = value.constData();
    const QString result = runtime.formatDateTime(std::move(value), 1);
    QCOMPARE(result.constData(), buffer);
    QCOMPARE(result, u"1111111"_s);
}

void DateTimeDisplayTest::previousSecond_data()
{
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &time, const QString &expected) {
        QTest::newRow(name) << time << expected;
    };
    row("second", u"123456"_s, u"123455"_s);
    row("second 1", u"123401"_s, u"123400"_s);
    row("second 10", u"123410"_s, u"123409"_s);
    row("second 0", u"123400"_s, u"123359"_s);
    row("minute 1", u"120100"_s, u"120059"_s);
    row("minute 10", u"121000"_s, u"120959"_s);
    row("minute 0", u"120000"_s, u"115959"_s);
    row("hour 1", u"010000"_s, u"005959"_s);
    row("hour 10", u"100000"_s, u"095959"_s);
    row("hour 0 becomes the last of a day", u"000000"_s, u"235959"_s);
    row("last second", u"235959"_s, u"235958"_s);

    row("empty", u""_s, u"235959"_s);
    row("null", QString(), u"235959"_s);
    row("1 unit", u"1"_s, u"005959"_s);
    row("2 units", u"12"_s, u"115959"_s);
    row("3 units", u"125"_s, u"120459"_s);
    row("3 units, minute 0", u"120"_s, u"115959"_s);
    row("4 units", u"1200"_s, u"115959"_s);
    row("4 units with minutes", u"1234"_s, u"123359"_s);
    row("5 units", u"12345"_s, u"123404"_s);
    row("5 units, second 0", u"12340"_s, u"123359"_s);
    row("7 units", u"1234567"_s, u"123455"_s);
    row("7 units, minute back", u"1234009"_s, u"123359"_s);
    row("7 units, hour back", u"1200009"_s, u"115959"_s);
    row("17 units", u"20240131235959123"_s, u"202400"_s);
    row("very long", u"123456"_s + QString(100'000, u'9'), u"123455"_s);

    row("past the clock", u"999999"_s, u"999998"_s);
    row("second 60", u"126060"_s, u"126059"_s);
    row("minute past the clock", u"129900"_s, u"129859"_s);
    row("hour 24", u"240000"_s, u"235959"_s);
    row("hour past the clock", u"990000"_s, u"985959"_s);

    row("minus second counts as none", u"1234-1"_s, u"123359"_s);
    row("minus minute counts as none", u"12-100"_s, u"115959"_s);
    row("minus hour counts as none", u"-10000"_s, u"235959"_s);
    row("minus 0", u"12-0-0"_s, u"115959"_s);
    row("plus second", u"1234+5"_s, u"123404"_s);
    row("plus minute", u"12+500"_s, u"120459"_s);
    row("plus hour", u"+50000"_s, u"045959"_s);
    row("sign alone", u"12+-+-"_s, u"115959"_s);
    row("Unicode minus", u"1234−1"_s, u"123359"_s);

    row("blank before a second", u"1234 5"_s, u"123404"_s);
    row("blank behind a second", u"12345 "_s, u"123404"_s);
    row("blank before a minute", u"12 500"_s, u"120459"_s);
    row("blank before an hour", u" 50000"_s, u"045959"_s);
    row("tab before a second", u"1234\t5"_s, u"123404"_s);
    row("ideographic space is no blank here", u"1234\u30005"_s, u"123359"_s);
    row("blanks alone", u"      "_s, u"235959"_s);
    row("blanks for seconds", u"1234  "_s, u"123359"_s);

    row("letters for seconds", u"1234ab"_s, u"123359"_s);
    row("letters for minutes and seconds", u"12abcd"_s, u"115959"_s);
    row("letters", u"abcdef"_s, u"235959"_s);
    row("letters kept before a second", u"abcd05"_s, u"abcd04"_s);
    row("letters kept before a minute", u"ab0500"_s, u"ab0459"_s);
    row("digit and letter", u"12345x"_s, u"123359"_s);
    row("hexadecimal digits", u"12340A"_s, u"123359"_s);
    row("decimal point", u"12345."_s, u"123359"_s);
    row("separators", u"12:34:56"_s, u"115959"_s);
    row("full-width digits for seconds", u"1234５６"_s, u"123359"_s);
    row("full-width digits", u"１２３４５６"_s, u"235959"_s);
    row("full-width digits kept", u"１２３４56"_s, u"１２３４55"_s);
    row("surrogate pair for seconds", u"1234😀"_s, u"123359"_s);
    row("lone surrogate kept", u"12"_s + QChar(0xd800) + u"401"_s, u"12"_s + QChar(0xd800) + u"400"_s);
    row("NUL kept", u"12"_s + QChar(u'\0') + u"401"_s, u"12"_s + QChar(u'\0') + u"400"_s);
}

void DateTimeDisplayTest::previousSecond()
{
    QFETCH(QString, time);
    QFETCH(QString, expected);

    AppRuntime runtime(u"TEST"_s);
    runtime.checkMessage = u"old"_s;
    runtime.lastError = u"error"_s;
    runtime.convertOk = true;
    QCOMPARE(runtime.previousSecond(time), expected);
    QCOMPARE(runtime.checkMessage, u"old"_s);
    QCOMPARE(runtime.lastError, u"error"_s);
    QVERIFY(runtime.convertOk);
}

void DateTimeDisplayTest::previousSecondOfEveryTime()
{
    const AppRuntime runtime(u"TEST"_s);
    QTime time(23, 59, 59);
    for (int second = 0; second < 24 * 60 * 60; ++second) {
        const QString before = runtime.previousSecond(time.toString(u"HHmmss"_s));
        time = time.addSecs(-1);
        QCOMPARE(before, time.toString(u"HHmmss"_s));
    }
    QCOMPARE(time, QTime(23, 59, 59));
}

// All texts of the alphabet up to 6 characters, against the rule step by step.
void DateTimeDisplayTest::previousSecondOfEveryShortText()
{
    const AppRuntime runtime(u"TEST"_s);
    const auto twoDigits = [](int number) {
        return (number < 10 ? u"0"_s : u""_s) + QString::number(number);
    };
    QStringList texts = {u""_s};
    for (int length = 0; length <= 6; ++length) {
        QStringList longer;
        for (const QString &text : std::as_const(texts)) {
            const int ss = text.mid(4, 2).toInt(), mm = text.mid(2, 2).toInt(), hh = text.mid(0, 2).toInt();
            QString expected;
            if (ss >= 1)
                expected = text.mid(0, 4) + twoDigits(ss - 1);
            else if (mm >= 1)
                expected = text.mid(0, 2) + twoDigits(mm - 1) + u"59"_s;
            else
                expected = twoDigits(hh < 1 ? 23 : hh - 1) + u"59"_s + u"59"_s;
            if (runtime.previousSecond(text) != expected)
                QCOMPARE(text + u": "_s + runtime.previousSecond(text), text + u": "_s + expected);
            for (const QChar next : u"019-+ x"_s)
                longer += text + next;
        }
        texts = longer;
    }
}

QTEST_GUILESS_MAIN(DateTimeDisplayTest)
#include "tst_datetimedisplay.moc"
