// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>
#include <numeric>

namespace
{

// The places of a time stamp: 0 to 3 year, 4 and 5 month, 6 and 7 day, 8 and 9 hour, 10 and 11 minute, 12 and
// 13 second, 14 to 16 millisecond. Each digit is limited by itself: month 30 becomes 10, not 12, and hour 30
// becomes 20, not 23. Programs rely on it.
constexpr int dateLength = 8;
constexpr int stampLength = 17;
constexpr int lowestYear = 1753; // for moments always, for dates where the caller asks for it

/// Fills the places with the digits of the text. A character that is no ASCII digit, or missing, counts as 0.
template<int length> void takeDigits(QChar *places, const QString &text)
{
    const auto digitOf = [](QChar character) {
        return character >= u'0' && character <= u'9' ? character : QChar(u'0');
    };

    const QChar *characters = text.constData();
    if (text.size() >= length) { // nearly always; the fixed number of places halves the time
        for (int i = 0; i < length; ++i)
            places[i] = digitOf(characters[i]);
    } else {
        QChar *end = std::transform(characters, characters + text.size(), places, digitOf);
        std::fill(end, places + length, u'0');
    }
}

void limit(QChar &digit, char16_t highest)
{
    if (digit > highest)
        digit = highest;
}

bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int number(const QChar *digits, int count)
{
    return std::accumulate(digits, digits + count, 0, [](int value, QChar digit) {
        return 10 * value + (digit.unicode() - u'0');
    });
}

void clampDate(QChar *digits, bool raiseYear)
{
    QChar *year = digits, *month = digits + 4, *day = digits + 6;

    const int lowest = raiseYear ? lowestYear : 1;
    if (year[0] <= u'1' && number(year, 4) < lowest) { // no number is needed from year 2000 on
        for (int place = 3, rest = lowest; place >= 0; --place, rest /= 10)
            year[place] = QChar(u'0' + rest % 10);
    }

    limit(month[0], u'1');
    if (month[0] == u'1')
        limit(month[1], u'2');
    else if (month[1] == u'0')
        month[1] = u'1';

    if (day[0] == u'0') {
        if (day[1] == u'0')
            day[1] = u'1';
    } else if (month[0] == u'0' && month[1] == u'2') {
        if (day[0] >= u'3') {
            day[0] = u'2';
            day[1] = u'9';
        }
        if (day[0] == u'2' && day[1] == u'9' && !isLeapYear(number(year, 4)))
            day[1] = u'8';
    } else if (day[0] >= u'3') {
        const int of = number(month, 2);
        const bool isShort = of == 4 || of == 6 || of == 9 || of == 11;
        day[0] = u'3';
        limit(day[1], isShort ? u'0' : u'1');
    }
}

void clampTime(QChar *digits)
{
    constexpr QStringView highest = u"235959999";

    limit(digits[0], u'2');
    if (digits[0] == u'2')
        limit(digits[1], u'3');
    limit(digits[2], u'5');
    limit(digits[4], u'5');

    // The only moment that is not allowed, and programs rely on it: 23:59:59.998 stays.
    if (std::equal(highest.begin(), highest.end(), digits))
        digits[8] = u'8';
}

} // namespace

QString AppRuntime::normalizeDate(const QString &text, int minYearFlag) const
{
    QString date(dateLength, Qt::Uninitialized);
    QChar *digits = date.data();
    takeDigits<dateLength>(digits, text);
    clampDate(digits, minYearFlag == 1);
    return date;
}

QString AppRuntime::normalizeDateTime(const QString &text) const
{
    QString stamp(stampLength, Qt::Uninitialized);
    QChar *digits = stamp.data();
    takeDigits<stampLength>(digits, text);
    clampDate(digits, /*raiseYear=*/true);
    clampTime(digits + dateLength);
    return stamp;
}
