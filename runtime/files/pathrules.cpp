// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>

using namespace appruntime_internal;

bool AppRuntime::isExplicitPath(const QString &path) const
{
    if (path.size() > 1 && path[1] == u':')
        return true;
    const QString here = u'.' + pathSeparator;
    const QString above = u'.' + here;
    // Not startsWith(), to which a null text begins with no empty one.
    const auto beginsWith = [view = QStringView(path)](const QString &beginning) {
        return view.left(beginning.size()) == beginning;
    };
    return beginsWith(pathSeparator) || beginsWith(here) || beginsWith(above);
}

QString AppRuntime::resolvePath(const QString &path)
{
    if (isExplicitPath(path))
        return path;
    const QString kept = ownCopy(path);
    return tempPath(pathSeparator) + kept;
}

QString AppRuntime::extensionOf(const QString &name) const
{
    return name.mid(name.lastIndexOf(u'.') + 1).trimmed();
}
