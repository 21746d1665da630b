// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/traceline.h>
#include <support/builtwith.h>
#include <support/comestrue.h>
#include <support/localtext.h>

#include <QTest>

#include <QDateTime>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>

#ifdef Q_OS_UNIX
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

class TraceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void traceLine_data();
    void traceLine();
    void writeTrace_data();
    void writeTrace();
    void writeTraceOfLoneSurrogates_data();
    void writeTraceOfLoneSurrogates();
    void writeTraceInCodePage_data();
    void writeTraceInCodePage();
    void writeTraceTagged_data();
    void writeTraceTagged();
    void writeTraceKeepsItsPlace();
    void writeTraceIsWrittenAtOnce();
    void writeTraceIntoAStreamOfTheProgram();
    void writeTraceIntoAFullPipe_data();
    void writeTraceIntoAFullPipe();
    void writeTraceWithoutReader();
    void writeTraceWhoseReaderGoes();
    void writeTraceToAFullDisk();
    void readConsoleLine_data();
    void readConsoleLine();
    void readConsoleLineOfAnyLength();
    void readConsoleLineFromTerminal();
    void readConsoleLineThatComesInParts_data();
    void readConsoleLineThatComesInParts();
    void formatTimestamp_data();
    void formatTimestamp();
};

namespace
{

/// What the console helper prints when it is run with these words and this input.
QByteArray consoleOutput(const QStringList &words, const QByteArray &input = QByteArray())
{
    QProcess process;
    process.start(BuiltWith::helper(u"console"_s), words);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return "did not end as it should";
    return process.readAllStandardOutput() + process.readAllStandardError();
}

#ifdef Q_OS_UNIX
/// A pipe between a test and a program that it starts.
class Pipe
{
public:
    Pipe()
    {
        if (pipe(m_ends) == 0) {
            for (const int end : m_ends)
                fcntl(end, F_SETFD, FD_CLOEXEC);
        }
    }

    ~Pipe()
    {
        closeEnd(0);
        closeEnd(1);
    }

    Q_DISABLE_COPY_MOVE(Pipe)

    /// Starts the console helper with one end as its standard input (0) or output (1), which is closed here.
    /// The end is in non-blocking mode unless `mode` is 0.
    void start(QProcess &process, int end, const QStringList &words, int mode = O_NONBLOCK)
    {
        fcntl(m_ends[end], F_SETFL, fcntl(m_ends[end], F_GETFL) | mode);
        process.setChildProcessModifier([this, end] {
            std::signal(SIGPIPE, SIG_IGN);
            dup2(m_ends[end], end);
        });
        process.start(BuiltWith::helper(u"console"_s), words);
        QVERIFY(process.waitForStarted());
        closeEnd(end);
    }

    void closeEnd(int end)
    {
        if (m_ends[end] >= 0)
            close(m_ends[end]);
        m_ends[end] = -1;
    }

    /// How many bytes wait in the pipe.
    [[nodiscard]] int waiting() const
    {
        int count = 0;
        ioctl(m_ends[m_ends[0] >= 0 ? 0 : 1], FIONREAD, &count);
        return count;
    }

    void write(const QByteArray &bytes) const
    {
        QCOMPARE(::write(m_ends[1], bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    }

    [[nodiscard]] QByteArray readAll() const
    {
        QByteArray all;
        char block[1000];
        for (ssize_t count = 0; (count = read(m_ends[0], block, sizeof block)) > 0;)
            all.append(block, count);
        return all;
    }

private:
    int m_ends[2]{-1, -1};
};
#endif

} // namespace

void TraceTest::traceLine_data()
{
    QTest::addColumn<QByteArray>("local");
    QTest::addColumn<QByteArray>("utf8");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("empty") << QByteArray() << QByteArray() << QByteArray("\n");
    QTest::newRow("the same") << QByteArray("abc") << QByteArray("abc") << QByteArray("abc\n");
    QTest::newRow("shorter") << QByteArray("\x8a\xbf") << QByteArray("\xe6\xbc\xa2")
                             << QByteArray("\x8a\xbf(\xe6\xbc\xa2)\n");
    QTest::newRow("one byte of the same length")
        << QByteArray("a?c") << QByteArray("abc") << QByteArray("a?c(abc)\n");
    QTest::newRow("last byte of the same length")
        << QByteArray("ab?") << QByteArray("abc") << QByteArray("ab?(abc)\n");
    QTest::newRow("beginning of the other")
        << QByteArray("ab") << QByteArray("abc") << QByteArray("ab(abc)\n");
    QTest::newRow("nothing in local") << QByteArray() << QByteArray("abc") << QByteArray("(abc)\n");
    QTest::newRow("brackets in the text") << QByteArray("(a)") << QByteArray("(a)") << QByteArray("(a)\n");
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << QByteArray("a\0c", 3) << QByteArray("a\0b(a\0c)\n", 9);
}

void TraceTest::traceLine()
{
    QFETCH(QByteArray, local);
    QFETCH(QByteArray, utf8);
    QTEST(appruntime_internal::traceLine(local, utf8), "line");
}

void TraceTest::writeTrace_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("empty") << u""_s << QByteArray("\n");
    QTest::newRow("ASCII") << u"abc"_s << QByteArray("abc\n");
    QTest::newRow("per cent signs and backslashes") << u"%s%n\\n"_s << QByteArray("%s%n\\n\n");
    QTest::newRow("line break") << u"a\nb\r"_s << QByteArray("a\nb\r\n");
    QTest::newRow("blanks at the end") << u"a  "_s << QByteArray("a  \n");
#ifndef Q_OS_WIN
    QTest::newRow("kanji and kana") << u"漢ｶ"_s << QByteArray("\xe6\xbc\xa2\xef\xbd\xb6\n");
    QTest::newRow("pair") << u"😀"_s << QByteArray("\xf0\x9f\x98\x80\n");
#endif
    // Windows starts no program with more than 32,767 characters behind its name.
    QTest::newRow("longer than a buffer") << QString(30'000, u'x') << QByteArray(30'000, 'x') + '\n';
}

void TraceTest::writeTrace()
{
    QFETCH(QString, text);
    QTEST(consoleOutput({u"trace"_s, text}), "line");
}

void TraceTest::writeTraceOfLoneSurrogates_data()
{
    QTest::addColumn<QStringList>("units");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("high half alone") << QStringList{u"d83d"_s} << QByteArray("\xef\xbf\xbd\n");
    QTest::newRow("low half alone") << QStringList{u"de00"_s} << QByteArray("\xef\xbf\xbd\n");
    QTest::newRow("high half at the end") << QStringList{u"61"_s, u"d83d"_s} << QByteArray("a\xef\xbf\xbd\n");
    QTest::newRow("high half inside") << QStringList{u"d83d"_s, u"61"_s}
                                      << QByteArray("\xef\xbf\xbd"
                                                    "a\n");
    QTest::newRow("halves swapped") << QStringList{u"de00"_s, u"d83d"_s}
                                    << QByteArray("\xef\xbf\xbd\xef\xbf\xbd\n");
    QTest::newRow("a pair") << QStringList{u"d83d"_s, u"de00"_s} << QByteArray("\xf0\x9f\x98\x80\n");
    QTest::newRow("byte order mark") << QStringList{u"feff"_s, u"61"_s}
                                     << QByteArray("\xef\xbb\xbf"
                                                   "a\n");
    QTest::newRow("NUL") << QStringList{u"61"_s, u"0"_s, u"62"_s} << QByteArray("a\0b\n", 4);
}

void TraceTest::writeTraceOfLoneSurrogates()
{
#ifdef Q_OS_WIN
    QSKIP("The substitute is the code page's");
#else
    QFETCH(QStringList, units);
    QTEST(consoleOutput(QStringList{u"units"_s} + units), "line");
#endif
}

void TraceTest::writeTraceInCodePage_data()
{
    QTest::addColumn<QStringList>("units");
    QTest::addColumn<QByteArray>("line");

    // Behind the Shift-JIS bytes the UTF-8 form in brackets, which has what the code page lacks.
    QTest::newRow("ASCII") << QStringList{u"61"_s, u"7e"_s, u"5c"_s} << QByteArray("a~\\\n");
    QTest::newRow("kanji") << QStringList{u"6f22"_s, u"5b57"_s}
                           << QByteArray("\x8a\xbf\x8e\x9a(\xe6\xbc\xa2\xe5\xad\x97)\n");
    QTest::newRow("half-width kana") << QStringList{u"ff76"_s, u"ff85"_s}
                                     << QByteArray("\xb6\xc5(\xef\xbd\xb6\xef\xbe\x85)\n");
    QTest::newRow("second byte is a backslash")
        << QStringList{u"8868"_s} << QByteArray("\x95\x5c(\xe8\xa1\xa8)\n");
    QTest::newRow("with ASCII around") << QStringList{u"61"_s, u"3042"_s, u"62"_s}
                                       << QByteArray("a\x82\xa0"
                                                     "b(a\xe3\x81\x82"
                                                     "b)\n");
    QTest::newRow("no form") << QStringList{u"6f22"_s, u"d55c"_s}
                             << QByteArray("\x8a\xbf?(\xe6\xbc\xa2\xed\x95\x9c)\n");
    QTest::newRow("a pair, a substitute a unit")
        << QStringList{u"d83d"_s, u"de00"_s} << QByteArray("?\?(\xf0\x9f\x98\x80)\n");
}

void TraceTest::writeTraceInCodePage()
{
    if (!localIsShiftJis())
        QSKIP("Only with the Japanese code page of Windows");
    QFETCH(QStringList, units);
    QTEST(consoleOutput(QStringList{u"units"_s} + units), "line");
}

void TraceTest::writeTraceTagged_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("smallest") << INT_MIN << QByteArray("/x\n");
    QTest::newRow("-1") << -1 << QByteArray("/x\n");
    QTest::newRow("0") << 0 << QByteArray("/x\n");
    QTest::newRow("1") << 1 << QByteArray("AA/x\n");
    QTest::newRow("2") << 2 << QByteArray("/x\n");
    QTest::newRow("3") << 3 << QByteArray();
    QTest::newRow("4") << 4 << QByteArray();
    QTest::newRow("largest") << INT_MAX << QByteArray();
}

void TraceTest::writeTraceTagged()
{
    QFETCH(int, level);
    QTEST(consoleOutput({u"tagged"_s, QString::number(level), u"x"_s}), "line");
}

void TraceTest::writeTraceKeepsItsPlace()
{
    QCOMPARE(consoleOutput({u"between"_s, u"x"_s}), QByteArray("before x\nafter\n"));
}

// What a program traced last is what tells why it ended.
void TraceTest::writeTraceIsWrittenAtOnce()
{
    QCOMPARE(consoleOutput({u"last"_s, u"x"_s}), QByteArray("x\n"));
}

// There is no descriptor behind it.
void TraceTest::writeTraceIntoAStreamOfTheProgram()
{
#ifdef __GLIBC__
    QCOMPARE(consoleOutput({u"stream"_s, u"x"_s}), QByteArray("[x\n]"));
#else
    QSKIP("A program cannot put a stream of its own there");
#endif
}

void TraceTest::writeTraceIntoAFullPipe_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<bool>("waits"); // the system, in the middle of a call
    QTest::addColumn<bool>("interrupted");

    for (const bool waits : {false, true}) {
        for (const bool interrupted : {false, true}) {
            const char *mode = waits ? "waiting" : "not waiting";
            const char *often = interrupted ? ", interrupted" : "";
            QTest::addRow("as much as there is room for, %s%s", mode, often)
                << qsizetype(65535 - 7) << waits << interrupted;
            QTest::addRow("a byte more, %s%s", mode, often) << qsizetype(65536 - 7) << waits << interrupted;
            QTest::addRow("much more, %s%s", mode, often) << qsizetype(110'000) << waits << interrupted;
        }
    }
}

// A line arrives whole, and between what the program printed by other means.
void TraceTest::writeTraceIntoAFullPipe()
{
#ifdef Q_OS_UNIX
    QFETCH(qsizetype, size);
    QFETCH(bool, waits);
    QFETCH(bool, interrupted);
    Pipe pipe;
    QProcess process;
    const QStringList words = interrupted ? QStringList{u"interrupted"_s} : QStringList();
    pipe.start(process, 1, words + QStringList{u"twice"_s, QString(size, u'x')}, waits ? 0 : O_NONBLOCK);
    // What fits into the pipe is there at once, behind the first word.
    QVERIFY(comesTrue([&] { return pipe.waiting() > 7; }));
    if (interrupted)
        QTest::qWait(50); // while it finds no room, most of the time
    const QByteArray line = QByteArray(size, 'x') + '\n';
    QCOMPARE(pipe.readAll(), "before " + line + "between " + line);
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitCode(), 0);
#else
    QSKIP("Pipes have no such mode on this system");
#endif
}

void TraceTest::writeTraceWithoutReader()
{
#ifdef Q_OS_UNIX
    Pipe pipe;
    pipe.closeEnd(0);
    QProcess process;
    pipe.start(process, 1, {u"twice"_s, QString(110'000, u'x')});
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.readAllStandardError(), QByteArray());
#else
    QSKIP("Pipes have no such mode on this system");
#endif
}

void TraceTest::writeTraceWhoseReaderGoes()
{
#ifdef Q_OS_UNIX
    Pipe pipe;
    QProcess process;
    pipe.start(process, 1, {u"twice"_s, QString(110'000, u'x')});
    QVERIFY(comesTrue([&] { return pipe.waiting() > 7; }));
    pipe.closeEnd(0);
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
#else
    QSKIP("Pipes have no such mode on this system");
#endif
}

void TraceTest::writeTraceToAFullDisk()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("This system has no file that is always full");
    QProcess process;
    process.setStandardOutputFile(u"/dev/full"_s, QIODevice::Append);
    process.start(BuiltWith::helper(u"console"_s), {u"twice"_s, u"x"_s});
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TraceTest::readConsoleLine_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QByteArray>("output"); // the lines in brackets, then what was left of the input

    QTest::newRow("no input") << QByteArray() << 1 << QByteArray("[]");
    QTest::newRow("two at the end") << QByteArray() << 2 << QByteArray("[][]");
    QTest::newRow("one of one") << QByteArray("a\n") << 1 << QByteArray("[a]");
    QTest::newRow("one of two") << QByteArray("a\nb\n") << 1 << QByteArray("[a]b\n");
    QTest::newRow("two of two") << QByteArray("a\nb\n") << 2 << QByteArray("[a][b]");
    QTest::newRow("one past the end") << QByteArray("a\nb") << 3 << QByteArray("[a][b][]");
    QTest::newRow("no byte is taken") << QByteArray("a\nb\n") << 0 << QByteArray("a\nb\n");
    QTest::newRow("empty lines") << QByteArray("\n\na\n") << 3 << QByteArray("[][][a]");
    QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << 1 << QByteArray("[a]b\r\n");
    QTest::newRow("CR LF and nothing") << QByteArray("\r\n\r\n") << 1 << QByteArray("[]\r\n");
    QTest::newRow("CR inside") << QByteArray("a\rb\nc") << 1 << QByteArray("[a\rb]c");
    QTest::newRow("two CR before LF") << QByteArray("a\r\r\nb") << 1 << QByteArray("[a\r]b");
    QTest::newRow("CR at the end of the input") << QByteArray("a\r") << 1 << QByteArray("[a]");
    QTest::newRow("blanks stay") << QByteArray("  a \t\n") << 1 << QByteArray("[  a \t]");
    QTest::newRow("kanji") << QByteArray("漢字\nｶﾅ\n") << 2 << QByteArray("[漢字][ｶﾅ]");
    QTest::newRow("pair") << QByteArray("😀\n") << 1 << QByteArray("[😀]");
    QTest::newRow("NUL") << QByteArray("a\0b\nc", 5) << 1 << QByteArray("[a\0b]c", 6);
    QTest::newRow("no UTF-8") << QByteArray("a\xff\nb") << 1 << QByteArray("[a\xef\xbf\xbd]b");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                   "a\nb")
                                     << 1 << QByteArray("[a]b");
    QTest::newRow("byte order mark twice") << QByteArray("\xef\xbb\xbf\xef\xbb\xbf"
                                                         "a\n")
                                           << 1
                                           << QByteArray("[\xef\xbb\xbf"
                                                         "a]");
    // It is UTF-8 whatever it looks like.
    const QByteArray two = QByteArray("[\xef\xbf\xbd\xef\xbf\xbd");
    QTest::newRow("mark of UTF-16") << QByteArray("\xff\xfe"
                                                  "a\nb")
                                    << 1 << two + "a]b";
    QTest::newRow("mark of big-endian UTF-16") << QByteArray("\xfe\xff"
                                                             "a\nb")
                                               << 1 << two + "a]b";
    QTest::newRow("mark of UTF-32") << QByteArray("\xff\xfe\0\0\nb", 6) << 1 << two + QByteArray("\0\0]b", 4);
    QTest::newRow("character cut off by the line end")
        << QByteArray("a\xe6\xbc\nb\n") << 2 << QByteArray("[a\xef\xbf\xbd\xef\xbf\xbd][b]");
    QTest::newRow("character cut off by the end")
        << QByteArray("a\xe6") << 1 << QByteArray("[a\xef\xbf\xbd]");
}

void TraceTest::readConsoleLine()
{
    QFETCH(QByteArray, input);
    QFETCH(int, lines);
    QFETCH(QByteArray, output);

    const QStringList words = {u"lines"_s, QString::number(lines)};
    QCOMPARE(consoleOutput(words, input), output);

    // From a file, which could be read ahead and wound back, the same.
    const QTemporaryDir directory;
    QFile file(directory.filePath(u"input"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(input);
    file.close();
    QProcess process;
    process.setStandardInputFile(file.fileName());
    process.start(BuiltWith::helper(u"console"_s), words);
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.readAllStandardOutput(), output);
}

void TraceTest::readConsoleLineOfAnyLength()
{
#ifdef Q_OS_WIN
    const QByteArray line(100'000, 'x'); // byte by byte, each through Wine's server
#else
    const QByteArray line(3'000'000, 'x');
#endif
    QCOMPARE(consoleOutput({u"lines"_s, u"2"_s}, line + "\nb\nc"), '[' + line + "][b]c");
}

void TraceTest::readConsoleLineFromTerminal()
{
#ifdef Q_OS_UNIX
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const int line = open(ptsname(terminal), O_RDWR | O_NOCTTY);
    QVERIFY(line >= 0);
    QCOMPARE(write(terminal, "first\nsecond\n\x04", 14), 14);

    QProcess process;
    process.setChildProcessModifier([line] { dup2(line, STDIN_FILENO); });
    process.start(BuiltWith::helper(u"console"_s), {u"lines"_s, u"1"_s});
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.readAllStandardOutput(), QByteArray("[first]second\n"));
    close(line);
    close(terminal);
#else
    QSKIP("Only here there is a terminal for a test to open");
#endif
}

void TraceTest::readConsoleLineThatComesInParts_data()
{
    QTest::addColumn<bool>("waits");
    QTest::addColumn<bool>("interrupted");

    QTest::newRow("not waiting") << false << false;
    QTest::newRow("not waiting, interrupted") << false << true;
    QTest::newRow("waiting") << true << false;
    QTest::newRow("waiting, interrupted") << true << true;
}

void TraceTest::readConsoleLineThatComesInParts()
{
#ifdef Q_OS_UNIX
    QFETCH(bool, waits);
    QFETCH(bool, interrupted);
    Pipe pipe;
    QProcess process;
    pipe.write("ab");
    const QStringList words = interrupted ? QStringList{u"interrupted"_s} : QStringList();
    pipe.start(process, 0, words + QStringList{u"lines"_s, u"2"_s}, waits ? 0 : O_NONBLOCK);
    QVERIFY(comesTrue([&] { return pipe.waiting() == 0; }));
    QTest::qWait(50); // it finds nothing more, most of the time
    pipe.write("c\nd");
    pipe.closeEnd(1);
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.readAllStandardOutput(), QByteArray("[abc][d]"));
#else
    QSKIP("Pipes have no such mode on this system");
#endif
}

void TraceTest::formatTimestamp_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<int>("withSeparators");
    QTest::addColumn<QString>("stamp");

    const QDateTime moment(QDate(2024, 1, 2), QTime(3, 4, 5, 6));
    QTest::newRow("digits alone") << moment << 0 << u"20240102030405006"_s;
    QTest::newRow("with separators") << moment << 1 << u"2024-01-02 03:04:05.006"_s;
    QTest::newRow("any number but 0") << moment << -7 << u"2024-01-02 03:04:05.006"_s;
    const QDateTime last(QDate(1999, 12, 31), QTime(23, 59, 59, 999));
    QTest::newRow("last of the day") << last << 0 << u"19991231235959999"_s;
    QTest::newRow("last of the day with separators") << last << 1 << u"1999-12-31 23:59:59.999"_s;
    const QDateTime midnight(QDate(2000, 2, 29), QTime(0, 0));
    QTest::newRow("midnight") << midnight << 0 << u"20000229000000000"_s;
    QTest::newRow("midnight with separators") << midnight << 1 << u"2000-02-29 00:00:00.000"_s;
    QTest::newRow("afternoon has 24 hours")
        << QDateTime(QDate(2024, 1, 2), QTime(13, 0)) << 0 << u"20240102130000000"_s;
    QTest::newRow("in its own zone") << QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6), QTimeZone::utc()) << 0
                                     << u"20240102030405006"_s;
    QTest::newRow("year of three digits")
        << QDateTime(QDate(987, 6, 5), QTime(0, 0)) << 0 << u"09870605000000000"_s;
    QTest::newRow("year of five digits")
        << QDateTime(QDate(12345, 6, 7), QTime(0, 0)) << 0 << u"123450607000000000"_s;
    QTest::newRow("year of five digits with separators")
        << QDateTime(QDate(12345, 6, 7), QTime(0, 0)) << 1 << u"12345-06-07 00:00:00.000"_s;
    QTest::newRow("year before the first")
        << QDateTime(QDate(-1, 6, 7), QTime(0, 0)) << 1 << u"-0001-06-07 00:00:00.000"_s;
    QTest::newRow("invalid") << QDateTime() << 0 << u""_s;
    QTest::newRow("invalid with separators") << QDateTime() << 1 << u""_s;
}

void TraceTest::formatTimestamp()
{
    QFETCH(QDateTime, moment);
    QFETCH(int, withSeparators);
    const AppRuntime runtime(u"TEST"_s);
    QTEST(runtime.formatTimestamp(moment, withSeparators), "stamp");
}

QTEST_GUILESS_MAIN(TraceTest)
#include "tst_trace.moc"
