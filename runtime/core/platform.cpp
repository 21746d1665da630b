// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/boundedrun.h>
#include <runtime/strings/blanks.h>
#include <runtime/strings/casemapping.h>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

constexpr QChar systemLetter = APPRUNTIME_PLATFORM_CHAR;

/// A fixed-width part of the version text without its leading zeros; the last digit always stays.
QStringView withoutLeadingZeros(QStringView digits)
{
    while (digits.size() > 1 && digits.front() == u'0')
        digits = digits.sliced(1);
    return digits;
}

} // namespace

void AppRuntime::setupPlatform(const QString &name)
{
    version = std::make_unique<VersionInfo>();
    version->runtime = this;
    programName = name;
    platformChar = systemLetter;

    const QStringView digits = version->versionText;
    const QString buildNumber = QString::number(version->versionNumber);
    versionLabel = buildNumber + u'/' + withoutLeadingZeros(digits.sliced(0, 4)) + u'.'
        + withoutLeadingZeros(digits.sliced(4, 2)) + u'.' + withoutLeadingZeros(digits.sliced(6, 3));
    versionPrefix = u'Z' + buildNumber;
    serviceName = versionPrefix + "QUBLE"_L1 + u'C';

    hostName = queryHostName();
    hostNameUpper = upperCased(hostName);
    hostKey = hostNameUpper;
    hostKey.replace(u'-', u'_');

    const bool windowsRules = isSameChar(platformChar, u'W');
    pathSeparator = windowsRules ? u"\\"_s : u"/"_s;
    deleteCommand = windowsRules ? u"DEL"_s : u"RM"_s;
    homeDirectory = windowsRules ? environmentValue(u"SystemDrive"_s) : u"/home"_s;
    startDirectory = currentPath();

    // The first character is never compared: it alone is the directory of a path without a separator, and of
    // one whose only separator it is. checkMessage keeps the message of the last character that is none.
    programDirectory = programPath.first(qMin(programPath.size(), 1));
    for (qsizetype i = programPath.size() - 1; i >= 1; --i) {
        if (checkIn(programPath.at(i), pathSeparator)) {
            programDirectory = programPath.first(i + 1);
            break;
        }
    }
}

QString AppRuntime::queryHostName() const
{
    QByteArray output;
    runBounded(systemCommand(u"hostname"_s), {}, &output);
    const QString line = QString::fromLocal8Bit(output);
    const QStringView name = withoutTrailingBlanks(line);
    const qsizetype dot = name.indexOf(u'.');
    return name.first(dot < 0 ? name.size() : dot).toString();
}

QString AppRuntime::userName() const
{
    return environmentValue(isSameChar(platformChar, u'W') ? u"USERNAME"_s : u"USER"_s);
}
