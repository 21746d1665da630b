// SPDX-License-Identifier: MIT
#include <runtime/core/boundedrun.h>

#include <QDeadlineTimer>
#include <QProcess>

using namespace appruntime_internal;

namespace
{

constexpr int lifetimeMilliseconds = 30'000;
constexpr int dyingMilliseconds = 1'000;
constexpr int turnMilliseconds = 1'000;
constexpr qsizetype longestLine = 1'048'576;

class BoundedProcess : public QProcess
{
public:
    /// Ends the wait for a process that cannot be killed. The destructor of a process object that still runs
    /// prints a warning and waits for 30 seconds more.
    void leave()
    {
        setProcessState(NotRunning);
    }

    /// Whether the process ends, or was never started, before the deadline.
    ///
    /// Waits in short turns. When this program is stopped in the middle of a wait and goes on later, Linux
    /// goes on with the time that was left, as if the clock had stood still. The deadline counts that time.
    bool endsBefore(const QDeadlineTimer &deadline)
    {
        do {
            if (waitForFinished(static_cast<int>(qMin<qint64>(deadline.remainingTime(), turnMilliseconds)))
                || state() == NotRunning)
                return true;
        } while (!deadline.hasExpired());
        return false;
    }
};

} // namespace

void appruntime_internal::runBounded(
    const QString &program, const QStringList &arguments, QByteArray *firstLine
)
{
    BoundedProcess process;
    // Counts the time that this program is stopped, but not the time that the machine sleeps.
    QDeadlineTimer lifetime(lifetimeMilliseconds);
    bool killed = false;
    const auto killWhenOver = [&] {
        if (!lifetime.hasExpired())
            return;
        if (killed) {
            process.leave();
            return;
        }
        process.kill();
        killed = true;
        lifetime.setRemainingTime(dyingMilliseconds);
    };

    // The output is read as it comes. Left in the process object, it grows by a gigabyte a second. The time
    // is looked at here too: waitForFinished() checks its time-out only when no output is pending, and a
    // flooding child may prevent that.
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        const QByteArray output = process.readAllStandardOutput();
        if (firstLine && firstLine->size() < longestLine && !firstLine->endsWith('\n')) {
            const qsizetype lineFeed = output.indexOf('\n');
            *firstLine += lineFeed < 0 ? output : output.first(lineFeed + 1);
        }
        killWhenOver();
    });
    QObject::connect(&process, &QProcess::readyReadStandardError, &process, [&] {
        process.readAllStandardError();
        killWhenOver();
    });

    startTied(process, program, arguments);
    while (!process.endsBefore(lifetime))
        killWhenOver();
}
