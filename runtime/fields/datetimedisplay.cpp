// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>

using namespace Qt::StringLiterals;

QString AppRuntime::formatDateTime(QString value, int style)
{
    constexpr qsizetype dateUnits = 8, minuteUnits = 12, secondUnits = 14, fractionUnits = 17;
    constexpr int plainStyle = 0, setStyle = 1, interchangeStyle = 2;
    if (value.size() < dateUnits)
        return value;

    // Style 2 needs no order, but programs read what the comparisons leave in checkMessage.
    const bool yearFirst = checkIn(dateOrder, u"Y"_s) || style == interchangeStyle;
    const bool monthFirst = !yearFirst && checkIn(dateOrder, u"M"_s);
    const QStringView dateJoint = style == plainStyle ? QStringView()
        : style == setStyle                           ? QStringView(dateSeparator)
                                                      : QStringView(u"-");

    QString result(fractionUnits + 2 * dateJoint.size() + 4, Qt::Uninitialized);
    QChar *out = result.data();
    const auto append = [&out, in = value.cbegin()](int position, int units) {
        out = std::copy_n(in + position, units, out);
    };
    const auto join = [&out, style](char16_t joint) {
        if (style != plainStyle)
            *out++ = joint;
    };
    const auto joinDate = [&out, dateJoint] {
        out = std::copy(dateJoint.begin(), dateJoint.end(), out);
    };
    if (yearFirst) {
        append(0, 4);
        joinDate();
    }
    append(yearFirst || monthFirst ? 4 : 6, 2);
    joinDate();
    append(yearFirst || monthFirst ? 6 : 4, 2);
    if (!yearFirst) {
        joinDate();
        append(0, 4);
    }
    if (value.size() >= minuteUnits) {
        join(u' ');
        append(8, 2);
        join(u':');
        append(10, 2);
    }
    if (value.size() >= secondUnits) {
        join(u':');
        append(12, 2);
    }
    if (value.size() >= fractionUnits) {
        join(u'.');
        append(14, 3);
    }
    result.truncate(out - result.constData());
    return result;
}

QString AppRuntime::previousSecond(const QString &time) const
{
    // The part of the text before the change is copied, digits or not.
    if (const int second = toInt(time.mid(4, 2)); second >= 1)
        return time.first(4) + zeroPadded(second - 1, 2);
    if (const int minute = toInt(time.mid(2, 2)); minute >= 1)
        return time.first(2) + zeroPadded(minute - 1, 2) + u"59"_s;
    const int hour = toInt(time.left(2));
    return zeroPadded(hour >= 1 ? hour - 1 : 23, 2) + u"5959"_s;
}
