// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// What is left of a text after the local 8-bit encoding, which a program's arguments go through.
QString throughLocal8Bit(const QString &text);

/// The bytes of output lines as a program writes them on this system: Windows ends a line with CR LF.
QByteArray consoleBytes(QByteArray lines);

/// The bytes of the line in which the launcher repeats the arguments it was started with.
QByteArray wordsLine(const QStringList &words);

/// Whether the local 8-bit encoding is the Shift-JIS of Windows, whose bytes stand in the tests.
bool localIsShiftJis();
