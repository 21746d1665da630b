// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace appruntime_internal
{

// Blanks and control characters are all that is at or below U+0020. White space of any other kind stays: the
// ideographic space is a character of a Japanese text.

/// The text without the blanks and control characters that lead it.
inline QStringView withoutLeadingBlanks(QStringView text)
{
    while (!text.isEmpty() && text.front() <= u' ')
        text = text.sliced(1);
    return text;
}

/// The text without the blanks and control characters that trail it.
inline QStringView withoutTrailingBlanks(QStringView text)
{
    while (!text.isEmpty() && text.back() <= u' ')
        text.chop(1);
    return text;
}

} // namespace appruntime_internal
