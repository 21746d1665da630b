// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QtGlobal>

#ifdef LAUNCHER_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include <cstdlib>
#include <exception>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace
{

void dropMessage(QtMsgType type, const QMessageLogContext &, const QString &)
{
    // GCOVR_EXCL_START: whoever goes this way leaves no counts behind
    if (type == QtFatalMsg)
        std::_Exit(0); // the toolkit would abort
    // GCOVR_EXCL_STOP
}

/// Gives an environment variable another value for as long as it lives: the target gets it unchanged. To the
/// toolkit an empty value is none.
class TemporaryValue
{
public:
    TemporaryValue(const char *name, const char *value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
    {
        if (m_wasSet)
            m_before = qgetenv(name);
        qputenv(name, value);
    }
    ~TemporaryValue()
    {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    Q_DISABLE_COPY_MOVE(TemporaryValue)

private:
    const char *m_name;
    bool m_wasSet;
    QByteArray m_before;
};

/// Makes the exit code and the standard error independent of what the launcher is started with.
void keepQuiet()
{
    // The toolkit comments on a locale that is not UTF-8; nobody reads it, and the standard error stays
    // empty.
    qInstallMessageHandler(dropMessage);
    // Where memory is so short that not even the trace can be written, nothing thrown has anywhere to go.
    std::set_terminate([] { std::_Exit(0); });
    // A wish to abort on such a comment. The toolkit looks for it at the first comment of either kind.
    constexpr const char *fatalWarnings = "QT_FATAL_WARNINGS", *fatalCriticals = "QT_FATAL_CRITICALS";
    if (qEnvironmentVariableIsSet(fatalWarnings) || qEnvironmentVariableIsSet(fatalCriticals)) {
        const TemporaryValue noWarnings(fatalWarnings, ""), noCriticals(fatalCriticals, "");
        qWarning("dropped");
        qCritical("dropped");
    }
#ifdef Q_OS_UNIX
    // A trace that nobody reads must not end the run. A child gets the default back when it is started.
    std::signal(SIGPIPE, SIG_IGN);
    // A standard stream that is closed would be given out again as a pipe to a child, and the trace written
    // into it. Each open() takes the lowest free number, which is the one found closed.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // GCOVR_EXCL_START: a process that may open nothing cannot write its counts either
        if (::fcntl(descriptor, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != descriptor)
            return;
        // GCOVR_EXCL_STOP
    }
#endif
}

Application makeApplication(int &argc, char **argv)
{
#if defined(Q_OS_UNIX)
    // The toolkit would open a dozen files of a locale that nothing here asks for, a sixth of the start-up.
    // Its texts are in UTF-8 in any.
    const TemporaryValue locale("LC_ALL", "C");
#elif defined(LAUNCHER_WIDGETS)
    // Built in is Windows, and no other platform that a user may have set for programs of his own.
    const TemporaryValue platform("QT_QPA_PLATFORM", "");
#endif
    return Application(argc, argv);
}

} // namespace

int main(int argc, char **argv)
{
    keepQuiet();

    // The toolkit sees the program's name alone: options like -platform are for the target, and stay whole.
    int toolkitArgc = 1;
    char noName[] = "";
    // GCOVR_EXCL_BR_START: a newer kernel gives an empty name to who has none
    char *toolkitArgv[] = {argc > 0 ? argv[0] : noName, nullptr};
    // GCOVR_EXCL_BR_STOP
    const Application application = makeApplication(toolkitArgc, toolkitArgv);

    // Lives until the process ends.
    // GCOVR_EXCL_BR_START: how the compiler guards what is static
    static auto *const runtime = new AppRuntime(u"ZBASE"_s, argc, argv);
    // GCOVR_EXCL_BR_STOP
    const QStringList &words = *runtime->arguments;

    const QString program = runtime->elementAt(words, 0);
    QString argumentText;
    // Every argument is followed by a blank, the last one too: the target gets an empty last argument.
    for (int i = 1; i < runtime->count(words); ++i)
        argumentText += runtime->elementAt(words, i) + u' ';

    const bool windowsRules = runtime->isSameChar(runtime->platformChar, u'W');
    runtime->writeTrace(
        "===( ZBASE"_L1 + runtime->charToText(runtime->platformChar)
        + runtime->charToText(runtime->programKindChar) + (windowsRules ? ".EXE"_L1 : ""_L1) + " )==="_L1
    );
    runtime->writeTrace(program + u' ' + argumentText);

    if (runtime->runProgram(program, argumentText, QString(), /*wait=*/true) != 0)
        runtime->writeTrace(runtime->lastError);
    return 0;
}
