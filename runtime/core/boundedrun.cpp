// SPDX-License-Identifier: MIT
#include <runtime/core/boundedrun.h>
#include <runtime/core/systemname.h>

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace
{

constexpr int lifetimeMilliseconds = 30'000;
constexpr qsizetype longestLine = 1'048'576;

/// Whether there is a file that the system may start.
///
/// Some versions of the toolkit keep a descriptor open after every start that fails: a program that asks for
/// a missing one again and again would soon have none left.
bool canStart([[maybe_unused]] const QString &program)
{
#ifdef Q_OS_UNIX
    // A bare name that is not on the search path is one of the current directory.
    const QString found = program.contains(u'/') ? QString() : QStandardPaths::findExecutable(program);
    const QFileInfo file(found.isEmpty() ? program : found);
    return file.isFile() && file.isExecutable();
#else
    return true; // the system completes names by rules of its own
#endif
}

} // namespace

QByteArray firstOutputLineOf(const QString &program, const QStringList &arguments)
{
    QByteArray line;
    if (!isSystemName(program) || !canStart(program))
        return line;

    QProcess process;
    const QDeadlineTimer lifetime(lifetimeMilliseconds);
    // Left in the process object, what a child prints grows by a gigabyte a second. A child that prints
    // without end also keeps waitForFinished() from ever looking at its own time-out, so the bound is kept
    // here too.
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

    process.start(program, arguments, QIODevice::ReadWrite);
    if (!process.waitForFinished(lifetimeMilliseconds)) {
        process.kill(); // here, because a process object destroyed while it runs complains on standard error
        process.waitForFinished();
    }
    return line;
}
