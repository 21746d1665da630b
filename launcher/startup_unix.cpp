// SPDX-License-Identifier: MIT
#include "startup.h"

#include <runtime/core/boundedrun.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

using appruntime_internal::endingSignals;
using appruntime_internal::waitedForProcess;

namespace
{

std::atomic<bool> passing{false};
std::atomic<int> firstPassedOn{0};

/// Ends the launcher as whoever sent the signal expects it. A signal handler may call this.
[[noreturn]] void endBy(int signal)
{
    // A core file of the launcher would replace that of its target.
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    std::signal(signal, SIG_DFL);
    sigset_t unblocked;
    sigemptyset(&unblocked);
    sigaddset(&unblocked, signal);
    pthread_sigmask(SIG_UNBLOCK, &unblocked, nullptr);
    std::raise(signal);
    // Process 1 of a container goes on from here: no signal of its own ends it. This is how a shell reports
    // an end by a signal.
    _exit(128 + signal);
}

void passOn(int signal, siginfo_t *information, void *)
{
    const int error = errno;
    const pid_t target = waitedForProcess;
    if (!passing || target == 0)
        endBy(signal);

    int none = 0;
    firstPassedOn.compare_exchange_strong(none, signal);
    // What is typed at the terminal comes from the system itself and goes to all processes of a group. A
    // target of our group must not get it twice: many programs take a second interrupt for "at once". That
    // the terminal is closed goes to the leader of the session alone.
    const bool forUsAlone = signal == SIGHUP && getsid(0) == getpid();
    const bool targetHasIt = information->si_code == SI_KERNEL && !forUsAlone && getpgid(target) == getpgrp();
    if (!targetHasIt)
        kill(target, signal);
    errno = error;
}

bool isIgnored(int signal)
{
    struct sigaction action;
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

void prepareSignals()
{
    // A trace that nobody reads must not end the run. Qt gives a child the default back.
    std::signal(SIGPIPE, SIG_IGN);
    // Nor must a trace that exceeds the limit of a file's size. A handler does not reach the child, which an
    // ignored signal would.
    if (!isIgnored(SIGXFSZ))
        std::signal(SIGXFSZ, [](int) {});

    struct sigaction action = {};
    action.sa_sigaction = passOn;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    for (const int signal : endingSignals)
        sigaddset(&action.sa_mask, signal);
    for (const int signal : endingSignals) {
        if (!isIgnored(signal)) // as nohup does it, for the launcher and its target
            sigaction(signal, &action, nullptr);
    }
}

} // namespace

// Qt would open a dozen files of a locale that nothing here asks for, a sixth of the start-up. Its texts are
// in UTF-8 in any locale.
const Setting applicationSetting{"LC_ALL", "C"};

void prepareSystem()
{
    prepareSignals();
    // The number of a closed standard stream would be given to the next pipe of a child, and the trace
    // written into it. open() takes the lowest free number, which is the one found closed.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0)
            open("/dev/null", O_RDWR);
    }
}

void passSignalsOn()
{
    passing = true;
}

void endBySignal()
{
    if (firstPassedOn != 0)
        endBy(firstPassedOn);
}
