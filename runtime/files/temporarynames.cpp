// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

QString AppRuntime::tempPathFor(const QString &fileName, const QString &program)
{
    const QString name = ownCopy(fileName);
    // The time program keeps its work files apart.
    if (checkIn(program, u"ZCLOK"_s))
        return subdirPath() + pathSeparator + "TMP_"_L1 + realMode2 + name;
    return familyDirectory() + pathSeparator + "TMP"_L1 + name;
}

QString AppRuntime::tempPath(const QString &fileName)
{
    return tempPathFor(fileName, programName);
}

QString AppRuntime::familyDirectory() const
{
    return homeDirectory + pathSeparator + u'Z';
}

QString AppRuntime::subdirPath() const
{
    return familyDirectory() + pathSeparator + "Z."_L1 + subdirTag;
}
