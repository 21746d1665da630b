// SPDX-License-Identifier: MIT
#include <runtime/core/boundedrun.h>
#include <runtime/core/systemname.h>

#include <QDeadlineTimer>
#include <QProcess>

namespace
{

constexpr int lifetimeMilliseconds = 30'000;
constexpr qsizetype longestLine = 1'048'576;

} // namespace

QByteArray firstOutputLineOf(const QString &program, const QStringList &arguments)
{
    QByteArray line;
    if (!isSystemName(program))
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
