// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace appruntime_internal
{

/// What QString::toUpper() makes of the text, in a time that grows with its length.
QString upperCased(const QString &text);

/// What QString::toLower() makes of the text, in a time that grows with its length.
QString lowerCased(const QString &text);

} // namespace appruntime_internal
