// SPDX-License-Identifier: MIT
#include <support/processes.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#ifdef Q_OS_WIN
#include <memory>

#include <windows.h>

#include <psapi.h> // needs what windows.h declares
#else
#include <cerrno>
#include <csignal>
#endif

using namespace Qt::StringLiterals;

#ifdef Q_OS_WIN
namespace
{

using Process = std::unique_ptr<void, decltype(&CloseHandle)>;

Process openProcess(qint64 pid, DWORD access)
{
    return {OpenProcess(access, FALSE, static_cast<DWORD>(pid)), CloseHandle};
}

} // namespace
#endif

qint64 peakKilobytes(qint64 pid)
{
#ifdef Q_OS_WIN
    // Where Wine runs, /proc can be read too, but counts the processes of the system below it.
    const Process process = openProcess(pid, PROCESS_QUERY_LIMITED_INFORMATION | PROCESS_VM_READ);
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof(counters);
    if (!process || !K32GetProcessMemoryInfo(process.get(), &counters, sizeof(counters)))
        return 0;
    return static_cast<qint64>(counters.PeakWorkingSetSize / 1024);
#else
    QFile status(u"/proc/%1/status"_s.arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    static const QRegularExpression peak(u"VmHWM:\\s*(\\d+) kB"_s);
    return peak.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong();
#endif
}

int openDescriptors()
{
    // The listing's own one is among them every time.
    return static_cast<int>(QDir(u"/proc/self/fd"_s).entryList(QDir::System | QDir::Files).size());
}

bool isRunning(qint64 pid)
{
#ifdef Q_OS_WIN
    const Process process = openProcess(pid, SYNCHRONIZE);
    return process && WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT;
#else
    if (kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH)
        return false;
    QFile status(u"/proc/%1/status"_s.arg(pid));
    return !status.open(QIODevice::ReadOnly) || !status.readAll().contains("State:\tZ");
#endif
}

void killProcess(qint64 pid)
{
#ifdef Q_OS_WIN
    const Process process = openProcess(pid, PROCESS_TERMINATE);
    TerminateProcess(process.get(), 1);
#else
    kill(static_cast<pid_t>(pid), SIGKILL);
#endif
}

qint64 notedProcess(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toLongLong() : 0;
}
