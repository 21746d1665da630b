// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <QDir>
#include <QFile>
#include <QStringConverter>
#include <QTemporaryDir>
#include <QTextStream>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

struct Encoding {
    QString name;
    QStringConverter::Encoding encoding;
};

const Encoding &someEncoding(Fuzz::Input &input)
{
    static const std::array<Encoding, 4> encodings{
        {{u"UTF-8"_s, QStringConverter::Utf8},
         {QString(), QStringConverter::Utf8},
         {u"SJIS"_s, QStringConverter::System},
         {u"latin1"_s, QStringConverter::System}}};
    return encodings.at(static_cast<std::size_t>(input.between(0, 3)));
}

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Whether the bytes begin with a mark that goes before the encoding named.
bool hasMark(const QByteArray &bytes)
{
    return bytes.startsWith("\xef\xbb\xbf") || bytes.startsWith("\xfe\xff") || bytes.startsWith("\xff\xfe")
        || bytes.startsWith(QByteArray("\0\0\xfe\xff", 4));
}

/// The lines of a file without a mark. One that is not empty has a line.
///
/// Nothing where bytes are no text of the code page: decoded at once they end the text, line by line they do
/// not.
std::optional<QStringList> linesOf(const QByteArray &bytes, QStringConverter::Encoding encoding)
{
    if (bytes.isEmpty())
        return QStringList();
#ifdef Q_OS_WIN
    QString text
        = encoding == QStringConverter::Utf8 ? QString::fromUtf8(bytes) : QString::fromLocal8Bit(bytes);
    if (encoding == QStringConverter::System && text.toLocal8Bit() != bytes)
        return std::nullopt;
#else
    Q_UNUSED(encoding)
    QString text = QString::fromUtf8(bytes);
#endif
    QStringList lines = text.remove(u'\r').split(u'\n');
    if (lines.size() > 1 && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

/// Reads a file of any bytes to its end.
void reading(AppRuntime &runtime, const QString &name, const QByteArray &bytes, const Encoding &encoding)
{
    QFile file(name);
    Fuzz::require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "there is a file");
    file.close();

    TextReadChannel channel(&runtime);
    Fuzz::require(channel.openRead(name, encoding.name), "a file is opened");
    QStringList lines;
    while (channel.readLine() == 0) {
        lines += channel.line;
        Fuzz::require(lines.size() <= bytes.size() + 1, "a file comes to its end");
        Fuzz::require(!channel.line.contains(u'\n'), "a line has no line end");
    }
    Fuzz::requireEqual(channel.readLine(), 1, "the end stays the end");
    Fuzz::require(channel.line.isEmpty(), "at the end there is no line");
    const std::optional<QStringList> expected = linesOf(bytes, encoding.encoding);
    if (expected && !hasMark(bytes))
        Fuzz::requireEqual(lines, *expected, "a file is the lines between its line feeds");
}

/// Two files and one channel of each kind, and what has to be in them after every call.
class Session
{
public:
    Session(AppRuntime &runtime, const QDir &folder)
        : m_runtime(runtime)
        , m_names{folder.filePath(u"a"_s), folder.filePath(u"b"_s)}
        , m_nowhere(folder.filePath(u"none/a"_s))
        , m_in(&runtime)
        , m_out(&runtime)
    {
        for (const QString &name : m_names)
            QFile::remove(name);
    }

    void step(Fuzz::Input &input)
    {
        m_runtime.lastError = u"before"_s;
        switch (input.between(0, 7)) {
        case 0: openWrite(input); break;
        case 1: closeWrite(); break;
        case 2: openRead(input); break;
        case 3:
            m_in.closeRead();
            m_reading = false;
            break;
        case 4: readLine(); break;
        default: writeLine(input.text());
        }
        Fuzz::requireEqual(
            m_out.file != nullptr, m_writing >= 0, "a channel is open as long as it has a file"
        );
        Fuzz::requireEqual(m_out.stream != nullptr, m_writing >= 0, "and a stream");
        Fuzz::requireEqual(m_in.file != nullptr, m_reading, "for reading too");
        Fuzz::requireEqual(m_in.stream != nullptr, m_reading, "with its stream");
    }

    /// Closed or not, what was written before reaches the file with the channel's end.
    void closeWrite()
    {
        m_out.closeWrite();
        if (m_writing >= 0)
            flushed();
        m_writing = -1;
    }

private:
    [[nodiscard]] QString name(int index) const
    {
        return index < 2 ? m_names.at(static_cast<std::size_t>(index)) : m_nowhere;
    }

    void openWrite(Fuzz::Input &input)
    {
        const int index = input.between(0, 2);
        const QStringList modes{u"OT"_s, u"ADD"_s, u"ot"_s, QString()};
        const QString &mode = modes[input.between(0, 3)];
        const QStringList ends{QString(), u",U"_s, u",u"_s, u","_s, u",U,x"_s};
        const int end = input.between(0, 4);
        const Encoding &encoding = someEncoding(input);
        const bool opened = m_out.openWrite(name(index), mode, encoding.name + ends[end]);

        if (m_writing >= 0) {
            Fuzz::require(!opened, "an open channel is not opened");
            Fuzz::requireEqual(m_runtime.lastError, u"already open write"_s, "which is said");
            return;
        }
        Fuzz::requireEqual(m_out.fileName, name(index), "the name tried is kept");
        Fuzz::requireEqual(opened, index < 2, "a file is made where there is a directory");
        if (!opened) {
            Fuzz::requireEqual(m_runtime.lastError, u"Open Write error"_s, "a file not made is an error");
            return;
        }
        const bool standard = ends[end].size() < 2;
        const bool lineFeed = standard ? m_runtime.platformChar != u'W' : end == 1 || end == 4;
        Fuzz::requireEqual(
            m_out.lineEnd, lineFeed ? u"\n"_s : u"\r\n"_s, "the line end is the one asked for"
        );
        m_writing = index;
        m_encoding = encoding.encoding;
        m_pending.clear();
        if (mode != u"ADD")
            content(index).clear();
    }

    void writeLine(const QString &text)
    {
        const bool open = m_writing >= 0;
        Fuzz::requireEqual(m_out.writeLine(text), open ? 1 : 0, "an open channel takes lines");
        Fuzz::requireEqual(
            m_runtime.lastError, open ? u"before"_s : u"not open write"_s, "no other one does"
        );
        if (open)
            m_pending += text + m_out.lineEnd;
    }

    void openRead(Fuzz::Input &input)
    {
        const int index = input.between(0, 2);
        const Encoding &encoding = someEncoding(input);
        const bool opened = m_in.openRead(name(index), encoding.name);
        if (m_reading) {
            Fuzz::require(!opened, "an open channel is not opened again");
            Fuzz::requireEqual(m_runtime.lastError, u"already open read"_s, "which is said, too");
            return;
        }
        Fuzz::requireEqual(opened, QFile::exists(name(index)), "a file that is there is opened");
        Fuzz::requireEqual(
            m_runtime.lastError,
            opened ? u"before"_s : u"open read error("_s + name(index) + u')',
            "any other is an error"
        );
        m_reading = opened;
    }

    void readLine()
    {
        const int result = m_in.readLine();
        if (!m_reading) {
            Fuzz::requireEqual(result, 5, "a closed channel has no line");
            Fuzz::requireEqual(m_runtime.lastError, u"not open read"_s, "and says so");
            return;
        }
        Fuzz::require(result == 0 || (result == 1 && m_in.line.isEmpty()), "a line, or the end");
        Fuzz::requireEqual(m_runtime.lastError, u"before"_s, "the end is no error");
    }

    QByteArray &content(int index)
    {
        return m_content.at(static_cast<std::size_t>(index));
    }

    void flushed()
    {
        QByteArray &expected = content(m_writing);
        if (!m_pending.isEmpty())
            expected += QByteArray(QStringEncoder(m_encoding)(m_pending));
        Fuzz::requireEqual(contentOf(name(m_writing)), expected, "every line is in the file");
    }

    AppRuntime &m_runtime;
    std::array<QString, 2> m_names;
    QString m_nowhere;
    TextReadChannel m_in;
    TextWriteChannel m_out;
    std::array<QByteArray, 2> m_content;
    QString m_pending;
    QStringConverter::Encoding m_encoding{QStringConverter::Utf8};
    int m_writing{-1};
    bool m_reading{false};
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const QTemporaryDir folder;
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    // Long lines, at times: they are read in portions.
    const Encoding &encoding = someEncoding(input);
    const int times = input.between(0, 7) == 0 ? 1 << input.between(0, 12) : 1;
    const int length = input.byte();
    reading(runtime, folder.filePath(u"any"_s), input.bytes(length).repeated(times), encoding);

    Session session(runtime, QDir(folder.path()));
    for (int steps = input.between(0, 24); steps > 0; --steps)
        session.step(input);
    session.closeWrite();
    return 0;
}
