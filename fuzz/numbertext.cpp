// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

/// A number as people write it, with zeros that say nothing.
QString someNumber(Fuzz::Input &input)
{
    QString number = input.flag() ? u"-"_s : QString();
    for (int count = input.between(0, 20); count > 0; --count)
        number += QString::number(input.between(0, 15) % 10);
    if (input.flag()) {
        number += u'.';
        for (int count = input.between(0, 8); count > 0; --count)
            number += QString::number(input.between(0, 15) % 10);
    }
    return number;
}

/// By characters taken away, for a pattern would refuse half a surrogate pair.
QString shortSlowly(const QString &text)
{
    const bool negative = text.startsWith(u'-');
    QString number = text;
    if (text.contains(u'.')) {
        while (number.size() > 1 && number.endsWith(u'0'))
            number.chop(1);
        if (number.size() > 1 && number.endsWith(u'.'))
            number.chop(1);
    }
    number.remove(0, negative ? 1 : 0);
    while (number.startsWith(u'0'))
        number.remove(0, 1);
    if (number.isEmpty())
        return u"0"_s;
    return (negative ? u"-"_s : QString()) + (number.startsWith(u'.') ? u"0"_s : QString()) + number;
}

void shortest(AppRuntime &runtime, const QString &number)
{
    const QString result = runtime.normaliseNumber(number);
    static const QRegularExpression form(u"\\A-?(0|[1-9][0-9]*)(\\.[0-9]*[1-9])?\\z"_s),
        zero(u"\\A\\.0*\\z"_s);
    if (!zero.match(number).hasMatch()) // a first point stays, and what is behind it goes
        Fuzz::require(form.match(result).hasMatch(), "no zero is left that says nothing");
    Fuzz::require(result != u"-0", "zero has no sign");

    const double value = runtime.validDouble(number, u'-', 0.0, /*report=*/0);
    if (runtime.convertOk)
        Fuzz::require(runtime.validDouble(result, u'-', -1.0, 0) == value, "the value stays");
}

QString groupedSlowly(const QString &text)
{
    qsizetype end = text.lastIndexOf(u'.');
    if (end < 0)
        end = text.size();
    const qsizetype sign = text.size() > 1 && text.startsWith(u'-') ? 1 : 0;
    QString result = text;
    for (qsizetype place = end - 3; place > sign; place -= 3)
        result.insert(place, u',');
    return result;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QString number = someNumber(input), text = input.text();
    shortest(runtime, number);
    for (const QString &each : {number, text})
        Fuzz::requireEqual(runtime.normaliseNumber(each), shortSlowly(each), "zeros go as from any text");

    QString grouped = runtime.groupThousands(number);
    Fuzz::requireEqual(grouped, groupedSlowly(number), "every three digits of the whole part have a comma");
    Fuzz::requireEqual(grouped.remove(u','), number, "no digit is lost");
    Fuzz::requireEqual(
        runtime.groupThousands(text).remove(u','), QString(text).remove(u','), "nor any other"
    );

    const int value = input.anyInt(), width = input.between(0, 40);
    const QString shown = QString::number(value);
    Fuzz::requireEqual(runtime.zeroPadded(value, width), shown.rightJustified(width, u'0'), "zeros fill up");
    return 0;
}
