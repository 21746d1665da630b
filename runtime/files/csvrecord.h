// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A line that a program writes field by field; AppRuntime::csvField() says what to join the fields with.
struct CsvRecord {
    QString separator{}; ///< Between the fields of the line: a comma or a tab; set by csvField().
};
