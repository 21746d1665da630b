// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <chrono>

/// The time-out of a condition that comes true soon, except on a machine that has much else to do. Newer
/// versions of Qt Test want a duration there.
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
inline constexpr std::chrono::minutes longTry{2};
#else
inline constexpr int longTry = 120'000;
#endif
