// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/copyunits.h>

using namespace appruntime_internal;

QString AppRuntime::groupThousands(const QString &numberText) const
{
    constexpr qsizetype groupSize = 3;
    if (numberText.size() <= groupSize)
        return numberText;

    // The last point ends the whole part. The first point that is not in front ends the grouping. A text with
    // several points is no number, but programs rely on its result too.
    const QChar *const begin = numberText.cbegin(), *const end = numberText.cend();
    const QChar *lastPoint = *begin == u'.' ? begin : end, *groupedEnd = end;
    bool hasMinusInside = false;
    for (const QChar *next = end - 1; next != begin; --next) {
        if (*next > u'.') // as a digit is
            continue;
        if (*next == u'.') {
            lastPoint = groupedEnd == end ? next : lastPoint;
            groupedEnd = next;
        }
        hasMinusInside = hasMinusInside || *next == u'-';
    }
    const qsizetype wholeSize = lastPoint - begin - (*begin == u'-' ? 1 : 0);
    if (wholeSize <= groupSize)
        return numberText;

    // Enough for a whole part of digits. With a minus sign in the middle less is needed.
    QString result(numberText.size() + (wholeSize - 1) / groupSize, Qt::Uninitialized);
    QChar *out = result.data();
    const QStringView whole = numberText;
    // Where that many digits behind the position end. A minus sign in the middle counts as none.
    const auto behind = [&](qsizetype position, qsizetype digits) {
        if (!hasMinusInside)
            return position + digits;
        for (; digits != 0 && position < whole.size(); ++position)
            digits -= whole[position] != u'-' ? 1 : 0;
        return position;
    };
    qsizetype next = 0, groupEnd = behind(*begin == u'-' ? 1 : 0, (wholeSize - 1) % groupSize + 1);
    while (groupEnd < groupedEnd - begin) { // no comma after the last digit, and none behind the point
        out = copyUnits(whole.sliced(next, groupEnd - next), out);
        *out++ = u',';
        next = groupEnd;
        groupEnd = behind(groupEnd, groupSize);
    }
    out = copyUnits(whole.sliced(next), out);
    if (out != result.cend())
        result.truncate(out - result.cbegin());
    return result;
}
