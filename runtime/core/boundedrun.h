// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

namespace appruntime_internal
{

/// Runs a program, waits until it has ended or its 30 seconds are over, when it is killed, and returns the
/// first line of its standard output, line feed included. Empty when it could not be started or printed
/// nothing.
///
/// Only the program itself is waited for, not what it started and left behind, even where that holds its
/// pipes. Whatever else it prints is dropped as it comes, and of a line without end the first megabyte is
/// kept, so that the memory taken does not grow with the output. No events are processed.
QByteArray firstOutputLineOf(const QString &program, const QStringList &arguments);

} // namespace appruntime_internal
