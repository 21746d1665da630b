// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>
#include <runtime/core/systemname.h>
#include <runtime/files/textchannels.h>

#include <QByteArray>
#include <QException>
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>
#include <QTextStream>

#include <cstring>
#include <optional>
#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

/// Bytes asked of the system at a time.
constexpr qsizetype blockSize = 16384;

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

/// The file of a read channel, which gives its lines itself.
///
/// A text stream decodes blocks of bytes. Where a broken character ends a block it drops what follows, a line
/// end too. Here the bytes are cut at their line feeds first, and each line is decoded alone.
///
/// The stream on the file stays in step: the file's position is that of the next line, and what was read
/// ahead are the stream's next bytes. Once somebody has read from the file by other means, the stream may
/// hold text of its own, and all further lines come from it. So do those of a file that begins with the mark
/// of UTF-16 or UTF-32, and those of a stream whose encoding the program has changed.
class LineFile final : public QFile
{
public:
    using QFile::QFile;

    /// Reads the next line; false at the end of the file.
    bool nextLine(QTextStream &stream, QString &line)
    {
        if (!m_started)
            start(stream);
        const bool first = !std::exchange(m_gaveLine, true);
        bool ended = false;
        if (m_shared || stream.encoding() != m_encoding) {
            ended = !readLineFrom(stream, line);
        } else {
            ended = !cutLine(line) && line.isEmpty();
        }
        return !ended || (first && !m_empty); // a file of nothing but a mark has one empty line
    }

    bool seek(qint64 position) override
    {
        m_begin = m_end = 0;
        m_started = false;
        return QFile::seek(position);
    }

    [[nodiscard]] qint64 bytesAvailable() const override
    {
        // A position tells how much has been read of a file, but not of a pipe.
        return QFile::bytesAvailable() + (isSequential() ? m_end - m_begin : 0);
    }

protected:
    /// For everybody else. What was read ahead comes first.
    qint64 readData(char *data, qint64 maxSize) override
    {
        m_shared = true;
        m_gaveLine = m_gaveLine || !m_started;
        if (m_begin == m_end)
            return QFile::readData(data, maxSize);
        const qsizetype count = qMin(m_end - m_begin, static_cast<qsizetype>(maxSize));
        std::memcpy(data, m_bytes.constData() + m_begin, static_cast<size_t>(count));
        m_begin += count;
        return count;
    }

private:
    /// Looks at what the file begins with, and at what the program has made of the stream before.
    void start(QTextStream &stream)
    {
        m_started = true;
        m_sequential = isSequential();
        fill();
        const auto marked = stream.autoDetectUnicode()
            ? QStringConverter::encodingForData(QByteArrayView(m_bytes.constData(), m_end))
            : std::nullopt;
        if (marked == QStringConverter::Utf8) {
            stream.setEncoding(QStringConverter::Utf8);
            pass(3);
        }
        m_encoding = stream.encoding();
        const bool system = m_encoding == QStringConverter::System;
        if (m_encoding != QStringConverter::Utf8 && !system)
            m_shared = true;
        if (marked && marked != QStringConverter::Utf8)
            m_shared = true;
#ifdef Q_OS_WIN
        // What the code page has no character for would end the text, were its decoder told that it is whole.
        if (system) {
            m_decoder = QStringDecoder(m_encoding, QStringConverter::Flag::ConvertInitialBom);
            return;
        }
#endif
        // On any other system the local encoding is UTF-8 as well.
        m_decoder = QStringDecoder(
            QStringConverter::Utf8,
            QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom
        );
    }

    /// Reads up to the next line feed, or to the end of the file; then it is false.
    bool cutLine(QString &line)
    {
        qsizetype searched = 0;
        do {
            const QByteArrayView ahead(m_bytes.constData() + m_begin, m_end - m_begin);
            const qsizetype size = ahead.indexOf('\n', searched);
            if (size >= 0) {
                decode(ahead.first(size), line);
                pass(size + 1);
                return true;
            }
            searched = m_end - m_begin;
        } while (fill());
        decode(QByteArrayView(m_bytes.constData() + m_begin, searched), line);
        pass(searched);
        return false;
    }

    /// Reads a block behind what is there; false when nothing comes.
    bool fill()
    {
        const qsizetype left = m_end - m_begin;
        const qsizetype wanted = left + blockSize;
        if (m_bytes.size() > 64 * blockSize && wanted < 2 * blockSize) {
            m_bytes = QByteArray(m_bytes.constData() + m_begin, left); // a long line is over
        } else if (m_begin > 0) {
            std::memmove(m_bytes.data(), m_bytes.constData() + m_begin, static_cast<size_t>(left));
        }
        m_begin = 0;
        m_end = left;
        if (m_bytes.size() < wanted)
            m_bytes.resize(qMax(wanted, 2 * m_bytes.size()));
        const qint64 count = QFile::readData(m_bytes.data() + left, blockSize);
        if (count <= 0)
            return false;
        m_end += count;
        m_returns = QByteArrayView(m_bytes.constData(), m_end).contains('\r');
        m_empty = false;
        return true;
    }

    /// Makes the text of a line, without its carriage returns.
    void decode(QByteArrayView bytes, QString &line)
    {
        while (bytes.endsWith('\r'))
            bytes.chop(1);
        // By way of a text that stays, so that a line takes no more memory than it needs.
        const qsizetype most = m_decoder.requiredSpace(bytes.size());
        if (m_text.size() < most || m_text.size() > 64 * blockSize)
            m_text = QString(most, Qt::Uninitialized);
        m_decoder.resetState();
        const QChar *end = m_decoder.appendToBuffer(m_text.data(), bytes);
        line.setUnicode(m_text.constData(), end - m_text.constData());
        if (m_returns)
            line.remove(u'\r');
    }

    /// Goes past bytes that were read ahead.
    void pass(qsizetype count)
    {
        m_begin += count;
        if (!m_sequential)
            QIODevice::seek(QIODevice::pos() + count);
    }

    QByteArray m_bytes; ///< What was read ahead stands from `m_begin` up to `m_end`.
    qsizetype m_begin{0};
    qsizetype m_end{0};
    QString m_text;
    QStringDecoder m_decoder;
    QStringConverter::Encoding m_encoding{QStringConverter::Utf8};
    bool m_returns{false}; ///< A carriage return is among what was read ahead.
    bool m_sequential{false};
    bool m_started{false};
    bool m_gaveLine{false};
    bool m_empty{true};   ///< No byte has come yet.
    bool m_shared{false}; ///< Lines come from the stream.
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
    file = std::make_unique<LineFile>(fileName);
    if (!open(*file, QIODevice::ReadOnly | QIODevice::Text)) {
        runtime->lastError = "open read error("_L1 + fileName + u')';
        closeRead();
        return false;
    }
    stream = streamOn(file.get(), *runtime, encodingName);
    return true;
}

int TextReadChannel::readLine()
{
    if (!file) {
        runtime->lastError = u"not open read"_s;
        return 5;
    }
    // What gives no line is at its end, whatever its size says: some files of the system have a size without
    // bytes, and some cannot be read to their end. A program may have put a file of its own here.
    auto *lines = dynamic_cast<LineFile *>(file.get());
    if (lines != nullptr ? lines->nextLine(*stream, line) : readLineFrom(*stream, line))
        return 0;
    line.clear();
    return 1;
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
