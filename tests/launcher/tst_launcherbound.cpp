// SPDX-License-Identifier: MIT
#include <support/builtwith.h>
#include <support/comestrue.h>
#include <support/localtext.h>
#include <support/processes.h>

#include <QTest>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>
#include <utility>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace
{

// What a target prints in 30 seconds is more than either by far. Under Wine a launcher with widgets takes 55
// to 80 megabytes, most of it the system's own libraries.
#ifdef Q_OS_WIN
constexpr qint64 mostKilobytes = 200'000;
#else
constexpr qint64 mostKilobytes = 40'000;
#endif

} // namespace

/// Targets that do not end by themselves. All who wait for them run side by side from the start of the test,
/// and each row then looks at one of them.
class LauncherBoundTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void ended_data();
    void ended();

private:
    struct Run {
        QProcess process;
        QString report;   ///< Where the target writes its process number.
        QByteArray lines; ///< What is printed by who waits.
        qint64 milliseconds{0};
        qint64 peakKilobytes{0};
        bool survives{false}; ///< Whether the target cannot be killed.
    };

    void launch(const char *name, const QStringList &words, const QProcessEnvironment &extra = {});
    Run &start(
        const char *name,
        const QString &program,
        const QStringList &words,
        const QProcessEnvironment &extra = {}
    );

    void launchSuperuser(const char *name, const QString &verb);
    void launchStopped(const char *name, const QStringList &words);

    std::function<void()> m_resume{[] {
    }};
    QTemporaryDir m_directory;
    QElapsedTimer m_clock;
    std::map<QByteArray, Run> m_runs;
};

void LauncherBoundTest::launch(const char *name, const QStringList &words, const QProcessEnvironment &extra)
{
    start(name, BuiltWith::launcher(), words, extra).lines
        = consoleBytes(BuiltWith::banner() + wordsLine(words));
}

LauncherBoundTest::Run &LauncherBoundTest::start(
    const char *name, const QString &program, const QStringList &words, const QProcessEnvironment &extra
)
{
    Run &run = m_runs[name];
    run.report = m_directory.filePath(QString::fromLatin1(name));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(extra);
    environment.insert(u"HELPER_OUTPUT"_s, run.report);
    run.process.setProcessEnvironment(environment);
    connect(&run.process, &QProcess::finished, this, [this, &run] { run.milliseconds = m_clock.elapsed(); });
    run.process.start(program, words);
    return run;
}

#ifdef Q_OS_UNIX

/// The target becomes the superuser, whom the launcher may not kill.
void LauncherBoundTest::launchSuperuser(const char *name, const QString &verb)
{
    constexpr uid_t nobody = 65534;
    const QString program = m_directory.filePath(u"superuser"_s);
    const QByteArray file = QFile::encodeName(program);
    if (geteuid() != 0 || chmod(QFile::encodeName(m_directory.path()).constData(), 0777) != 0
        || (!QFile::exists(program) && !QFile::copy(BuiltWith::helper(u"behave"_s), program))
        || chmod(file.constData(), 04755) != 0)
        return;
    Run &run = m_runs[name];
    run.process.setChildProcessModifier([] {
        if (setuid(nobody) != 0)
            _exit(0);
    });
    run.survives = true;
    launch(name, {program, verb});
    if (!run.process.waitForStarted())
        m_runs.erase(name); // the build folder is private: nobody else can start the launcher
}

/// The launcher and its target are stopped until the 30 seconds are over.
void LauncherBoundTest::launchStopped(const char *name, const QStringList &words)
{
    launch(name, words);
    const Run &run = m_runs[name];
    QVERIFY(comesTrue([&] { return notedProcess(run.report) > 0; }));
    const auto launcher = static_cast<pid_t>(run.process.processId());
    const auto target = static_cast<pid_t>(notedProcess(run.report));
    kill(launcher, SIGSTOP);
    kill(target, SIGSTOP);
    m_resume = [before = m_resume, launcher, target] {
        before();
        kill(target, SIGCONT);
        kill(launcher, SIGCONT);
    };
}

#endif

void LauncherBoundTest::initTestCase()
{
    const QString behave = BuiltWith::helper(u"behave"_s);
    m_clock.start();
    launch("sleeps", {behave, u"sleep"_s});
    launch("prints on both outputs", {behave, u"flood"_s});
    launch("prints on the error output", {behave, u"flood-error"_s});
#ifdef Q_OS_UNIX
    launch("ignores signals", {behave, u"ignore"_s});
    launch("stops itself", {behave, u"stop"_s});
    launch("closes its outputs", {behave, u"close"_s});
#endif
#ifdef Q_OS_WIN
    launch("the shell waits for a key", {u"cmd"_s, u"/c"_s, u"pause"_s});
#endif
    // In a program of its own nobody drops the warnings of Qt.
    start("waits without the launcher", BuiltWith::helper(u"console"_s), {u"run"_s, behave, u"sleep"_s});
#ifdef Q_OS_UNIX
    QProcessEnvironment fakes;
    fakes.insert(u"PATH"_s, BuiltWith::fakes() + u':' + qEnvironmentVariable("PATH"));
    fakes.insert(u"HELPER_HOSTNAME"_s, u"hang"_s);
    launch("host name command hangs", {behave, u"exit"_s, u"3"_s}, fakes);
    fakes.insert(u"HELPER_HOSTNAME"_s, u"flood"_s);
    launch("host name command prints without end", {behave, u"exit"_s, u"3"_s}, fakes);

    launchSuperuser("cannot be killed", u"superuser"_s);
    launchSuperuser("cannot be killed and prints", u"superuser-flood"_s);
    launchStopped("both stopped", {behave, u"sleep"_s});
    launchStopped("both stopped, and prints", {behave, u"flood"_s});
#endif

    for (bool running = true; running;) {
        QTest::qWait(100);
#ifdef Q_OS_UNIX
        if (m_clock.elapsed() > 32'000)
            std::exchange(m_resume, [] {})();
#endif
        running = false;
        for (auto &[name, run] : m_runs) {
            if (run.process.state() == QProcess::NotRunning)
                continue;
            running = true;
            run.peakKilobytes = qMax(run.peakKilobytes, peakKilobytes(run.process.processId()));
        }
        if (m_clock.elapsed() > 100'000)
            break; // the rows say which did not end
    }
}

void LauncherBoundTest::ended_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const auto &[name, run] : m_runs)
        QTest::newRow(name.constData()) << name;
}

void LauncherBoundTest::ended()
{
    QFETCH(QByteArray, name);
    Run &run = m_runs[name];

    QCOMPARE(run.process.state(), QProcess::NotRunning);
    QCOMPARE(run.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(run.process.exitCode(), 0);
    QCOMPARE(run.process.readAllStandardOutput(), run.lines);
    QCOMPARE(run.process.readAllStandardError(), QByteArray());
    QVERIFY2(run.milliseconds >= 29'000, "ended before its time");
    QVERIFY2(run.milliseconds < 55'000, "ended late");
    const qint64 target = notedProcess(run.report);
    QCOMPARE(target > 0, name != "the shell waits for a key"); // which notes nothing
    if (run.survives)
        killProcess(target);
    else
        QVERIFY2(!isRunning(target), "the target still lives");
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(run.peakKilobytes < mostKilobytes, qPrintable(u"%1 kB"_s.arg(run.peakKilobytes)));
#endif
}

QTEST_GUILESS_MAIN(LauncherBoundTest)
#include "tst_launcherbound.moc"
