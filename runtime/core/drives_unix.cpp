// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

QString AppRuntime::logicalDrives() const
{
    return {};
}
