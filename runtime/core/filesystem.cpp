// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/movefile.h>
#include <runtime/core/systemname.h>

#include <QDateTime>
#include <QDir>
#include <QFile>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

bool AppRuntime::makeDirectory(const QString &path)
{
    const QDir here{QString()};
    if (isSystemName(path) && (here.exists(path) || here.mkdir(path)))
        return true;
    lastError = "make dir error("_L1 + path + u')';
    return false;
}

bool AppRuntime::renameFile(const QString &oldName, const QString &newName)
{
    // From the root, not from the current directory: programs pass names without their drive.
    const QDir root(pathSeparator);
    if (isSystemName(oldName) && isSystemName(newName)
        && moveFile(root.filePath(oldName), root.filePath(newName)))
        return true;
    lastError = "rename file error("_L1 + oldName + u')';
    return false;
}

bool AppRuntime::deleteFile(const QString &path)
{
    if (!isSystemName(path) || !QFile::exists(path) || QFile::remove(path))
        return true;
    lastError = "delete file error("_L1 + path + u')';
    return false;
}

QString AppRuntime::lineEnd() const
{
    return u"\r\n"_s;
}

QString AppRuntime::currentPath() const
{
    return QDir::currentPath();
}

QDateTime AppRuntime::currentDateTime() const
{
    return QDateTime::currentDateTime();
}

int AppRuntime::setCurrentPath(const QString &path)
{
    return isSystemName(path) && QDir::setCurrent(path) ? 0 : 5;
}
