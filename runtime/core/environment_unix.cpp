// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/systemname.h>
#include <runtime/strings/utf8.h>

using namespace appruntime_internal;

QString AppRuntime::environmentValue(const QString &variable) const
{
    if (!isSystemName(variable))
        return {};
    return QString::fromUtf8(qgetenv(utf8Of(variable).constData()));
}
