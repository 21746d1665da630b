// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

bool AppRuntime::isExplicitPath(const QString &path) const
{
    if (path.size() > 1 && path[1] == u':')
        return true;
    const QString here = u'.' + pathSeparator;
    const QString above = u'.' + here;
    return path.startsWith(pathSeparator) || path.startsWith(here) || path.startsWith(above);
}

QString AppRuntime::resolvePath(const QString &path)
{
    return isExplicitPath(path) ? path : tempPath(pathSeparator) + path;
}

QString AppRuntime::extensionOf(const QString &name) const
{
    return name.sliced(name.lastIndexOf(u'.') + 1).trimmed();
}
