// SPDX-License-Identifier: MIT
#pragma once

namespace appruntime_internal
{

constexpr char16_t firstHalfKana = 0xff66; // ｦ
constexpr char16_t lastHalfKana = 0xff9f;  // ﾟ, the second of the two sound marks behind the letters

/// Whether a code unit that is no surrogate takes one display column, not two: ASCII, and half-width
/// katakana.
///
/// Without branches and in 16 bits, so that a compiler makes vector code of the loops over whole texts.
constexpr bool isOneColumn(char16_t unit)
{
    return (unit < 0x80) | (static_cast<char16_t>(unit - firstHalfKana) <= lastHalfKana - firstHalfKana);
}

} // namespace appruntime_internal
