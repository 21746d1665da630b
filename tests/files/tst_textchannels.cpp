// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
#include <support/localtext.h>

#include <QTest>

#include <QException>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <thread>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

using namespace Qt::StringLiterals;

namespace
{

/// A file whose close() goes wrong before anything is closed.
template<typename Exception> class ThrowingFile : public QFile
{
public:
    using QFile::QFile;

    void close() override
    {
        if (armed) {
            armed = false;
            throw Exception();
        }
        QFile::close();
    }

    bool armed = true;
};

struct OtherException {
};

QByteArray bytesOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable"_ba;
}

bool writeBytes(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray platformLineEnd()
{
    return BuiltWith::windowsRules() ? "\r\n"_ba : "\n"_ba;
}

const QString kanji = u"\u6f22"_s;

} // namespace

class TextChannelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void closedChannels();
    void read_data();
    void read();
    void readEncoding_data();
    void readEncoding();
    void shiftJisOnDisk();
    void readFailure_data();
    void readFailure();
    void readSecondOpen();
    void readAgain();
    void readLastLineIsReplaced();
    void readAcrossPortions();
    void readBrokenAtBorders_data();
    void readBrokenAtBorders();
    void readBrokenLocalAtBorders();
    void readBesideTheStream();
    void readBesideTheStreamAtABorder();
    void readInAnotherEncoding();
    void readLongLines();
    void readVanishedFile();
    void readPipe();
    void readFileOfUnknownSize();

    void writeSpec_data();
    void writeSpec();
    void writeMode_data();
    void writeMode();
    void writeFailure_data();
    void writeFailure();
    void writeSecondOpen();
    void writeAgain();
    void writeText_data();
    void writeText();
    void writeReachesTheFileOnClose();
    void writeReachesTheFileOnDestruction();
    void writeAppendsTwice();
    void writeVanishedFile();
    void writeRefusedBySystem();
    void writeToFullDevice();

    void openTakesTheMessage();
    void closeSwallowsExceptionOfQt();
    void closePassesOtherException();
    void closeStreamWithoutFile();
    void whatIsWrittenReadsBack();
    void longLine();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_directory.filePath(name);
    }
    QStringList linesOf(const QString &fileName, const QString &encodingName);

    QTemporaryDir m_directory;
    AppRuntime m_runtime{u"TEST"_s};
};

void TextChannelsTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(m_directory.isValid());
    m_runtime.checkMessage = u"old check"_s;
    m_runtime.lastError = u"old error"_s;
    m_runtime.convertOk = true;
    m_runtime.platformChar = BuiltWith::platformChar();
}

QStringList TextChannelsTest::linesOf(const QString &fileName, const QString &encodingName)
{
    TextReadChannel channel(&m_runtime);
    QStringList lines;
    if (channel.openRead(fileName, encodingName)) {
        while (channel.readLine() == 0)
            lines.append(channel.line);
    }
    return lines;
}

void TextChannelsTest::closedChannels()
{
    TextReadChannel in(&m_runtime);
    QCOMPARE(in.runtime, &m_runtime);
    QVERIFY(!in.file && !in.stream);
    QVERIFY(in.fileName.isEmpty() && in.line.isEmpty() && in.spare.isEmpty());

    TextWriteChannel out(&m_runtime);
    QCOMPARE(out.runtime, &m_runtime);
    QVERIFY(!out.file && !out.stream);
    QVERIFY(out.fileName.isEmpty() && out.lineEnd.isEmpty() && out.spare.isEmpty());
    QCOMPARE(out.lfText, u"\n"_s);
    QCOMPARE(out.crlfText, u"\r\n"_s);

    in.closeRead();
    out.closeWrite();
    QCOMPARE(m_runtime.lastError, u"old error"_s);

    in.line = u"kept"_s;
    QCOMPARE(in.readLine(), 5);
    QCOMPARE(m_runtime.lastError, u"not open read"_s);
    QCOMPARE(in.line, u"kept"_s);
    QCOMPARE(out.writeLine(u"lost"_s), 0);
    QCOMPARE(m_runtime.lastError, u"not open write"_s);
    QCOMPARE(m_runtime.checkMessage, u"old check"_s);
    QVERIFY(m_runtime.convertOk);
}

void TextChannelsTest::read_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("lines");

    const auto row = [](const char *name, const QByteArray &bytes, const QStringList &lines) {
        QTest::newRow(name) << bytes << lines;
    };
    const QString nul(1, QChar(u'\0'));
    row("empty file", "", {});
    row("one line", "abc\n", {u"abc"_s});
    row("last line without its end", "abc\nde", {u"abc"_s, u"de"_s});
    row("one empty line", "\n", {u""_s});
    row("empty lines between", "\n\na\n\n", {u""_s, u""_s, u"a"_s, u""_s});
    row("CR LF", "a\r\nb\r\n", {u"a"_s, u"b"_s});
    row("CR LF and LF mixed", "a\r\nb\nc\r\n\r\n\nd", {u"a"_s, u"b"_s, u"c"_s, u""_s, u""_s, u"d"_s});
    row("last CR LF line without LF", "a\r\nb\r", {u"a"_s, u"b"_s});
    row("CR in a line is dropped", "a\rb\n", {u"ab"_s});
    row("CR CR LF", "a\r\r\nb\n", {u"a"_s, u"b"_s});
    row("LF CR", "a\n\rb\n", {u"a"_s, u"b"_s});
    row("CR at the start", "\ra\n", {u"a"_s});
    row("only CR LF", "\r\n", {u""_s});
    row("blanks are kept", " a\t \n \n", {u" a\t "_s, u" "_s});
    row("NUL is kept", "a\0b\n\0\n"_ba, {u'a' + nul + u'b', nul});
    row("other line ends are characters",
        "a\vb\fc\xe2\x80\xa8"
        "d\xc2\x85"
        "e\n",
        {u"a\vb\fc\u2028d\u0085e"_s});
    row("control Z is a character",
        "a\x1a"
        "b\n",
        {u"a\x1a"
         "b"_s});
    row("kanji", kanji.toUtf8() + "\n", {kanji});
    row("surrogate pair", "\xf0\xa0\x80\x8b\n", {u"\U0002000b"_s});
    row("byte order mark",
        "\xef\xbb\xbf"
        "a\n",
        {u"a"_s});
    row("byte order mark alone", "\xef\xbb\xbf", {u""_s});
    row("byte order mark of a later line",
        "a\n\xef\xbb\xbf"
        "b\n",
        {u"a"_s, u"\ufeffb"_s});
    row("byte order mark twice",
        "\xef\xbb\xbf\xef\xbb\xbf"
        "a\n",
        {u"\ufeffa"_s});
    row("UTF-16 by its mark",
        "\xff\xfe"
        "a\0\n\0\x22\x6f"_ba,
        {u"a"_s, kanji});
    row("big-endian UTF-16 by its mark", "\xfe\xff\0a\0\r\0\n\x6f\x22"_ba, {u"a"_s, kanji});
    row("invalid byte",
        "a\xff"
        "b\n",
        {u"a\ufffdb"_s});
    row("stray continuation byte",
        "a\x80"
        "b\n",
        {u"a\ufffdb"_s});
    row("character cut off by the line end", "a\xe6\xbc\nb\n", {u"a\ufffd\ufffd"_s, u"b"_s});
    row("overlong form", "\xc0\xaf\n", {u"\ufffd\ufffd"_s});
    row("surrogate in three bytes", "\xed\xa0\x80\n", {u"\ufffd\ufffd\ufffd"_s});
    row("character cut off by the end", "a\n\xe6\xbc", {u"a"_s, u"\ufffd\ufffd"_s});
    row("nothing but a character cut off", "\xe6\xbc", {u"\ufffd\ufffd"_s});
    row("CR alone", "\r", {u""_s});
    row("CR alone, more than a block", QByteArray(40'000, '\r'), {u""_s});
    row("a block of CR before the first line", QByteArray(16'384, '\r') + "a\n", {u"a"_s});
    row("byte order mark and a block of CR",
        "\xef\xbb\xbf" + QByteArray(16'381, '\r') + QByteArray(16'384, '\r') + "a",
        {u"a"_s});
    row("CR behind the last line", "a\n\r", {u"a"_s});
    // The stream reads blocks of 16384 bytes.
    const QByteArray blockOfCr(16384, '\r');
    row("a block of CR alone", blockOfCr, {u""_s});
    row("a block of CR before an empty line", blockOfCr + "\n", {u""_s});
    row("a block of CR before the last line", blockOfCr + "\ra", {u"a"_s});
    row("a block of CR before a NUL", blockOfCr + '\0', {nul});
    row("two blocks of CR before a line", blockOfCr + blockOfCr + "a\nb\n", {u"a"_s, u"b"_s});
    row("a block of CR in UTF-16 before a line", "\xff\xfe" + "\r\0"_ba.repeated(10'000) + "a\0"_ba, {u"a"_s}
    );
    row("a block of CR in UTF-16 before others of these bytes",
        "\xff\xfe" + "\r\0"_ba.repeated(10'000) + "\r\r"_ba.repeated(10'000),
        {QString(10'000, u'\u0d0d')});
    row("a block of CR in UTF-16 alone", "\xff\xfe" + "\r\0"_ba.repeated(10'000), {u""_s});
    row("byte order mark of UTF-16 alone", "\xff\xfe", {u""_s});
    row("half a mark and a character cut off", "\xfe\xe3", {u"\ufffd\ufffd"_s});
    row("invalid byte after a NUL", "\0\xff\n"_ba, {nul + u"\ufffd"_s});
}

void TextChannelsTest::read()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, lines);

    QVERIFY(writeBytes(path(u"in"_s), bytes));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    m_runtime.checkMessage = u"old check"_s;
    for (const QString &line : lines) {
        QCOMPARE(channel.readLine(), 0);
        QCOMPARE(channel.line, line);
    }
    channel.line = u"left over"_s;
    QCOMPARE(channel.readLine(), 1);
    QCOMPARE(channel.line, QString());
    QCOMPARE(channel.readLine(), 1);
    QVERIFY(channel.file && channel.stream);
    QCOMPARE(m_runtime.lastError, u"old error"_s);
    QCOMPARE(m_runtime.checkMessage, u"old check"_s);
    QVERIFY(m_runtime.convertOk);
}

void TextChannelsTest::readEncoding_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("utf8");
    QTest::addColumn<QString>("message");

    const auto row = [](const char *title, const QString &name, bool utf8, const QString &message) {
        QTest::newRow(title) << name << utf8 << message;
    };
    row("UTF-8", u"UTF-8"_s, true, u"\"UTF-8\" not in('/')"_s);
    row("other spelling", u"utf8"_s, true, u"\"utf8\" not in('/')"_s);
    row("empty name", u""_s, true, u"\"\" not in('/')"_s);
    row("slash", u"/"_s, false, u"\"Shift-JIS\" not in('UTF-8')"_s);
    row("Shift-JIS", u"sjis"_s, false, u"\"Shift-JIS\" not in('UTF-8')"_s);
    row("EUC-JP", u"EUC-JP"_s, false, u"\"EUC-JP\" not in('UTF-8')"_s);
    row("other spelling of EUC-JP", u"euc_jp"_s, false, u"\"EUC-JP\" not in('UTF-8')"_s);
    row("unknown", u"latin1"_s, false, u"\"latin1\" not in('UTF-8')"_s);
    row("blanks are not removed", u" UTF-8"_s, false, u"\" UTF-8\" not in('UTF-8')"_s);
    row("no comma is looked for", u"UTF-8,U"_s, false, u"\"UTF-8,U\" not in('UTF-8')"_s);
}

void TextChannelsTest::readEncoding()
{
    QFETCH(QString, name);
    QFETCH(bool, utf8);
    QFETCH(QString, message);

    const QByteArray bytes = utf8 ? kanji.toUtf8() : kanji.toLocal8Bit();
    QVERIFY(writeBytes(path(u"in"_s), bytes));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), name));
    QCOMPARE(channel.stream->encoding(), utf8 ? QStringConverter::Utf8 : QStringConverter::System);
    QCOMPARE(m_runtime.checkMessage, message);
    QCOMPARE(m_runtime.lastError, u"old error"_s);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, utf8 ? kanji : throughLocal8Bit(kanji));
}

void TextChannelsTest::shiftJisOnDisk()
{
    if (!localIsShiftJis())
        QSKIP("Only with the Japanese code page of Windows");
    const QString text = u"漢字ｶﾅ表～"_s; // the second byte of one is a backslash
    for (const QString &name : {u"SJIS"_s, u"shift_jis"_s, u"EUC-JP"_s}) {
        TextWriteChannel writer(&m_runtime);
        QVERIFY(writer.openWrite(path(u"out"_s), u"OT"_s, name));
        QCOMPARE(writer.writeLine(text), 1);
        writer.closeWrite();
        QCOMPARE(bytesOf(path(u"out"_s)), "\x8a\xbf\x8e\x9a\xb6\xc5\x95\x5c\x81\x60\r\n"_ba);

        TextReadChannel reader(&m_runtime);
        QVERIFY(reader.openRead(path(u"out"_s), name));
        QCOMPARE(reader.readLine(), 0);
        QCOMPARE(reader.line, text);
        QCOMPARE(reader.readLine(), 1);
    }
}

void TextChannelsTest::readFailure_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty name") << u""_s;
    QTest::newRow("null name") << QString();
    QTest::newRow("directory") << m_directory.path();
    QTest::newRow("no such file") << path(u"none"_s);
    QTest::newRow("no such directory") << path(u"none/none"_s);
    QTest::newRow("per cent signs in the name") << path(u"%1%2"_s);
    QTest::newRow("name with a NUL") << path(QString(u"cut\0off"_s));
}

void TextChannelsTest::readFailure()
{
    QFETCH(QString, name);

    QVERIFY(writeBytes(path(u"cut"_s), "cut"));
    TextReadChannel channel(&m_runtime);
    channel.line = u"kept"_s;
    QVERIFY(!channel.openRead(name, u"SJIS"_s));
    QVERIFY(!channel.file && !channel.stream);
    QCOMPARE(channel.fileName, name);
    QCOMPARE(channel.line, u"kept"_s);
    QCOMPARE(m_runtime.lastError, u"open read error("_s + name + u')');
    QCOMPARE(m_runtime.checkMessage, u"old check"_s);
    QCOMPARE(channel.readLine(), 5);
    QCOMPARE(m_runtime.lastError, u"not open read"_s);

    QVERIFY(writeBytes(path(u"in"_s), "abc\n"));
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"abc"_s);
}

void TextChannelsTest::readSecondOpen()
{
    QVERIFY(writeBytes(path(u"in"_s), "one\ntwo\n"));
    QVERIFY(writeBytes(path(u"other"_s), "other\n"));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    const QFile *file = channel.file.get();
    const QTextStream *stream = channel.stream.get();
    m_runtime.checkMessage = u"old check"_s;

    QVERIFY(!channel.openRead(path(u"other"_s), u"SJIS"_s));
    QCOMPARE(m_runtime.lastError, u"already open read"_s);
    QCOMPARE(m_runtime.checkMessage, u"old check"_s);
    QCOMPARE(channel.fileName, path(u"in"_s));
    QCOMPARE(channel.line, u"one"_s);
    QCOMPARE(channel.file.get(), file);
    QCOMPARE(channel.stream.get(), stream);
    QCOMPARE(channel.stream->encoding(), QStringConverter::Utf8);
    QVERIFY(!channel.openRead(path(u"none"_s), QString()));
    QCOMPARE(m_runtime.lastError, u"already open read"_s);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"two"_s);
    QCOMPARE(channel.readLine(), 1);

    QVERIFY(!channel.openRead(path(u"other"_s), QString()));
    QCOMPARE(m_runtime.lastError, u"already open read"_s);
}

void TextChannelsTest::readAgain()
{
    QVERIFY(writeBytes(path(u"in"_s), "one\ntwo\n"));
    QVERIFY(writeBytes(path(u"other"_s), "other\n"));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"SJIS"_s));
    QCOMPARE(channel.readLine(), 0);
    channel.closeRead();
    QVERIFY(!channel.file && !channel.stream);
    QCOMPARE(channel.fileName, path(u"in"_s));
    QCOMPARE(channel.line, u"one"_s);
    QCOMPARE(m_runtime.lastError, u"old error"_s);
    QCOMPARE(channel.readLine(), 5);
    channel.closeRead();

    QVERIFY(channel.openRead(path(u"other"_s), u"UTF-8"_s));
    QCOMPARE(channel.fileName, path(u"other"_s));
    QCOMPARE(channel.stream->encoding(), QStringConverter::Utf8);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"other"_s);
}

void TextChannelsTest::readLastLineIsReplaced()
{
    QVERIFY(writeBytes(path(u"in"_s), "a long line of text\nab\n\nc\n"));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    const QString kept = channel.line;
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"ab"_s);
    QCOMPARE(kept, u"a long line of text"_s);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u""_s);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"c"_s);
}

// The system is asked for 16384 bytes at a time; nothing may be lost or doubled where a block ends.
void TextChannelsTest::readAcrossPortions()
{
    const QList<QByteArray> middles
        = {"\n", "\r\n", "\r\r\n", "\n\n", kanji.toUtf8(), "\xf0\xa0\x80\x8b", "\0"_ba};
    for (const QByteArray &middle : middles) {
        for (int before = 16384 - 5; before <= 16384 + 1; ++before) {
            const QByteArray bytes = QByteArray(before, 'a') + middle + "b\r\nc";
            QVERIFY(writeBytes(path(u"in"_s), bytes));
            QString text = QString::fromUtf8(bytes);
            text.remove(u'\r');
            QCOMPARE(linesOf(path(u"in"_s), u"UTF-8"_s), text.split(u'\n'));
        }
    }
}

void TextChannelsTest::readBrokenAtBorders_data()
{
    QTest::addColumn<QByteArray>("broken");

    QTest::newRow("lead byte of two") << "\xc3"_ba;
    QTest::newRow("lead byte of three") << "\xe3"_ba;
    QTest::newRow("two of three") << "\xe3\x81"_ba;
    QTest::newRow("lead byte of four") << "\xf0"_ba;
    QTest::newRow("two of four") << "\xf0\xa0"_ba;
    QTest::newRow("three of four") << "\xf0\xa0\x80"_ba;
    QTest::newRow("two lead bytes") << "\xe3\xe3"_ba;
    QTest::newRow("cut and whole") << "\xe3\x81\xe3\x81\x82"_ba;
    QTest::newRow("whole and cut") << "\xe3\x81\x82\xe3\x81"_ba;
    QTest::newRow("continuation bytes") << "\x81\x82\x83\x84"_ba;
    QTest::newRow("overlong") << "\xe0\x80\xaf"_ba;
    QTest::newRow("surrogate") << "\xed\xa0\x80"_ba;
    QTest::newRow("past the last character") << "\xf4\x90\x80\x80"_ba;
    QTest::newRow("never a byte") << "\xff\xfe\xc0\xf8"_ba;
    QTest::newRow("Shift-JIS") << "\x8a\xbf\x8e\x9a"_ba;
    QTest::newRow("EUC-JP") << "\xb4\xc1\xbb\xfa"_ba;
    QTest::newRow("carriage return inside") << "\xe3\r\x81\x82"_ba;
    QTest::newRow("byte order mark") << "\xef\xbb\xbf\xef\xbb"_ba;
}

// A broken byte costs itself. What the whole file says, decoded at once, is what its lines say.
void TextChannelsTest::readBrokenAtBorders()
{
    QFETCH(QByteArray, broken);
    QStringList wrong;
    for (const int border : {16384, 65536}) {
        for (int before = border - 8; before <= border + 3; ++before) {
            for (const QByteArray &behind : {"\nb,c\r\nd"_ba, "\r\nb\n"_ba, ",b\nc"_ba, ""_ba}) {
                const QByteArray bytes = QByteArray(before, 'a') + broken + behind;
                QVERIFY(writeBytes(path(u"in"_s), bytes));
                QString text = QString::fromUtf8(bytes);
                QStringList lines = text.remove(u'\r').split(u'\n');
                if (lines.last().isEmpty())
                    lines.removeLast();
                if (linesOf(path(u"in"_s), u"UTF-8"_s) != lines)
                    wrong += u"%1 %2"_s.arg(before).arg(QString::fromLatin1(behind.toHex()));
            }
        }
    }
    QCOMPARE(wrong, QStringList());
}

void TextChannelsTest::readBrokenLocalAtBorders()
{
    // A byte that is the first of two in many code pages, and half a character in UTF-8.
    for (int before = 16384 - 3; before <= 16384 + 1; ++before) {
        QVERIFY(writeBytes(path(u"in"_s), QByteArray(before, 'a') + "\x8a\nb\n"));
        const QStringList lines = linesOf(path(u"in"_s), u"SJIS"_s);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[0].startsWith(QString(before, u'a')));
        QCOMPARE(lines[1], u"b"_s);
    }
}

// A program may read from the stream, too: it goes on where the channel is, and the channel where it is.
void TextChannelsTest::readBesideTheStream()
{
    const QByteArray line = "0123456789\r\n";
    QVERIFY(writeBytes(path(u"in"_s), line.repeated(5000) + "last"));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    for (int i = 0; i < 2000; ++i)
        QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.stream->pos(), 2000 * line.size());
    QVERIFY(!channel.stream->atEnd());
    QCOMPARE(channel.stream->readLine(), u"0123456789"_s);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"0123456789"_s);
    int lines = 2002;
    while (!channel.stream->atEnd() && channel.readLine() == 0)
        ++lines;
    QCOMPARE(lines, 5001);
    QCOMPARE(channel.line, u"last"_s);
    QCOMPARE(channel.readLine(), 1);

    QVERIFY(channel.stream->seek(0));
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"0123456789"_s);
    channel.closeRead();

    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    QVERIFY(channel.stream->seek(5));
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"56789"_s);
    QCOMPARE(channel.stream->readAll().count(u'\n'), 4999);
    QCOMPARE(channel.readLine(), 1);
    channel.closeRead();

    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.file->readAll().size(), 5000 * line.size() - 5000 + 4);
    QCOMPARE(channel.readLine(), 1);
}

// The beginning of a character at the end of a block is kept for the next one.
void TextChannelsTest::readBesideTheStreamAtABorder()
{
    QVERIFY(writeBytes(path(u"in"_s), QByteArray(16382, 'a') + "\n\xc3\xa9")); // é is the last character
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    QVERIFY(!channel.stream->atEnd());
    QVERIFY(!channel.file->atEnd());
    QVERIFY(channel.stream->seek(0));
    QCOMPARE(channel.readLine(), 0);
    QVERIFY(channel.line == QString(16382, u'a'));
    QVERIFY(channel.stream->seek(16380));
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"aa"_s);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"\u00e9"_s);
    QVERIFY(channel.stream->atEnd());
    QCOMPARE(channel.readLine(), 1);
}

void TextChannelsTest::readInAnotherEncoding()
{
    QVERIFY(writeBytes(path(u"in"_s), "a\xe9\nb\xe9\n"));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    channel.stream->setEncoding(QStringConverter::Latin1);
    QCOMPARE(channel.readLine(), 0);
    QCOMPARE(channel.line, u"a\u00e9"_s);
}

// A stream is asked for long lines in pieces of 65536 code units.
void TextChannelsTest::readLongLines()
{
    for (const int length : {65535, 65536, 65537, 2 * 65536 - 1, 2 * 65536, 2 * 65536 + 1}) {
        for (const QString &fill : {u"x"_s, kanji, u"\U0002000b"_s}) {
            for (const QByteArray &end : {"\n"_ba, "\r\n"_ba, "\n\n"_ba, ""_ba}) {
                QString text = fill.repeated(length / fill.size());
                text += QString(length - text.size(), u'y');
                QVERIFY(writeBytes(path(u"in"_s), text.toUtf8() + end + text.toUtf8() + "\nlast"));
                QStringList lines = {text, text, u"last"_s};
                if (end.isEmpty())
                    lines = {text + text, u"last"_s};
                else if (end == "\n\n")
                    lines.insert(1, QString());
                QVERIFY(linesOf(path(u"in"_s), u"UTF-8"_s) == lines); // QCOMPARE would print them all
                QVERIFY(writeBytes(path(u"in"_s), text.toUtf8()));
                QVERIFY(linesOf(path(u"in"_s), u"UTF-8"_s) == QStringList{text});
            }
        }
    }
}

void TextChannelsTest::readVanishedFile()
{
#ifndef Q_OS_UNIX
    QSKIP("An open file cannot be removed on this system.");
#endif
    const QByteArray bytes = QByteArray("0123456789\n").repeated(5000);
    QVERIFY(writeBytes(path(u"in"_s), bytes));
    TextReadChannel channel(&m_runtime);
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    QVERIFY(QFile::remove(path(u"in"_s)));
    int lines = 1;
    while (channel.readLine() == 0) {
        QCOMPARE(channel.line, u"0123456789"_s);
        ++lines;
    }
    QCOMPARE(lines, 5000);
    channel.closeRead();

    // A file that shrinks ends early.
    QVERIFY(writeBytes(path(u"in"_s), bytes));
    QVERIFY(channel.openRead(path(u"in"_s), u"UTF-8"_s));
    QCOMPARE(channel.readLine(), 0);
    QVERIFY(QFile::resize(path(u"in"_s), 0));
    lines = 1;
    while (lines <= 5000 && channel.readLine() == 0)
        ++lines;
    QVERIFY(lines < 5000);
    QCOMPARE(channel.readLine(), 1);
    QCOMPARE(m_runtime.lastError, u"old error"_s);
}

// A pipe has no size, and nothing in it at first; only its closing is its end.
void TextChannelsTest::readPipe()
{
#ifdef Q_OS_UNIX
    const QString pipe = path(u"pipe"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    std::thread writer([pipe] {
        QFile file(pipe);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return;
        for (const char *part : {"one\ntw", "o\r\n\nthr", "ee\n\xe6", "\xbc", "\xa2"}) {
            QThread::msleep(20);
            file.write(part);
        }
    });
    TextReadChannel channel(&m_runtime);
    const bool opened = channel.openRead(pipe, u"UTF-8"_s);
    QStringList lines;
    while (channel.readLine() == 0)
        lines.append(channel.line);
    const bool ended = channel.readLine() == 1 && channel.line.isEmpty();
    writer.join();
    QVERIFY(opened);
    QVERIFY(ended);
    QCOMPARE(lines, (QStringList{u"one"_s, u"two"_s, u""_s, u"three"_s, kanji}));
#else
    QSKIP("Pipes have no names in directories on this system.");
#endif
}

void TextChannelsTest::readFileOfUnknownSize()
{
    const QString fileName = u"/proc/self/limits"_s;
    if (!QFile::exists(fileName))
        QSKIP("This system has no files that are made while they are read.");
    const QStringList lines = linesOf(fileName, u"UTF-8"_s);
    QVERIFY(lines.size() > 10);
    QVERIFY(lines.first().startsWith(u"Limit"));
}

void TextChannelsTest::writeSpec_data()
{
    QTest::addColumn<QString>("spec");
    QTest::addColumn<bool>("utf8");
    QTest::addColumn<QString>("lineEnd"); // of a system with the letter U, of one with the letter W
    QTest::addColumn<QString>("lineEndW");
    QTest::addColumn<QString>("message");

    const QString lf = u"\n"_s, crlf = u"\r\n"_s;
    const auto row = [](const char *name,
                        const QString &spec,
                        bool utf8,
                        const QString &lineEnd,
                        const QString &lineEndW,
                        const QString &message) {
        QTest::newRow(name) << spec << utf8 << lineEnd << lineEndW << message;
    };
    const QString notSlash = u"\"UTF-8\" not in('/')"_s;
    const QString notUtf8 = u"\"Shift-JIS\" not in('UTF-8')"_s;
    row("empty", u""_s, true, lf, crlf, u"\"\" not in('/')"_s);
    row("name alone", u"UTF-8"_s, true, lf, crlf, notSlash);
    row("name alone is not trimmed", u" UTF-8"_s, false, lf, crlf, u"\" UTF-8\" not in('UTF-8')"_s);
    row("name alone, blank behind", u"UTF-8 "_s, false, lf, crlf, u"\"UTF-8 \" not in('UTF-8')"_s);
    row("name and U", u"UTF-8,U"_s, true, lf, lf, notSlash);
    row("name and small u", u"UTF-8,u"_s, true, crlf, crlf, notSlash);
    row("name and blank U", u"UTF-8, U"_s, true, crlf, crlf, notSlash);
    row("name and U blank", u"UTF-8,U "_s, true, crlf, crlf, notSlash);
    row("name and UU", u"UTF-8,UU"_s, true, crlf, crlf, notSlash);
    row("name and W", u"UTF-8,W"_s, true, crlf, crlf, notSlash);
    row("name and a blank", u"UTF-8, "_s, true, crlf, crlf, notSlash);
    row("name and an empty code", u"UTF-8,"_s, true, lf, crlf, notSlash);
    row("name is trimmed before a comma", u" \tutf8\u3000,U"_s, true, lf, lf, u"\"utf8\" not in('/')"_s);
    row("third part is not read", u"UTF-8,U,W"_s, true, lf, lf, notSlash);
    row("empty code and a third part", u"UTF-8,,U"_s, true, lf, crlf, notSlash);
    row("comma alone", u","_s, true, lf, crlf, u"\"\" not in('/')"_s);
    row("code alone", u",U"_s, true, lf, lf, u"\"\" not in('/')"_s);
    row("blank name and code", u" ,U"_s, true, lf, lf, u"\"\" not in('/')"_s);
    row("full-width comma is none", u"UTF-8\uff0cU"_s, false, lf, crlf, u"\"UTF-8\uff0cU\" not in('UTF-8')"_s
    );
    row("quotes keep no comma", u"'UTF-8,U'"_s, false, crlf, crlf, u"\"'UTF-8\" not in('UTF-8')"_s);
    row("slash", u"/"_s, false, lf, crlf, notUtf8);
    row("slash and code", u"/,U"_s, false, lf, lf, notUtf8);
    row("SJIS", u"SJIS"_s, false, lf, crlf, notUtf8);
    row("EUC-JP and code", u"eucjp ,u"_s, false, crlf, crlf, u"\"EUC-JP\" not in('UTF-8')"_s);
    row("unknown name", u"latin1,U"_s, false, lf, lf, u"\"latin1\" not in('UTF-8')"_s);
}

void TextChannelsTest::writeSpec()
{
    QFETCH(QString, spec);
    QFETCH(bool, utf8);
    QFETCH(QString, lineEnd);
    QFETCH(QString, lineEndW);
    QFETCH(QString, message);

    // The field decides, whatever the library was built for.
    const QChar letters[] = {BuiltWith::platformChar(), u'W', u'U', u'w', u' '};
    for (const QChar letter : letters) {
        m_runtime.platformChar = letter;
        const QString expected = letter == u'W' ? lineEndW : lineEnd;
        TextWriteChannel channel(&m_runtime);
        QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, spec));
        QCOMPARE(m_runtime.checkMessage, message);
        QCOMPARE(m_runtime.lastError, u"old error"_s);
        QCOMPARE(channel.fileName, path(u"out"_s));
        QCOMPARE(channel.lineEnd, expected);
        QCOMPARE(channel.stream->encoding(), utf8 ? QStringConverter::Utf8 : QStringConverter::System);
        m_runtime.checkMessage = u"old check"_s;
        QCOMPARE(channel.writeLine(kanji), 1);
        channel.closeWrite();
        QCOMPARE(m_runtime.checkMessage, u"old check"_s);
        QCOMPARE(m_runtime.lastError, u"old error"_s);
        QVERIFY(m_runtime.convertOk);
        QCOMPARE(channel.lineEnd, expected);
        QCOMPARE(
            bytesOf(path(u"out"_s)), (utf8 ? kanji.toUtf8() : kanji.toLocal8Bit()) + expected.toLatin1()
        );
    }
}

void TextChannelsTest::writeMode_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("appends");
    QTest::addColumn<QString>("message"); // what a failed open leaves

    QTest::newRow("OT") << u"OT"_s << false << u"\"OT\" not in('ADD')"_s;
    QTest::newRow("ADD") << u"ADD"_s << true << u"\"ADD\" not in('OT')"_s;
    QTest::newRow("small ot") << u"ot"_s << false << u"\"ot\" not in('ADD')"_s;
    QTest::newRow("small add") << u"add"_s << false << u"\"add\" not in('ADD')"_s;
    QTest::newRow("blank ADD") << u" ADD"_s << false << u"\" ADD\" not in('ADD')"_s;
    QTest::newRow("ADD and more") << u"ADDED"_s << false << u"\"ADDED\" not in('ADD')"_s;
    QTest::newRow("empty") << u""_s << false << u"\"\" not in('ADD')"_s;
    QTest::newRow("null") << QString() << false << u"\"\" not in('ADD')"_s;
}

void TextChannelsTest::writeMode()
{
    QFETCH(QString, mode);
    QFETCH(bool, appends);
    QFETCH(QString, message);

    QVERIFY(writeBytes(path(u"out"_s), "a longer text than the new one\n"));
    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), mode, u"UTF-8,U"_s));
    QCOMPARE(m_runtime.checkMessage, u"\"UTF-8\" not in('/')"_s);
    // Only "OT" asks for an empty file; without "ADD" Qt empties it all the same.
    QCOMPARE(channel.file->openMode().testFlag(QIODevice::Append), appends);
    QVERIFY(channel.file->openMode().testFlag(QIODevice::WriteOnly));
    QVERIFY(!channel.file->openMode().testFlag(QIODevice::ReadOnly));
    QVERIFY(!channel.file->openMode().testFlag(QIODevice::Text));
    QCOMPARE(channel.writeLine(u"new"_s), 1);
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), (appends ? "a longer text than the new one\n"_ba : ""_ba) + "new\n");

    // A file that is not there is made.
    QVERIFY(QFile::remove(path(u"out"_s)));
    QVERIFY(channel.openWrite(path(u"out"_s), mode, u"UTF-8,U"_s));
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), QByteArray());

    QVERIFY(!channel.openWrite(path(u"none/out"_s), mode, u"UTF-8,U"_s));
    QCOMPARE(m_runtime.checkMessage, message);
    QCOMPARE(m_runtime.lastError, u"Open Write error"_s);
}

void TextChannelsTest::writeFailure_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty name") << u""_s;
    QTest::newRow("null name") << QString();
    QTest::newRow("directory") << m_directory.path();
    QTest::newRow("no such directory") << path(u"none/none"_s);
    QTest::newRow("name with a NUL") << path(QString(u"cut\0off"_s));
}

void TextChannelsTest::writeFailure()
{
    QFETCH(QString, name);

    QVERIFY(writeBytes(path(u"cut"_s), "cut"));
    for (const QString &mode : {u"OT"_s, u"ADD"_s, u""_s}) {
        TextWriteChannel channel(&m_runtime);
        m_runtime.lastError.clear();
        QVERIFY(!channel.openWrite(name, mode, u"UTF-8,u"_s));
        QVERIFY(!channel.file && !channel.stream);
        QCOMPARE(channel.fileName, name);
        QCOMPARE(channel.lineEnd, u"\r\n"_s);
        QCOMPARE(m_runtime.lastError, u"Open Write error"_s);
        const QString other = mode == u"ADD" ? u"OT"_s : u"ADD"_s;
        QCOMPARE(m_runtime.checkMessage, u'"' + mode + u"\" not in('"_s + other + u"')"_s);
        QCOMPARE(channel.writeLine(u"x"_s), 0);
        QCOMPARE(m_runtime.lastError, u"not open write"_s);

        QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8,U"_s));
        QCOMPARE(channel.lineEnd, u"\n"_s);
    }
    QCOMPARE(bytesOf(path(u"cut"_s)), "cut");
}

void TextChannelsTest::writeSecondOpen()
{
    QVERIFY(writeBytes(path(u"other"_s), "other\n"));
    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8,U"_s));
    QCOMPARE(channel.writeLine(u"one"_s), 1);
    const QFile *file = channel.file.get();
    const QTextStream *stream = channel.stream.get();
    m_runtime.checkMessage = u"old check"_s;

    QVERIFY(!channel.openWrite(path(u"other"_s), u"OT"_s, u"SJIS,u"_s));
    QCOMPARE(m_runtime.lastError, u"already open write"_s);
    QCOMPARE(m_runtime.checkMessage, u"old check"_s);
    QCOMPARE(channel.fileName, path(u"out"_s));
    QCOMPARE(channel.lineEnd, u"\n"_s);
    QCOMPARE(channel.file.get(), file);
    QCOMPARE(channel.stream.get(), stream);
    QCOMPARE(channel.stream->encoding(), QStringConverter::Utf8);
    QVERIFY(!channel.openWrite(QString(), u"ADD"_s, QString()));
    QCOMPARE(m_runtime.lastError, u"already open write"_s);
    QCOMPARE(channel.writeLine(u"two"_s), 1);
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), "one\ntwo\n");
    QCOMPARE(bytesOf(path(u"other"_s)), "other\n");
}

void TextChannelsTest::writeAgain()
{
    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"SJIS,u"_s));
    QCOMPARE(channel.writeLine(u"one"_s), 1);
    channel.closeWrite();
    QVERIFY(!channel.file && !channel.stream);
    QCOMPARE(channel.fileName, path(u"out"_s));
    QCOMPARE(channel.writeLine(u"lost"_s), 0);
    channel.closeWrite();
    QVERIFY(channel.openWrite(path(u"other"_s), u"OT"_s, u"UTF-8,U"_s));
    QCOMPARE(channel.writeLine(u"two"_s), 1);
    QCOMPARE(channel.stream->encoding(), QStringConverter::Utf8);
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), "one\r\n");
    QCOMPARE(bytesOf(path(u"other"_s)), "two\n");
}

void TextChannelsTest::writeText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");

    const QString high(QChar(0xd840)), low(QChar(0xdc0b));
    QTest::newRow("empty") << u""_s << ""_ba;
    QTest::newRow("null") << QString() << ""_ba;
    QTest::newRow("blanks") << u" a \t"_s << " a \t"_ba;
    QTest::newRow("line feed in the text") << u"a\nb"_s << "a\nb"_ba;
    QTest::newRow("carriage return in the text") << u"a\rb\r"_s << "a\rb\r"_ba;
    QTest::newRow("CR LF in the text") << u"a\r\nb"_s << "a\r\nb"_ba;
    QTest::newRow("NUL") << QString(u"a\0b"_s) << "a\0b"_ba;
    QTest::newRow("kanji") << kanji << "\xe6\xbc\xa2"_ba;
    QTest::newRow("half-width katakana") << u"\uff76"_s << "\xef\xbd\xb6"_ba;
    QTest::newRow("byte order mark is a character") << u"\ufeffa"_s
                                                    << "\xef\xbb\xbf"
                                                       "a"_ba;
    QTest::newRow("surrogate pair") << high + low << "\xf0\xa0\x80\x8b"_ba;
    QTest::newRow("lone high surrogate") << u'a' + high + u'b'
                                         << "a\xef\xbf\xbd"
                                            "b"_ba;
    QTest::newRow("lone low surrogate") << u'a' + low + u'b'
                                        << "a\xef\xbf\xbd"
                                           "b"_ba;
    QTest::newRow("high surrogate at the end") << u'a' + high << "a\xef\xbf\xbd"_ba;
    QTest::newRow("pair the wrong way round") << low + high << "\xef\xbf\xbd\xef\xbf\xbd"_ba;
    QTest::newRow("noncharacter") << u"\uffff"_s << "\xef\xbf\xbf"_ba;
    QTest::newRow("number-like") << u"00012.50"_s << "00012.50"_ba;
}

void TextChannelsTest::writeText()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);

    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8"_s));
    m_runtime.checkMessage = u"old check"_s;
    QCOMPARE(channel.writeLine(text), 1);
    QCOMPARE(channel.writeLine(u"next"_s), 1);
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), bytes + platformLineEnd() + "next" + platformLineEnd());
    QCOMPARE(m_runtime.lastError, u"old error"_s);
    QCOMPARE(m_runtime.checkMessage, u"old check"_s);
}

void TextChannelsTest::writeReachesTheFileOnClose()
{
    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8,U"_s));
    QCOMPARE(channel.writeLine(u"a"_s), 1);
    QCOMPARE(bytesOf(path(u"out"_s)), ""); // gathered
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), "a\n");
}

void TextChannelsTest::writeReachesTheFileOnDestruction()
{
    {
        TextWriteChannel channel(&m_runtime);
        QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8,U"_s));
        QCOMPARE(channel.writeLine(u"pending"_s), 1);
    }
    QCOMPARE(bytesOf(path(u"out"_s)), "pending\n");
    {
        auto channel = std::make_unique<TextReadChannel>(&m_runtime);
        QVERIFY(channel->openRead(path(u"out"_s), u"UTF-8"_s));
        QCOMPARE(channel->readLine(), 0);
    }
    QVERIFY(QFile::remove(path(u"out"_s))); // nobody holds it any more
}

void TextChannelsTest::writeAppendsTwice()
{
    TextWriteChannel channel(&m_runtime);
    QFile::remove(path(u"out"_s));
    for (const QString &text : {u"one"_s, kanji, u"three"_s}) {
        QVERIFY(channel.openWrite(path(u"out"_s), u"ADD"_s, u"UTF-8,U"_s));
        QCOMPARE(channel.writeLine(text), 1);
        channel.closeWrite();
    }
    QCOMPARE(bytesOf(path(u"out"_s)), "one\n" + kanji.toUtf8() + "\nthree\n");

    // A last line without its end is gone on with.
    QVERIFY(writeBytes(path(u"out"_s), "\xef\xbb\xbfopen"));
    QVERIFY(channel.openWrite(path(u"out"_s), u"ADD"_s, u"UTF-8,u"_s));
    QCOMPARE(channel.writeLine(u"ed"_s), 1);
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), "\xef\xbb\xbfopened\r\n");

#ifndef Q_OS_WIN // there Qt finds the end of the file when it opens it, and not again
    // Two at a time, on a file that was not there: neither writes over the other.
    QVERIFY(QFile::remove(path(u"out"_s)));
    TextWriteChannel other(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"ADD"_s, u"UTF-8,U"_s));
    QVERIFY(other.openWrite(path(u"out"_s), u"ADD"_s, u"UTF-8,U"_s));
    QCOMPARE(channel.writeLine(u"one"_s), 1);
    QCOMPARE(other.writeLine(u"two"_s), 1);
    channel.closeWrite();
    other.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), "one\ntwo\n");
#endif
}

void TextChannelsTest::writeVanishedFile()
{
#ifndef Q_OS_UNIX
    QSKIP("An open file cannot be removed on this system.");
#endif
    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8"_s));
    QVERIFY(QFile::remove(path(u"out"_s)));
    for (int i = 0; i < 10000; ++i)
        QCOMPARE(channel.writeLine(u"0123456789"_s), 1);
    channel.closeWrite();
    QVERIFY(!QFile::exists(path(u"out"_s)));
    QCOMPARE(m_runtime.lastError, u"old error"_s);
}

// A limit on the size of files stands for the disk that is full.
void TextChannelsTest::writeRefusedBySystem()
{
#ifdef Q_OS_UNIX
    constexpr int limit = 50001;
    QVERIFY(std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR);
    rlimit old{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);

    TextWriteChannel channel(&m_runtime);
    QVERIFY(channel.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8,U"_s));
    QByteArray written;
    bool allTaken = true;
    rlimit small = old;
    small.rlim_cur = limit;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    for (int i = 0; i < 20000; ++i) {
        const QString text = u"line "_s + QString::number(i);
        allTaken = channel.writeLine(text) == 1 && allTaken;
        written += text.toUtf8() + '\n';
    }
    const bool failed = channel.stream->status() == QTextStream::WriteFailed;
    channel.closeWrite();
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &old), 0);

    QVERIFY(allTaken);
    QVERIFY(failed);
    QVERIFY(!channel.file && !channel.stream);
    QCOMPARE(bytesOf(path(u"out"_s)), written.first(limit));
    QCOMPARE(m_runtime.lastError, u"old error"_s);

    // The channel is as good as new.
    QVERIFY(channel.openWrite(path(u"out"_s), u"ADD"_s, u"UTF-8,U"_s));
    QCOMPARE(channel.writeLine(u"again"_s), 1);
    channel.closeWrite();
    QCOMPARE(bytesOf(path(u"out"_s)), written.first(limit) + "again\n");
#else
    QSKIP("There is no limit on the size of files to run into on this system.");
#endif
}

void TextChannelsTest::writeToFullDevice()
{
    const QString device = u"/dev/full"_s;
    if (!QFile::exists(device))
        QSKIP("This system has no device that is always full.");
    TextWriteChannel channel(&m_runtime);
    for (const int lines : {0, 1, 20000}) {
        QVERIFY(channel.openWrite(device, u"OT"_s, u"UTF-8"_s));
        for (int i = 0; i < lines; ++i)
            QCOMPARE(channel.writeLine(u"0123456789"_s), 1);
        channel.closeWrite();
        QVERIFY(!channel.file && !channel.stream);
    }
    {
        TextWriteChannel destroyed(&m_runtime);
        QVERIFY(destroyed.openWrite(device, u"ADD"_s, u"UTF-8"_s));
        QCOMPARE(destroyed.writeLine(u"0123456789"_s), 1);
    }
    QCOMPARE(m_runtime.lastError, u"old error"_s);
}

void TextChannelsTest::openTakesTheMessage()
{
    const QString out = path(u"out"_s);
    for (const QString &lineEndCode : {u"UTF-8"_s, u"UTF-8,U"_s}) {
        QVERIFY(writeBytes(out, "old"));
        TextWriteChannel added(&m_runtime);
        m_runtime.checkMessage = u"ADD"_s;
        QVERIFY(added.openWrite(out, m_runtime.checkMessage, lineEndCode));
        QCOMPARE(added.writeLine(u"new"_s), 1);
        added.closeWrite();
        QVERIFY(bytesOf(out).startsWith("oldnew"));

        TextWriteChannel named(&m_runtime);
        m_runtime.checkMessage = out;
        QVERIFY(named.openWrite(m_runtime.checkMessage, u"OT"_s, lineEndCode));
        QCOMPARE(named.fileName, out);
    }

    QVERIFY(writeBytes(out, "\xe6\xbc\xa2\n"));
    TextReadChannel in(&m_runtime);
    m_runtime.checkMessage = u"utf8"_s;
    QVERIFY(in.openRead(out, m_runtime.checkMessage));
    QCOMPARE(in.stream->encoding(), QStringConverter::Utf8);
}

void TextChannelsTest::closeSwallowsExceptionOfQt()
{
    QVERIFY(writeBytes(path(u"in"_s), "a\n"));
    TextReadChannel in(&m_runtime);
    in.file = std::make_unique<ThrowingFile<QException>>(path(u"in"_s));
    QVERIFY(in.file->open(QIODevice::ReadOnly));
    in.stream = std::make_unique<QTextStream>(in.file.get());
    in.closeRead();
    QVERIFY(!in.file && !in.stream);

    TextWriteChannel out(&m_runtime);
    out.file = std::make_unique<ThrowingFile<QException>>(path(u"out"_s));
    QVERIFY(out.file->open(QIODevice::WriteOnly));
    out.stream = std::make_unique<QTextStream>(out.file.get());
    QCOMPARE(out.writeLine(u"pending"_s), 1);
    out.closeWrite();
    QVERIFY(!out.file && !out.stream);
    QCOMPARE(bytesOf(path(u"out"_s)), "pending");
    QCOMPARE(m_runtime.lastError, u"old error"_s);
}

void TextChannelsTest::closePassesOtherException()
{
    TextWriteChannel out(&m_runtime);
    out.file = std::make_unique<ThrowingFile<OtherException>>(path(u"out"_s));
    QVERIFY(out.file->open(QIODevice::WriteOnly));
    out.stream = std::make_unique<QTextStream>(out.file.get());
    QVERIFY_THROWS_EXCEPTION(OtherException, out.closeWrite());
    QVERIFY(out.file && out.stream);
    out.closeWrite();
    QVERIFY(!out.file && !out.stream);
}

void TextChannelsTest::closeStreamWithoutFile()
{
    QByteArray bytes;
    TextReadChannel in(&m_runtime);
    in.stream = std::make_unique<QTextStream>(&bytes);
    in.closeRead();
    QVERIFY(!in.file && !in.stream);

    TextWriteChannel out(&m_runtime);
    out.stream = std::make_unique<QTextStream>(&bytes);
    out.closeWrite();
    QVERIFY(!out.file && !out.stream);
}

// Random lines, long enough in all that portions end in the middle of characters and of line ends.
void TextChannelsTest::whatIsWrittenReadsBack()
{
    QRandomGenerator random(20260);
    const QString alphabet = u"aZ0 ,\t\"\u00e9\uff76\u3000"_s + kanji + QChar(u'\0') + u'\ufeff';
    for (const QString &spec : {u"UTF-8,U"_s, u"UTF-8,u"_s, u"UTF-8"_s}) {
        QStringList lines;
        for (int i = 0; i < 3000; ++i) {
            QString line;
            const int length = random.bounded(i % 100 == 0 ? 5000 : 40);
            for (int j = 0; j < length; ++j) {
                const auto pick = random.bounded(alphabet.size() + 1);
                line += pick < alphabet.size() ? QString(alphabet[pick]) : u"\U0002000b"_s;
            }
            lines.append(line);
        }
        lines[0].prepend(u'x'); // a byte order mark there would be none of the text

        TextWriteChannel out(&m_runtime);
        QVERIFY(out.openWrite(path(u"out"_s), u"OT"_s, spec));
        for (const QString &line : std::as_const(lines))
            QCOMPARE(out.writeLine(line), 1);
        out.closeWrite();
        QCOMPARE(bytesOf(path(u"out"_s)), (lines.join(out.lineEnd) + out.lineEnd).toUtf8());
        QCOMPARE(linesOf(path(u"out"_s), u"UTF-8"_s), lines);
    }
}

void TextChannelsTest::longLine()
{
    constexpr int length = 100'000'000;
    const QString text(length, u'x');
    TextWriteChannel out(&m_runtime);
    QVERIFY(out.openWrite(path(u"out"_s), u"OT"_s, u"UTF-8,U"_s));
    QCOMPARE(out.writeLine(text), 1);
    QCOMPARE(out.writeLine(u"next"_s), 1);
    out.closeWrite();
    QCOMPARE(QFileInfo(path(u"out"_s)).size(), length + 6);

    TextReadChannel in(&m_runtime);
    QVERIFY(in.openRead(path(u"out"_s), u"UTF-8"_s));
    QCOMPARE(in.readLine(), 0);
    QVERIFY(in.line == text); // QCOMPARE would print both
    QCOMPARE(in.readLine(), 0);
    QCOMPARE(in.line, u"next"_s);
    QCOMPARE(in.readLine(), 1);
    QVERIFY(QFile::remove(path(u"out"_s)) || in.file);
}

QTEST_GUILESS_MAIN(TextChannelsTest)
#include "tst_textchannels.moc"
