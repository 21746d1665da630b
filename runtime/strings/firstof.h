// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace appruntime_internal
{

/// Index of the first of the characters at or after `from`, which is none or more and at most the text's
/// size. That size when there is none.
qsizetype indexOfFirst(QStringView text, QStringView characters, qsizetype from);

} // namespace appruntime_internal
