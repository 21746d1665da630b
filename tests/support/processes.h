// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The most memory that a living process has had in use so far; 0 where the system does not tell.
qint64 peakKilobytes(qint64 pid);

/// How many descriptors this process has open; 0 where the system does not tell.
int openDescriptors();

/// Whether the process runs. One that has ended does not, even where nobody has asked for its exit code yet.
bool isRunning(qint64 pid);

/// Ends a process that a test left behind.
void killProcess(qint64 pid);

/// The process number that a helper wrote into a file; 0 where there is none yet.
qint64 notedProcess(const QString &fileName);
