// SPDX-License-Identifier: MIT
#include <support/builtwith.h>
#include <support/localtext.h>
#include <support/report.h>

#include <QTest>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

/// The launcher as its user sees it: a program with a command line, output bytes and an exit code.
class LauncherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void output_data();
    void output();
    void arguments_data();
    void arguments();
    void target_data();
    void target();
    void environmentArrives();
    void environment_data();
    void environment();
    void closedStreams_data();
    void closedStreams();
    void outputFull();
    void outputWithoutReader();
    void removedDirectory();
    void noWordsAtAll();

private:
    void launch(const QStringList &words);
    void verifyQuiet(const QByteArray &output);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_process;
    QProcessEnvironment m_environment;
    QString m_report;
};

void LauncherTest::init()
{
    m_process = std::make_unique<QProcess>();
    m_directory = std::make_unique<QTemporaryDir>();
    m_report = m_directory->filePath(u"report"_s);
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(u"HELPER_OUTPUT"_s, m_report);
}

void LauncherTest::launch(const QStringList &words)
{
    m_process->setProcessEnvironment(m_environment);
    m_process->start(BuiltWith::launcher(), words);
    QVERIFY(m_process->waitForFinished(120'000)); // for a machine that has much else to do
}

void LauncherTest::verifyQuiet(const QByteArray &output)
{
    QCOMPARE(m_process->readAllStandardOutput(), consoleBytes(output));
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
}

void LauncherTest::output_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QByteArray>("lines"); // below the banner

    const QString missing = u"no-such-program"_s;
    QTest::newRow("no words") << QStringList() << QByteArray(" \n");
    QTest::newRow("an empty word") << QStringList{u""_s} << QByteArray(" \n");
    QTest::newRow("program alone") << QStringList{missing} << QByteArray("no-such-program \n");
    QTest::newRow("two arguments") << QStringList{missing, u"a"_s, u"b"_s}
                                   << QByteArray("no-such-program a b \n");
    QTest::newRow("an empty argument") << QStringList{missing, u""_s} << QByteArray("no-such-program  \n");
    QTest::newRow("blanks") << QStringList{u"a b"_s, u" c "_s} << QByteArray("a b  c  \n");
    QTest::newRow("options of Qt") << QStringList{missing, u"-platform"_s, u"x"_s}
                                   << QByteArray("no-such-program -platform x \n");
    QTest::newRow("option of Qt first")
        << QStringList{u"-platform"_s, u"x"_s} << QByteArray("-platform x \n");
    QTest::newRow("line break") << QStringList{missing, u"a\nb"_s} << QByteArray("no-such-program a\nb \n");
#ifdef Q_OS_WIN
    if (localIsShiftJis()) {
        QTest::newRow("Japanese") << QStringList{u"漢字"_s, u"ｶﾅ"_s}
                                  << "\x8a\xbf\x8e\x9a \xb6\xc5 (" + u"漢字 ｶﾅ )\n"_s.toUtf8();
        // The substitutes come with the arguments, and so stand in both forms.
        QTest::newRow("no form in the code page")
            << QStringList{u"漢😀"_s} << "\x8a\xbf?? (" + u"漢?? )\n"_s.toUtf8();
    }
#else
    QTest::newRow("Japanese") << QStringList{u"漢字"_s, u"ｶﾅ😀"_s} << QByteArray("漢字 ｶﾅ😀 \n");
#endif
    const QByteArray refusal = "bad QChar (..\\ or ../)\n";
    QTest::newRow("refused program") << QStringList{u"../x"_s} << "../x \n" + refusal;
    QTest::newRow("refused program, backslash") << QStringList{u"..\\x"_s} << "..\\x \n" + refusal;
    QTest::newRow("refused argument")
        << QStringList{missing, u"a"_s, u"b../c"_s} << "no-such-program a b../c \n" + refusal;
    QTest::newRow("refused argument, backslash")
        << QStringList{missing, u"..\\"_s} << "no-such-program ..\\ \n" + refusal;
    QTest::newRow("lone dots") << QStringList{u".."_s, u"..."_s} << QByteArray(".. ... \n");
}

void LauncherTest::output()
{
    QFETCH(QStringList, words);
    QFETCH(QByteArray, lines);
    launch(words);
    verifyQuiet(BuiltWith::banner() + lines);
}

void LauncherTest::arguments_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("arguments"); // as they reach the target

    QTest::newRow("none") << QStringList() << QStringList{u""_s};
    QTest::newRow("two") << QStringList{u"a"_s, u"b"_s} << QStringList{u"a"_s, u"b"_s, u""_s};
    QTest::newRow("an empty one") << QStringList{u""_s, u"b"_s} << QStringList{u""_s, u"b"_s, u""_s};
    QTest::newRow("with a blank") << QStringList{u"a b"_s} << QStringList{u"a"_s, u"b"_s, u""_s};
    QTest::newRow("options of Qt"
    ) << QStringList{u"-style"_s, u"x"_s, u"-platform"_s, u"y"_s, u"-qmljsdebugger=port:1"_s, u"-reverse"_s}
      << QStringList{
             u"-style"_s, u"x"_s, u"-platform"_s, u"y"_s, u"-qmljsdebugger=port:1"_s, u"-reverse"_s, u""_s};
    // On Windows what the code page has no form for is lost on the way to the launcher, and only that.
    QTest::newRow("Japanese") << QStringList{u"漢字"_s, u"ｶﾅ😀"_s}
                              << QStringList{throughLocal8Bit(u"漢字"_s), throughLocal8Bit(u"ｶﾅ😀"_s), u""_s};
    QStringList many;
    for (int i = 0; i < 5'000; ++i)
        many.append(QString::number(i));
    QTest::newRow("thousands") << many << many + QStringList{u""_s};
}

void LauncherTest::arguments()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, arguments);

    const QString target = BuiltWith::helper(u"arguments"_s);
    m_process->setWorkingDirectory(m_directory->path());
    launch(QStringList{target} + words);
    verifyQuiet(BuiltWith::banner() + wordsLine(QStringList{target} + words));

    const Report report = readReport(m_report);
    QVERIFY(report.started);
    QCOMPARE(report.arguments, arguments);
    QCOMPARE(QDir(report.directory), QDir(m_directory->path()));
    QCOMPARE(report.standardInput, u"open"_s);
}

void LauncherTest::target_data()
{
    QTest::addColumn<QStringList>("words");

    const QString behave = BuiltWith::helper(u"behave"_s);
    QTest::newRow("exits with 1") << QStringList{behave, u"exit"_s, u"1"_s};
    QTest::newRow("exits with 255") << QStringList{behave, u"exit"_s, u"255"_s};
    QTest::newRow("crashes") << QStringList{behave, u"crash"_s};
    QTest::newRow("prints much") << QStringList{behave, u"flood"_s, u"3000000"_s};
    QTest::newRow("prints much on the error output") << QStringList{behave, u"flood-error"_s, u"3000000"_s};
    QTest::newRow("is no program"
    ) << QStringList{QString::fromLocal8Bit(QT_TESTCASE_SOURCEDIR "/CMakeLists.txt")};
    QTest::newRow("is a directory") << QStringList{QDir::tempPath()};
    QTest::newRow("is missing") << QStringList{u"/nowhere/prog"_s, u"x"_s};
}

void LauncherTest::target()
{
    QFETCH(QStringList, words);
    launch(words);
    verifyQuiet(BuiltWith::banner() + wordsLine(words));
}

void LauncherTest::environmentArrives()
{
    m_environment.insert(u"NAME_漢字"_s, u"値 ｶﾅ"_s);
    launch({BuiltWith::helper(u"arguments"_s)});
    QStringList expected = m_environment.toStringList();
    QStringList found = readReport(m_report).environment;
    // Windows keeps the current directory of each drive there, under names that begin with an equals sign,
    // and Wine's graphics libraries pass settings to themselves.
    const auto isSystems = [](const QString &entry) {
        return entry.startsWith(u'=') || entry.startsWith("VKD3D_"_L1);
    };
    expected.removeIf(isSystems);
    found.removeIf(isSystems);
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
}

void LauncherTest::environment_data()
{
    QTest::addColumn<QStringList>("set"); // NAME=VALUE, or NAME to unset
    const auto row = [](const char *name, const QStringList &set) {
        QTest::newRow(name) << set;
    };
    row("no display", {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s});
    row("wrong display", {u"DISPLAY=:4711"_s, u"WAYLAND_DISPLAY=nothing"_s});
    row("unknown platform plugin", {u"QT_QPA_PLATFORM=nothing"_s});
    row("plugins from elsewhere", {u"QT_PLUGIN_PATH=/nowhere"_s, u"QT_DEBUG_PLUGINS=1"_s});
    row("all logging of Qt", {u"QT_LOGGING_RULES=*=true"_s, u"QT_FORCE_STDERR_LOGGING=1"_s});
    row("locale C", {u"LC_ALL=C"_s});
    row("locale POSIX", {u"LC_ALL=POSIX"_s, u"LANG=POSIX"_s});
    row("missing locale", {u"LC_ALL=ja_JP.SJIS"_s});
    row("broken locale", {u"LC_ALL=%%%"_s, u"LANG=."_s});
    row("no locale", {u"LC_ALL"_s, u"LANG"_s, u"LC_CTYPE"_s});
    row("warnings of Qt fatal", {u"LC_ALL=C"_s, u"QT_FATAL_WARNINGS=1"_s});
    row("no search path", {u"PATH"_s});
    row("empty search path", {u"PATH="_s});
    row("no home", {u"HOME"_s, u"TMPDIR=/nowhere"_s});
}

void LauncherTest::environment()
{
    QFETCH(QStringList, set);
    for (const QString &entry : set) {
        const qsizetype equals = entry.indexOf(u'=');
        if (equals < 0)
            m_environment.remove(entry);
        else
            m_environment.insert(entry.first(equals), entry.sliced(equals + 1));
    }
    const QString target = BuiltWith::helper(u"arguments"_s);
    launch({target, u"x"_s});
    verifyQuiet(BuiltWith::banner() + wordsLine({target, u"x"_s}));

    const Report report = readReport(m_report);
    QCOMPARE(report.arguments, (QStringList{u"x"_s, u""_s}));
    for (const QString &entry : set) {
#ifdef Q_OS_WIN
        if (entry == u"PATH")
            continue; // the system gives every process one
#endif
        const bool isSet = entry.contains(u'=');
        const QString begin = isSet ? entry : entry + u'=';
        const bool found = std::any_of(
            report.environment.cbegin(),
            report.environment.cend(),
            [&begin](const QString &variable) { return variable.startsWith(begin); }
        );
        QVERIFY2(found == isSet, qPrintable(entry));
    }

    // With no environment at all but for the name of the report.
    m_environment.clear();
    m_environment.insert(u"HELPER_OUTPUT"_s, m_report);
    QVERIFY(QFile::remove(m_report));
    launch({target});
    verifyQuiet(BuiltWith::banner() + wordsLine({target}));
    QVERIFY(readReport(m_report).started);
}

void LauncherTest::closedStreams_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<bool>("output");
    QTest::addColumn<bool>("error");
    for (int closed = 0; closed < 8; ++closed) {
        const bool input = (closed & 1) != 0, output = (closed & 2) != 0, error = (closed & 4) != 0;
        QTest::addRow("%s%s%s closed", input ? "input " : "", output ? "output " : "", error ? "error" : "")
            << input << output << error;
    }
}

void LauncherTest::closedStreams()
{
#ifdef Q_OS_WIN
    QSKIP("Streams are closed here only by a program's own doing");
#else
    QFETCH(bool, input);
    QFETCH(bool, output);
    QFETCH(bool, error);

    m_process->setChildProcessModifier([=] {
        if (input)
            close(STDIN_FILENO);
        if (output)
            close(STDOUT_FILENO);
        if (error)
            close(STDERR_FILENO);
    });
    const QString target = BuiltWith::helper(u"arguments"_s);
    launch({target, u"x"_s});
    verifyQuiet(output ? QByteArray() : BuiltWith::banner() + wordsLine({target, u"x"_s}));
    const Report report = readReport(m_report);
    QCOMPARE(report.arguments, (QStringList{u"x"_s, u""_s}));
    QCOMPARE(report.standardInput, u"open"_s);
#endif
}

void LauncherTest::outputFull()
{
#ifndef Q_OS_LINUX
    QSKIP("Needs the device that is always full");
#else
    m_process->setStandardOutputFile(u"/dev/full"_s);
    launch({BuiltWith::helper(u"arguments"_s), u"x"_s});
    verifyQuiet(QByteArray());
    QVERIFY(readReport(m_report).started);
#endif
}

void LauncherTest::outputWithoutReader()
{
#ifdef Q_OS_WIN
    QSKIP("Needs a pipe that ends a program");
#else
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    close(ends[0]);
    m_process->setChildProcessModifier([&ends] { dup2(ends[1], STDOUT_FILENO); });
    launch({BuiltWith::helper(u"arguments"_s), u"x"_s});
    close(ends[1]);
    verifyQuiet(QByteArray());
    QVERIFY(readReport(m_report).started);
#endif
}

void LauncherTest::removedDirectory()
{
#ifdef Q_OS_WIN
    QSKIP("The current directory of a program cannot be removed");
#else
    const QByteArray gone = m_directory->filePath(u"gone"_s).toLocal8Bit();
    QVERIFY(QDir().mkdir(QString::fromLocal8Bit(gone)));
    m_process->setChildProcessModifier([&gone] {
        if (chdir(gone.constData()) == 0)
            rmdir(gone.constData());
    });
    launch({u"no-such-program"_s});
    verifyQuiet(BuiltWith::banner() + "no-such-program \n");
#endif
}

void LauncherTest::noWordsAtAll()
{
#ifdef Q_OS_WIN
    QSKIP("A program always has a name here");
#else
    // Not even a name for itself: an empty argument vector, as a careless parent may pass.
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    const QByteArray launcher = BuiltWith::launcher().toLocal8Bit();
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        char *words[] = {nullptr};
        execv(launcher.constData(), words);
        _exit(99);
    }
    close(ends[1]);
    QByteArray output;
    char byte = 0;
    while (read(ends[0], &byte, 1) == 1)
        output += byte;
    close(ends[0]);
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    QCOMPARE(output, BuiltWith::banner() + " \n");
#endif
}

QTEST_GUILESS_MAIN(LauncherTest)
#include "tst_launcher.moc"
