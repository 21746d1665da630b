// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace appruntime_internal
{

#ifdef Q_OS_WIN
constexpr bool localIsUtf8 = false;

/// Puts `?` in the place of each first byte of a character of two that no second one follows: decoding would
/// take a line end or a comma for it. The bytes begin with a whole character. Returns how many at their end
/// are the beginning of one, 0 or 1.
qsizetype mendCodePage(char *bytes, qsizetype size);
#else
constexpr bool localIsUtf8 = true; // to Qt, whatever the locale says

inline qsizetype mendCodePage(char *, qsizetype)
{
    return 0;
}
#endif

} // namespace appruntime_internal
