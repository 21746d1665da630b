// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
#include <support/comestrue.h>
#include <support/processes.h>
#include <support/report.h>
#include <support/smalldisk.h>

#include <QTest>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr uid_t nobody = 65534;

/// A launcher that ends within this time has not waited for the bound of its target.
constexpr int beforeTheBound = 25'000;

/// The resources are numbers here, and a type of their own there.
template<typename Resource> void limit(Resource resource, rlim_t value)
{
    const rlimit both{value, value};
    setrlimit(resource, &both);
}

} // namespace

/// The launcher on a system that is short of everything, with targets that do what they like: it says its two
/// lines where it can, ends with 0, and leaves nothing behind.
class LauncherFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void fewDescriptors_data();
    void fewDescriptors();
    void noProcess();
    void littleMemory();
    void unreadableDirectory();
    void fullDisk();
    void hostNameCommand_data();
    void hostNameCommand();
    void leavesTheRest();
    void manyMegabytes();
    void harmlessSignals();
    void signalsPassedOn_data();
    void signalsPassedOn();
    void signalsOfTheTerminal_data();
    void signalsOfTheTerminal();
    void signalsBeforeTheTarget_data();
    void signalsBeforeTheTarget();
    void signalAtAnyTime();
    void signalIgnored();
    void signalToProcessOne_data();
    void signalToProcessOne();
    void killed_data();
    void killed();
    void fileSizeLimit_data();
    void fileSizeLimit();
    void programNames_data();
    void programNames();
    void wordsThatAreNoText();
    void targetGetsNoDescriptors();
    void closedStreamsLeadNowhere_data();
    void closedStreamsLeadNowhere();
    void runsLeaveNothingBehind();

private:
    void launch(const QStringList &words, const std::function<void()> &before = {});
    void verifyQuiet(const QStringList &words);
    void verifyEndedBy(int signal, const QStringList &words);
    [[nodiscard]] QByteArray noted() const;
    [[nodiscard]] QString writeScript(const QByteArray &commands) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_process;
    QProcessEnvironment m_environment;
    QString m_report;
    const QString m_arguments{BuiltWith::helper(u"arguments"_s)};
    const QString m_behave{BuiltWith::helper(u"behave"_s)};
};

void LauncherFaultsTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_process = std::make_unique<QProcess>();
    m_report = m_directory->filePath(u"report"_s);
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(u"HELPER_OUTPUT"_s, m_report);
}

void LauncherFaultsTest::cleanup()
{
    m_process.reset();
    const bool noChildren = waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD;
    QVERIFY(noChildren);
}

/// Starts the launcher, in whose process `before` is called first.
void LauncherFaultsTest::launch(const QStringList &words, const std::function<void()> &before)
{
    m_process->setProcessEnvironment(m_environment);
    if (before)
        m_process->setChildProcessModifier(before);
    m_process->start(BuiltWith::launcher(), words);
}

/// Waits for the end, and for nothing but the two lines.
void LauncherFaultsTest::verifyQuiet(const QStringList &words)
{
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
    QCOMPARE(
        m_process->readAllStandardOutput(), BuiltWith::banner() + words.join(u' ').toLocal8Bit() + " \n"
    );
}

/// Waits for the end by a signal, before which the two lines were written.
void LauncherFaultsTest::verifyEndedBy(int signal, const QStringList &words)
{
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    // An emulator tells of a program that a signal ends.
    QByteArray errors = m_process->readAllStandardError();
    if (errors.startsWith("qemu: uncaught target signal ") && errors.count('\n') == 1)
        errors.clear();
    QCOMPARE(errors, QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::CrashExit);
    QCOMPARE(m_process->exitCode(), signal);
    QCOMPARE(
        m_process->readAllStandardOutput(), BuiltWith::banner() + words.join(u' ').toLocal8Bit() + " \n"
    );
}

QByteArray LauncherFaultsTest::noted() const
{
    QFile file(m_report);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes a program of shell commands.
QString LauncherFaultsTest::writeScript(const QByteArray &commands) const
{
    QFile script(m_directory->filePath(u"target"_s));
    if (script.open(QIODevice::WriteOnly)) {
        script.write("#!/bin/sh\n" + commands);
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    return script.fileName();
}

void LauncherFaultsTest::fewDescriptors_data()
{
    QTest::addColumn<int>("descriptors");
    QTest::addColumn<QString>("fatal");
    QTest::addColumn<bool>("enough");
#ifdef __SANITIZE_ADDRESS__
    constexpr int fewest = 8; // the sanitizer looks at memory through a pipe
#else
    constexpr int fewest = 4; // with 3 not even the libraries are loaded
#endif
    const QString warnings = u"QT_FATAL_WARNINGS"_s, criticals = u"QT_FATAL_CRITICALS"_s;
    for (int few = fewest; few < 12; ++few) {
        QTest::addRow("%d, warnings fatal", few) << few << warnings << false;
        QTest::addRow("%d, critical comments fatal", few) << few << criticals << false;
    }
    QTest::newRow("64") << 64 << criticals << true;
}

void LauncherFaultsTest::fewDescriptors()
{
    QFETCH(int, descriptors);
    QFETCH(QString, fatal);
    QFETCH(bool, enough);

    // Qt warns of a pipe that it cannot have, and at its first warning also of a wrong rule for warnings.
    m_environment.insert(u"QT_LOGGING_RULES"_s, u"x=maybe"_s);
    m_environment.insert(fatal, u"1"_s);
    launch({m_arguments, u"x"_s}, [descriptors] {
        for (int others = STDERR_FILENO + 1; others < 256; ++others)
            fcntl(others, F_SETFD, FD_CLOEXEC); // whatever this test was started with
        limit(RLIMIT_NOFILE, static_cast<rlim_t>(descriptors));
    });
    verifyQuiet({m_arguments, u"x"_s});
    if (enough)
        QVERIFY(readReport(m_report).started);
}

void LauncherFaultsTest::noProcess()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer looks for leaks in a process of its own");
#endif
    // The superuser has no such limit.
    launch({m_arguments, u"x"_s}, [] {
        if (geteuid() == 0 && setuid(nobody) != 0)
            _exit(0);
        limit(RLIMIT_NPROC, 0);
    });
    if (!m_process->waitForStarted())
        QSKIP("The build folder is private: nobody else can start the launcher");
    verifyQuiet({m_arguments, u"x"_s});
    QVERIFY(!readReport(m_report).started);
}

void LauncherFaultsTest::littleMemory()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer takes terabytes of addresses for itself");
#else
    constexpr rlim_t kilobyte = 1024, step = 64 * kilobyte;

    const auto complete = [this](rlim_t bytes) {
        launch({m_arguments, u"x"_s}, [bytes] { limit(RLIMIT_AS, bytes); });
        if (!m_process->waitForFinished(beforeTheBound))
            return false;
        return m_process->exitCode() == 0 && m_process->readAllStandardOutput().count('\n') == 2;
    };
    rlim_t little = kilobyte * 1024, enough = kilobyte * 1024 * 1024;
    QVERIFY(complete(enough));
    while (enough - little > step) {
        const rlim_t middle = little + (enough - little) / 2;
        (complete(middle) ? enough : little) = middle;
    }
    // Down from there memory ends everywhere in the run, and then while the libraries are being loaded, which
    // the loader or a library reports, with a code of its own. Nothing is a crash.
    for (rlim_t bytes = enough; bytes > enough - 32 * step; bytes -= step) {
        complete(bytes);
        QCOMPARE(m_process->state(), QProcess::NotRunning);
        QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
        const QByteArray words = m_process->readAllStandardError();
        QCOMPARE(words.isEmpty(), m_process->exitCode() == 0);
        QVERIFY2(!words.contains("terminate"), words.constData());
    }
#endif
}

void LauncherFaultsTest::unreadableDirectory()
{
    const QByteArray closed = QFile::encodeName(m_directory->filePath(u"closed"_s));
    QCOMPARE(mkdir(closed.constData(), 0700), 0);
    QCOMPARE(chmod(QFile::encodeName(m_directory->path()).constData(), 0777), 0);
    launch({m_arguments, u"x"_s}, [&closed] {
        if (chdir(closed.constData()) != 0 || chmod(closed.constData(), 0) != 0
            || (geteuid() == 0 && setuid(nobody) != 0))
            _exit(0);
    });
    if (!m_process->waitForStarted())
        QSKIP("The build folder is private: nobody else can start the launcher");
    verifyQuiet({m_arguments, u"x"_s});
    QCOMPARE(readReport(m_report).arguments, (QStringList{u"x"_s, u""_s}));
    QCOMPARE(chmod(closed.constData(), 0700), 0);
}

void LauncherFaultsTest::fullDisk()
{
    const SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("Only the superuser can mount a file system to fill up");
    const QString name = disk.filePath(u"trace"_s);
    QFile trace(name);
    QVERIFY(trace.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (trace.write(QByteArray(4096, 'x')) == 4096) { }
    trace.close();
    const auto full = static_cast<qsizetype>(trace.size());
    QVERIFY(full > 0);

    m_process->setStandardOutputFile(name, QIODevice::Append);
    launch({m_arguments, u"x"_s});
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
    QVERIFY(readReport(m_report).started);
    QVERIFY(trace.open(QIODevice::ReadOnly));
    QCOMPARE(trace.readAll(), QByteArray(full, 'x'));
}

void LauncherFaultsTest::hostNameCommand_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("prints nothing") << QByteArray();
    QTest::newRow("prints a megabyte") << QByteArray("megabyte");
    QTest::newRow("prints no UTF-8") << QByteArray("\xff\xfe\x80.\xc3");
    QTest::newRow("fails") << QByteArray("error");
}

void LauncherFaultsTest::hostNameCommand()
{
    QFETCH(QByteArray, output);
    const QByteArray path = qgetenv("PATH"), report = QFile::encodeName(m_report);
    qputenv("PATH", QFile::encodeName(BuiltWith::fakes()) + ':' + path); // whose bytes no text could hold
    qputenv("HELPER_HOSTNAME", output);
    qputenv("HELPER_OUTPUT", report);
    m_process->start(BuiltWith::launcher(), {m_arguments, u"x"_s});
    qputenv("PATH", path);
    qunsetenv("HELPER_HOSTNAME");
    verifyQuiet({m_arguments, u"x"_s});
    QVERIFY(readReport(m_report).started);
}

void LauncherFaultsTest::leavesTheRest()
{
    // What a target leaves behind keeps its pipes, and even prints.
    for (const QString &verb : {u"leave"_s, u"leave-flood"_s}) {
        launch({m_behave, verb});
        verifyQuiet({m_behave, verb});
        const qint64 child = noted().toLong();
        if (verb == u"leave"_s) // the other one finds that nobody reads its pipe
            QVERIFY(isRunning(child));
        killProcess(child);
    }
}

void LauncherFaultsTest::manyMegabytes()
{
    const QStringList words{m_behave, u"flood"_s, u"200000000"_s}; // on each of both outputs
    launch(words);
    qint64 peak = 0;
    QVERIFY(m_process->waitForStarted());
    for (int i = 0; i < 20; ++i) { // it is constant from early on
        peak = qMax(peak, peakKilobytes(m_process->processId()));
        QTest::qSleep(10);
    }
    verifyQuiet(words);
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(peak < 40'000, qPrintable(u"%1 kB"_s.arg(peak)));
#endif
}

void LauncherFaultsTest::harmlessSignals()
{
    const QStringList words{m_behave, u"nap"_s};
    launch(words);
    QVERIFY(comesTrue([&] { return noted().toLong() > 0; }));
    const auto launcher = static_cast<pid_t>(m_process->processId());
    for (const int signal : {SIGCHLD, SIGCONT, SIGWINCH, SIGURG, SIGPIPE, SIGSTOP, SIGCONT}) {
        QCOMPARE(kill(launcher, signal), 0);
        QTest::qWait(20);
    }
    QVERIFY(QFile::remove(m_report));
    verifyQuiet(words);
    QCOMPARE(noted(), "rested"); // waited for to the end
}

void LauncherFaultsTest::signalsPassedOn_data()
{
    QTest::addColumn<QList<int>>("sent");
    QTest::newRow("terminate") << QList<int>{SIGTERM};
    QTest::newRow("interrupt") << QList<int>{SIGINT};
    QTest::newRow("hang up") << QList<int>{SIGHUP};
    QTest::newRow("quit") << QList<int>{SIGQUIT};
    QTest::newRow("one twice") << QList<int>{SIGTERM, SIGTERM};
    QTest::newRow("two: ends by the first") << QList<int>{SIGINT, SIGTERM};
    QTest::newRow("all") << QList<int>{SIGQUIT, SIGHUP, SIGTERM, SIGINT};
}

void LauncherFaultsTest::signalsPassedOn()
{
    QFETCH(QList<int>, sent);

    const QStringList words{m_behave, u"signals"_s, QString::number(sent.size())};
    m_process->setWorkingDirectory(m_directory->path());
    launch(words, [] { limit(RLIMIT_CORE, RLIM_INFINITY); });
    QVERIFY(comesTrue([&] { return noted().toLong() > 0; }));
    QByteArray received = "signals ";
    for (const int signal : std::as_const(sent)) {
        QCOMPARE(kill(static_cast<pid_t>(m_process->processId()), signal), 0);
        received += QByteArray::number(signal) + ' ';
        QVERIFY(comesTrue([&] { return noted() == received; }));
    }
    verifyEndedBy(sent.first(), words);
    QCOMPARE(noted(), received);                                                          // nothing twice
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList{u"report"_s}); // no core file
}

void LauncherFaultsTest::signalsOfTheTerminal_data()
{
    QTest::addColumn<QString>("verb");
    QTest::addColumn<int>("signal");
    QTest::newRow("target of our group") << u"signals"_s << SIGINT;
    QTest::newRow("target of another group") << u"signals-apart"_s << SIGINT;
    // The end of a terminal is told to the leader of its session alone.
    QTest::newRow("terminal closed, target of our group") << u"signals"_s << SIGHUP;
    QTest::newRow("terminal closed, target of another group") << u"signals-apart"_s << SIGHUP;
}

void LauncherFaultsTest::signalsOfTheTerminal()
{
    QFETCH(QString, verb);
    QFETCH(int, signal);

    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        QSKIP("The system has no terminal for us");
    const QByteArray name = ptsname(terminal);
    const QStringList words{m_behave, verb, u"1"_s};
    launch(words, [&name] {
        // The first terminal that the leader of a session opens is the one it is controlled by.
        setsid();
        if (open(name.constData(), O_RDWR) < 0)
            _exit(0);
    });
    QVERIFY(comesTrue([&] { return noted().toLong() > 0; }));
    if (signal == SIGINT)
        QCOMPARE(write(terminal, "\x03", 1), 1);
    else
        close(terminal);
    verifyEndedBy(signal, words);
    QCOMPARE(noted(), "signals " + QByteArray::number(signal) + ' '); // once
    if (signal == SIGINT)
        close(terminal);
}

void LauncherFaultsTest::signalsBeforeTheTarget_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("terminate") << SIGTERM;
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("hang up") << SIGHUP;
    QTest::newRow("quit") << SIGQUIT;
    QTest::newRow("kill") << SIGKILL;
}

void LauncherFaultsTest::signalsBeforeTheTarget()
{
    QFETCH(int, signal);

    const QString path = BuiltWith::fakes() + u':' + qEnvironmentVariable("PATH");
    const QString report = m_directory->filePath(u"hostname"_s);
    m_environment.insert(u"PATH"_s, path);
    m_environment.insert(u"HELPER_HOSTNAME"_s, u"hang"_s);
    m_environment.insert(u"HELPER_HOSTNAME_OUTPUT"_s, report);
    launch({m_arguments, u"x"_s});
    QVERIFY(comesTrue([&] { return notedProcess(report) > 0; }));
    const qint64 hostname = notedProcess(report);
    QCOMPARE(kill(static_cast<pid_t>(m_process->processId()), signal), 0);
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QCOMPARE(m_process->exitStatus(), QProcess::CrashExit);
    QCOMPARE(m_process->exitCode(), signal);
    QCOMPARE(m_process->readAllStandardOutput(), QByteArray());
    QVERIFY(!readReport(m_report).started);
#ifdef Q_OS_LINUX
    QVERIFY(comesTrue([&] { return !isRunning(hostname); }));
#else
    killProcess(hostname);
#endif
}

// Between two system calls of the launcher, too: a signal that were lost would leave the target to its 30
// seconds.
void LauncherFaultsTest::signalAtAnyTime()
{
    for (std::chrono::microseconds delay(0); delay.count() < 30'000;
         delay += std::chrono::microseconds(500)) {
        QFile::remove(m_report);
        launch({m_behave, u"sleep"_s});
        QVERIFY(m_process->waitForStarted());
        std::this_thread::sleep_for(delay);
        QCOMPARE(kill(static_cast<pid_t>(m_process->processId()), SIGTERM), 0);
        QVERIFY(m_process->waitForFinished(beforeTheBound));
        QCOMPARE(m_process->exitStatus(), QProcess::CrashExit);
        QCOMPARE(m_process->exitCode(), SIGTERM);
        if (const qint64 target = notedProcess(m_report); target > 0)
            QVERIFY(!isRunning(target));
    }
}

void LauncherFaultsTest::signalIgnored()
{
    // As nohup starts it.
    const QStringList words{m_behave, u"nap"_s};
    launch(words, [] { std::signal(SIGHUP, SIG_IGN); });
    QVERIFY(comesTrue([&] { return noted().toLong() > 0; }));
    QCOMPARE(kill(static_cast<pid_t>(noted().toLong()), SIGHUP), 0);
    QCOMPARE(kill(static_cast<pid_t>(m_process->processId()), SIGHUP), 0);
    QVERIFY(QFile::remove(m_report));
    verifyQuiet(words);
    QCOMPARE(noted(), "rested");
}

void LauncherFaultsTest::signalToProcessOne_data()
{
    QTest::addColumn<bool>("beforeTheTarget");
    QTest::newRow("while the target runs") << false;
    QTest::newRow("before the target is started") << true;
}

void LauncherFaultsTest::signalToProcessOne()
{
    QFETCH(bool, beforeTheTarget);

    const QStringList apart{u"--pid"_s, u"--fork"_s};
    m_process->start(u"unshare"_s, apart + QStringList{u"true"_s});
    if (!m_process->waitForFinished() || m_process->exitCode() != 0)
        QSKIP("Only the superuser can have a process 1 of his own");
    m_process->readAll();

    // Whoever is number 1 gets the signal from a program that it has started.
    const QString script = writeScript(
        beforeTheTarget ? "kill -TERM 1\nsleep 60\n"
                        : "trap 'echo passed on >\"$HELPER_OUTPUT\"; exit' TERM\n"
                          "kill -TERM 1\nwhile :; do sleep 0.1; done\n"
    );
    if (beforeTheTarget) {
        QVERIFY(QFile::rename(script, m_directory->filePath(u"hostname"_s)));
        m_environment.insert(u"PATH"_s, m_directory->path() + u':' + qEnvironmentVariable("PATH"));
    }
    m_process->setProcessEnvironment(m_environment);
    m_process->start(
        u"unshare"_s, apart + QStringList{BuiltWith::launcher(), beforeTheTarget ? m_arguments : script}
    );
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 128 + SIGTERM);
    QCOMPARE(noted(), beforeTheTarget ? QByteArray() : "passed on\n");
}

void LauncherFaultsTest::killed_data()
{
    QTest::addColumn<bool>("byLauncher"); // or by another program
    QTest::addColumn<int>("signal");
    QTest::newRow("launcher killed") << true << SIGKILL;
    QTest::newRow("launcher crashed") << true << SIGSEGV;
    QTest::newRow("program killed") << false << SIGKILL;
    QTest::newRow("program crashed") << false << SIGABRT;
    QTest::newRow("program ended by a signal that it does not pass on") << false << SIGTERM;
}

void LauncherFaultsTest::killed()
{
#ifndef Q_OS_LINUX
    QSKIP("The system does not end a program with the one that waits for it");
#else
    QFETCH(bool, byLauncher);
    QFETCH(int, signal);

    m_process->setProcessEnvironment(m_environment);
    m_process->setChildProcessModifier([] { limit(RLIMIT_CORE, 0); });
    if (byLauncher)
        m_process->start(BuiltWith::launcher(), {m_behave, u"sleep"_s});
    else
        m_process->start(BuiltWith::helper(u"console"_s), {u"run"_s, m_behave, u"sleep"_s});
    QVERIFY(comesTrue([&] { return noted().toLong() > 0; }));
    const qint64 target = noted().toLong();
    QCOMPARE(kill(static_cast<pid_t>(m_process->processId()), signal), 0);
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QVERIFY(comesTrue([&] { return !isRunning(target); }));
#endif
}

void LauncherFaultsTest::fileSizeLimit_data()
{
    QTest::addColumn<bool>("ignored");
    QTest::newRow("signal not ignored by the caller") << false;
    QTest::newRow("signal ignored by the caller") << true;
}

void LauncherFaultsTest::fileSizeLimit()
{
#ifndef Q_OS_LINUX
    QSKIP("The system does not tell which signals a process ignores");
#else
    QFETCH(bool, ignored);
    // The target lifts the limit for itself, and shows whether it ignores the signal.
    const QString program
        = writeScript("ulimit -S -f unlimited\ngrep '^SigIgn' /proc/self/status >\"$HELPER_OUTPUT\"\n");
    const QString trace = m_directory->filePath(u"trace"_s);
    m_process->setStandardOutputFile(trace);
    launch({program}, [ignored] {
        if (ignored)
            std::signal(SIGXFSZ, SIG_IGN);
        rlimit size{};
        getrlimit(RLIMIT_FSIZE, &size);
        size.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &size);
    });
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
    QCOMPARE(QFileInfo(trace).size(), 0);
    const QByteArray ignoredNow = noted().simplified();
    QVERIFY(ignoredNow.startsWith("SigIgn: "));
    QCOMPARE(ignoredNow.sliced(8).toULongLong(nullptr, 16) >> (SIGXFSZ - 1) & 1, ignored ? 1U : 0U);
#endif
}

void LauncherFaultsTest::programNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("possible");
    QTest::newRow("blanks at the ends") << u" a "_s << true;
    QTest::newRow("control characters") << u"\a\u001b[31m"_s << true;
    QTest::newRow("quotes and wildcards") << u"'\"*?$x`y`;"_s << true;
    QTest::newRow("255 bytes") << QString(255, u'x') << true;
    QTest::newRow("255 bytes of kana") << QString(85, u'あ') << true;
    QTest::newRow("256 bytes") << QString(256, u'x') << false;
    QTest::newRow("line feed") << u"a\nb"_s << false; // a blank by the time it is looked for
}

void LauncherFaultsTest::programNames()
{
    QFETCH(QString, name);
    QFETCH(bool, possible);

    const QString program = m_directory->filePath(name);
    QCOMPARE(QFile::link(m_arguments, program), name.toUtf8().size() < 256);
    launch({program, u"x"_s});
    verifyQuiet({program, u"x"_s});
    QCOMPARE(readReport(m_report).started, possible);
}

void LauncherFaultsTest::wordsThatAreNoText()
{
    m_process->setProcessEnvironment(m_environment);
    const QString script = u"exec \"$0\" \"$1\" \"$(printf 'a\\377b')\" \"$(printf '\\200')\""_s;
    m_process->start(u"sh"_s, {u"-c"_s, script, BuiltWith::launcher(), m_arguments});
    // What is no character of the local encoding is shown, and arrives, as the replacement.
    verifyQuiet({m_arguments, u"a\ufffdb"_s, u"\ufffd"_s});
    QCOMPARE(readReport(m_report).arguments, (QStringList{u"a\ufffdb"_s, u"\ufffd"_s, u""_s}));
}

void LauncherFaultsTest::targetGetsNoDescriptors()
{
#ifndef Q_OS_LINUX
    QSKIP("The system does not tell what a process has open");
#else
    const QString program = writeScript("ls /proc/self/fd >\"$HELPER_OUTPUT\"\n");
    // What this test was started with is everybody's.
    qputenv("HELPER_OUTPUT", QFile::encodeName(m_report));
    QCOMPARE(QProcess::execute(program), 0);
    const QByteArray inherited = noted();
    QVERIFY(inherited.startsWith("0\n1\n"));
    QVERIFY(QFile::remove(m_report));

    launch({program});
    verifyQuiet({program});
    QCOMPARE(noted(), inherited);
#endif
}

void LauncherFaultsTest::closedStreamsLeadNowhere_data()
{
    QTest::addColumn<int>("closed"); // a bit for each of them
    for (int closed = 0; closed < 8; ++closed)
        QTest::addRow("%d%d%d", closed & 1, closed >> 1 & 1, closed >> 2) << closed;
}

// Or the next file or pipe that the launcher opens would take the place of one, and be written to for it.
void LauncherFaultsTest::closedStreamsLeadNowhere()
{
#ifndef Q_OS_LINUX
    QSKIP("The system does not tell what a process has open");
#else
    QFETCH(int, closed);

    const QString program
        = writeScript("for n in 0 1 2; do readlink /proc/$PPID/fd/$n; done >\"$HELPER_OUTPUT\"\n");
    launch({program}, [closed] {
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            if ((closed >> descriptor & 1) != 0)
                close(descriptor);
        }
    });
    QVERIFY(m_process->waitForFinished(beforeTheBound));
    QCOMPARE(m_process->exitCode(), 0);
    const QByteArrayList targets = noted().split('\n');
    QCOMPARE(targets.size(), 4);
    for (int descriptor = 0; descriptor < 3; ++descriptor)
        QCOMPARE(targets[descriptor] == "/dev/null", (closed >> descriptor & 1) != 0);
#endif
}

void LauncherFaultsTest::runsLeaveNothingBehind()
{
    AppRuntime runtime(u"TEST"_s);
    QFile noProgram(m_report);
    QVERIFY(noProgram.open(QIODevice::WriteOnly));
    noProgram.close();
    const int before = openDescriptors();
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(runtime.runProgram(m_behave, u"exit 3"_s, QString(), true), 0);
        QCOMPARE(runtime.runProgram(m_behave, u"crash"_s, QString(), true), 0);
        QCOMPARE(runtime.runProgram(m_behave, u"flood 100000"_s, QString(), true), 0);
        for (const auto &missing : {u"/nowhere/prog"_s, u"no-such-program"_s, u"/"_s, m_report})
            QCOMPARE(runtime.runProgram(missing, QString(), QString(), true), 0);
        QCOMPARE(runtime.runProgram(u"/nowhere/prog"_s, QString(), QString(), false), 5);
    }
    QCOMPARE(openDescriptors(), before);
}

QTEST_GUILESS_MAIN(LauncherFaultsTest)
#include "tst_launcherfaults.moc"
