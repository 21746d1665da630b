// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// The most memory that a living process has had in use so far; 0 where the system does not tell.
qint64 peakKilobytes(qint64 pid);

/// How many descriptors this process has open; 0 where the system does not tell.
int openDescriptors();
