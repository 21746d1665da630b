// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// What is left of a text that has been through the local 8-bit encoding, as a program's arguments have.
QString throughLocal8Bit(const QString &text);

/// The bytes of output lines as a program of this system hands them on: Windows ends a line with CR LF.
QByteArray consoleBytes(QByteArray lines);

/// The bytes of the line in which the launcher, started with these words, repeats them.
QByteArray wordsLine(const QStringList &words);

/// Whether the local 8-bit encoding is Windows' Shift-JIS, whose bytes the tests know by heart.
bool localIsShiftJis();
