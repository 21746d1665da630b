// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/boundedrun.h>
#include <runtime/core/systemname.h>

#include <QEventLoop>
#include <QProcess>
#include <QTimer>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

constexpr int succeeded = 0;
constexpr int refused = 5;

} // namespace

int AppRuntime::runProgram(
    const QString &program, const QString &argumentText, [[maybe_unused]] const QString &extraText, bool wait
)
{
    if (!isSafePathText(program) || !isSafePathText(argumentText))
        return refused;

    const QString programLine = replaceLineBreaks(program, u' ');
    const QString argumentLine = replaceLineBreaks(argumentText, u' ');
    // Empty parts stay: a blank at the end of the text is an empty last argument, and the programs of the
    // family count on it.
    const QStringList argumentList = argumentLine.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);

    // The system would take what stands before a NUL for the whole.
    const bool startable = isSystemName(programLine) && !argumentLine.contains(u'\0');
    if (wait) {
        if (startable)
            runBounded(programLine, argumentList);
        return succeeded;
    }
    if (!startable || !QProcess::startDetached(programLine, argumentList)) {
        lastError = "Process "_L1 + programLine + u' ' + argumentLine + " error"_L1;
        return refused;
    }
    return succeeded;
}

int AppRuntime::runShellCommand(const QString &command, const QString &extraText)
{
    if (!isSameChar(platformChar, u'W'))
        return succeeded;
    return runProgram(systemCommand(u"cmd"_s), "/c "_L1 + command, extraText, /*wait=*/true);
}

int AppRuntime::runShellCommand(const QString &command)
{
    return runShellCommand(command, QString());
}

bool AppRuntime::isSafePathText(const QString &text)
{
    if (!text.contains("..\\"_L1) && !text.contains("../"_L1))
        return true;
    lastError = u"bad QChar (..\\ or ../)"_s;
    return false;
}

QString AppRuntime::replaceLineBreaks(const QString &text, QChar replacement) const
{
    QString result = text;
    result.replace(u'\r', replacement);
    result.replace(u'\n', replacement);
    return result;
}

void AppRuntime::waitMilliseconds(int milliseconds) const
{
    QEventLoop loop;
    // A timer never fires when its time is negative.
    QTimer::singleShot(qMax(0, milliseconds), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
