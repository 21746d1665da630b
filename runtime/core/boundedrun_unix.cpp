// SPDX-License-Identifier: MIT
#include <runtime/core/boundedrun.h>

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif
#include <unistd.h>

using namespace appruntime_internal;

std::atomic<int> appruntime_internal::waitedForProcess{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler reads it");

namespace
{

/// The file to start for a program's name; empty when there is none that the system may start.
///
/// Some versions of Qt keep a descriptor open after every start that fails. A program that asks for a missing
/// one again and again would soon have none left.
QString executableOf(const QString &program)
{
    if (!program.contains(u'/'))
        return QStandardPaths::findExecutable(program);
    const QFileInfo file(program);
    return file.isFile() && file.isExecutable() ? program : QString();
}

} // namespace

void appruntime_internal::startTied(QProcess &process, const QString &program, const QStringList &arguments)
{
    const QString executable = executableOf(program);
    if (executable.isEmpty())
        return;

    // These signals wait until the number of the new process is known: none of them is lost, and the new
    // process runs no handler of this program.
    sigset_t held, before;
    sigemptyset(&held);
    for (const int signal : endingSignals)
        sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &before);

    // Runs in the new process, which may share our memory. Only system calls are allowed here.
    process.setChildProcessModifier([before, parent = getpid()] {
        // A signal sent by now is let in below. It does what it would do to the program itself: a handler is
        // taken down when the program starts, and an ignored signal stays ignored.
        for (const int signal : endingSignals) {
            struct sigaction action;
            sigaction(signal, nullptr, &action);
            if (action.sa_handler != SIG_IGN)
                std::signal(signal, SIG_DFL);
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
#ifdef Q_OS_LINUX
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // Had the parent ended before that call, nothing would ever be sent. A parent in another PID
        // namespace has the number 0.
        if (const pid_t now = getppid(); now != parent && now != 0)
            _exit(0);
#endif
    });
    QObject::connect(&process, &QProcess::stateChanged, &process, [](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning)
            waitedForProcess = 0;
    });
    process.start(executable, arguments, QIODevice::ReadWrite);
    waitedForProcess = static_cast<int>(process.processId());
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

QString appruntime_internal::systemCommand(const QString &name)
{
    return name;
}
