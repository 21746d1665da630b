// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

QString AppRuntime::groupThousands(const QString &numberText) const
{
    constexpr qsizetype groupSize = 3;
    if (numberText.size() <= groupSize)
        return numberText;

    // The last point ends the whole part. The first point that is not in front ends the grouping. A text with
    // several points is no number, but programs rely on its result too.
    const QChar *const begin = numberText.cbegin(), *const end = numberText.cend();
    const QChar *lastPoint = *begin == u'.' ? begin : end, *groupedEnd = end;
    for (const QChar *next = end - 1; next != begin; --next) {
        if (*next == u'.') {
            lastPoint = groupedEnd == end ? next : lastPoint;
            groupedEnd = next;
        }
    }
    const qsizetype wholeSize = lastPoint - begin - (*begin == u'-' ? 1 : 0);
    if (wholeSize <= groupSize)
        return numberText;

    // Enough for a whole part of digits. A minus sign in the middle is not counted, and less is needed.
    QString result(numberText.size() + (wholeSize - 1) / groupSize, Qt::Uninitialized);
    QChar *out = result.data();
    qsizetype countdown = (wholeSize - 1) % groupSize + 1;
    for (const QChar *next = begin; next != end; ++next) {
        *out++ = *next;
        if (next + 1 == groupedEnd) {
            countdown = 0; // never reaches 0 again: no comma after the last digit, and none behind the point
        } else if (*next != u'-' && --countdown == 0) {
            *out++ = u',';
            countdown = groupSize;
        }
    }
    if (out != result.cend())
        result.truncate(out - result.cbegin());
    return result;
}
