// SPDX-License-Identifier: MIT
#pragma once

namespace appruntime_internal
{

/// Whether a code unit that is no surrogate takes one display column, not two: ASCII, and half-width
/// katakana.
///
/// Written without branches, in 16 bits, for the sake of the loops over whole texts: a compiler makes vector
/// code of it.
constexpr bool isOneColumn(char16_t unit)
{
    constexpr char16_t firstKana = u'\uff66', lastKana = u'\uff9f';
    return (unit < 0x80) | (static_cast<char16_t>(unit - firstKana) <= lastKana - firstKana);
}

} // namespace appruntime_internal
