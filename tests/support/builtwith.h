// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>

/// What a test program was linked with; the test itself is compiled once for both platforms.
namespace BuiltWith
{

/// The platform that the library was compiled for.
QChar platformChar();

/// Whether that is 'W'.
bool windowsRules();

/// The first line that its launcher prints.
QByteArray banner();

/// Path of the launcher built on the same library.
QString launcher();

/// Path of the helper program of that name.
QString helper(const QString &name);

/// Folder with programs that stand in for commands of the system.
QString fakes();

} // namespace BuiltWith
