// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

QString AppRuntime::tempPathFor(const QString &fileName, const QString &program)
{
    // The time program keeps its work files apart.
    if (checkIn(program, u"ZCLOK"_s))
        return subdirPath() + pathSeparator + "TMP_"_L1 + realMode2 + fileName;
    return familyDirectory() + pathSeparator + "TMP"_L1 + fileName;
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
