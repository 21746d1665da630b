// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
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
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr uid_t nobody = 65534;

bool lives(pid_t process)
{
    return kill(process, 0) == 0 || errno != ESRCH;
}

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
    void gigabytes();
    void harmlessSignals();
    void endingSignals_data();
    void endingSignals();
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
    QVERIFY(m_process->waitForFinished(25'000)); // the bound of a target would be longer
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
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

    // The toolkit comments on a pipe that it cannot have, and with its first comment on a rule for comments.
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
        if (!m_process->waitForFinished(25'000))
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
    const qint64 full = trace.size();
    QVERIFY(full > 0);

    m_process->setStandardOutputFile(name, QIODevice::Append);
    launch({m_arguments, u"x"_s});
    QVERIFY(m_process->waitForFinished());
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
        const auto child = static_cast<pid_t>(noted().toLong());
        QVERIFY(child > 0);
        kill(child, SIGKILL);
    }
}

void LauncherFaultsTest::gigabytes()
{
    launch({m_behave, u"flood"_s, u"1000000000"_s}); // on each of both outputs
    qint64 peak = 0;
    QVERIFY(m_process->waitForStarted());
    for (int i = 0; i < 20; ++i) { // it is constant from early on
        peak = qMax(peak, peakKilobytes(m_process->processId()));
        QTest::qSleep(10);
    }
    verifyQuiet({m_behave, u"flood"_s, u"1000000000"_s});
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(peak < 40'000, qPrintable(u"%1 kB"_s.arg(peak)));
#endif
}

void LauncherFaultsTest::harmlessSignals()
{
    const QStringList words{m_behave, u"nap"_s, u"1500"_s};
    launch(words);
    QTRY_VERIFY(noted().toLong() > 0);
    const auto launcher = static_cast<pid_t>(m_process->processId());
    for (const int signal : {SIGCHLD, SIGCONT, SIGWINCH, SIGURG, SIGPIPE, SIGSTOP, SIGCONT}) {
        QCOMPARE(kill(launcher, signal), 0);
        QTest::qWait(20);
    }
    verifyQuiet(words);
    QCOMPARE(noted(), "rested"); // waited for to the end
}

void LauncherFaultsTest::endingSignals_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("terminate") << SIGTERM;
    QTest::newRow("hang up") << SIGHUP;
    QTest::newRow("kill") << SIGKILL;
}

void LauncherFaultsTest::endingSignals()
{
    QFETCH(int, signal);

    launch({m_behave, u"sleep"_s});
    QTRY_VERIFY(noted().toLong() > 0);
    const auto target = static_cast<pid_t>(noted().toLong());
    QCOMPARE(kill(static_cast<pid_t>(m_process->processId()), signal), 0);
    QVERIFY(m_process->waitForFinished(5'000)); // at once, and as whoever sent it expects
    QCOMPARE(m_process->exitStatus(), QProcess::CrashExit);
    QCOMPARE(m_process->exitCode(), signal);
    QVERIFY(m_process->readAllStandardOutput().endsWith("sleep \n"));
    QVERIFY(lives(target)); // a terminal's signals reach it too, these were for the launcher alone
    kill(target, SIGKILL);
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
    QVERIFY(m_process->waitForFinished());
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
