// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/processes.h>
#include <support/smalldisk.h>

#include <QTest>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>

#include <cerrno>
#include <cstring>

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#ifdef __GLIBC__
#include <sys/syscall.h>
#endif
#include <unistd.h>

using namespace Qt::StringLiterals;

#ifdef __GLIBC__
namespace
{

int failingRead = 0; ///< How many calls from now on read() fails, once; 0 when it does not.

} // namespace

// Stands in front of the function of the C library.
extern "C" ssize_t answerRead(int descriptor, void *bytes, size_t size) __asm__("read");
ssize_t answerRead(int descriptor, void *bytes, size_t size)
{
    if (failingRead == 0 || --failingRead > 0)
        return syscall(SYS_read, descriptor, bytes, size);
    errno = EIO;
    return -1;
}
#endif

/// Channels on a system that does not do what it is asked for.
class ChannelFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void fullDisk_data();
    void fullDisk();
    void noDescriptorLeft();
    void noPermission();
    void replacedWhileReading();
    void replacedWhileWriting();
    void truncatedWhileReading();
    void truncatedWhileAppending();
    void appendedWhileReading();
    void unreadable_data();
    void unreadable();
    void errorInTheMiddle();
    void errorThatPasses_data();
    void errorThatPasses();
    void fileNames_data();
    void fileNames();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_directory->filePath(name);
    }

    static void fill(const QString &name, const QByteArray &bytes);
    static QByteArray contentOf(const QString &name);

    std::unique_ptr<QTemporaryDir> m_directory;
    AppRuntime m_runtime{u"TEST"_s};
    int m_descriptors{0};
};

void ChannelFaultsTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_runtime.lastError = u"old"_s;
    m_descriptors = openDescriptors();
    QTest::failOnWarning(QRegularExpression(u".*"_s)); // it would be on a program's standard error
}

void ChannelFaultsTest::cleanup() const
{
    QCOMPARE(openDescriptors(), m_descriptors);
}

void ChannelFaultsTest::fill(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray ChannelFaultsTest::contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void ChannelFaultsTest::fullDisk_data()
{
    QTest::addColumn<QString>("mode");
    QTest::newRow("a new file") << u"OT"_s;
    QTest::newRow("a file to append to") << u"ADD"_s;
}

void ChannelFaultsTest::fullDisk()
{
    const SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("Only the superuser can mount a file system to fill up");
    QFETCH(QString, mode);

    const QString name = disk.filePath(u"lines"_s);
    QByteArray expected;
    if (mode == u"ADD") {
        expected = "before\n";
        fill(name, expected);
    }
    TextWriteChannel out(&m_runtime);
    QVERIFY(out.openWrite(name, mode, u"UTF-8,U"_s));
    for (int i = 0; i < 20'000; ++i) { // three times as much as there is room for
        QCOMPARE(out.writeLine(u"line %1"_s.arg(i)), 1);
        expected += "line " + QByteArray::number(i) + '\n';
    }
    QCOMPARE(out.stream->status(), QTextStream::WriteFailed);
    out.closeWrite();
    QCOMPARE(m_runtime.lastError, u"old"_s);
    const QByteArray content = contentOf(name);
    QVERIFY2(content.size() > SmallDisk::size / 2, "what there was room for is in the file");
    QVERIFY2(expected.startsWith(content), "in order, and what was there before first");

    // With room again, the same channel writes again.
    QVERIFY(m_runtime.deleteFile(name));
    QVERIFY(out.openWrite(name, u"ADD"_s, u"UTF-8,U"_s));
    QCOMPARE(out.writeLine(u"again"_s), 1);
    out.closeWrite();
    QCOMPARE(contentOf(name), "again\n");
}

void ChannelFaultsTest::noDescriptorLeft()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer opens pipes to look at memory");
#endif
    const QString name = path(u"a"_s);
    fill(name, "one\ntwo\n");
    rlimit limit{}, few{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &limit), 0);
    few = limit;
    few.rlim_cur = 0;

    TextReadChannel in(&m_runtime), open(&m_runtime);
    TextWriteChannel out(&m_runtime);
    QVERIFY(open.openRead(name, u"UTF-8"_s));
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &few), 0);
    const bool read = in.openRead(name, u"UTF-8"_s);
    const QString readError = m_runtime.lastError;
    const bool written = out.openWrite(path(u"b"_s), u"OT"_s, u"UTF-8"_s);
    const QString writeError = m_runtime.lastError;
    const bool emptied = out.openWrite(name, u"OT"_s, u"UTF-8"_s);
    const int line = open.readLine();
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &limit), 0);

    QVERIFY(!read);
    QCOMPARE(readError, u"open read error("_s + name + u')');
    QVERIFY(!written);
    QCOMPARE(writeError, u"Open Write error"_s);
    QVERIFY(!emptied);
    QCOMPARE(contentOf(name), "one\ntwo\n");
    QCOMPARE(line, 0); // an open file stays good
    QCOMPARE(open.line, u"one"_s);
    QVERIFY(in.openRead(name, u"UTF-8"_s));
    QCOMPARE(in.readLine(), 0);
    QCOMPARE(in.line, u"one"_s);
}

void ChannelFaultsTest::noPermission()
{
    const QString name = path(u"private"_s);
    fill(name, "secret\n");
    QCOMPARE(chmod(QFile::encodeName(name).constData(), 0), 0);
    // The superuser may do everything, and nobody nothing.
    const bool superuser = geteuid() == 0;
    if (superuser && seteuid(65534) != 0)
        QSKIP("The superuser cannot become anybody else here");

    TextReadChannel in(&m_runtime);
    TextWriteChannel out(&m_runtime);
    const bool read = in.openRead(name, u"UTF-8"_s);
    const QString readError = m_runtime.lastError;
    const bool written = out.openWrite(name, u"OT"_s, u"UTF-8"_s);
    const QString writeError = m_runtime.lastError;
    if (superuser)
        QCOMPARE(seteuid(0), 0);

    QVERIFY(!read);
    QCOMPARE(readError, u"open read error("_s + name + u')');
    QVERIFY(!written);
    QCOMPARE(writeError, u"Open Write error"_s);
    QCOMPARE(chmod(QFile::encodeName(name).constData(), 0600), 0);
    QCOMPARE(contentOf(name), "secret\n");
}

void ChannelFaultsTest::replacedWhileReading()
{
    const QString name = path(u"a"_s), other = path(u"b"_s);
    QByteArray lines;
    for (int i = 0; i < 10'000; ++i)
        lines += "old " + QByteArray::number(i) + '\n';
    fill(name, lines);
    fill(other, "new\n");

    TextReadChannel in(&m_runtime);
    QVERIFY(in.openRead(name, u"UTF-8"_s));
    QCOMPARE(in.readLine(), 0);
    QCOMPARE(rename(QFile::encodeName(other).constData(), QFile::encodeName(name).constData()), 0);
    QByteArray read = in.line.toUtf8() + '\n';
    while (in.readLine() == 0)
        read += in.line.toUtf8() + '\n';
    QCOMPARE(read, lines); // all of the file that was opened
    in.closeRead();
    QVERIFY(in.openRead(name, u"UTF-8"_s));
    QCOMPARE(in.readLine(), 0);
    QCOMPARE(in.line, u"new"_s);
}

void ChannelFaultsTest::replacedWhileWriting()
{
    const QString name = path(u"a"_s), other = path(u"b"_s), kept = path(u"c"_s);
    fill(other, "new\n");
    TextWriteChannel out(&m_runtime);
    QVERIFY(out.openWrite(name, u"OT"_s, u"UTF-8,U"_s));
    QCOMPARE(out.writeLine(u"first"_s), 1);
    QVERIFY(QFile::rename(name, kept));
    QVERIFY(QFile::rename(other, name));
    QCOMPARE(out.writeLine(u"second"_s), 1);
    out.closeWrite();
    QCOMPARE(contentOf(name), "new\n");
    QCOMPARE(contentOf(kept), "first\nsecond\n");
}

void ChannelFaultsTest::truncatedWhileReading()
{
    const QString name = path(u"a"_s);
    QByteArray lines;
    for (int i = 0; i < 50'000; ++i)
        lines += "line " + QByteArray::number(i) + '\n';
    fill(name, lines);

    TextReadChannel in(&m_runtime);
    QVERIFY(in.openRead(name, u"UTF-8"_s));
    QByteArray read;
    for (int i = 0; i < 100; ++i) {
        QCOMPARE(in.readLine(), 0);
        read += in.line.toUtf8() + '\n';
    }
    QCOMPARE(truncate(QFile::encodeName(name).constData(), 0), 0);
    int more = 0;
    for (; more <= 50'000 && in.readLine() == 0; ++more)
        read += in.line.toUtf8() + '\n';
    QVERIFY2(more < 50'000, "the end is found");
    QCOMPARE(in.readLine(), 1);
    QCOMPARE(in.line, QString());
    // What had been read ahead counts, the line that it ends in cut off.
    read.chop(1);
    QVERIFY(lines.startsWith(read));
    QCOMPARE(m_runtime.lastError, u"old"_s);
}

void ChannelFaultsTest::truncatedWhileAppending()
{
    const QString name = path(u"a"_s);
    fill(name, "before\n");
    TextWriteChannel out(&m_runtime);
    QVERIFY(out.openWrite(name, u"ADD"_s, u"UTF-8,U"_s));
    QCOMPARE(out.writeLine(u"first"_s), 1);
    QCOMPARE(truncate(QFile::encodeName(name).constData(), 0), 0);
    QCOMPARE(out.writeLine(u"second"_s), 1);
    out.closeWrite();
    QCOMPARE(contentOf(name), "first\nsecond\n"); // at the end that there is, with no hole before it
}

void ChannelFaultsTest::appendedWhileReading()
{
    const QString name = path(u"a"_s);
    TextWriteChannel out(&m_runtime);
    QVERIFY(out.openWrite(name, u"OT"_s, u"UTF-8,U"_s));
    TextReadChannel in(&m_runtime);
    QVERIFY(in.openRead(name, u"UTF-8"_s));
    QCOMPARE(in.readLine(), 1);
    QCOMPARE(out.writeLine(u"late"_s), 1);
    out.closeWrite();
    QCOMPARE(in.readLine(), 0); // the end was that of the moment
    QCOMPARE(in.line, u"late"_s);
    QCOMPARE(in.readLine(), 1);
}

void ChannelFaultsTest::unreadable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("most"); // how many lines it may have

    QTest::newRow("fewer bytes than its size") << u"/sys/class/net/lo/mtu"_s << 1;
    QTest::newRow("invalid argument") << u"/sys/class/net/lo/speed"_s << 1;
    QTest::newRow("input or output error") << u"/proc/self/mem"_s << 0;
}

// A file that cannot be read further is at its end, whatever size it has.
void ChannelFaultsTest::unreadable()
{
    QFETCH(QString, name);
    QFETCH(int, most);
    if (!QFile::exists(name))
        QSKIP("This system has no such file");

    TextReadChannel in(&m_runtime);
    QVERIFY(in.openRead(name, u"UTF-8"_s));
    int lines = 0;
    while (lines <= most && in.readLine() == 0)
        ++lines;
    QVERIFY(lines <= most);
    QCOMPARE(in.readLine(), 1);
    QCOMPARE(in.line, QString());
    QCOMPARE(m_runtime.lastError, u"old"_s);
}

// The memory of this process, with three blocks that can be read and nothing behind them.
void ChannelFaultsTest::errorInTheMiddle()
{
    if (!QFile::exists(u"/proc/self/mem"_s))
        QSKIP("This system has no such file");
    constexpr size_t size = size_t{3} * 65536;
    void *memory = mmap(nullptr, 2 * size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    QVERIFY(memory != MAP_FAILED);
    QCOMPARE(munmap(static_cast<char *>(memory) + size, size), 0);
    QByteArray bytes = QByteArray("0123456789\n").repeated(static_cast<qsizetype>(size) / 11 + 1);
    bytes.truncate(static_cast<qsizetype>(size));
    std::memcpy(memory, bytes.constData(), size);

    TextReadChannel in(&m_runtime);
    QVERIFY(in.openRead(u"/proc/self/mem"_s, u"UTF-8"_s));
    QVERIFY(in.file->seek(static_cast<qint64>(reinterpret_cast<quintptr>(memory))));
    QByteArrayList read;
    while (read.size() < 100'000 && in.readLine() == 0)
        read += in.line.toUtf8();
    QCOMPARE(read.join('\n'), bytes); // the line that the error cuts comes once
    QCOMPARE(in.readLine(), 1);
    QCOMPARE(m_runtime.lastError, u"old"_s);
    in.closeRead();
    QCOMPARE(munmap(memory, size), 0);
}

void ChannelFaultsTest::errorThatPasses_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("between two bytes") << "0123456789\n"_ba.repeated(5000);
    QTest::newRow("in a character") << "\xe3\x81\x82\xe3\x81\x82\xe3\x81\x82\n"_ba.repeated(5000);
}

/// A line that an error cut does not go on in the next one.
void ChannelFaultsTest::errorThatPasses()
{
#ifdef __GLIBC__
    QFETCH(QByteArray, bytes);
    fill(path(u"in"_s), bytes);
    const QString line = QString::fromUtf8(bytes.first(bytes.indexOf('\n')));
    for (int failing = 1; failing <= 6; ++failing) {
        TextReadChannel channel(&m_runtime);
        QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
        failingRead = failing;
        QStringList lines;
        while (channel.readLine() == 0)
            lines += channel.line;
        QCOMPARE(failingRead, 0);
        QVERIFY(lines.size() <= 5000);
        QVERIFY(lines.count(line) >= lines.size() - 1); // the last may be cut
        QCOMPARE(channel.readLine(), 1);

        // Elsewhere the file may be whole.
        QVERIFY(channel.stream->seek(0));
        QCOMPARE(channel.readLine(), 0);
        QCOMPARE(channel.line, line);
    }
#else
    QSKIP("Here the test cannot step in");
#endif
}

void ChannelFaultsTest::fileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("possible");

    QTest::newRow("line feed") << u"a\nb"_s << true;
    QTest::newRow("nothing but line feeds") << u"\n\n"_s << true;
    QTest::newRow("blanks at the ends") << u" a "_s << true;
    QTest::newRow("a blank") << u" "_s << true;
    QTest::newRow("control characters") << u"\a\u001b[31m\u007f"_s << true;
    QTest::newRow("backslash") << u"a\\b"_s << true;
    QTest::newRow("wildcards") << u"*?[a]"_s << true;
    QTest::newRow("hyphen in front") << u"-rf"_s << true;
    QTest::newRow("three dots") << u"..."_s << true;
    QTest::newRow("255 bytes") << QString(255, u'x') << true;
    QTest::newRow("256 bytes") << QString(256, u'x') << false;
    QTest::newRow("255 bytes of kana") << QString(85, u'あ') << true;
    QTest::newRow("258 bytes of kana") << QString(86, u'あ') << false;
    QTest::newRow("a path longer than the system takes") << u"x/"_s.repeated(3000) + u'x' << false;
    QTest::newRow("below a file") << u"there/a"_s << false;
}

void ChannelFaultsTest::fileNames()
{
    QFETCH(QString, name);
    QFETCH(bool, possible);

    fill(path(u"there"_s), "there\n");
    const QString full = m_directory->path() + u'/' + name;
    TextWriteChannel out(&m_runtime);
    TextReadChannel in(&m_runtime);
    QCOMPARE(out.openWrite(full, u"OT"_s, u"UTF-8,U"_s), possible);
    QCOMPARE(m_runtime.lastError, possible ? u"old"_s : u"Open Write error"_s);
    if (possible) {
        QCOMPARE(out.writeLine(u"text"_s), 1);
        out.closeWrite();
        QCOMPARE(contentOf(full), "text\n");
        QVERIFY(QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden).contains(name));
    }
    QCOMPARE(in.openRead(full, u"UTF-8"_s), possible);
    QCOMPARE(m_runtime.lastError, possible ? u"old"_s : u"open read error("_s + full + u')');
    in.closeRead();
    QVERIFY(m_runtime.deleteFile(full));
    QCOMPARE(contentOf(path(u"there"_s)), "there\n");
}

QTEST_GUILESS_MAIN(ChannelFaultsTest)
#include "tst_channelfaults.moc"
