// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

AppRuntime::AppRuntime(const QString &name, int argc, char **argv)
    : scanCursor(std::make_unique<ScanCursor>())
    , scanSource(std::make_unique<ScanCursor>())
    , scanDelimiter(std::make_unique<ScanCursor>())
{
    if (argc > 0)
        programPath = QString::fromLocal8Bit(argv[0]);
    for (int i = 1; i < argc; ++i)
        arguments->append(QString::fromLocal8Bit(argv[i]));
    setupPlatform(name);
}

AppRuntime::AppRuntime(const QString &name)
{
    setupPlatform(name);
}

AppRuntime::~AppRuntime() = default;

int AppRuntime::count(const QStringList &list) const
{
    return static_cast<int>(list.size());
}

QString AppRuntime::elementAt(const QStringList &list, int index) const
{
    return list.value(index);
}

bool AppRuntime::isSameChar(QChar a, QChar b) const
{
    return a == b;
}

QString AppRuntime::charToText(QChar character) const
{
    return QString(character);
}

QString AppRuntime::errorWord() const
{
    return u"error"_s;
}
