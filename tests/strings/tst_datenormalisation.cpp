// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QCalendar>
#include <QDate>
#include <QRandomGenerator>
#include <QTest>
#include <QTime>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

QString twoDigits(int number)
{
    return u"%1"_s.arg(number, 2, 10, QChar(u'0'));
}

QString fourDigits(int number)
{
    return u"%1"_s.arg(number, 4, 10, QChar(u'0'));
}

/// The month that a pair of digits becomes, as a table of the hundred pairs would have it.
int expectedMonth(int pair)
{
    if (pair == 0)
        return 1;
    if (pair <= 12)
        return pair;
    if (pair <= 19)
        return 12;
    return 10 + std::min(pair % 10, 2);
}

/// The day that a pair of digits becomes; the length of the month is the calendar's.
int expectedDay(int pair, int year, int month)
{
    const int last = QCalendar(QCalendar::System::Gregorian).daysInMonth(month, year);
    if (pair == 0)
        return 1;
    if (pair < 30)
        return std::min(pair, last);
    return pair % 10 == 0 ? std::min(30, last) : last;
}

/// A text of any code units, most of them digits.
QString randomText(QRandomGenerator &random, int length)
{
    QString text;
    for (int i = 0; i < length; ++i) {
        const quint32 kind = random.bounded(8U);
        const quint32 unit = kind == 0 ? random.bounded(0x10000U) : u'0' + random.bounded(10U);
        text.append(QChar(static_cast<char16_t>(unit)));
    }
    return text;
}

} // namespace

class DateNormalisationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void normalizeDate_data();
    void normalizeDate();
    void normalizeDateClampsEveryPair_data();
    void normalizeDateClampsEveryPair();
    void normalizeDateClampsEveryYear_data();
    void normalizeDateClampsEveryYear();
    void normalizeDateCountsOnlyAsciiDigits();
    void normalizeDateTime_data();
    void normalizeDateTime();
    void normalizeDateTimeClampsEveryPair();
    void normalizeDateTimeGivesMoments();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void DateNormalisationTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"check"_s;
    m_runtime.convertOk = true;
}

void DateNormalisationTest::cleanup() const
{
    // No row of any kind reports anything.
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"check"_s);
    QVERIFY(m_runtime.convertOk);
}

void DateNormalisationTest::normalizeDate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("minYearFlag");
    QTest::addColumn<QString>("date");

    const auto row = [](const char *name, const QString &text, int minYearFlag, const QString &date) {
        QTest::newRow(name) << text << minYearFlag << date;
    };

    row("empty", u""_s, 0, u"00010101"_s);
    row("empty, lowest year", u""_s, 1, u"17530101"_s);
    row("null", QString(), 0, u"00010101"_s);
    row("null, lowest year", QString(), 1, u"17530101"_s);
    row("one digit", u"2"_s, 0, u"20000101"_s);
    row("year alone", u"2024"_s, 0, u"20240101"_s);
    row("tens of the month alone", u"20241"_s, 0, u"20241001"_s);
    row("month alone", u"202412"_s, 0, u"20241201"_s);
    row("tens of the day alone", u"2024122"_s, 0, u"20241220"_s);
    row("valid", u"20240105"_s, 0, u"20240105"_s);
    row("ninth character is ignored", u"202401059"_s, 0, u"20240105"_s);
    row("time behind is ignored", u"20240105235959999"_s, 0, u"20240105"_s);
    row("all zeros", u"00000000"_s, 0, u"00010101"_s);
    row("all nines", u"99999999"_s, 0, u"99991231"_s);

    row("separators hold places", u"2024/12/31"_s, 0, u"20240120"_s);
    row("short year with separators", u"24-01-05"_s, 0, u"24001005"_s);
    row("leading blank holds a place", u" 20240105"_s, 0, u"02021010"_s);
    row("minus sign holds a place", u"-0240105"_s, 0, u"00240105"_s);
    row("letters", u"ABCDEFGH"_s, 0, u"00010101"_s);
    row("full-width digits", u"２０２４０１０５"_s, 0, u"00010101"_s);
    row("Arabic digits", u"٢٠٢٤٠١٠٥"_s, 0, u"00010101"_s);
    row("superscript digit", u"²0240105"_s, 0, u"00240105"_s);
    row("slash is below the digits", u"202/0105"_s, 0, u"20200105"_s);
    row("colon is above the digits", u"202:0105"_s, 0, u"20200105"_s);
    row("digit with a high byte", QString(u"2024010"_s + QChar(0x0135)), 0, u"20240101"_s);
    row("NUL holds a place", QString(u"2024"_s + QChar(u'\0') + u"105"_s), 0, u"20240105"_s);
    row("NUL does not end the text", QString(QChar(u'\0') + u"0240105"_s), 0, u"00240105"_s);
    row("lone high surrogate", QString(u"2024010"_s + QChar(0xd835)), 0, u"20240101"_s);
    row("lone low surrogate", QString(QChar(0xdfd0) + u"0240105"_s), 0, u"00240105"_s);
    row("mathematical digits are two units each", u"\U0001d7d02401"_s, 0, u"00240101"_s);

    row("year 0", u"00000615"_s, 0, u"00010615"_s);
    row("year 1", u"00010615"_s, 0, u"00010615"_s);
    row("year 10", u"00100615"_s, 0, u"00100615"_s);
    row("year 0, lowest year", u"00000615"_s, 1, u"17530615"_s);
    row("year 1, lowest year", u"00010615"_s, 1, u"17530615"_s);
    row("year 1700 kept", u"17000101"_s, 0, u"17000101"_s);
    row("year 1700 raised", u"17000101"_s, 1, u"17530101"_s);
    row("year 1752 raised", u"17521231"_s, 1, u"17531231"_s);
    row("year 1752 kept", u"17521231"_s, 0, u"17521231"_s);
    row("year 1753", u"17530101"_s, 1, u"17530101"_s);
    row("year 1754", u"17540101"_s, 1, u"17540101"_s);
    row("flag 2 is no flag", u"17000101"_s, 2, u"17000101"_s);
    row("flag -1 is no flag", u"17000101"_s, -1, u"17000101"_s);
    row("largest flag is no flag", u"17000101"_s, std::numeric_limits<int>::max(), u"17000101"_s);
    row("smallest flag is no flag", u"17000101"_s, std::numeric_limits<int>::min(), u"17000101"_s);
    row("flag with the same low byte", u"17000101"_s, 0x101, u"17000101"_s);
    row("leap day of a raised year", u"17520229"_s, 1, u"17530228"_s);
    row("leap day of the year 0", u"00000229"_s, 0, u"00010228"_s);
    row("leap day of the year 4", u"00040229"_s, 0, u"00040229"_s);

    row("month 00", u"20240015"_s, 0, u"20240115"_s);
    row("month 09", u"20240915"_s, 0, u"20240915"_s);
    row("month 10", u"20241015"_s, 0, u"20241015"_s);
    row("month 12", u"20241215"_s, 0, u"20241215"_s);
    row("month 13", u"20241315"_s, 0, u"20241215"_s);
    row("month 19", u"20241915"_s, 0, u"20241215"_s);
    row("month 20", u"20242015"_s, 0, u"20241015"_s);
    row("month 21", u"20242115"_s, 0, u"20241115"_s);
    row("month 22", u"20242215"_s, 0, u"20241215"_s);
    row("month 23", u"20242315"_s, 0, u"20241215"_s);
    row("month 30", u"20243015"_s, 0, u"20241015"_s);
    row("month 31", u"20243115"_s, 0, u"20241115"_s);
    row("month 33", u"20243315"_s, 0, u"20241215"_s);
    row("month 90", u"20249015"_s, 0, u"20241015"_s);
    row("month and day too high", u"20241341"_s, 0, u"20241231"_s);

    row("day 00", u"20240400"_s, 0, u"20240401"_s);
    row("day 00 in February", u"20240200"_s, 0, u"20240201"_s);
    row("day 29 of a short month", u"20240429"_s, 0, u"20240429"_s);
    row("day 30 of a short month", u"20240430"_s, 0, u"20240430"_s);
    row("day 31 of a short month", u"20240431"_s, 0, u"20240430"_s);
    row("day 35 of a short month", u"20240635"_s, 0, u"20240630"_s);
    row("day 35 of a long month", u"20240535"_s, 0, u"20240531"_s);
    row("day 40 of a long month", u"20240740"_s, 0, u"20240730"_s);
    row("day 41 of a long month", u"20240741"_s, 0, u"20240731"_s);
    row("day 39 in January", u"20240139"_s, 0, u"20240131"_s);
    row("day 31 in September", u"20240931"_s, 0, u"20240930"_s);
    row("day 31 in October", u"20241031"_s, 0, u"20241031"_s);
    row("day 31 in November", u"20241131"_s, 0, u"20241130"_s);
    row("day 31 in December", u"20241231"_s, 0, u"20241231"_s);
    row("day of a clamped month", u"20242131"_s, 0, u"20241130"_s);
    row("day of a month made from nothing", u"2024  31"_s, 0, u"20240131"_s);

    row("February 28", u"20230228"_s, 0, u"20230228"_s);
    row("February 29", u"20230229"_s, 0, u"20230228"_s);
    row("February 30", u"20230230"_s, 0, u"20230228"_s);
    row("February 99", u"20230299"_s, 0, u"20230228"_s);
    row("leap February 28", u"20240228"_s, 0, u"20240228"_s);
    row("leap February 29", u"20240229"_s, 0, u"20240229"_s);
    row("leap February 30", u"20240230"_s, 0, u"20240229"_s);
    row("leap February 31", u"20240231"_s, 0, u"20240229"_s);
    row("February 19", u"20230219"_s, 0, u"20230219"_s);
    row("February 09", u"20230209"_s, 0, u"20230209"_s);
    row("century is no leap year", u"19000229"_s, 0, u"19000228"_s);
    row("fourth century is a leap year", u"20000229"_s, 0, u"20000229"_s);
    row("January 29 outside leap years", u"20230129"_s, 0, u"20230129"_s);
    row("December 29 outside leap years", u"20231229"_s, 0, u"20231229"_s);

    row("very long", u"20240105"_s + QString(1000000, u'9'), 0, u"20240105"_s);
}

void DateNormalisationTest::normalizeDate()
{
    QFETCH(QString, text);
    QFETCH(int, minYearFlag);
    QFETCH(QString, date);

    QCOMPARE(m_runtime.normalizeDate(text, minYearFlag), date);
    QCOMPARE(m_runtime.normalizeDate(date, minYearFlag), date);
    // The NUL behind the last place stays, for whoever hands the text on to the system.
    QCOMPARE(*m_runtime.normalizeDate(date, minYearFlag).constEnd(), QChar(u'\0'));
    QVERIFY(QDate::fromString(date, u"yyyyMMdd"_s).isValid());
}

void DateNormalisationTest::normalizeDateClampsEveryPair_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("minYearFlag");
    QTest::addColumn<int>("yearOut");

    QTest::newRow("leap year") << 2024 << 0 << 2024;
    QTest::newRow("leap year, lowest year") << 2024 << 1 << 2024;
    QTest::newRow("leap year below the lowest") << 1752 << 0 << 1752;
    QTest::newRow("leap year below the lowest, raised") << 1752 << 1 << 1753;
    QTest::newRow("common year") << 2023 << 0 << 2023;
    QTest::newRow("common year, lowest year") << 2023 << 1 << 2023;
    QTest::newRow("common year below the lowest") << 1501 << 0 << 1501;
    QTest::newRow("common year below the lowest, raised") << 1501 << 1 << 1753;
    QTest::newRow("century") << 1900 << 0 << 1900;
    QTest::newRow("century, lowest year") << 1900 << 1 << 1900;
    QTest::newRow("century below the lowest") << 1700 << 0 << 1700;
    QTest::newRow("century below the lowest, raised") << 1700 << 1 << 1753;
    QTest::newRow("fourth century") << 2000 << 0 << 2000;
    QTest::newRow("fourth century, lowest year") << 2000 << 1 << 2000;
    QTest::newRow("fourth century below the lowest") << 1600 << 0 << 1600;
    QTest::newRow("fourth century below the lowest, raised") << 1600 << 1 << 1753;
    QTest::newRow("no year") << 0 << 0 << 1;
    QTest::newRow("no year, raised") << 0 << 1 << 1753;
}

void DateNormalisationTest::normalizeDateClampsEveryPair()
{
    QFETCH(int, year);
    QFETCH(int, minYearFlag);
    QFETCH(int, yearOut);

    for (int monthPair = 0; monthPair < 100; ++monthPair) {
        const int month = expectedMonth(monthPair);
        for (int dayPair = 0; dayPair < 100; ++dayPair) {
            const int day = expectedDay(dayPair, yearOut, month);
            QCOMPARE(
                m_runtime.normalizeDate(
                    fourDigits(year) + twoDigits(monthPair) + twoDigits(dayPair), minYearFlag
                ),
                QString(fourDigits(yearOut) + twoDigits(month) + twoDigits(day))
            );
        }
    }
}

void DateNormalisationTest::normalizeDateClampsEveryYear_data()
{
    QTest::addColumn<int>("minYearFlag");
    QTest::addColumn<int>("lowest");

    QTest::newRow("from year 1") << 0 << 1;
    QTest::newRow("from year 1753") << 1 << 1753;
}

void DateNormalisationTest::normalizeDateClampsEveryYear()
{
    QFETCH(int, minYearFlag);
    QFETCH(int, lowest);

    for (int year = 0; year < 10000; ++year) {
        const int yearOut = std::max(year, lowest);
        const QString lastOfFebruary = QDate::isLeapYear(yearOut) ? u"0229"_s : u"0228"_s;
        QCOMPARE(
            m_runtime.normalizeDate(fourDigits(year) + u"0229"_s, minYearFlag),
            QString(fourDigits(yearOut) + lastOfFebruary)
        );
    }
}

void DateNormalisationTest::normalizeDateCountsOnlyAsciiDigits()
{
    for (int unit = 0; unit < 0x10000; ++unit) {
        const QString text = u"999"_s + QChar(static_cast<char16_t>(unit)) + u"0101"_s;
        const QChar expected = unit >= u'0' && unit <= u'9' ? QChar(unit) : QChar(u'0');
        QCOMPARE(m_runtime.normalizeDate(text, 0), QString(u"999"_s + expected + u"0101"_s));
    }
}

void DateNormalisationTest::normalizeDateTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("moment");

    const auto row = [](const char *name, const QString &text, const QString &moment) {
        QTest::newRow(name) << text << moment;
    };
    // Behind a date that stays as it is.
    const auto timeRow = [&row](const char *name, const QString &time, const QString &result) {
        row(name, u"20240105"_s + time, u"20240105"_s + result);
    };

    row("empty", u""_s, u"17530101000000000"_s);
    row("null", QString(), u"17530101000000000"_s);
    row("date alone", u"20241231"_s, u"20241231000000000"_s);
    row("valid", u"20240102030405006"_s, u"20240102030405006"_s);
    row("eighteenth character is ignored", u"202401020304050069"_s, u"20240102030405006"_s);
    row("lowest year", u"17530101000000000"_s, u"17530101000000000"_s);
    row("below the lowest year", u"17521231235959998"_s, u"17531231235959998"_s);
    row("leap day below the lowest year", u"17520229120000000"_s, u"17530228120000000"_s);
    row("date is clamped", u"20249999000000000"_s, u"20241231000000000"_s);
    row("all nines", QString(17, u'9'), u"99991231235959998"_s);
    row("separators hold places", u"2024-01-02T03:04:05.006"_s, u"20240110020030040"_s);
    row("letters", QString(17, u'x'), u"17530101000000000"_s);
    row("full-width digits", QString(17, u'９'), u"17530101000000000"_s);
    row("lone surrogates", QString(17, QChar(0xd83d)), u"17530101000000000"_s);
    row("NUL characters", QString(17, QChar(u'\0')), u"17530101000000000"_s);
    row("very long", QString(1000000, u'1'), u"11111111111111111"_s.replace(0, 4, u"1753"_s));

    timeRow("one digit of the time", u"1"_s, u"100000000"_s);
    timeRow("two digits of the time", u"12"_s, u"120000000"_s);
    timeRow("one digit of the milliseconds", u"1234567"_s, u"123456700"_s);
    timeRow("missing last digit", u"12345678"_s, u"123456780"_s);
    timeRow("hour 19", u"190000000"_s, u"190000000"_s);
    timeRow("hour 20", u"200000000"_s, u"200000000"_s);
    timeRow("hour 23", u"230000000"_s, u"230000000"_s);
    timeRow("hour 24", u"240000000"_s, u"230000000"_s);
    timeRow("hour 29", u"290000000"_s, u"230000000"_s);
    timeRow("hour 30", u"300000000"_s, u"200000000"_s);
    timeRow("hour 33", u"330000000"_s, u"230000000"_s);
    timeRow("hour 34", u"340000000"_s, u"230000000"_s);
    timeRow("hour 91", u"910000000"_s, u"210000000"_s);
    timeRow("minute 59", u"005900000"_s, u"005900000"_s);
    timeRow("minute 60", u"006000000"_s, u"005000000"_s);
    timeRow("minute 75", u"007500000"_s, u"005500000"_s);
    timeRow("second 59", u"000059000"_s, u"000059000"_s);
    timeRow("second 60", u"000060000"_s, u"000050000"_s);
    timeRow("second 99", u"000099000"_s, u"000059000"_s);
    timeRow("milliseconds are free", u"000000999"_s, u"000000999"_s);
    timeRow("hour, minute and second together", u"297599123"_s, u"235559123"_s);

    timeRow("last but one moment", u"235959998"_s, u"235959998"_s);
    timeRow("last moment", u"235959999"_s, u"235959998"_s);
    timeRow("clamped to the last moment", u"399999999"_s, u"235959998"_s);
    timeRow("one hour before the last moment", u"225959999"_s, u"225959999"_s);
    timeRow("ten hours before the last moment", u"135959999"_s, u"135959999"_s);
    timeRow("ten minutes before the last moment", u"234959999"_s, u"234959999"_s);
    timeRow("one minute before the last moment", u"235859999"_s, u"235859999"_s);
    timeRow("ten seconds before the last moment", u"235949999"_s, u"235949999"_s);
    timeRow("one second before the last moment", u"235958999"_s, u"235958999"_s);
    timeRow("tenth of a second before the last moment", u"235959899"_s, u"235959899"_s);
    timeRow("hundredth of a second before the last moment", u"235959989"_s, u"235959989"_s);
}

void DateNormalisationTest::normalizeDateTime()
{
    QFETCH(QString, text);
    QFETCH(QString, moment);

    QCOMPARE(m_runtime.normalizeDateTime(text), moment);
    QCOMPARE(m_runtime.normalizeDateTime(moment), moment);
    QCOMPARE(*m_runtime.normalizeDateTime(moment).constEnd(), QChar(u'\0'));
}

void DateNormalisationTest::normalizeDateTimeClampsEveryPair()
{
    for (int pair = 0; pair < 100; ++pair) {
        const int hour = pair < 20 ? pair : 20 + std::min(pair % 10, 3);
        const int minute = pair < 60 ? pair : 50 + pair % 10;
        const QString in = twoDigits(pair);
        QCOMPARE(
            m_runtime.normalizeDateTime(u"20240105"_s + in + in + in + u"0"_s + in),
            QString(u"20240105"_s + twoDigits(hour) + twoDigits(minute) + twoDigits(minute) + u"0"_s + in)
        );
    }
}

void DateNormalisationTest::normalizeDateTimeGivesMoments()
{
    QRandomGenerator random(20240105);
    for (int round = 0; round < 20000; ++round) {
        const QString text = randomText(random, random.bounded(24));
        const QString moment = m_runtime.normalizeDateTime(text);
        QCOMPARE(moment.size(), 17);
        QCOMPARE(moment.first(8), m_runtime.normalizeDate(text, 1));
        const QDate date(moment.mid(0, 4).toInt(), moment.mid(4, 2).toInt(), moment.mid(6, 2).toInt());
        const QTime time(
            moment.mid(8, 2).toInt(),
            moment.mid(10, 2).toInt(),
            moment.mid(12, 2).toInt(),
            moment.mid(14, 3).toInt()
        );
        QVERIFY(date.isValid() && date.year() >= 1753);
        QVERIFY(time.isValid() && time <= QTime(23, 59, 59, 998));

        const QDate low = QDate::fromString(m_runtime.normalizeDate(text, 0), u"yyyyMMdd"_s);
        QVERIFY(low.isValid() && low.year() >= 1);
    }
}

QTEST_GUILESS_MAIN(DateNormalisationTest)
#include "tst_datenormalisation.moc"
