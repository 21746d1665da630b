// SPDX-License-Identifier: MIT
#pragma once

/// Makes the system answer every call of this number with an error, in this process and all it becomes, for
/// good. Where `argument` is not negative, only the calls whose argument of that index is not 0.
///
/// For the time between fork() and exec(). False where the system cannot.
bool refuseCall(long number, int error, int argument = -1);
