// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace appruntime_internal
{

/// Writes the bytes to the standard output behind all that the program has printed through `stdout`. Waits
/// where there is no room for the moment; gives up in silence where the output is closed, full or not read.
void writeConsole(const QByteArray &bytes);

/// Reads one byte of the standard input and no more; false at its end.
bool readConsole(char &byte);

} // namespace appruntime_internal
