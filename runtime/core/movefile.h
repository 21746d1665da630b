// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace appruntime_internal
{

/// Gives a file or directory another name. Never replaces what has that name, be it a link to nothing.
///
/// A file may go to another file system: it is copied, the copy is checked and is on the disk, and only then
/// the source is removed. Where anything fails the source is as it was and there is no copy.
[[nodiscard]] bool moveFile(const QString &from, const QString &to);

} // namespace appruntime_internal
