// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

QString AppRuntime::environmentValue(const QString &variable) const
{
    return QString::fromUtf8(qgetenv(variable.toUtf8().constData()));
}
