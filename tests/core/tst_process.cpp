// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/boundedrun.h>
#include <support/builtwith.h>
#include <support/comestrue.h>
#include <support/processes.h>
#include <support/report.h>

#include <QTest>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>

#include <climits>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{

const QString refusal = u"bad QChar (..\\ or ../)"_s;

} // namespace

class ProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void runProgramArguments_data();
    void runProgramArguments();
    void runProgramRefused_data();
    void runProgramRefused();
    void runProgramLineBreak();
    void runProgramNeverFails_data();
    void runProgramNeverFails();
    void runProgramSearches_data();
    void runProgramSearches();
    void runProgramNul_data();
    void runProgramNul();
    void runProgramStandardInput();
    void runProgramForgetsTheProcess();
    void runProgramCallerKilled();
    void runProgramLeavesTheRest();
    void runProgramProcessesNoEvents();
    void runProgramDetached_data();
    void runProgramDetached();
    void runProgramDetachedFails_data();
    void runProgramDetachedFails();
    void runShellCommand_data();
    void runShellCommand();
    void runShellCommandOfTheSystem();
    void isSafePathText_data();
    void isSafePathText();
    void replaceLineBreaks_data();
    void replaceLineBreaks();
    void waitMilliseconds_data();
    void waitMilliseconds();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<AppRuntime> m_runtime;
    QString m_report;
};

void ProcessTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_runtime = std::make_unique<AppRuntime>(u"TEST"_s);
    m_runtime->lastError = u"old"_s;
    m_runtime->checkMessage = u"old"_s;
    m_report = m_directory->filePath(u"report"_s);
    qputenv("HELPER_OUTPUT", m_report.toLocal8Bit());
    // A warning of Qt ends up on a program's standard error.
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void ProcessTest::cleanup()
{
    QCOMPARE(m_runtime->checkMessage, u"old"_s);
}

void ProcessTest::runProgramArguments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("empty text") << u""_s << QStringList{u""_s};
    QTest::newRow("null text") << QString() << QStringList{u""_s};
    QTest::newRow("one") << u"a"_s << QStringList{u"a"_s};
    QTest::newRow("blank behind") << u"x y "_s << QStringList{u"x"_s, u"y"_s, u""_s};
    QTest::newRow("blank in front") << u" x"_s << QStringList{u""_s, u"x"_s};
    QTest::newRow("two blanks") << u"a  b"_s << QStringList{u"a"_s, u""_s, u"b"_s};
    QTest::newRow("a blank alone") << u" "_s << QStringList{u""_s, u""_s};
    QTest::newRow("no quoting") << u"\"a b\" 'c d'"_s << QStringList{u"\"a"_s, u"b\""_s, u"'c"_s, u"d'"_s};
    QTest::newRow("no escaping") << u"a\\ b"_s << QStringList{u"a\\"_s, u"b"_s};
    QTest::newRow("a tab does not split") << u"a\tb"_s << QStringList{u"a\tb"_s};
    QTest::newRow("an ideographic space does not split") << u"a\u3000b"_s << QStringList{u"a\u3000b"_s};
    QTest::newRow("line breaks split") << u"a\r\nb\nc"_s << QStringList{u"a"_s, u""_s, u"b"_s, u"c"_s};
    QTest::newRow("nothing is expanded")
        << u"* $HOME %PATH% ~ `x` ;"_s
        << QStringList{u"*"_s, u"$HOME"_s, u"%PATH%"_s, u"~"_s, u"`x`"_s, u";"_s};
    QTest::newRow("options of Qt"
    ) << u"-style x -platform y -qmljsdebugger=port:1"_s
      << QStringList{u"-style"_s, u"x"_s, u"-platform"_s, u"y"_s, u"-qmljsdebugger=port:1"_s};
    QTest::newRow("Japanese") << u"漢字 ｶﾅ 😀"_s << QStringList{u"漢字"_s, u"ｶﾅ"_s, u"😀"_s};
    QTest::newRow("lone dots") << u".. ... ."_s << QStringList{u".."_s, u"..."_s, u"."_s};
}

void ProcessTest::runProgramArguments()
{
    QFETCH(QString, text);
    QFETCH(QStringList, arguments);

    QCOMPARE(m_runtime->runProgram(BuiltWith::helper(u"arguments"_s), text, u"not used"_s, true), 0);
    const Report report = readReport(m_report);
    QVERIFY(report.started);
    QCOMPARE(report.arguments, arguments);
    QCOMPARE(QDir(report.directory), QDir::current());
    QCOMPARE(report.standardInput, u"open"_s);
    QCOMPARE(m_runtime->lastError, u"old"_s);
}

void ProcessTest::runProgramRefused_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("text");

    const QString helper = BuiltWith::helper(u"arguments"_s);
    QTest::newRow("in the program") << helper + u"/../x"_s << u""_s;
    QTest::newRow("in the program, backslash") << u"..\\x"_s << u""_s;
    QTest::newRow("in the arguments") << helper << u"a ../b"_s;
    QTest::newRow("in the arguments, backslash") << helper << u"a..\\b"_s;
    QTest::newRow("in both") << u"../x"_s << u"../y"_s;
}

void ProcessTest::runProgramRefused()
{
    QFETCH(QString, program);
    QFETCH(QString, text);

    for (const bool wait : {true, false}) {
        m_runtime->lastError = u"old"_s;
        QCOMPARE(m_runtime->runProgram(program, text, u""_s, wait), 5);
        QCOMPARE(m_runtime->lastError, refusal);
        QVERIFY(!readReport(m_report).started);
    }
}

void ProcessTest::runProgramLineBreak()
{
#ifdef Q_OS_WIN
    QSKIP("A program's file cannot be linked to under another name here");
#else
    const QString link = m_directory->filePath(u"a b c"_s);
    QVERIFY(QFile::link(BuiltWith::helper(u"arguments"_s), link));
    const QString name = m_directory->filePath(u"a\rb\nc"_s);
    QCOMPARE(m_runtime->runProgram(name, u"x"_s, u""_s, true), 0);
    QCOMPARE(readReport(m_report).arguments, QStringList{u"x"_s});
#endif
}

void ProcessTest::runProgramNeverFails_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("text");

    const QString behave = BuiltWith::helper(u"behave"_s);
    QTest::newRow("no program") << u""_s << u""_s;
    QTest::newRow("missing program") << u"/nowhere/prog"_s << u""_s;
    QTest::newRow("missing on the search path") << u"no-such-program-anywhere"_s << u""_s;
    QTest::newRow("a directory") << QDir::tempPath() << u""_s;
    QTest::newRow("no program file") << QString::fromLocal8Bit(QT_TESTCASE_SOURCEDIR "/CMakeLists.txt")
                                     << u""_s;
    QTest::newRow("exit code 0") << behave << u"exit 0"_s;
    QTest::newRow("exit code 1") << behave << u"exit 1"_s;
    QTest::newRow("exit code 5") << behave << u"exit 5"_s;
    QTest::newRow("exit code 255") << behave << u"exit 255"_s;
    QTest::newRow("crash") << behave << u"crash"_s;
    QTest::newRow("much on both outputs") << behave << u"flood 5000000"_s;
    QTest::newRow("much on the error output") << behave << u"flood-error 5000000"_s;
    QTest::newRow("lone surrogates") << QString(QChar(0xd800)) << QString(QChar(0xdc00));
}

void ProcessTest::runProgramNeverFails()
{
    QFETCH(QString, program);
    QFETCH(QString, text);

    QCOMPARE(m_runtime->runProgram(program, text, u""_s, true), 0);
    QCOMPARE(m_runtime->lastError, u"old"_s);
}

void ProcessTest::runProgramSearches_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("started");

    QTest::newRow("bare name on the search path") << u"found"_s << true;
    QTest::newRow("folder of the search path and name") << u"sub/inside"_s << false;
    QTest::newRow("bare name in the current directory") << u"here"_s << false;
    QTest::newRow("folder of the current directory and name") << u"./here"_s << true;
    QTest::newRow("a file that nobody may execute") << u"plain"_s << false;
    QTest::newRow("a folder") << u"sub"_s << false;
}

void ProcessTest::runProgramSearches()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has rules of its own");
#else
    QFETCH(QString, program);
    QFETCH(bool, started);

    const QString helper = BuiltWith::helper(u"arguments"_s), directory = QDir::currentPath();
    QVERIFY(QDir(m_directory->path()).mkpath(u"searched/sub"_s));
    for (const auto &name : {u"searched/found"_s, u"searched/sub/inside"_s, u"here"_s})
        QVERIFY(QFile::link(helper, m_directory->filePath(name)));
    QFile plain(m_directory->filePath(u"searched/plain"_s));
    QVERIFY(plain.open(QIODevice::WriteOnly));

    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", m_directory->filePath(u"searched"_s).toLocal8Bit());
    QVERIFY(QDir::setCurrent(m_directory->path()));
    const int result = m_runtime->runProgram(program, u""_s, u""_s, true);
    qputenv("PATH", path);
    QVERIFY(QDir::setCurrent(directory));

    QCOMPARE(result, 0);
    QCOMPARE(readReport(m_report).started, started);
#endif
}

void ProcessTest::runProgramNul_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("text");

    const QString helper = BuiltWith::helper(u"arguments"_s), nul = QChar(u'\0');
    QTest::newRow("behind the program") << helper + nul << u"a"_s;
    QTest::newRow("in the program") << helper + nul + u".safe"_s << u"a"_s;
    QTest::newRow("the program alone") << nul << u"a"_s;
    QTest::newRow("in an argument") << helper << u"a"_s + nul + u".safe"_s;
    QTest::newRow("an argument alone") << helper << nul;
    QTest::newRow("behind the last argument") << helper << u"a b "_s + nul;
    QTest::newRow("in both") << helper + nul << nul;
}

void ProcessTest::runProgramNul()
{
    QFETCH(QString, program);
    QFETCH(QString, text);

    QCOMPARE(m_runtime->runProgram(program, text, u""_s, true), 0);
    QCOMPARE(m_runtime->lastError, u"old"_s);
    QVERIFY(!readReport(m_report).started);

    QCOMPARE(m_runtime->runProgram(program, text, u""_s, false), 5);
    QCOMPARE(m_runtime->lastError, u"Process "_s + program + u' ' + text + u" error"_s);
    QVERIFY(!readReport(m_report).started);
}

void ProcessTest::runProgramStandardInput()
{
    // It is an open pipe even where the caller's own is at its end.
    QProcess caller;
    caller.setStandardInputFile(QProcess::nullDevice());
    caller.start(BuiltWith::helper(u"console"_s), {u"run"_s, BuiltWith::helper(u"arguments"_s), u""_s});
    QVERIFY(caller.waitForFinished(60'000));
    QCOMPARE(readReport(m_report).standardInput, u"open"_s);
}

// Its number may soon be that of another process, which must not get the signals of the launcher.
void ProcessTest::runProgramForgetsTheProcess()
{
#ifdef Q_OS_UNIX
    using appruntime_internal::waitedForProcess;
    QCOMPARE(m_runtime->runProgram(BuiltWith::helper(u"behave"_s), u"exit 3"_s, u""_s, true), 0);
    QVERIFY(notedProcess(m_report) > 0);
    QCOMPARE(waitedForProcess.load(), 0);
    QCOMPARE(m_runtime->runProgram(u"/nowhere/prog"_s, u""_s, u""_s, true), 0);
    QCOMPARE(waitedForProcess.load(), 0);
#else
    QSKIP("Windows sends no signals");
#endif
}

void ProcessTest::runProgramCallerKilled()
{
#if !defined(Q_OS_LINUX) && !defined(Q_OS_WIN)
    QSKIP("The system does not end a program with the one that waits for it");
#else
    QProcess caller;
    caller.start(BuiltWith::helper(u"console"_s), {u"run"_s, BuiltWith::helper(u"behave"_s), u"sleep"_s});
    QVERIFY(comesTrue([&] { return notedProcess(m_report) > 0; }));
    const qint64 target = notedProcess(m_report);
    QVERIFY(isRunning(target));
    caller.kill();
    QVERIFY(caller.waitForFinished(60'000));
    QVERIFY(comesTrue([&] { return !isRunning(target); }));
#endif
}

void ProcessTest::runProgramLeavesTheRest()
{
    // The process left behind holds the pipes for two minutes, and in the second case keeps filling them.
#ifdef Q_OS_WIN
    const QStringList verbs{u"leave"_s};
#else
    const QStringList verbs{u"leave"_s, u"leave-flood"_s};
#endif
    for (const QString &verb : verbs) {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(m_runtime->runProgram(BuiltWith::helper(u"behave"_s), verb, u""_s, true), 0);
        QVERIFY2(timer.elapsed() < 25'000, "waited for what the program left behind");
        QVERIFY(comesTrue([&] { return notedProcess(m_report) > 0; }));
        if (verb == u"leave"_s) // the other one finds that nobody reads its pipe
            QVERIFY(isRunning(notedProcess(m_report)));
        killProcess(notedProcess(m_report));
    }
}

void ProcessTest::runProgramProcessesNoEvents()
{
    bool processed = false;
    QTimer::singleShot(0, this, [&] { processed = true; });
    QCOMPARE(m_runtime->runProgram(BuiltWith::helper(u"arguments"_s), u""_s, u""_s, true), 0);
    QVERIFY(!processed);
    QCoreApplication::processEvents();
    QVERIFY(processed);
}

void ProcessTest::runProgramDetached_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("two and an empty one") << u"x y "_s << QStringList{u"x"_s, u"y"_s, u""_s};
    QTest::newRow("none") << u""_s << QStringList{u""_s};
    QTest::newRow("line break") << u"x\ny"_s << QStringList{u"x"_s, u"y"_s};
}

void ProcessTest::runProgramDetached()
{
    QFETCH(QString, text);
    QFETCH(QStringList, arguments);

    QCOMPARE(m_runtime->runProgram(BuiltWith::helper(u"arguments"_s), text, u"not used"_s, false), 0);
    QVERIFY(comesTrue([&] { return QFile::exists(m_report); }));
    const Report report = readReport(m_report);
    QCOMPARE(report.arguments, arguments);
    QCOMPARE(QDir(report.directory), QDir::current());
    QCOMPARE(m_runtime->lastError, u"old"_s);
}

void ProcessTest::runProgramDetachedFails_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    QTest::newRow("missing program") << u"/nowhere/prog"_s << u"a b "_s
                                     << u"Process /nowhere/prog a b  error"_s;
    QTest::newRow("no program") << u""_s << u""_s << u"Process   error"_s;
    QTest::newRow("line breaks are blanks by then")
        << u"/nowhere/a\rb"_s << u"c\nd"_s << u"Process /nowhere/a b c d error"_s;
    QTest::newRow("a directory") << u"/"_s << u"x"_s << u"Process / x error"_s;
}

void ProcessTest::runProgramDetachedFails()
{
    QFETCH(QString, program);
    QFETCH(QString, text);
    QFETCH(QString, message);

    QCOMPARE(m_runtime->runProgram(program, text, u""_s, false), 5);
    QCOMPARE(m_runtime->lastError, message);
}

void ProcessTest::runShellCommand_data()
{
    QTest::addColumn<QChar>("letter");
    QTest::addColumn<bool>("extra");
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("arguments"); // empty where nothing is started
    QTest::addColumn<QString>("error");

    for (const bool extra : {false, true}) {
        const char *form = extra ? "with extra text" : "alone";
        QTest::addRow("Windows, %s", form) << QChar(u'W') << extra << u"dir /b"_s << 0
                                           << QStringList{u"/c"_s, u"dir"_s, u"/b"_s} << u"old"_s;
        QTest::addRow("Windows, empty, %s", form)
            << QChar(u'W') << extra << u""_s << 0 << QStringList{u"/c"_s, u""_s} << u"old"_s;
        QTest::addRow("Windows, refused, %s", form)
            << QChar(u'W') << extra << u"del ..\\x"_s << 5 << QStringList() << refusal;
        QTest::addRow("Unix-like, %s", form)
            << QChar(u'U') << extra << u"dir /b"_s << 0 << QStringList() << u"old"_s;
        QTest::addRow("Unix-like, not refused, %s", form)
            << QChar(u'U') << extra << u"del ..\\x"_s << 0 << QStringList() << u"old"_s;
        QTest::addRow("small letter, %s", form)
            << QChar(u'w') << extra << u"dir"_s << 0 << QStringList() << u"old"_s;
    }
}

void ProcessTest::runShellCommand()
{
    QFETCH(QChar, letter);
    QFETCH(bool, extra);
    QFETCH(QString, command);
    QFETCH(int, result);
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);

    const QByteArray path = qgetenv("PATH");
    const QString directory = QDir::currentPath();
#ifdef Q_OS_WIN
    // Only the system's own shell is run. A program of that name in the current directory, where Windows
    // looks first, or on the search path is not.
    QVERIFY(QFile::copy(BuiltWith::helper(u"arguments.exe"_s), m_directory->filePath(u"cmd.exe"_s)));
    QVERIFY(QDir::setCurrent(m_directory->path()));
    arguments.clear();
#else
    QVERIFY(QFile::link(BuiltWith::helper(u"arguments"_s), m_directory->filePath(u"cmd"_s)));
#endif
    qputenv("PATH", QFile::encodeName(m_directory->path()) + QDir::listSeparator().toLatin1() + path);
    m_runtime->platformChar = letter;
    QCOMPARE(
        extra ? m_runtime->runShellCommand(command, u"not used"_s) : m_runtime->runShellCommand(command),
        result
    );
    qputenv("PATH", path);
    QVERIFY(QDir::setCurrent(directory));

    const Report report = readReport(m_report);
    QCOMPARE(report.started, !arguments.isEmpty());
    QCOMPARE(report.arguments, arguments);
    if (report.started)
        QCOMPARE(report.standardInput, u"open"_s); // as of a program that is waited for
    QCOMPARE(m_runtime->lastError, error);
}

void ProcessTest::runShellCommandOfTheSystem()
{
#ifdef Q_OS_WIN
    const QString directory = QDir::currentPath();
    QVERIFY(QFile::copy(BuiltWith::helper(u"arguments.exe"_s), m_directory->filePath(u"cmd.exe"_s)));
    QVERIFY(QDir::setCurrent(m_directory->path()));
    QCOMPARE(m_runtime->runShellCommand(u"echo abc>漢字.txt"_s), 0);
    QVERIFY(QDir::setCurrent(directory));
    QFile file(m_directory->filePath(u"漢字.txt"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("abc\r\n"));
#else
    QSKIP("There is no such shell on this system");
#endif
}

void ProcessTest::isSafePathText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("safe");

    QTest::newRow("empty") << u""_s << true;
    QTest::newRow("plain") << u"prog"_s << true;
    QTest::newRow("two dots") << u".."_s << true;
    QTest::newRow("three dots") << u"..."_s << true;
    QTest::newRow("one dot and slash") << u"./x"_s << true;
    QTest::newRow("slash and two dots") << u"/.."_s << true;
    QTest::newRow("dots apart") << u". ./x"_s << true;
    QTest::newRow("full-width slash") << u"..／x"_s << true;
    QTest::newRow("up") << u"../x"_s << false;
    QTest::newRow("up, backslash") << u"..\\x"_s << false;
    QTest::newRow("up alone") << u"../"_s << false;
    QTest::newRow("up alone, backslash") << u"..\\"_s << false;
    QTest::newRow("at the end") << u"a/../"_s << false;
    QTest::newRow("inside a name") << u"a..\\b"_s << false;
    QTest::newRow("inside a name, slash") << u"a../b"_s << false;
    QTest::newRow("three dots and slash") << u".../x"_s << false;
    QTest::newRow("behind a blank") << u"a b ../c"_s << false;
}

void ProcessTest::isSafePathText()
{
    QFETCH(QString, text);
    QFETCH(bool, safe);
    QCOMPARE(m_runtime->isSafePathText(text), safe);
    QCOMPARE(m_runtime->lastError, safe ? u"old"_s : refusal);
}

void ProcessTest::replaceLineBreaks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("replacement");
    QTest::addColumn<QString>("result");

    QTest::newRow("empty") << u""_s << QChar(u' ') << u""_s;
    QTest::newRow("none") << u"a b"_s << QChar(u'?') << u"a b"_s;
    QTest::newRow("LF") << u"a\nb"_s << QChar(u' ') << u"a b"_s;
    QTest::newRow("CR") << u"a\rb"_s << QChar(u' ') << u"a b"_s;
    QTest::newRow("CR LF gives two") << u"a\r\nb"_s << QChar(u'?') << u"a??b"_s;
    QTest::newRow("at both ends") << u"\na\r"_s << QChar(u'-') << u"-a-"_s;
    QTest::newRow("only breaks") << u"\n\n\r"_s << QChar(u'x') << u"xxx"_s;
    QTest::newRow("other breaks stay") << u"a\u2028\u0085\v\fb"_s << QChar(u'?') << u"a\u2028\u0085\v\fb"_s;
    QTest::newRow("by a line feed") << u"a\r\nb"_s << QChar(u'\n') << u"a\n\nb"_s;
    QTest::newRow("by a carriage return") << u"a\r\nb"_s << QChar(u'\r') << u"a\r\rb"_s;
    QTest::newRow("by kanji") << u"a\nb"_s << QChar(u'漢') << u"a漢b"_s;
}

void ProcessTest::replaceLineBreaks()
{
    QFETCH(QString, text);
    QFETCH(QChar, replacement);
    const QString copy(text.constData(), text.size());
    QTEST(m_runtime->replaceLineBreaks(text, replacement), "result");
    QCOMPARE(text, copy);
}

void ProcessTest::waitMilliseconds_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("longEnough"); // for an event due after 20 milliseconds

    QTest::newRow("none") << 0 << false;
    QTest::newRow("negative") << -5 << false;
    QTest::newRow("smallest") << INT_MIN << false;
    QTest::newRow("some") << 200 << true;
}

void ProcessTest::waitMilliseconds()
{
    QFETCH(int, milliseconds);
    QFETCH(bool, longEnough);

    bool soon = false;
    bool late = false;
    QObject receiver;
    QTimer::singleShot(20, &receiver, [&] { soon = true; });
    QTimer::singleShot(60'000, &receiver, [&] { late = true; });
    m_runtime->waitMilliseconds(milliseconds);
    if (longEnough)
        QVERIFY(soon);
    QVERIFY(!late);
}

QTEST_GUILESS_MAIN(ProcessTest)
#include "tst_process.moc"
