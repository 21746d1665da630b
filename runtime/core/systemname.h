// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace appruntime_internal
{

/// Whether the text can name a file, a program or a variable at all: it is not empty and holds no NUL.
///
/// Ask before the system sees the name. Qt prints a warning about any other on standard error, or takes what
/// stands before a NUL for the name.
inline bool isSystemName(QStringView text)
{
    return !text.isEmpty() && !text.contains(u'\0');
}

} // namespace appruntime_internal
