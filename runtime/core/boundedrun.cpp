// SPDX-License-Identifier: MIT
#include <runtime/core/boundedrun.h>
#include <runtime/core/systemname.h>

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

using namespace appruntime_internal;

namespace
{

constexpr int lifetimeMilliseconds = 30'000;
constexpr qsizetype longestLine = 1'048'576;

/// The file to start for a program's name; empty when there is none that the system may start.
///
/// Some versions of the toolkit keep a descriptor open after every start that fails: a program that asks for
/// a missing one again and again would soon have none left.
QString executableOf(const QString &program)
{
#ifdef Q_OS_UNIX
    if (!program.contains(u'/'))
        return QStandardPaths::findExecutable(program);
    const QFileInfo file(program);
    return file.isFile() && file.isExecutable() ? program : QString();
#else
    return program; // the system completes names by rules of its own
#endif
}

} // namespace

QByteArray appruntime_internal::firstOutputLineOf(const QString &program, const QStringList &arguments)
{
    QByteArray line;
    const QString executable = isSystemName(program) ? executableOf(program) : QString();
    if (executable.isEmpty())
        return line;

    QProcess process;
    const QDeadlineTimer lifetime(lifetimeMilliseconds);
    // Left in the process object, what a child prints grows by a gigabyte a second. waitForFinished() gives
    // up only at a moment when there is nothing to read, which a child that prints without end need not
    // leave, so the bound is kept here too.
    const auto endWhenOver = [&] {
        if (lifetime.hasExpired())
            process.kill();
    };
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        const QByteArray output = process.readAllStandardOutput();
        if (line.size() < longestLine && !line.endsWith('\n')) {
            const qsizetype lineFeed = output.indexOf('\n');
            line += lineFeed < 0 ? output : output.first(lineFeed + 1);
        }
        endWhenOver();
    });
    QObject::connect(&process, &QProcess::readyReadStandardError, &process, [&] {
        process.readAllStandardError();
        endWhenOver();
    });

    process.start(executable, arguments, QIODevice::ReadWrite);
    if (!process.waitForFinished(lifetimeMilliseconds)) {
        process.kill(); // here, because a process object destroyed while it runs complains on standard error
        process.waitForFinished();
    }
    return line;
}
