// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <limits>

// Qt empties a list in place, and gives a shared list a new buffer of the same capacity.

void AppRuntime::clear(QList<quint8> &list) const
{
    list.clear();
}

void AppRuntime::clear(QList<QChar> &list) const
{
    list.clear();
}

void AppRuntime::clear(QList<qint32> &list) const
{
    list.clear();
}

void AppRuntime::clear(QList<quint32> &list) const
{
    list.clear();
}

void AppRuntime::clear(QStringList &list) const
{
    list.clear();
}

int AppRuntime::maxInt() const
{
    return std::numeric_limits<int>::max();
}
