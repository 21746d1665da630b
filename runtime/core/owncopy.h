// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace appruntime_internal
{

/// A copy of a text that may be the runtime's own `checkMessage`, for a member that needs the text after it
/// has called checkIn(). Copying shares the characters.
inline QString ownCopy(const QString &text)
{
    return text;
}

} // namespace appruntime_internal
