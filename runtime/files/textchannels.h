// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/core/appruntime_export.h>

#include <QString>

#include <memory>

class AppRuntime;
class QFile;
class QTextStream;

/// One text file that is read line by line.
///
/// A program makes as many channels as it needs; each is closed or has one file open, and can be opened again
/// after closing. Failures leave their message in the runtime's `lastError`, whose object must outlive the
/// channel. Destroying an open channel closes it.
///
/// \code
/// TextReadChannel in(&runtime);
/// if (in.openRead(u"codes.csv"_s, u"UTF-8"_s)) {
///     while (in.readLine() == 0)
///         runtime.writeTrace(in.line);
///     in.closeRead();
/// } else {
///     runtime.writeTrace(runtime.lastError);
/// }
/// \endcode
///
/// ```text
/// open read error(codes.csv)
/// ```
///
/// **What a file may hold.** A line ends at a line feed; the last one may go without. It may have any length.
/// Every carriage return of the file is dropped, not only the one before a line feed: `a CR b` reads as `ab`.
/// A NUL character is kept. A byte that is no character of UTF-8 reads as U+FFFD; it never takes a line end
/// with it. A byte order mark at the start is no part of the text, and what it says of the encoding (UTF-8,
/// UTF-16 or UTF-32) goes before the name given to openRead(). A file of nothing but a mark reads as one
/// empty line.
///
/// **Where a file ends.** A file that cannot be read further, as on a damaged disk, is at its end; a line
/// that the error cuts is given. No member reports the error, `file->error()` does. It stays at its end, also
/// where the error passes, until the program seeks in it or opens it again. A file or pipe that gets more
/// later gives more lines later.
///
/// A program may read from `stream` itself; readLine() goes on behind what it took.
class APPRUNTIME_EXPORT TextReadChannel
{
public:
    /// A closed channel that reports to this runtime.
    explicit TextReadChannel(AppRuntime *owner);

    ~TextReadChannel();

    Q_DISABLE_COPY_MOVE(TextReadChannel)

    /// Opens a file for reading, in UTF-8 when AppRuntime::normaliseEncodingName() gives that for the name,
    /// else in the local 8-bit encoding, also for `Shift-JIS` and `EUC-JP`. True when it is open.
    ///
    /// Success leaves checkMessage set, by the comparisons of the encoding name: `UTF-8` leaves
    /// `"UTF-8" not in('/')`.
    ///
    /// On failure returns false and sets lastError to `already open read`, with the file that is open and all
    /// fields left as they are, or to `open read error(FILENAME)` with the channel closed.
    bool openRead(const QString &newFileName, const QString &encodingName);

    /// Reads the next line into `line`, without its line end. Returns 0; or 1 at the end of the file, with
    /// `line` empty.
    ///
    /// On failure returns 5 and sets lastError to `not open read`; `line` stays what it was.
    int readLine();

    /// Closes the file; does nothing on a closed channel. `fileName` and `line` stay.
    void closeRead();

    AppRuntime *runtime;                 ///< Takes the messages; not owned.
    std::unique_ptr<QFile> file;         ///< Null when the channel is closed.
    std::unique_ptr<QTextStream> stream; ///< On `file`; null when the channel is closed.
    QString fileName;                    ///< Name given to the last openRead() that was not refused as open.
    QString line;                        ///< The line that readLine() read last.
    QString spare;                       ///< Kept for programs of the family.
};

/// One text file that is written line by line.
///
/// Opens, reports, closes and is destroyed as TextReadChannel.
///
/// \code
/// TextWriteChannel out(&runtime);
/// if (out.openWrite(u"codes.csv"_s, u"OT"_s, u"UTF-8,U"_s)) {
///     out.writeLine(u"0600000,北海道"_s);
///     out.closeWrite();
/// }
/// \endcode
///
/// **What reaches the file, and when.** Lines are gathered and handed to the system in portions, the last one
/// when the channel is closed. Several programs that append to one file at a time tear lines where their
/// portions end. Once the system refuses to take a portion, as on a full disk, the file keeps what it has
/// taken and the lines that follow are dropped. No member reports that. `stream->status()` does, once a
/// portion was refused: call `stream->flush()` before you look at it, and look before you close the channel.
/// No byte order mark is written. What is no character of the encoding, such as half of a surrogate pair, is
/// written as the encoding's replacement.
class APPRUNTIME_EXPORT TextWriteChannel
{
public:
    /// A closed channel that reports to this runtime.
    explicit TextWriteChannel(AppRuntime *owner);

    ~TextWriteChannel();

    Q_DISABLE_COPY_MOVE(TextWriteChannel)

    /// Opens a file for writing; it is made when there is none. True when it is open.
    ///
    /// \param newFileName the file, absolute or from the current directory.
    /// \param mode `OT` empties a file that is there, `ADD` appends to it; every other word, `ot` included,
    ///     empties it as `OT` does.
    /// \param encodingSpec the encoding's name as for TextReadChannel::openRead(), or that name, a comma and
    ///     the code of the line end: `U` for LF, any other, `u` and ` U` included, for CR LF. An empty code,
    ///     or none, takes the platform's: CR LF where `platformChar` is 'W', else LF. White space around the
    ///     name is removed only when there is a comma; what follows a second comma is not read.
    ///
    /// Leaves checkMessage set, by the comparisons of the mode and the name: `"OT" not in('ADD')` after a
    /// failure, that of the encoding name after success, as for reading.
    ///
    /// On failure returns false and sets lastError to `already open write`, with the file that is open,
    /// checkMessage and all fields left as they are, or to `Open Write error` with the channel closed.
    bool openWrite(const QString &newFileName, const QString &mode, const QString &encodingSpec);

    /// Writes the text and then `lineEnd`. Nothing in the text is changed: a line feed in it ends a line too.
    /// Returns 1.
    ///
    /// On failure returns 0 and sets lastError to `not open write`.
    int writeLine(const QString &text);

    /// Closes the file, with all its lines written; does nothing on a closed channel. `fileName` and
    /// `lineEnd` stay.
    void closeWrite();

    QString lineEnd;                          ///< What follows every line; from openWrite().
    QString lfText{QStringLiteral("\n")};     ///< The line end LF; stays as it is.
    QString crlfText{QStringLiteral("\r\n")}; ///< The line end CR LF; stays as it is.
    AppRuntime *runtime;                      ///< Takes the messages; not owned.
    QString fileName;                    ///< Name given to the last openWrite() that was not refused as open.
    QString spare;                       ///< Kept for programs of the family.
    std::unique_ptr<QFile> file;         ///< Null when the channel is closed.
    std::unique_ptr<QTextStream> stream; ///< On `file`; null when the channel is closed.
};
