// SPDX-License-Identifier: MIT
#include "startup.h"

// Only the Windows plugin is linked in. Another one, which the user may have set for other programs, would be
// looked for in vain.
const Setting applicationSetting{"QT_QPA_PLATFORM", ""};

void prepareSystem() { }

// The console tells the target by itself, which shares it.
void passSignalsOn() { }

void endBySignal() { }
