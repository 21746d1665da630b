// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QDateTime>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

// An empty name is sorted out before the toolkit sees it, which would complain on standard error.

bool AppRuntime::makeDirectory(const QString &path)
{
    const QDir here{QString()};
    if (!path.isEmpty() && (here.exists(path) || here.mkdir(path)))
        return true;
    lastError = "make dir error("_L1 + path + u')';
    return false;
}

bool AppRuntime::renameFile(const QString &oldName, const QString &newName)
{
    // From the root, not from the current directory: programs pass names without their drive.
    QDir root(pathSeparator);
    if (!oldName.isEmpty() && !newName.isEmpty() && root.rename(oldName, newName))
        return true;
    lastError = "rename file error("_L1 + oldName + u')';
    return false;
}

bool AppRuntime::deleteFile(const QString &path)
{
    if (!QFile::exists(path) || QFile::remove(path))
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
    return QDir::setCurrent(path) ? 0 : 5;
}
