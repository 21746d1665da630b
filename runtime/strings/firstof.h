// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace appruntime_internal
{

/// Index of the first unit of the text at or after `from` that is one of the characters; the text's size when
/// there is none. `from` is at least 0 and at most the text's size.
qsizetype indexOfFirst(QStringView text, QStringView characters, qsizetype from);

} // namespace appruntime_internal
