// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>
#include <runtime/core/systemname.h>
#include <runtime/files/textchannels.h>

#include <QException>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

/// Code units asked of a stream at a time. It holds on to what it was asked for, in a buffer that it may copy
/// whenever it adds to it: a line of 100 MB in one go would take minutes.
constexpr qint64 portion = 65536;

/// A stream on the file in the encoding that a name stands for. There are two: the Japanese encodings rely on
/// the system's code page, and an unknown name is no error.
std::unique_ptr<QTextStream> streamOn(QFile *file, AppRuntime &runtime, const QString &encodingName)
{
    auto stream = std::make_unique<QTextStream>(file);
    const bool utf8 = runtime.checkIn(runtime.normaliseEncodingName(encodingName), u"UTF-8"_s);
    stream->setEncoding(utf8 ? QStringConverter::Utf8 : QStringConverter::System);
    return stream;
}

/// Opens the file without a word on standard error, where the toolkit complains of a pipe or device that is
/// to be appended to, for that has no end to go to.
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
    file = std::make_unique<QFile>(fileName);
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
    // Both words count. A file that holds no more than a byte order mark has no line to read, but is not at
    // its end and so one empty line; a pipe that is empty for the moment says it is at its end, and has more.
    const bool atEnd = stream->atEnd();
    if (!stream->readLineInto(&line, portion)) {
        line.clear();
        return atEnd ? 1 : 0;
    }
    // A full portion is followed by the rest of the line, which is empty when the line end comes just then.
    if (line.size() == portion) {
        QString rest;
        do {
            stream->readLineInto(&rest, portion);
            line += rest;
        } while (rest.size() == portion);
    }
    return 0;
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
    // Never with Text: it would make CR LF of the LF that a program asked for. Both words are always
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
