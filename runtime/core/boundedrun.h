// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/core/appruntime_export.h>

#include <QByteArray>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <array>
#include <atomic>
#include <csignal>
#endif

class QProcess;

namespace appruntime_internal
{

/// Runs a program and waits until it ends. Kills it after 30 seconds. A program that cannot be killed,
/// because it has become another user, is left alone a second later.
///
/// Drops what the program prints, except its first line of standard output where `firstLine` asks for it. The
/// line keeps its line feed; of a longer line the first megabyte is kept.
///
/// Waits for the program only, not for processes that it started and left behind. Processes no events.
void runBounded(const QString &program, const QStringList &arguments, QByteArray *firstLine = nullptr);

/// Starts a program that ends when this one is killed or crashes. See runProgram() for what each system can
/// do.
///
/// Starts nothing, and leaves the process object as it is, where the system has no such program to start.
void startTied(QProcess &process, const QString &program, const QStringList &arguments);

/// The name to start a command of the system by. On Windows this is its file in the system's directory: the
/// current directory, where Windows looks first, may hold a file of that name that somebody else put there.
/// Elsewhere it is the name itself, to be found on the search path.
///
/// Empty where the system's directory is unknown; then there is no such command.
QString systemCommand(const QString &name);

#ifdef Q_OS_UNIX
/// The signals with which a process is asked to end. The launcher passes them on to its target.
inline constexpr std::array endingSignals{SIGTERM, SIGINT, SIGHUP, SIGQUIT};

/// The process that runBounded() waits for, or 0. The launcher's signal handler reads it.
///
/// Exported, because the launcher may use the shared library, and a variable rather than a function, because
/// the first call of a function in a shared library does more than a signal handler may.
APPRUNTIME_EXPORT extern std::atomic<int> waitedForProcess;
#endif

} // namespace appruntime_internal
