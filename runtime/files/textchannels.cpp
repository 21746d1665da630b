// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>
#include <runtime/core/systemname.h>
#include <runtime/files/codepage.h>
#include <runtime/files/textchannels.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QException>
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>
#include <QTextStream>

#include <algorithm>
#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

/// Code units asked of a stream at a time. It holds on to what it was asked for, in a buffer that it may copy
/// whenever it adds to it: a line of 100 MB in one go would take minutes.
constexpr qint64 portion = 65536;

/// Reads a line through the stream; false at its end.
bool readLineFrom(QTextStream &stream, QString &line)
{
    if (!stream.readLineInto(&line, portion))
        return false;
    // A full portion is followed by the rest of the line, which is empty when the line end comes just then.
    if (line.size() == portion) {
        QString rest;
        do {
            stream.readLineInto(&rest, portion);
            line += rest;
        } while (rest.size() == portion);
    }
    return true;
}

/// How many bytes at the end of these are the beginning of a character of UTF-8 that is cut off.
qsizetype cutOff(QByteArrayView bytes)
{
    for (qsizetype length = 1; length <= qMin<qsizetype>(3, bytes.size()); ++length) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - length]);
        if (byte < 0x80)
            break;
        if (byte >= 0xc0)
            return length < (byte >= 0xf0 ? 4 : byte >= 0xe0 ? 3 : 2) ? length : 0;
    }
    return 0;
}

/// The file of a read channel, which hands the stream blocks of whole characters.
///
/// A text stream decodes block by block. Where a broken character ends a block it drops what stands behind,
/// a line end too. Where it ends the file, the character is dropped.
class BlockFile final : public QFile
{
public:
    using QFile::QFile;

    /// Says whether the bytes are UTF-8 where no byte order mark says it.
    void setUtf8(bool utf8)
    {
        m_utf8 = utf8;
    }

    /// Whether the file has one empty line, because it holds nothing but a byte order mark or carriage
    /// returns. True once.
    [[nodiscard]] bool takeEmptyLine()
    {
        return std::exchange(m_emptyLine, false);
    }

    bool seek(qint64 position) override
    {
        m_held.clear();
        m_failed = false;
        return QFile::seek(position);
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qsizetype held = qMin(m_held.size(), static_cast<qsizetype>(maxSize));
        std::copy_n(m_held.constData(), held, data);
        m_held.remove(0, held);
        if (held == maxSize)
            return held;
        const qint64 count = readOn(data + held, maxSize - held);
        if (count <= 0) {
            breakEnd(data, held);
            return held > 0 ? held : count;
        }

        auto size = static_cast<qsizetype>(held + count);
        if (std::exchange(m_atStart, false))
            lookAtMark(QByteArrayView(data, size));
        m_emptyLine = m_emptyLine && isCarriageReturns(QByteArrayView(data, size));
        if (isWide())
            return size;
        // A character that is cut off is for the next block.
        m_held = QByteArrayView(data, size).last(cutOffIn(data, size)).toByteArray();
        size -= m_held.size();
        // A program that asks for all of the file asks once.
        if (char next = 0; !m_held.isEmpty() && !isSequential()) {
            if (readOn(&next, 1) == 1)
                m_held += next;
            else
                size += std::exchange(m_held, {}).size();
        }
        if (m_utf8)
            breakEnd(data, size);
        return size > 0 ? size : readData(data, maxSize); // a pipe may give less than a character
    }

private:
    /// Reads nothing more after an error: what the next try gives would stand as a line behind the one that
    /// is cut.
    qint64 readOn(char *data, qint64 size)
    {
        const qint64 count = m_failed ? -1 : QFile::readData(data, size);
        m_failed = count < 0;
        return count;
    }

    void lookAtMark(QByteArrayView bytes)
    {
        const auto marked = QStringConverter::encodingForData(bytes);
        m_marked = marked.value_or(QStringConverter::Utf8);
        m_utf8 = m_utf8 || marked == QStringConverter::Utf8;
        m_emptyLine = true;
    }

    /// Whether a line feed is one of several bytes.
    [[nodiscard]] bool isWide() const
    {
        return m_marked != QStringConverter::Utf8;
    }

    /// Whether the block holds nothing else, except a byte order mark.
    [[nodiscard]] bool isCarriageReturns(QByteArrayView block) const
    {
        QStringDecoder decoder(m_marked, QStringConverter::Flag::Stateless);
        const QString text = decoder(block);
        return text.count(u'\r') == text.size();
    }

    [[nodiscard]] qsizetype cutOffIn(char *data, qsizetype size) const
    {
        return m_utf8 ? cutOff({data, size}) : mendCodePage(data, size);
    }

    /// Lets no block end in a character that is cut off, and broken therefore. Its bytes become others that
    /// take no part in a character, nor in a byte order mark.
    void breakEnd(char *data, qsizetype size) const
    {
        const qsizetype cut = isWide() ? 0 : cutOffIn(data, size);
        std::fill_n(data + size - cut, cut, m_utf8 ? '\xfd' : '?');
    }

    QByteArray m_held; ///< The beginning of the next block.
    bool m_utf8{true};
    QStringConverter::Encoding m_marked{QStringConverter::Utf8}; ///< By the byte order mark.
    bool m_atStart{true};
    bool m_emptyLine{false};
    bool m_failed{false};
};

/// A stream on the file in the encoding that a name stands for. There are two: the Japanese encodings rely on
/// the system's code page, and an unknown name is no error.
std::unique_ptr<QTextStream> streamOn(QFile *file, AppRuntime &runtime, const QString &encodingName)
{
    auto stream = std::make_unique<QTextStream>(file);
    const bool utf8 = runtime.checkIn(runtime.normaliseEncodingName(encodingName), u"UTF-8"_s);
    stream->setEncoding(utf8 ? QStringConverter::Utf8 : QStringConverter::System);
    return stream;
}

/// Opens the file with nothing on standard error, where Qt complains of a pipe or device that is to be
/// appended to: it has no end to go to.
bool open(QFile &file, QIODevice::OpenMode mode)
{
    const QString name = file.fileName();
    if (!isSystemName(name))
        return false;
    const QFileInfo info(name);
    if (mode.testFlag(QIODevice::Append) && info.exists() && !info.isFile())
        mode.setFlag(QIODevice::Append, false);
    return file.open(mode);
}

void close(std::unique_ptr<QFile> &file, std::unique_ptr<QTextStream> &stream)
{
    if (file) {
        // Pending text is written now: the stream hears that its file is about to close.
        try {
            file->close();
        } catch (const QException &) {
            // A program may have put a file of its own kind here. What follows releases it all the same.
        }
    }
    stream.reset();
    file.reset();
}

} // namespace

TextReadChannel::TextReadChannel(AppRuntime *owner)
    : runtime(owner)
{
}

TextReadChannel::~TextReadChannel()
{
    closeRead();
}

bool TextReadChannel::openRead(const QString &newFileName, const QString &encodingName)
{
    if (file) {
        runtime->lastError = u"already open read"_s;
        return false;
    }
    fileName = newFileName;
    auto blocks = std::make_unique<BlockFile>(fileName);
    BlockFile &source = *blocks;
    file = std::move(blocks);
    if (!open(*file, QIODevice::ReadOnly | QIODevice::Text)) {
        runtime->lastError = "open read error("_L1 + fileName + u')';
        closeRead();
        return false;
    }
    stream = streamOn(file.get(), *runtime, encodingName);
    source.setUtf8(localIsUtf8 || stream->encoding() == QStringConverter::Utf8);
    return true;
}

int TextReadChannel::readLine()
{
    if (!file) {
        runtime->lastError = u"not open read"_s;
        return 5;
    }
    if (readLineFrom(*stream, line))
        return 0;
    // What gives no line is at its end, whatever its size says: some files of the system have a size without
    // bytes, and some cannot be read to their end.
    line.clear();
    auto *blocks = dynamic_cast<BlockFile *>(file.get()); // a program may have put a file of its own here
    return blocks != nullptr && blocks->takeEmptyLine() ? 0 : 1;
}

void TextReadChannel::closeRead()
{
    close(file, stream);
}

TextWriteChannel::TextWriteChannel(AppRuntime *owner)
    : runtime(owner)
{
}

TextWriteChannel::~TextWriteChannel()
{
    closeWrite();
}

bool TextWriteChannel::openWrite(const QString &newFileName, const QString &mode, const QString &encodingSpec)
{
    // Either may be the message that the comparisons write. The name is stored before them.
    const QString kept = ownCopy(mode);
    // The code keeps its blanks and its case: only the bare "U" asks for line feeds, and programs rely on
    // every other code, "u" included, for CR LF.
    QString encodingName = encodingSpec;
    QString lineEndCode;
    const QStringList parts = encodingSpec.split(u',');
    if (parts.size() > 1) {
        encodingName = parts[0].trimmed();
        lineEndCode = parts[1];
    }

    if (file) {
        runtime->lastError = u"already open write"_s;
        return false;
    }

    fileName = newFileName;
    if (runtime->checkIn(lineEndCode, QString()) && !runtime->isSameChar(runtime->platformChar, u'W'))
        lineEnd = lfText;
    else
        lineEnd = runtime->checkIn(lineEndCode, u"U"_s) ? lfText : crlfText;

    file = std::make_unique<QFile>(fileName);
    // Never with Text: it would make CR LF of the LF that a program asked for. Both modes are always
    // compared, so that an open that fails leaves the mode in checkMessage.
    QIODevice::OpenMode openMode = QIODevice::WriteOnly;
    openMode.setFlag(QIODevice::Truncate, runtime->checkIn(kept, u"OT"_s));
    openMode.setFlag(QIODevice::Append, runtime->checkIn(kept, u"ADD"_s));
    if (!open(*file, openMode)) {
        runtime->lastError = u"Open Write error"_s;
        closeWrite();
        return false;
    }
    stream = streamOn(file.get(), *runtime, encodingName);
    return true;
}

int TextWriteChannel::writeLine(const QString &text)
{
    if (!file) {
        runtime->lastError = u"not open write"_s;
        return 0;
    }
    // A stream that failed to write never writes again but would go on gathering text.
    if (stream->status() == QTextStream::Ok) {
        *stream << text;
        for (const QChar character : std::as_const(lineEnd))
            *stream << character; // a good deal faster than the text of one or two characters
    }
    return 1;
}

void TextWriteChannel::closeWrite()
{
    close(file, stream);
}
