// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace appruntime_internal
{

/// The text as UTF-8, with `?` for a surrogate that is not one of a pair. Newer versions of Qt leave such a
/// surrogate out, so that a text could change without a trace.
[[nodiscard]] QByteArray utf8Of(const QString &text);

} // namespace appruntime_internal
