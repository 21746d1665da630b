// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// Whether the text can name a file or a program at all: it is not empty and holds no NUL.
///
/// To be asked before the toolkit sees the name, which would complain about any other on standard error, and
/// in places take what stands before a NUL for the name.
inline bool isSystemName(QStringView text)
{
    return !text.isEmpty() && !text.contains(u'\0');
}
