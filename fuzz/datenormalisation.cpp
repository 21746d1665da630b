// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <QDate>
#include <QTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The digit at a place, or 0.
int digit(const QString &text, qsizetype place)
{
    if (place >= text.size() || text[place] < u'0' || text[place] > u'9')
        return 0;
    return text[place].unicode() - u'0';
}

int digits(const QString &text, qsizetype place, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i)
        value = value * 10 + digit(text, place + i);
    return value;
}

/// The date that a text stands for, from the numbers in it.
QDate readSlowly(const QString &text, int lowestYear)
{
    const int year = std::max(digits(text, 0, 4), lowestYear);
    const int month = std::max(std::min(digit(text, 4), 1) * 10 + digit(text, 5), 1);
    const QDate first(year, std::min(month, 12), 1);

    int day = std::max(digits(text, 6, 2), 1);
    if (day == 30 || (day > 30 && day % 10 == 0))
        day = 30; // a tens digit too large, and a units digit that no month minds
    return first.addDays(std::min(day, first.daysInMonth()) - 1);
}

bool areDigits(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit >= u'0' && unit <= u'9'; });
}

void dates(const AppRuntime &runtime, const QString &text, int minYearFlag)
{
    const QString date = runtime.normalizeDate(text, minYearFlag);
    Fuzz::require(date.size() == 8 && areDigits(date), "a date has eight digits");
    const QDate expected = readSlowly(text, minYearFlag == 1 ? 1753 : 1);
    Fuzz::requireEqual(date, expected.toString(u"yyyyMMdd"_s), "any text becomes the nearest date");
    Fuzz::requireEqual(runtime.normalizeDate(date, minYearFlag), date, "a date stays");
}

void moments(const AppRuntime &runtime, const QString &text)
{
    const QString moment = runtime.normalizeDateTime(text);
    Fuzz::require(moment.size() == 17 && areDigits(moment), "a moment has seventeen digits");
    Fuzz::requireEqual(moment.first(8), runtime.normalizeDate(text, 1), "its date is that of the text");

    const int hour = std::min(digit(text, 8), 2) * 10 + digit(text, 9);
    const int minute = std::min(digit(text, 10), 5) * 10 + digit(text, 11);
    const int second = std::min(digit(text, 12), 5) * 10 + digit(text, 13);
    QTime time(std::min(hour, 23), minute, second, digits(text, 14, 3));
    Fuzz::require(time.isValid(), "any text becomes a time");
    time = std::min(time, QTime(23, 59, 59, 998));
    Fuzz::requireEqual(moment.sliced(8), time.toString(u"HHmmsszzz"_s), "the nearest one there is");
    Fuzz::requireEqual(runtime.normalizeDateTime(moment), moment, "a moment stays");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const int minYearFlag = input.between(0, 2);
    const QString text = input.text();
    dates(runtime, text, minYearFlag);
    moments(runtime, text);

    // Few texts of a run are all digits; these are.
    QString number;
    while (number.size() < 18)
        number += QString::number(input.byte() % 10);
    dates(runtime, number, minYearFlag);
    moments(runtime, number);
    return 0;
}
