// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace appruntime_internal
{

/// Whether the text can name a file, a program or a variable at all: it is not empty and holds no NUL.
///
/// To be asked before the system sees the name: the toolkit would complain about any other on standard error,
/// or what stands before a NUL would be taken for the name.
inline bool isSystemName(QStringView text)
{
    return !text.isEmpty() && !text.contains(u'\0');
}

} // namespace appruntime_internal
