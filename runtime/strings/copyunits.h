// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <algorithm>

namespace appruntime_internal
{

/// Copies the text to `to` and returns what is behind the copy. The two may not overlap.
///
/// Most texts are so short that calling memcpy() takes longer than copying.
inline QChar *copyUnits(QStringView text, QChar *to)
{
    constexpr qsizetype atOnce = 8, half = atOnce / 2, many = 64;
    const QChar *const from = text.data();
    const qsizetype count = text.size();
    QChar *const end = to + count;
    if (count < half) {
        for (qsizetype i = 0; i < count; ++i)
            to[i] = from[i];
    } else if (count < atOnce) {
        std::copy_n(from, half, to);
        std::copy_n(from + count - half, half, end - half); // overlaps what is copied already
    } else if (count > many) {
        std::copy_n(from, count, to);
    } else {
        for (qsizetype i = 0; i < count - atOnce; i += atOnce)
            std::copy_n(from + i, atOnce, to + i);
        std::copy_n(from + count - atOnce, atOnce, end - atOnce);
    }
    return end;
}

} // namespace appruntime_internal
