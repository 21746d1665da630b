// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
#include <support/localtext.h>

#include <QTest>

#include <QDir>

using namespace Qt::StringLiterals;

class PlatformTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void setupPlatformLetter();
    void programDirectory_data();
    void programDirectory();
    void hostName_data();
    void hostName();
    void queryHostNameOfTheSystem();
    void queryHostNameWithoutCommand();
    void queryHostName();
    void environmentValue_data();
    void environmentValue();
    void userName();
    void homeDirectory();
    void startDirectory();
    void setupPlatformAgain();

private:
    static void useFakeHostName(const QByteArray &output);

    QByteArray m_path;
    QString m_directory;
};

void PlatformTest::init()
{
    m_path = qgetenv("PATH");
    qputenv("PATH", BuiltWith::fakes().toLocal8Bit() + QDir::listSeparator().toLatin1() + m_path);
    m_directory = QDir::currentPath();
}

void PlatformTest::cleanup()
{
    qputenv("PATH", m_path);
    qunsetenv("HELPER_HOSTNAME");
    QDir::setCurrent(m_directory);
}

void PlatformTest::setupPlatformLetter()
{
    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.platformChar, BuiltWith::platformChar());
    QCOMPARE(runtime.pathSeparator, BuiltWith::windowsRules() ? u"\\"_s : u"/"_s);
    QCOMPARE(runtime.deleteCommand, BuiltWith::windowsRules() ? u"DEL"_s : u"RM"_s);
}

void PlatformTest::programDirectory_data()
{
    QTest::addColumn<QString>("path"); // with '/' for the separator
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("mismatch"); // the last character that was compared and was no separator

    QTest::newRow("empty") << u""_s << u""_s << u""_s;
    QTest::newRow("one character") << u"x"_s << u"x"_s << u""_s;
    QTest::newRow("a separator alone") << u"/"_s << u"/"_s << u""_s;
    QTest::newRow("two characters") << u"xy"_s << u"x"_s << u"y"_s;
    QTest::newRow("no separator") << u"x.exe"_s << u"x"_s << u"."_s;
    QTest::newRow("only the first is a separator") << u"/prog"_s << u"/"_s << u"p"_s;
    QTest::newRow("the second is a separator") << u"a/prog"_s << u"a/"_s << u"p"_s;
    QTest::newRow("two separators first") << u"//prog"_s << u"//"_s << u"p"_s;
    QTest::newRow("deep") << u"/opt/tools/ZBASE"_s << u"/opt/tools/"_s << u"Z"_s;
    QTest::newRow("separator at the end") << u"/opt/tools/"_s << u"/opt/tools/"_s << u""_s;
    QTest::newRow("one letter behind") << u"/opt/x"_s << u"/opt/"_s << u"x"_s;
    QTest::newRow("kanji") << u"/漢字/道具"_s << u"/漢字/"_s << u"道"_s;
    QTest::newRow("drive") << u"C:/tools/ZBASEWC.EXE"_s << u"C:/tools/"_s << u"Z"_s;
    QTest::newRow("the other separator does not count") << u"a|b"_s << u"a"_s << u"|"_s;
}

void PlatformTest::programDirectory()
{
    QFETCH(QString, path);
    QFETCH(QString, directory);
    QFETCH(QString, mismatch);

    const QChar separator = BuiltWith::windowsRules() ? u'\\' : u'/';
    const QChar other = BuiltWith::windowsRules() ? u'/' : u'\\';
    for (QString *text : {&path, &directory, &mismatch})
        *text = throughLocal8Bit(text->replace(u'/', separator).replace(u'|', other));

    QByteArray bytes = path.toLocal8Bit();
    char *argv[] = {bytes.data(), nullptr};
    const AppRuntime runtime(u"TEST"_s, 1, argv);
    QCOMPARE(runtime.programPath, path);
    QCOMPARE(runtime.programDirectory, directory);
    QCOMPARE(
        runtime.checkMessage,
        mismatch.isEmpty() ? QString() : u'"' + mismatch + u"\" not in('"_s + separator + u"')"_s
    );
    QCOMPARE(runtime.lastError, QString());
}

/// Puts the fake that prints `output` where each system looks first, until the test ends.
void PlatformTest::useFakeHostName(const QByteArray &output)
{
    qputenv("HELPER_HOSTNAME", output);
    QVERIFY(QDir::setCurrent(BuiltWith::fakes()));
}

void PlatformTest::hostName_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("upper");
    QTest::addColumn<QString>("key");

    const auto row =
        [](const char *what, const char *output, const QString &name, const QString &upper, const QString &key
        ) {
            QTest::newRow(what) << QByteArray(output) << name << upper << key;
        };
    row("with domain", "pc-01.sub\r\n", u"pc-01"_s, u"PC-01"_s, u"PC_01"_s);
    row("plain", "alpha\n", u"alpha"_s, u"ALPHA"_s, u"ALPHA"_s);
    row("no line end", "alpha", u"alpha"_s, u"ALPHA"_s, u"ALPHA"_s);
    row("nothing", "", u""_s, u""_s, u""_s);
    row("an empty line", "\n", u""_s, u""_s, u""_s);
    row("an empty line first", "\nalpha\n", u""_s, u""_s, u""_s);
    row("first line alone", "alpha\nbeta\n", u"alpha"_s, u"ALPHA"_s, u"ALPHA"_s);
    row("blanks and controls behind", "alpha \t\x01\x1f \r\n", u"alpha"_s, u"ALPHA"_s, u"ALPHA"_s);
    row("blanks in front stay", "  alpha\n", u"  alpha"_s, u"  ALPHA"_s, u"  ALPHA"_s);
    row("only what trails the line goes", "alpha .sub\n", u"alpha "_s, u"ALPHA "_s, u"ALPHA "_s);
    row("only blanks", "   \r\n", u""_s, u""_s, u""_s);
    row("dot first", ".sub\n", u""_s, u""_s, u""_s);
    row("two dots", "a.b.c\n", u"a"_s, u"A"_s, u"A"_s);
    row("every hyphen", "-a-b--c-\n", u"-a-b--c-"_s, u"-A-B--C-"_s, u"_A_B__C_"_s);
    row("underscores and other signs stay", "a_b+c\n", u"a_b+c"_s, u"A_B+C"_s, u"A_B+C"_s);
    row("in pieces", "pieces", u"alpha"_s, u"ALPHA"_s, u"ALPHA"_s);
    row("error output alone", "error", u""_s, u""_s, u""_s);
#ifndef Q_OS_WIN
    row("kanji", "漢字-ｶ\n", u"漢字-ｶ"_s, u"漢字-ｶ"_s, u"漢字_ｶ"_s);
    row("no-break space stays", "a\u00a0\n", u"a\u00a0"_s, u"A\u00a0"_s, u"A\u00a0"_s);
    row("no UTF-8", "a\xff.b\n", u"a\ufffd"_s, u"A\ufffd"_s, u"A\ufffd"_s);
#endif
    const QString megabyte(1'000'000, u'x');
    row("a megabyte", "megabyte", megabyte, megabyte.toUpper(), megabyte.toUpper());
}

void PlatformTest::hostName()
{
#ifdef Q_OS_WIN
    QSKIP("Only the command of the system's directory is run here");
#endif
    QFETCH(QByteArray, output);
    QFETCH(QString, name);
    QFETCH(QString, upper);
    QFETCH(QString, key);

    useFakeHostName(output);
    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.hostName, name);
    QCOMPARE(runtime.hostNameUpper, upper);
    QCOMPARE(runtime.hostKey, key);
    QCOMPARE(runtime.lastError, QString());
    QCOMPARE(runtime.checkMessage, QString());
}

void PlatformTest::queryHostNameOfTheSystem()
{
#ifdef Q_OS_WIN
    // A program of that name in the current directory or on the search path is not run.
    useFakeHostName("planted\n");
    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.hostName.compare(qEnvironmentVariable("COMPUTERNAME"), Qt::CaseInsensitive), 0);
#else
    QSKIP("Only Windows tells the name in another way too");
#endif
}

void PlatformTest::queryHostNameWithoutCommand()
{
#ifdef Q_OS_WIN
    QSKIP("The system's own is found here without a search path");
#endif
    qputenv("PATH", "/nowhere");
    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.hostName, QString());
    QCOMPARE(runtime.hostNameUpper, QString());
    QCOMPARE(runtime.hostKey, QString());
    QCOMPARE(runtime.lastError, QString());
}

void PlatformTest::queryHostName()
{
#ifdef Q_OS_WIN
    QSKIP("Only the command of the system's directory is run here");
#endif
    useFakeHostName("before\n");
    AppRuntime runtime(u"TEST"_s);
    qputenv("HELPER_HOSTNAME", "after\n");
    QCOMPARE(runtime.hostName, u"before"_s);
    QCOMPARE(runtime.queryHostName(), u"after"_s);
    QCOMPARE(runtime.hostName, u"before"_s);
}

void PlatformTest::environmentValue_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << u"RUNTIME_TEST"_s << u"value"_s;
    QTest::newRow("empty value") << u"RUNTIME_TEST"_s << u""_s;
    QTest::newRow("blanks") << u"RUNTIME_TEST"_s << u"  a b "_s;
    QTest::newRow("equals sign") << u"RUNTIME_TEST"_s << u"a=b"_s;
    QTest::newRow("Japanese value") << u"RUNTIME_TEST"_s << u"漢字ｶﾅ😀"_s;
    QTest::newRow("Japanese name") << u"変数ｶ"_s << u"a"_s;
    QTest::newRow("long") << u"RUNTIME_TEST"_s << QString(20'000, u'あ');
}

void PlatformTest::environmentValue()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);

    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.environmentValue(variable), QString());
#ifdef Q_OS_WIN
    _wputenv_s(qUtf16Printable(variable), qUtf16Printable(value));
#else
    qputenv(variable.toUtf8().constData(), value.toUtf8());
#endif
    QCOMPARE(runtime.environmentValue(variable), value);
    QCOMPARE(runtime.environmentValue(variable + u'X'), QString());
    QCOMPARE(runtime.environmentValue(variable.chopped(1)), QString());
    QCOMPARE(runtime.environmentValue(variable + QChar(u'\0') + u'X'), QString());
    QCOMPARE(runtime.environmentValue(QString()), QString());
#ifdef Q_OS_WIN
    _wputenv_s(qUtf16Printable(variable), L"");
#else
    qputenv(variable.toUtf8().constData(), "a\xff");
    QCOMPARE(runtime.environmentValue(variable), u"a\ufffd"_s);
    qunsetenv(variable.toUtf8().constData());
    // Half a pair is a question mark in UTF-8.
    qputenv("RUNTIME_TEST?", "half");
    QCOMPARE(runtime.environmentValue(u"RUNTIME_TEST"_s + QChar(0xd800)), u"half"_s);
    qunsetenv("RUNTIME_TEST?");
#endif
    QCOMPARE(runtime.environmentValue(variable), QString());
}

void PlatformTest::userName()
{
    AppRuntime runtime(u"TEST"_s);
    qputenv("USER", "unix");
    qputenv("USERNAME", "windows");
    QCOMPARE(runtime.userName(), BuiltWith::windowsRules() ? u"windows"_s : u"unix"_s);
    runtime.platformChar = u'W';
    QCOMPARE(runtime.userName(), u"windows"_s);
    runtime.platformChar = u'w';
    QCOMPARE(runtime.userName(), u"unix"_s);
    qunsetenv("USER");
    QCOMPARE(runtime.userName(), QString());
}

void PlatformTest::homeDirectory()
{
    const QByteArray before = qgetenv("SystemDrive");
    qputenv("SystemDrive", "Q:");
    QCOMPARE(AppRuntime(u"TEST"_s).homeDirectory, BuiltWith::windowsRules() ? u"Q:"_s : u"/home"_s);
    qunsetenv("SystemDrive");
    QCOMPARE(AppRuntime(u"TEST"_s).homeDirectory, BuiltWith::windowsRules() ? u""_s : u"/home"_s);
    if (!before.isNull())
        qputenv("SystemDrive", before);
}

void PlatformTest::startDirectory()
{
    const QString before = QDir::currentPath();
    const AppRuntime runtime(u"TEST"_s);
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
    QCOMPARE(runtime.startDirectory, before);
    QCOMPARE(AppRuntime(u"TEST"_s).startDirectory, QDir::currentPath());
    QVERIFY(QDir::setCurrent(before));
}

void PlatformTest::setupPlatformAgain()
{
    AppRuntime runtime(u"FIRST"_s);
    runtime.version.reset();
    runtime.programPath = u"/a/b"_s;
    runtime.setupPlatform(u"SECOND"_s);
    QCOMPARE(runtime.programName, u"SECOND"_s);
    QCOMPARE(runtime.version->runtime, &runtime);
    QCOMPARE(runtime.versionLabel, u"37/8.0.4"_s);
    QCOMPARE(runtime.programDirectory, BuiltWith::windowsRules() ? u"/"_s : u"/a/"_s);
}

QTEST_GUILESS_MAIN(PlatformTest)
#include "tst_platform.moc"
