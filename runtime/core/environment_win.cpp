// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/systemname.h>

#include <cstdlib>

using namespace appruntime_internal;

QString AppRuntime::environmentValue(const QString &variable) const
{
    if (!isSystemName(variable))
        return {};
    // Wide, so that every value arrives whole: the narrow environment holds what the code page can carry.
    return QString::fromWCharArray(_wgetenv(qUtf16Printable(variable)));
}
