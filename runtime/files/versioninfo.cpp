// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/files/textchannels.h>
#include <runtime/files/versioninfo.h>
#include <runtime/strings/casemapping.h>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

int VersionInfo::writeVersionFile(const QStringList &arguments)
{
    const auto asksForVersion = [this](const QString &word) {
        return runtime->checkIn(upperCased(word), u"VERSION"_s);
    };
    if (arguments.size() != 2 || !asksForVersion(arguments[0]) || !asksForVersion(arguments[1]))
        return 0;

    const QString &separator = runtime->pathSeparator;
    const QString fileName = runtime->familyDirectory() + separator + "TMP"_L1 + separator + "VERSION_"_L1
        + runtime->programName + ".TXT"_L1;
    TextWriteChannel channel(runtime);
    if (!channel.openWrite(fileName, u"OT"_s, u"/"_s))
        return 1;

    if (runtime->programName == "ZGRAPH"_L1)
        channel.writeLine(QString::number(chartVersion));
    else if (runtime->programName == "ZLISTR"_L1)
        channel.writeLine(QString::number(printVersion));
    else
        channel.writeLine(QString::number(versionNumber) + u'\t' + versionText);
    channel.closeWrite();
    return 1;
}
