// SPDX-License-Identifier: MIT
#include <support/builtwith.h>
#include <support/localtext.h>
#include <support/processes.h>

#include <QTest>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
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
    };

    void launch(const char *name, const QStringList &words, const QProcessEnvironment &extra = {});
    Run &start(
        const char *name,
        const QString &program,
        const QStringList &words,
        const QProcessEnvironment &extra = {}
    );

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
    if (!extra.isEmpty())
        run.process.setWorkingDirectory(BuiltWith::fakes()
        ); // looked in first on Windows, before the system's folder
    connect(&run.process, &QProcess::finished, this, [this, &run] { run.milliseconds = m_clock.elapsed(); });
    run.process.start(program, words);
    return run;
}

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
    // A program of its own has nobody who drops what the toolkit complains of.
    start("waits without the launcher", BuiltWith::helper(u"console"_s), {u"run"_s, behave, u"sleep"_s});
    QProcessEnvironment fakes;
    const QString path
        = QDir::toNativeSeparators(BuiltWith::fakes()) + QDir::listSeparator() + qEnvironmentVariable("PATH");
    fakes.insert(u"PATH"_s, path);
    fakes.insert(u"HELPER_HOSTNAME"_s, u"hang"_s);
    launch("host name command hangs", {behave, u"exit"_s, u"3"_s}, fakes);
    fakes.insert(u"HELPER_HOSTNAME"_s, u"flood"_s);
    launch("host name command prints without end", {behave, u"exit"_s, u"3"_s}, fakes);

    for (bool running = true; running;) {
        QTest::qWait(100);
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
    QVERIFY2(run.milliseconds < 45'000, "ended late");
#ifdef Q_OS_UNIX
    QFile report(run.report);
    QVERIFY(report.open(QIODevice::ReadOnly));
    const auto target = static_cast<pid_t>(report.readAll().toLong());
    QVERIFY(target > 0);
    QVERIFY2(kill(target, 0) != 0 && errno == ESRCH, "the target still lives");
#endif
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(run.peakKilobytes < mostKilobytes, qPrintable(u"%1 kB"_s.arg(run.peakKilobytes)));
#endif
}

QTEST_GUILESS_MAIN(LauncherBoundTest)
#include "tst_launcherbound.moc"
