// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A mode of an entry or display field: what a program stores for it, and what it shows.
struct InputMode {
    QString code{};  ///< One character, or empty: the mode of a field that names no code.
    QString label{}; ///< What the mode admits, for people to read: `[0-9A-Z]`, `Date(8)`, `BarCode39`.

    /// Equal when both texts are.
    friend bool operator==(const InputMode &, const InputMode &) = default;
};
