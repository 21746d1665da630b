// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/core/appruntime.h>

/// The text cut and filled up with blanks to exactly this many columns of a fixed-pitch display.
///
/// fitToWidth() fills up to code units instead, for fields that are stored: a frame round Japanese text would
/// not be straight with it.
[[nodiscard]] inline QString column(AppRuntime &runtime, const QString &text, int columns)
{
    const QString fitted = runtime.truncateToWidth(text, columns);
    return fitted + runtime.padRight(QString(), columns - runtime.displayWidth(fitted));
}
