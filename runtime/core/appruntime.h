// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/core/appruntime_export.h>
#include <runtime/fields/inputmode.h>
#include <runtime/fields/scancursor.h>
#include <runtime/files/csvrecord.h>
#include <runtime/files/textchannels.h>
#include <runtime/files/versioninfo.h>

#include <QByteArray>
#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <concepts>
#include <initializer_list>
#include <memory>

class QDateTime;

// Contents, in the order of the class. Each topic names the file its members are defined in.
//
//   Core
//    1. Construction, lists and characters       (core/appruntime.cpp)
//    2. Trace and console                        (core/trace.cpp, console_*.cpp)
//    3. Platform and environment                 (core/platform.cpp, core/environment_*.cpp)
//    4. Running programs                         (core/process.cpp)
//    5. File system                              (core/filesystem.cpp, drives_*.cpp, movefile_*.cpp)
//   Files and records
//    6. Encoding names                           (files/encodingnames.cpp)
//    7. URL coding                               (files/urlcoding.cpp)
//    8. Records                                  (files/csvrecords.cpp)
//    9. Plain and quoted lists                   (files/textlists.cpp)
//   10. Temporary names                          (files/temporarynames.cpp)
//   11. Path rules                               (files/pathrules.cpp)
//   12. Digit grouping                           (files/digitgrouping.cpp)
//   Entry and display fields
//   13. Date and time display                    (fields/datetimedisplay.cpp)
//   14. Input modes                              (fields/inputmodes.cpp)
//   15. Full-width text                          (fields/kanawidth.cpp)
//   16. Column types                             (fields/columntypes.cpp)
//   17. Scanner                                  (fields/scanner.cpp)
//   18. Message catalogue                        (fields/messagecatalogue.cpp)
//   19. Field fitting                            (fields/fieldfitting.cpp)
//   Strings and values
//   20. Substrings                               (strings/substrings.cpp)
//   21. Searching                                (strings/searching.cpp)
//   22. Blanks, case and replacing               (strings/shaping.cpp)
//   23. Numbers as texts                         (strings/numbertext.cpp)
//   24. Kinds, classes and widths of characters  (strings/characters.cpp)
//   25. Clearing lists, constants                (strings/lists.cpp)
//   26. Value-in-list checks                     (strings/valuechecks.cpp)
//   27. Numeric text checks                      (strings/numericchecks.cpp)
//   28. Placeholder codes                        (strings/placeholders.cpp)
//   29. Masked display                           (strings/masking.cpp)
//   30. Check characters                         (strings/checkcharacters.cpp)
//   31. Display width                            (strings/displaywidth.cpp)
//   32. Date normalisation                       (strings/datenormalisation.cpp)
//   Fields: the data members, in one table at the end

/// The runtime of a program: its settings and platform facts, its last error, and every operation that the
/// programs of the family share.
///
/// A program creates exactly one, right after its application object, and keeps it until it ends:
///
/// \code
/// int main(int argc, char **argv)
/// {
///     int qtArgc = 1; // Qt sees the program's name alone, the runtime every argument
///     QCoreApplication application(qtArgc, argv);
///     AppRuntime runtime(u"ORDERS"_s, argc, argv);
///
///     if (!runtime.makeDirectory(u"work"_s))
///         runtime.writeTrace(runtime.lastError); // make dir error(work)
/// }
/// \endcode
///
/// The object owns everything its pointers hold. It belongs to the thread that created it; nothing is locked.
///
/// **Results and errors.** Nothing is thrown and nothing is printed. A member that can fail returns a `bool`
/// (false: failed) or an `int` (0: success, 5: refused or failed), and on failure replaces `lastError` with a
/// message. Success never clears it, so look at the result first. Value checks leave their message in
/// `checkMessage` instead, so that a failed check does not hide the last error.
///
/// **Texts.** Lengths and positions count UTF-16 code units from 0, in `int`: no text may be longer than
/// maxInt(). A text handed to a member may be one of the runtime's own fields, also one that the member
/// writes. An empty result may be null or not, which the comparison of texts does not tell apart.
class APPRUNTIME_EXPORT AppRuntime
{
public:
    // ---------------------------------------------------------------------------------------------------
    /// \name Construction, lists and characters
    /// core/appruntime.cpp. The list and character members read their arguments only.
    /// @{

    /// Sets every field to its default, records the command line and finds out the platform.
    ///
    /// `programPath` becomes `argv[0]` (empty when there is none) and `arguments` the rest, both decoded from
    /// the local 8-bit encoding. Asks the system for the host name by running the `hostname` command, which
    /// takes a child process and at most 30 seconds. `argv` is read only now.
    ///
    /// Leaves in `checkMessage` the comparison of the last character of `programPath` that is no separator:
    /// for `/opt/zbase` that is `"z" not in('/')`.
    AppRuntime(const QString &name, int argc, char **argv);

    /// The same for a program without a command line to record: `programPath` and `arguments` stay empty, and
    /// `scanCursor`, `scanSource` and `scanDelimiter` hold no object.
    explicit AppRuntime(const QString &name);

    /// Releases what the pointers hold.
    ~AppRuntime();

    Q_DISABLE_COPY_MOVE(AppRuntime)

    /// The number of elements of `list`.
    [[nodiscard]] int count(const QStringList &list) const;

    /// A copy of the element at `index`; the empty text when `index` is negative or not below the count.
    [[nodiscard]] QString elementAt(const QStringList &list, int index) const;

    /// Whether the two are the same code unit.
    [[nodiscard]] bool isSameChar(QChar a, QChar b) const;

    /// The text made of this one character.
    [[nodiscard]] QString charToText(QChar character) const;

    /// The constant text `error`.
    [[nodiscard]] QString errorWord() const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Trace and console
    /// core/trace.cpp and core/console_win.cpp or core/console_unix.cpp. The trace is the standard output: a
    /// line per call, written at once, behind all that the program has printed through `stdout` before. A
    /// line waits for as long as a pipe or terminal has no room for it, also in non-blocking mode. No field
    /// is touched, and nothing is reported when the output is closed, full or no longer read.
    /// @{

    /// Writes one line: the text in the local 8-bit encoding, then, only where that differs from UTF-8, its
    /// UTF-8 form in round brackets, then a line feed. On a Unix-like system the local encoding is UTF-8.
    /// Line breaks and escape sequences in the text are written as they are.
    void writeTrace(const QString &text) const;

    /// Writes `AA/text` for level 1, `/text` for every other level below 3, and nothing from level 3 on.
    void writeTraceTagged(int level, const QString &text) const;

    /// The next line of the standard input without its line end (LF or CR LF); the empty text at the end of
    /// the input.
    ///
    /// It is decoded from UTF-8, whatever it looks like: a byte that is no UTF-8 reads as U+FFFD. A byte
    /// order mark of UTF-8 at its start is left out. The call takes no byte past the line, from a terminal, a
    /// file or a pipe alike: the next call, or a program started in between, goes on with the next line. It
    /// waits for the line end, also from an input in non-blocking mode. A line may have any length.
    [[nodiscard]] QString readConsoleLine() const;

    /// The moment as `2024-01-02 03:04:05.006`, or, when `withSeparators` is 0, as the 17 digits of a
    /// sortable stamp: `20240102030405006`. Gregorian calendar; the empty text for an invalid moment.
    ///
    /// A program that calls this includes `<QDateTime>`.
    [[nodiscard]] QString formatTimestamp(const QDateTime &moment, int withSeparators) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Platform and environment
    /// core/platform.cpp and core/environment_win.cpp or core/environment_unix.cpp. Names and values of the
    /// environment are Unicode on Windows and UTF-8 elsewhere.
    /// @{

    /// Fills in the fields that depend on the platform and on `programPath`. The constructors call this as
    /// their last step; no program does.
    void setupPlatform(const QString &name);

    /// Asks the system for the name of this machine: the first line that the `hostname` command prints, up to
    /// its first dot, without characters at or below U+0020 at the end of the line. The field `hostName`
    /// holds the answer given at construction.
    ///
    /// On Windows the command is the one in the system's directory. Elsewhere it is found on the search path.
    ///
    /// Empty when there is no such command, when it prints nothing, and when it hangs: it is killed after 30
    /// seconds.
    [[nodiscard]] QString queryHostName() const;

    /// The value of an environment variable; the empty text when it is not set.
    [[nodiscard]] QString environmentValue(const QString &variable) const;

    /// The name of the user: the environment variable `USERNAME` where `platformChar` is 'W', else `USER`.
    [[nodiscard]] QString userName() const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Running programs
    /// core/process.cpp and core/boundedrun*.cpp. Read first what surprises people:
    /// - One text holds all arguments and is split at every single blank, empty parts kept: `a  b` is three
    ///   arguments, `a ` is two, and the empty text is one empty argument. There is no quoting, so an
    ///   argument never holds a blank.
    /// - A program that is waited for is killed after 30 seconds. Its output is dropped, and its standard
    ///   input is a pipe that nobody writes to.
    /// - It also ends when the program that waits for it is killed or crashes. What it started and left
    ///   behind lives on.
    /// @{

    /// Starts a program with the arguments in `argumentText`; `extraText` is not used.
    ///
    /// Line breaks in both texts become blanks first. A NUL in one of the texts, or an empty `program`, names
    /// no program: nothing is started.
    ///
    /// With `wait` the call returns 0 when the program has ended or its 30 seconds are over, and also when it
    /// could not be started, crashed, or exited with a code: none of that is reported. No application events
    /// are processed meanwhile, and processes that the program left behind are not waited for. A program that
    /// cannot be killed, because it has become another user, is left alone a second later. The 30 seconds
    /// count while the caller is stopped, but not while the machine sleeps.
    ///
    /// How a waited-for program ends with its caller depends on the system:
    /// - Linux sends it SIGKILL when the calling thread ends. A program that changes its user when it starts
    ///   (set-uid, set-gid or with file capabilities) loses that, and lives on.
    /// - On Windows the program is in a job that is closed with the caller.
    /// - On other systems it lives on.
    ///
    /// Without `wait` the program runs on by itself, with this one's console.
    ///
    /// On failure returns 5 and sets lastError to `bad QChar (..\ or ../)` when isSafePathText() refuses one
    /// of the texts, or to `Process PROGRAM ARGUMENTS error` when a program not waited for cannot be started.
    int runProgram(const QString &program, const QString &argumentText, const QString &extraText, bool wait);

    /// Runs a command of the Windows shell, `cmd /c command`, and waits for it as runProgram() does. On
    /// Windows the shell is the one in the system's directory. Where `platformChar` is not 'W' the call does
    /// nothing and returns 0.
    ///
    /// On failure returns 5 and sets lastError to `bad QChar (..\ or ../)`.
    int runShellCommand(const QString &command, const QString &extraText);
    int runShellCommand(const QString &command);

    /// Whether the text is free of `..\` and `../`, wherever they might stand: `a..\b` is refused, `..` is
    /// not.
    ///
    /// On failure returns false and sets lastError to `bad QChar (..\ or ../)`.
    bool isSafePathText(const QString &text);

    /// The text with every carriage return and every line feed replaced; CR LF gives two replacements.
    [[nodiscard]] QString replaceLineBreaks(const QString &text, QChar replacement) const;

    /// Waits, and processes the application's events meanwhile; needs an application object. 0 and less
    /// return as soon as the pending events are done.
    void waitMilliseconds(int milliseconds) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name File system
    /// core/filesystem.cpp; core/drives_win.cpp and core/movefile_win.cpp, or core/drives_unix.cpp and
    /// core/movefile_unix.cpp. A relative name starts at the current directory, except in renameFile().
    /// @{

    /// Makes one directory; what it stands in must exist. True also when the path exists already, be it a
    /// file.
    ///
    /// On failure returns false and sets lastError to `make dir error(PATH)`.
    bool makeDirectory(const QString &path);

    /// Renames a file or directory. Relative names start at the root of the current drive (at the directory
    /// that `pathSeparator` names), not at the current directory.
    ///
    /// An existing `newName` is never overwritten, be it a link to nothing or another link to the same file.
    /// On one file system the change is one step of the system; a link is renamed itself. To another file
    /// system only an ordinary file can go, no directory, link, pipe or device. It is copied, with its mode
    /// and times, and its owner where the system allows that; holes in it become zeros. The source is removed
    /// only when the copy is whole and on the disk. A source that changes meanwhile, or cannot be removed,
    /// stays, and the copy goes: after a failure the source is whole, and nothing new is at `newName`.
    ///
    /// On failure returns false and sets lastError to `rename file error(OLDNAME)`.
    bool renameFile(const QString &oldName, const QString &newName);

    /// Removes a file. True also when there is none; a directory is not removed.
    ///
    /// On failure returns false and sets lastError to `delete file error(PATH)`.
    bool deleteFile(const QString &path);

    /// The letters of the machine's drives in the system's order, `CD` for C: and D:; empty on a Unix-like
    /// system.
    [[nodiscard]] QString logicalDrives() const;

    /// Carriage return and line feed, on every platform.
    [[nodiscard]] QString lineEnd() const;

    /// The current directory of the process, with `/` between its parts; empty when it has been removed.
    [[nodiscard]] QString currentPath() const;

    /// The current date and time, local. A program that calls this includes `<QDateTime>`.
    [[nodiscard]] QDateTime currentDateTime() const;

    /// Changes the current directory of the process. Returns 0, or 5 when that failed; leaves lastError
    /// alone.
    int setCurrentPath(const QString &path);

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Encoding names
    /// files/encodingnames.cpp. Two encodings are in use, UTF-8 and the local 8-bit one. A name other than
    /// those of UTF-8 stands for the latter, whatever it says.
    /// @{

    /// The one spelling of an encoding's name, whatever its case: `UTF-8` for UTF8, UTF-8, UTF_8 and the
    /// empty name, `EUC-JP` for EUCJP, EUC-JP and EUC_JP, `Shift-JIS` for SJIS, SHIFT-JIS, SHIFT_JIS and `/`.
    /// Any other name is returned as it is, blanks included: ` UTF-8` stays ` UTF-8`.
    ///
    /// Leaves checkMessage set, except for the name `/`: `utf8` leaves `"utf8" not in('/')`.
    QString normaliseEncodingName(const QString &name);

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name URL coding
    /// files/urlcoding.cpp. The encoding's name changes nothing, per cent codes are UTF-8 always; but it is
    /// normalised, and leaves checkMessage set as normaliseEncodingName() does.
    /// @{

    /// The text read as a URL, with a per cent code for every character that may not stand where it does:
    /// `a b` gives `a%20b`, and `漢` gives `%E6%BC%A2`.
    ///
    /// Being read as a URL, a text is more than its characters. What is allowed in its place stays, as all of
    /// `a/b?c=d#e`. A per cent code stays too, but that of a letter, a digit or one of `-._~` becomes the
    /// character: `%20%41` gives `%20A`. One per cent sign that begins no code makes them all plain
    /// characters, `%25`. A scheme and a host become lower-case ASCII. The empty text, and one that cannot be
    /// a URL, such as `12:30` or `http://[a`, give the empty text. Versions of Qt differ on a host that is
    /// not ASCII. Newer ones give the empty text where a part of it begins or ends with `-`, begins with
    /// `xn--` or a combining mark, or holds a joiner such as U+200D; and they take `≠`. Qt's time for a host
    /// of letters and marks that it joins, such as `ｶﾞ`, grows with the square of its length: it takes
    /// seconds from a million units on.
    QString urlEncode(const QString &text, const QString &encodingName);

    /// The text with each per cent code replaced by the byte it stands for, the whole then read as UTF-8:
    /// `%E3%81%82` gives `あ`. What is no UTF-8 becomes U+FFFD. A per cent sign with fewer than two bytes
    /// behind it stays, and so does `+`. Two that are not both hexadecimal digits become one byte as well, of
    /// no meaning: `%zz` gives U+FFFD. A surrogate that is not one of a pair is a `?`.
    QString urlDecode(const QString &text, const QString &encodingName);

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Records
    /// files/csvrecords.cpp. One line of a table to its fields, and a field to its form in the line. The kind
    /// is comma-separated when isCsvKind() says so, else tab-separated. No field of the runtime is touched.
    /// @{

    /// Whether the upper-case form of `kind`, by Unicode, ends in `CSV`: `csv` and `MYCSV` do, `CSV2` and the
    /// empty text do not.
    [[nodiscard]] bool isCsvKind(const QString &kind) const;

    /// Makes `fields` the fields of one line; the empty line is one empty field.
    ///
    /// - Tab-separated: every tab ends a field, and a field loses what trails it at or below U+0020.
    /// - Comma-separated: a comma ends a field unless the double quotes before it in the line are odd in
    ///   number. A field loses the Unicode white space at its ends, then one quote at each end if both are
    ///   there, then one quote of every pair left, enclosed or not, and then what trails it at or below
    ///   U+0020. A line that ends in such a comma ends in an empty field.
    ///
    /// `a, "b,c" ,"d""e"` is `a`, `b,c` and `d"e`. The texts in `fields` that nobody shares are written over
    /// in place, so splitting line after line into one list soon allocates nothing. `line` may be one of its
    /// elements.
    void splitRecord(QStringList &fields, const QString &line, const QString &kind) const;

    /// The value as it is written into a line, and in `record` the separator to join the fields of that line
    /// with: a comma or a tab.
    ///
    /// Every carriage return and line feed becomes `?`. With commas, a value that holds a comma or a double
    /// quote is enclosed in quotes and its own are doubled: `say "hi"` is `"say ""hi"""`. Every other value
    /// stays as it is, white space at its ends, which splitRecord() takes away, and tabs included.
    QString csvField(CsvRecord &record, const QString &value, const QString &kind) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Plain and quoted lists
    /// files/textlists.cpp. Lists written in one text, and changes to a list. The list that is filled or
    /// changed comes first; a text given may be one of its elements. No field of the runtime is touched.
    /// @{

    /// The parts between the separators, none of them trimmed or left out: `a,,b` is `a`, the empty text and
    /// `b`. The empty text is one empty part.
    [[nodiscard]] QStringList splitByChar(const QString &text, QChar separator) const;

    /// The same, as the new content of `list`, whose unshared texts are written over in place.
    void splitByCharInto(QStringList &list, const QString &text, QChar separator) const;

    /// Makes `list` the parts between the commas that do not stand in single quotes, quotes kept and nothing
    /// trimmed: `'a,b',c` is `'a,b'` and `c`. Each quote opens or closes, and one never closed takes in the
    /// rest of the text. The empty text is one empty part.
    void splitQuotedList(QStringList &list, const QString &text) const;

    /// Adds the value at the end and returns it.
    QString appendToList(QStringList &list, const QString &value) const;

    /// Makes `target` equal to `source`, which may be the same list.
    void copyList(QStringList &target, const QStringList &source) const;

    /// Puts the value before the element at `index`; at the end when `index` is negative or past the end.
    void insertIntoList(QStringList &list, int index, const QString &value) const;

    /// The keys of a list of assignments, with the commas between them: `a=1,b='x,y',c=3` gives `a,b,c`.
    ///
    /// A key reaches up to its `=` and may hold commas and quotes; a text without `=` comes back whole. A
    /// value reaches up to the next comma outside single quotes, a quote never closed up to the end.
    [[nodiscard]] QString assignmentKeys(const QString &text) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Temporary names
    /// files/temporarynames.cpp. Names in the directory of the family's work files, joined from the fields
    /// `homeDirectory`, `pathSeparator`, `subdirTag` and `realMode2`. The examples are those of 'W' with the
    /// system drive C:. No directory is made here, and none is looked for.
    /// @{

    /// The full name of a work file of that program: `\A.TXT` gives `C:\Z\TMP\A.TXT`. Nothing is put between
    /// the directory and the name, so begin the name with the separator; the empty name gives the directory
    /// alone. The time program `ZCLOK`, spelt so, has a directory of its own: `C:\Z\Z.S01\TMP_REAL\A.TXT`
    /// when `subdirTag` is `S01`.
    ///
    /// Leaves checkMessage set, except for `ZCLOK`: `"ZBASE" not in('ZCLOK')`.
    QString tempPathFor(const QString &fileName, const QString &program);

    /// The same for this program, the one that `programName` names.
    QString tempPath(const QString &fileName);

    /// The family's directory without a trailing separator: `C:\Z`.
    [[nodiscard]] QString familyDirectory() const;

    /// The time program's directory without a trailing separator, whichever program asks: `C:\Z\Z.S01`.
    [[nodiscard]] QString subdirPath() const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Path rules
    /// files/pathrules.cpp. A name says where its file is, or else the file is in the temporary directory of
    /// this program. Only `pathSeparator` separates: on 'W' the name `/x` is a bare one. The names are looked
    /// at, never the disk.
    /// @{

    /// Whether the path says where its file is: its second character is a colon, or it begins with the
    /// separator, or with one dot or two and the separator behind them. Dots alone do not say it.
    [[nodiscard]] bool isExplicitPath(const QString &path) const;

    /// The path as it is when isExplicitPath(), else behind the temporary directory: on 'W', `SUB\A.TXT`
    /// gives `C:\Z\TMP\SUB\A.TXT`. The empty path gives that directory with its separator. Nothing is cleaned
    /// up.
    ///
    /// Leaves checkMessage set for a path that is not explicit, as tempPath() does.
    QString resolvePath(const QString &path);

    /// What follows the last dot, without white space at both ends: `DATA.CSV ` gives `CSV`. The whole name
    /// when it has no dot. A dot of a directory counts too: `A.B/C` gives `B/C`.
    [[nodiscard]] QString extensionOf(const QString &name) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Digit grouping
    /// files/digitgrouping.cpp. Works on the text of a number, so that digits of any length keep their value.
    /// No field is touched.
    /// @{

    /// The number with a comma between every three digits of its whole part: `-1234567.8912` gives
    /// `-1,234,567.8912`.
    ///
    /// The text is expected to be digits, with at most a minus sign in front and one point. It is not
    /// checked: any other character counts as a digit, and so `1,234` gives `1,,234`.
    [[nodiscard]] QString groupThousands(const QString &numberText) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Date and time display
    /// fields/datetimedisplay.cpp. Stored dates and times are texts of digits, `YYYYMMDDhhmmssfff` or its
    /// first 8, 12 or 14; that they are digits is not checked. Lengths are UTF-16 code units. lastError and
    /// convertOk are not touched.
    /// @{

    /// The display form of a stored date and time.
    ///
    /// - Style 0 has no separators, and the order of the date that `dateOrder` names.
    /// - Style 1 has that order, `dateSeparator` in the date, and `01/31/2024 23:59:59.123` for the rest.
    /// - Style 2 is for interchange: `2024-01-31 23:59:59.123`, whatever the two fields hold.
    /// - Every other style has the separators of style 2 and the order of `dateOrder`.
    ///
    /// The date is shown alone below 12 units; from 12 on with hours and minutes, from 14 with seconds, from
    /// 17 with the fraction. What lies between these lengths and beyond 17 is dropped. A text below 8 units
    /// is returned unchanged.
    ///
    /// From 8 units on `dateOrder` is compared with `Y` in every style, and with `M` if neither that nor
    /// style 2 decided the order. So checkMessage is set: to `"D" not in('M')` where the order is `D`.
    QString formatDateTime(QString value, int style);

    /// The time one second before a time `hhmmss`, without a date: `000000` gives `235959`.
    ///
    /// Each two digits are read with toInt(), so what is no number counts as 0, and what is missing too:
    /// `1200` gives `115959`. Hours and minutes that need not change stay as they stand, valid or not; units
    /// after the sixth are dropped. checkMessage is not touched.
    [[nodiscard]] QString previousSecond(const QString &time) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Input modes
    /// fields/inputmodes.cpp. The catalogues of modes are fields, from `numericModesSigned` to
    /// `displayModes`. No field is touched.
    /// @{

    /// The modes of a catalogue, in its order: `inputModes(runtime.integerModes)` has `+` with the label
    /// `{Numeric}[0-9]` and `-` with `{Numeric}-[0-9]`.
    ///
    /// Commas separate, there is no quoting, and blanks count. A code at the end that has no label is left
    /// out, so the empty text has no modes.
    [[nodiscard]] QList<InputMode> inputModes(const QString &catalogue) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Full-width text
    /// fields/kanawidth.cpp. No field is touched.
    /// @{

    /// The text in full-width form: printable ASCII from `!` to `~` and half-width katakana become their
    /// full-width characters, everything else stays. Blanks and control characters stay too, and so do the
    /// half-width punctuation U+FF61 to U+FF65 and a sound mark that no letter takes.
    ///
    /// A half-width letter and the mark behind it become one letter: `ｶ` to `ﾄ` take the voiced mark `ﾞ`, `ﾊ`
    /// to `ﾎ` that or the semi-voiced `ﾟ`. No other letter takes one, `ｳ` included, and none takes two. So
    /// the result is at most as long as the text. `A 1 ｶﾞｷﾟｳﾞ` gives `Ａ １ ガキﾟウﾞ`.
    [[nodiscard]] QString toFullWidth(const QString &text) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Column types
    /// fields/columntypes.cpp. The input mode of a field by the type of its database column, and the
    /// comparison of two values by the mode of their field.
    /// @{

    /// The input mode of a column of that SQL type: one character, exact names only.
    ///
    /// - `CHAR`, `VARCHAR`, `VARCHAR2`: a blank
    /// - `NCHAR`, `NVARCHAR`, `NVARCHAR2`, `MCHAR`, `MVARCHAR`: `/`, Japanese
    /// - `DECIMAL`, `INT`: `-`, signed number
    /// - `FLOAT`, `DOUBLE`: `F`, floating-point number
    /// - `DATETIME`, `TIMESTAMP`, `DATE`: `E`, date and time
    /// - everything else, `varchar` and the empty text too: a blank
    ///
    /// Compares with one line after the other and leaves the last that did not fit in checkMessage:
    /// `"DATE" not in('FLOAT','DOUBLE')`. A name of the first line leaves checkMessage alone.
    QString columnTypeMode(const QString &typeName);

    /// Compares two values and answers whether their relation is accepted: 0 when it is, 1 when not, 9 when a
    /// number could not be read. `relation` becomes `>`, `=` or `<`, or `?` with 9. An accept argument counts
    /// when it is exactly 1.
    ///
    /// The modes `+`, `-` and `F` compare as numbers, all alike; an empty text is 0. Numbers are read by
    /// validDouble() with the rule '-': blanks round them are allowed, `nan` and `inf` are numbers in any
    /// case. `nan` neither equals anything nor is greater, so that the relation is `<` wherever it stands.
    ///
    /// Every other mode compares as text, code unit by code unit, without trailing characters at or below
    /// U+0020: `ABC  ` equals `ABC`, and ` ABC` is less. lastError and convertOk are not touched.
    ///
    /// Leaves checkMessage set: as text, when the two differ, to `"LEFT" not in('RIGHT')` without what trails
    /// them; as numbers, to `"TEXT" not in('')` for the last text read that is not empty. convertOk then says
    /// whether the last text read is a number.
    ///
    /// \code
    /// QString relation;
    /// runtime.compareTyped(relation, u"10"_s, u'-', 1, 1, 0, u"9"_s); // 0, relation ">"
    /// runtime.compareTyped(relation, u"10"_s, u' ', 1, 1, 0, u"9"_s); // 1, relation "<"
    /// \endcode
    ///
    /// On failure returns 9 and sets lastError to `not numeric "TEXT"`; `right` is not read when `left`
    /// fails.
    int compareTyped(
        QString &relation,
        QString left,
        QChar mode,
        int acceptGreater,
        int acceptEqual,
        int acceptLess,
        QString right
    );

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Scanner
    /// fields/scanner.cpp. Takes keywords and tokens off a text, one after the other. A position is an index
    /// in UTF-16 code units; a negative one counts as 0, one past the end as the end. checkMessage and
    /// convertOk are not touched.
    ///
    /// The members without a text work on the shared scan: the text `scanSource->text` from
    /// `scanCursor->position` on, with `scanDelimiter->delimiter` for the delimiter found. In an object built
    /// from a name alone, which has none of the three, they return false and change nothing.
    /// @{

    /// Starts a shared scan at the beginning of `text`; does nothing in an object built from a name alone.
    void setScanText(const QString &text);

    /// Whether the text goes on with `keyword`, behind any number of characters at or below U+0020 and in
    /// either case; if so, the position moves past it.
    ///
    /// The upper-cased rest of the text must begin with the upper-cased keyword: `SELECTED` accepts `select`,
    /// and `ß` accepts `SS`. The position moves by the keyword's own length, in that case past the end. An
    /// empty keyword is accepted where something follows the blanks. False at the end of the text and
    /// behind blanks only; the position then stays where it was, before the blanks. lastError is not touched.
    ///
    /// Without a cursor, `text` is looked at from its beginning.
    ///
    /// \code
    /// runtime.setScanText(u"   order by"_s);
    /// runtime.acceptKeyword(u"BY"_s);    // false, position 0
    /// runtime.acceptKeyword(u"ORDER"_s); // true, position 8
    /// \endcode
    bool acceptKeyword(ScanCursor &cursor, const QString &keyword, const QString &text) const;
    [[nodiscard]] bool acceptKeyword(const QString &keyword, const QString &text) const;
    bool acceptKeyword(const QString &keyword);

    /// Takes the token from the cursor's position up to the first character of `text` that is one of
    /// `delimiters`, and moves the position past that.
    ///
    /// Characters between single quotes belong to the token, delimiters or not; the quotes stay in it, and
    /// are never delimiters. A token that a delimiter ends is put into `tokenOut.text` without the white
    /// space at its ends. The last one, which the end of the text or a missing closing quote ends, keeps it,
    /// and is empty when the position was at the end.
    ///
    /// `delimiterOut` becomes the delimiter, or U+0000. Of `tokenOut` only the text is written, and nothing
    /// when `store` is false; of `cursor` only the position. They may be one record, and `text` its text.
    ///
    /// \code
    /// ScanCursor token;
    /// runtime.setScanText(u"a ,'b,c', d"_s);
    /// runtime.nextToken(token, u",;"_s); // true, token.text "a"
    /// runtime.nextToken(token, u",;"_s); // true, token.text "'b,c'"
    /// runtime.nextToken(token, u",;"_s); // false, token.text " d"
    /// \endcode
    ///
    /// On failure, which is the last token, moves the position to the end of the text, returns false and sets
    /// lastError to `not found ('DELIMITERS')`.
    bool nextToken(
        ScanCursor &tokenOut,
        ScanCursor &cursor,
        QChar &delimiterOut,
        const QString &text,
        const QString &delimiters,
        bool store
    );
    bool nextToken(ScanCursor &tokenOut, const QString &delimiters);

    /// Steps over a token of the shared scan; all but the token is as with nextToken().
    ///
    /// On failure returns false and sets lastError to `not found ('DELIMITERS')`.
    bool skipToken(const QString &delimiters);

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Message catalogue
    /// fields/messagecatalogue.cpp. Looks up the texts that the program has loaded into `messageKeys` and
    /// `messageTexts`, and finds and replaces elements of any list of texts. lastError and convertOk are not
    /// touched.
    /// @{

    /// The index of the first element at or after `from` that equals `value`, or -1. Texts are equal when
    /// their code units are. A negative `from` counts from the end, -1 being the last element and everything
    /// before the first one the first. From the end on, nothing is found.
    ///
    /// Leaves in checkMessage the comparison of the last element before the one found, or of the last of all:
    /// `"MSG_A" not in('B')` when `B` follows `MSG_A`. Leaves checkMessage alone when no element fails.
    int indexOfValue(const QStringList &list, const QString &value, int from = 0);

    /// Replaces the element at `index`; does nothing when `index` is negative or not below the count.
    void setElement(QStringList &list, int index, const QString &text) const;

    /// The text of `messageTexts` at the index where `messageKeys` has `key`; the empty text when there is no
    /// such key or text. A key that begins with `MSG_` gives the text without its first code unit, which is a
    /// mark for the programs.
    ///
    /// Leaves checkMessage as indexOfValue() does: with the keys `MSG_A` and `B` and the texts `Ehello` and
    /// `Iworld`, `MSG_A` gives `hello`, and `B` gives `Iworld` and leaves `"MSG_A" not in('B')`.
    QString messageText(const QString &key);

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Field fitting
    /// fields/fieldfitting.cpp. Values for fields of a fixed width, and codes and numbers as they are stored.
    /// lastError and convertOk are not touched.
    ///
    /// Columns count as charDisplayWidth() does with the default classes, whatever the class fields hold: 1
    /// for U+0000 to U+007F and half-width katakana, 2 for a surrogate pair and all others, 0 for a low
    /// surrogate alone. A column count below 0 gives the empty text.
    /// @{

    /// The longest beginning of the text that takes at most `columns` columns; it ends in no half pair.
    /// `truncateToWidth(u"アイウ"_s, 5)` gives `アイ`. A text that is not empty leaves checkMessage set, to
    /// `"TEXT" not in('')`.
    QString truncateToWidth(const QString &text, int columns);

    /// The same, with blanks behind it up to `columns` UTF-16 code units, not columns: `アイ` at 6 becomes 6
    /// units that take 8 columns. Leaves checkMessage set as truncateToWidth() does.
    QString fitToWidth(const QString &text, int columns);

    /// The code after the first character of the text, in a row of its own for digits, capital and small
    /// letters of ASCII, where `9`, `Z` and `z` are followed by `0`, `A` and `a`. Any other first character
    /// is given back. The rest of the text does not count: `Az` gives `B`. Empty for the empty text.
    [[nodiscard]] QString nextCodeChar(const QString &text) const;

    /// The number without zeros that say nothing: `-007.500` gives `-7.5`, `.5` gives `0.5`, `10.0` gives
    /// `10`, and the empty text, `-0` and `0.0` give `0`.
    ///
    /// The text is not checked to be a number, only changed as one: `-` and zeros at its beginning, `.` and,
    /// where there is a `.` at all, zeros at its end. The first character is never one of those taken from
    /// the end: `.0` gives `0.`. A text that is not empty leaves checkMessage set, to `"TEXT" not in('')`.
    QString normaliseNumber(const QString &text);

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Substrings
    /// strings/substrings.cpp. Positions and lengths count UTF-16 code units; a negative one counts as 0, and
    /// a surrogate pair may be cut in half. Read their arguments only.
    /// @{

    /// Makes `target` the UTF-8 text; the empty text for a null pointer.
    void setText(QString &target, const char *text) const;

    /// The `len` code units from `pos` on, or as many as there are; empty from the end of the text on.
    /// `mid(u"ABCDE"_s, 3, 10)` is `DE`. A C string is decoded from UTF-8 first, and a null pointer is empty.
    [[nodiscard]] QString mid(const QString &text, int pos, int len) const;
    [[nodiscard]] QString mid(const char *text, int pos, int len) const;

    /// Everything from `pos` on; empty from the end of the text on.
    [[nodiscard]] QString midFrom(const QString &text, int pos) const;

    /// The number of code units.
    [[nodiscard]] int length(const QString &text) const;

    /// The code unit at `pos`; a blank from the end of the text on.
    [[nodiscard]] QChar charAt(const QString &text, int pos) const;

    /// The code unit as a number, 0 to 65535.
    [[nodiscard]] int charCode(QChar character) const;

    /// The text made of this one character.
    [[nodiscard]] QString charText(QChar character) const;

    /// The text of the first `count` characters, NUL characters included; empty when `count` is below 1.
    [[nodiscard]] QString fromChars(const QChar *chars, int count) const;

    /// The text that the UTF-8 bytes stand for, with U+FFFD for what is no UTF-8.
    [[nodiscard]] QString fromUtf8(const QByteArray &bytes) const;

    /// The text as UTF-8 bytes, with `?` for a surrogate that is not one of a pair.
    [[nodiscard]] QByteArray toUtf8(const QString &text) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Searching
    /// strings/searching.cpp. Every search is case-sensitive and compares code units. Results are positions
    /// in code units from 0, or -1 when there is nothing. No field is touched.
    ///
    /// In indexOf() and lastIndexOf() a negative `from` counts from the end: -1 is the last code unit. Before
    /// the first one nothing is found.
    /// @{

    /// The first occurrence at or after `from`; -1 from the end of the text on. An empty `sub` is found at
    /// `from` itself, the end included.
    [[nodiscard]] int indexOf(const QString &text, const QString &sub, int from) const;
    [[nodiscard]] int indexOf(const QString &text, QChar character, int from) const;

    /// The first occurrence in the whole text; 0 for an empty `sub`.
    [[nodiscard]] int find(const QString &text, const QString &sub) const;
    [[nodiscard]] int findChar(const QString &text, QChar character) const;

    /// Whether the character occurs in the text.
    [[nodiscard]] bool containsChar(QChar character, const QString &text) const;

    /// The last occurrence in the whole text; the length of the text for an empty `sub`.
    [[nodiscard]] int lastIndexOf(const QString &text, const QString &sub) const;
    [[nodiscard]] int lastIndexOf(const QString &text, QChar character) const;

    /// The last occurrence that starts at or before `from`. With `from` past the end of the text, a single
    /// character is found as from the last unit on, and a `sub` of any other length is not found.
    [[nodiscard]] int lastIndexOf(const QString &text, const QString &sub, int from) const;
    [[nodiscard]] int lastIndexOf(const QString &text, QChar character, int from) const;

    /// The first position at or after `from` where any character of `chars` stands; a negative `from` counts
    /// as 0. `indexOfAny(u"2024-01/02"_s, u"/-"_s, 0)` is 4.
    [[nodiscard]] int indexOfAny(const QString &text, const QString &chars, int from) const;
    [[nodiscard]] int indexOfAny(const QString &text, const QString &chars) const;

    /// Whether the text starts or ends with `sub`. Every text starts and ends with the empty one. Only a null
    /// text does not, except with a null one, as in QString.
    [[nodiscard]] bool startsWith(const QString &text, const QString &sub) const;
    [[nodiscard]] bool endsWith(const QString &text, const QString &sub) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Blanks, case and replacing
    /// strings/shaping.cpp. Each gives a new text and touches no field. Widths count UTF-16 code units, not
    /// display columns.
    /// @{

    /// The text without the white space at both ends: blanks, tabs, line ends, the ideographic space U+3000
    /// and all else that QChar::isSpace() knows.
    [[nodiscard]] QString trimmed(const QString &text) const;

    /// The text without what leads it at or below U+0020: blanks and control characters, and no other white
    /// space.
    [[nodiscard]] QString trimLeft(const QString &text) const;

    /// The text without what trails it at or below U+0020.
    [[nodiscard]] QString trimRight(const QString &text) const;

    /// The text with as many `fill`, or blanks, in front as bring it to `width`; a text of that length or
    /// longer stays as it is. `padLeft(u"7"_s, 3, u'0')` is `007`.
    [[nodiscard]] QString padLeft(const QString &text, int width, QChar fill) const;
    [[nodiscard]] QString padLeft(const QString &text, int width) const;

    /// The same with the fill behind the text.
    [[nodiscard]] QString padRight(const QString &text, int width, QChar fill) const;
    [[nodiscard]] QString padRight(const QString &text, int width) const;

    /// The text in upper or lower case by Unicode's rules, which may make it longer: `ß` becomes `SS`.
    [[nodiscard]] QString toUpper(const QString &text) const;
    [[nodiscard]] QString toLower(const QString &text) const;

    /// The text with every `before` replaced, from left to right and without overlap; case counts. What was
    /// put in is not searched again. An empty `before` stands in front of every code unit and at the end.
    [[nodiscard]] QString replace(const QString &text, QChar before, QChar after) const;
    [[nodiscard]] QString replace(const QString &text, const QString &before, const QString &after) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Numbers as texts
    /// strings/numbertext.cpp. ASCII digits, no group separators, whatever the locale. No field is touched.
    /// @{

    /// The number in base 10, with `-` in front when it is negative.
    [[nodiscard]] QString intText(int value) const;
    [[nodiscard]] QString number(int value) const;

    /// The number with up to 6 significant digits, in the shorter of plain and exponent notation: `0.3` for
    /// 0.1 + 0.2, `1e+07` for ten million. `inf`, `-inf` and `nan` for what is no number.
    [[nodiscard]] QString number(double value) const;

    /// The number with as many `0` in front as bring it to `width` code units; a longer one stays as it is.
    /// A sign counts and stays where it was: -5 to width 3 is `0-5`.
    [[nodiscard]] QString zeroPadded(int value, int width) const;

    /// The value of an ASCII digit; 0 for every other character.
    [[nodiscard]] int digitValue(QChar character) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Kinds, classes and widths of characters
    /// strings/characters.cpp. A character is one UTF-16 code unit here. Its class is the value of one of the
    /// six `charClass` fields, read at every call; a program may set them, also two to one value. A negative
    /// position counts as 0. No field is touched.
    /// @{

    /// Whether the character is an upper-case letter, a lower-case letter or a decimal digit by its Unicode
    /// category: `Ä` is upper case, and U+FF11 a digit. False for a surrogate.
    [[nodiscard]] bool isUpper(QChar character) const;
    [[nodiscard]] bool isLower(QChar character) const;
    [[nodiscard]] bool isDigit(QChar character) const;

    /// Whether the character is a letter of any script, kana and kanji included. False for a surrogate.
    [[nodiscard]] bool isLetter(QChar character) const;

    /// The character in upper or in lower case. It stays where it has no such case, or where that is more
    /// than one code unit, as with `ß`.
    [[nodiscard]] QChar charUpper(QChar character) const;
    [[nodiscard]] QChar charLower(QChar character) const;

    /// The class of the character, one of five: the value of charClassLowSurrogate, charClassHighSurrogate,
    /// charClassHalfKana, charClassNarrow or charClassWide.
    [[nodiscard]] int charClass(QChar character) const;

    /// The class of the code unit at `pos`; charClassNarrow from the end of the text on.
    [[nodiscard]] int charClassAt(const QString &text, int pos) const;

    /// The display columns of the class of the character: 0 for a low surrogate, 2 for a high one, 1 for
    /// half-width katakana and narrow, 2 for wide. Where two of the fields have one value, the first in that
    /// order decides.
    [[nodiscard]] int charDisplayWidth(QChar character) const;

    /// The code units of the character that starts at `pos`: 2 where the class is charClassHighSurrogate,
    /// also when nothing follows; else 1 and one for each code unit of charClassNone right behind it, of
    /// which there are none as long as no other field has that value. From the end of the text on the class
    /// is charClassNarrow, and nothing follows.
    [[nodiscard]] int charUnitsAt(const QString &text, int pos) const;

    /// Whether the code unit at `pos` belongs to the character before it: its class is charClassLowSurrogate
    /// or charClassNone. False from the end of the text on.
    [[nodiscard]] bool isTrailAt(const QString &text, int pos) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Clearing lists, constants
    /// strings/lists.cpp. No field is touched.
    /// @{

    /// Empties the list and keeps its capacity. An empty list does not change. A copy of the list keeps its
    /// elements.
    void clear(QList<quint8> &list) const;
    void clear(QList<QChar> &list) const;
    void clear(QList<qint32> &list) const;
    void clear(QList<quint32> &list) const;
    void clear(QStringList &list) const;

    /// The largest whole number of 32 bits, 2147483647.
    [[nodiscard]] int maxInt() const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Value-in-list checks
    /// strings/valuechecks.cpp. Is a value one of a short list, of 1 to 9 alternatives? Texts are equal when
    /// their code units are: case counts, blanks count, and a null text equals an empty one.
    /// @{

    /// Whether the value equals one of the alternatives, compared in their order up to the first that fits.
    /// With the empty text as only alternative it asks whether the value is empty.
    ///
    /// On failure returns false and sets checkMessage: `checkIn(u"abc"_s, u"X"_s, u"Y"_s)` leaves
    /// `"abc" not in('X','Y')`. Success leaves checkMessage alone and allocates nothing.
    template<typename... Alternatives>
        requires(
            sizeof...(Alternatives) >= 1 && sizeof...(Alternatives) <= 9
            && (std::convertible_to<const Alternatives &, QString> && ...)
        )
    bool checkIn(const QString &value, const Alternatives &...alternatives)
    {
        // What is no QString yet lives as one until the end of this statement.
        return isOneOf(value, {QStringView(static_cast<const QString &>(alternatives))...});
    }

    /// Whether the character equals one of the alternatives. No field is touched.
    template<typename... Alternatives>
        requires(
            sizeof...(Alternatives) >= 1 && sizeof...(Alternatives) <= 9
            && (std::convertible_to<Alternatives, QChar> && ...)
        )
    [[nodiscard]] bool charIn(QChar value, Alternatives... alternatives) const
    {
        return ((value == static_cast<QChar>(alternatives)) || ...);
    }

    /// Whether the number equals one of the alternatives. No field is touched.
    template<typename... Alternatives>
        requires(
            sizeof...(Alternatives) >= 1 && sizeof...(Alternatives) <= 9
            && (std::convertible_to<Alternatives, qint32> && ...)
        )
    [[nodiscard]] bool intIn(qint32 value, Alternatives... alternatives) const
    {
        return ((value == static_cast<qint32>(alternatives)) || ...);
    }

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Numeric text checks
    /// strings/numericchecks.cpp. Texts to numbers by the rules of the C locale: an optional sign, then ASCII
    /// digits, without group separators. White space may stand before and behind: in ASCII at whole numbers,
    /// of any kind at decimal ones. A whole number ends at a NUL, whatever follows. The results are those of
    /// Qt 6.4, whichever Qt the program runs with.
    /// @{

    /// The whole number that the text stands for in base 10. `toInt(u"+012 "_s)` is 12.
    ///
    /// 0 for the empty text, for a text that is no whole number, and for one below -2147483648 or above
    /// 2147483647. No field is touched.
    [[nodiscard]] int toInt(const QString &text) const;

    /// The same in a base from 2 to 36; letters of either case are the digits from 10 on. Base 16 takes a
    /// leading `0x`, base 2 a leading `0b`. Base 0 goes by the text: 16 after `0x`, 2 after `0b`, 8 after
    /// `0`, else 10.
    ///
    /// 0 in every other base.
    [[nodiscard]] int toIntBase(const QString &text, int base) const;

    /// The whole number that the text stands for, checked by a rule for its sign: `-` takes every number, `0`
    /// those above zero, and `+`, like every other character, those from zero on. The empty text is 0.
    ///
    /// Sets convertOk to whether the text passed. Leaves checkMessage set, except for the empty text.
    /// lastError is set only when `report` is 1. `validInt(u"-5"_s, u'+', 7, 1)` is -5, with convertOk false.
    ///
    /// On failure returns `defaultValue` and sets lastError to `not numeric "TEXT"` when the text is no whole
    /// number of 32 bits; returns the negative number itself and sets lastError to `not plus "TEXT"`; returns
    /// 0 and sets lastError to `bad zero "TEXT"`.
    int validInt(const QString &text, QChar rule, int defaultValue, int report);

    /// The decimal number that the text stands for: digits with a point and an exponent, `inf` or `nan` in
    /// either case. U+2212, the minus sign of typeset texts, counts as `-`. Only the rule `+` checks the
    /// sign: it refuses what is below zero, which -0 is not. The empty text is 0 by every rule.
    ///
    /// Sets convertOk to whether the text passed. Leaves checkMessage set, except for the empty text.
    /// lastError is set only when `report` is 1. `validDouble(u"-5"_s, u'+', 7.5, 1)` is 7.5, with convertOk
    /// false.
    ///
    /// On failure returns `defaultValue` and sets lastError to `not numeric "TEXT"`, also for a number too
    /// large or too close to zero for a double, or to `not plus "TEXT"`.
    double validDouble(const QString &text, QChar rule, double defaultValue, int report);

    /// The value of a hexadecimal digit of either case, 0 to 15; -1 for every other character. No field is
    /// touched.
    [[nodiscard]] int hexDigitValue(QChar character) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Placeholder codes
    /// strings/placeholders.cpp. Replaces the characters that command interpreters treat specially, and
    /// restores them. Each is written as `#` and a capital: `#` as `#C`, the double quote as `#Q`, `%` as
    /// `#P`, `!` as `#E`, the back-quote as `#A`, the backslash as `#Y`, `$` as `#D` and the blank as `#S`.
    /// No field is touched.
    /// @{

    /// The text with each of the eight characters replaced by its code: `a b#` gives `a#Sb#C`.
    /// decodePlaceholders() gives the text back, whatever it holds.
    [[nodiscard]] QString encodePlaceholders(const QString &text) const;

    /// The text with each code replaced by its character, once: `#CS` gives `#S`. A `#` that begins no code
    /// stays: `#s#` is returned as it is.
    [[nodiscard]] QString decodePlaceholders(const QString &text) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Masked display
    /// strings/masking.cpp. Reads the classes of characters, the fields `charClass...`; writes no field.
    /// @{

    /// What a secret field shows. The modes `*` and `#` do the same: they trim the text as
    /// QString::trimmed() does and replace each character by `*`, or by `＊` (U+FF0A) when
    /// charDisplayWidth() says 2. A low surrogate shows nothing. ` 漢字ab` gives `＊＊**`.
    ///
    /// Any other mode returns the text as it is, white space included.
    [[nodiscard]] QString maskText(QChar mode, QString text) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Check characters
    /// strings/checkcharacters.cpp. The character printed or keyed behind a code, as a text of that one
    /// character. No field is touched.
    /// @{

    /// The modulus-43 check character of a Code 39 bar code: `CODE39` gives `W`, the empty code `0`.
    /// Characters are made upper case first, by QChar::toUpper().
    ///
    /// The empty text when a character is not one of `0` to `9`, `A` to `Z`, the blank and `-.$/+%`. The
    /// start and stop character `*` is not one of them.
    [[nodiscard]] QString code39CheckChar(const QString &code) const;

    /// The modulus-11 digit with the weights 2 to 7 from the right, over and over: `12345` gives `5`, the
    /// empty code `0`. A check value of 10 or 11 gives `0`.
    ///
    /// No character is refused. The value of a code unit is its low four bits, or its low three where the
    /// four are above 9: 1 for `A`, 2 for `Z`, 0 for a blank.
    [[nodiscard]] QString mod11CheckDigit(const QString &code) const;

    /// The modulus-10 digit of EAN and JAN article numbers, with the weights 3 and 1 from the right:
    /// `490123456789` gives `4`. The empty text for an empty code.
    ///
    /// Any other character than `0` to `9` counts as 0 in its place: `1-3` gives `8`, `13` gives `0`.
    [[nodiscard]] QString mod10CheckDigit(const QString &code) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Display width
    /// strings/displaywidth.cpp. Columns on a fixed-pitch display: 1 for U+0000 to U+007F and for half-width
    /// katakana (U+FF66 to U+FF9F), 2 for every other character. A high surrogate takes the unit behind it
    /// along, whatever that is, for 2 columns; a low surrogate on its own has none. These ranges stand
    /// whatever the fields `charClass...` hold; a member that reads the fields says so. None is written.
    /// @{

    /// The columns of the text: `A漢ｱ` has 4. At most maxInt().
    [[nodiscard]] int displayWidth(const QString &text) const;

    /// The columns of the first `units` code units, of all when there are fewer; a character that starts
    /// among them counts whole: `漢字` with 1 has 2. 0 when `units` is not above 0.
    [[nodiscard]] int displayWidthOf(const QString &text, int units) const;

    /// How many code units it takes to fill `columns`, at most the length of the text; 0 when `columns` is
    /// not above 0. A wide character that starts in the last column is taken in whole: `A漢B` with 2 gives 2
    /// units, which have 3 columns.
    ///
    /// Units whose charClass() is `charClassNone`, none by default, are taken in with the character they
    /// follow, unless that is a high surrogate with its unit, for no columns of their own.
    [[nodiscard]] int unitsForWidth(const QString &text, int columns) const;

    /// Whether the limit of unitsForWidth() falls into a wide character with something behind it: true for
    /// `A漢B` with 2; false for `A漢` with 2, for `AB漢` with 2, and for negative columns.
    [[nodiscard]] bool splitsWideChar(const QString &text, int columns) const;

    /// The number of characters, by charClass(): a surrogate of either half counts 1 together with the unit
    /// behind it, every other unit 1. `A𠮷B` has 3.
    ///
    /// Where a program gives another class the value of `charClassNone`, a run of such units counts 1
    /// together with the unit behind the run, or with the end of the text.
    [[nodiscard]] int characterCount(const QString &text) const;

    /// @}
    // ---------------------------------------------------------------------------------------------------
    /// \name Date normalisation
    /// strings/datenormalisation.cpp. Any text becomes a date or moment that exists (Gregorian calendar), by
    /// clamping digit by digit; nothing is refused or reported, and no field is touched. The digits `0` to
    /// `9` count at the place where they stand; any other character, and what is missing, is a 0; what
    /// follows the last place is ignored.
    ///
    /// A month's tens digit is at most 1, its units digit then at most 2 (`13` gives `12`, `30` gives `10`);
    /// month and day `00` give `01`. A day with a tens digit above 2 becomes 30 when its units digit is 0
    /// and the last day of the month otherwise, in February always the last; February 29 becomes 28 outside
    /// leap years.
    /// @{

    /// The date in eight digits, `YYYYMMDD`. Year 0 becomes 1; with `minYearFlag` 1 (no other value counts)
    /// all years below 1753 become 1753. `20240231` gives `20240229`, the empty text `00010101`, and
    /// `2024/12/31`, whose digits are not in their places, `20240120`.
    [[nodiscard]] QString normalizeDate(const QString &text, int minYearFlag) const;

    /// The moment in seventeen digits, `YYYYMMDDHHMMSSmmm`; the date as with `minYearFlag` 1.
    ///
    /// The hour's tens digit is at most 2, its units digit then at most 3 (`24` gives `23`, `30` gives `20`);
    /// the tens digits of minute and second are at most 5 (`75` gives `55`). 23:59:59.999 becomes
    /// 23:59:59.998, the latest moment there is. The empty text gives `17530101000000000`.
    [[nodiscard]] QString normalizeDateTime(const QString &text) const;

    /// @}

private:
    bool isOneOf(QStringView value, std::initializer_list<QStringView> alternatives);

public:
    // ---------------------------------------------------------------------------------------------------
    /// \name Fields
    /// Settings and state, free for the program to read and to set, in an order and with types that stay as
    /// they are. The members read a field at every call, so a new value counts from then on. Fields called
    /// spare, and those without a comment, are kept for programs of the family; no member here reads them.
    /// @{

    qint32 sizeSetting{12};
    QString spareText1{};

    // Identity and platform
    QChar platformChar{u' '};    ///< 'W' is Windows, every other letter Unix-like; from setupPlatform().
    QChar programKindChar{u'C'}; ///< Second letter of the program's file name: console.
    QString programName{};       ///< The constructor's name.
    QString pathSeparator{};     ///< `\` on 'W', else `/`; from setupPlatform().
    QString deleteCommand{};     ///< Shell word: `DEL` on 'W', else `RM`; from setupPlatform().
    QString checkMessage{};      ///< Message of the last failed check, of checkIn() or a member that checks.
    bool convertOk{false};       ///< Whether the last validInt() or validDouble() accepted its text.
    qint32 spareInt1{0};
    QString fontName1{QStringLiteral("MS Gothic")}; ///< Name of a font face.
    QString fontName2{QStringLiteral("MS Gothic")}; ///< Name of a font face.
    std::unique_ptr<VersionInfo> version{};         ///< Version record; created by setupPlatform().
    /// The command line after the program itself.
    std::unique_ptr<QStringList> arguments{std::make_unique<QStringList>()};

    qint64 spareCount1{0};
    bool spareFlag1{true};
    qint32 spareInt2{0}, spareInt3{0};
    QString spareText2{}, spareText3{}, spareText4{}, spareText5{};
    QString versionLabel{}; ///< Build number and version, `37/8.0.4`; from setupPlatform().
    QString serviceName{};  ///< Name of the family's server program, `Z37QUBLEC`; from setupPlatform().
    qint32 spareInt4{65432}, spareInt5{80};
    qint64 spareCount2{25};
    qint32 spareInt6{1}, spareInt7{-1};
    QChar spareChar1{u'N'}, spareChar2{u' '};
    QString versionPrefix{}; ///< Family letter and build number, `Z37`; from setupPlatform().
    QString inputTag{QStringLiteral("INP")};
    QString spareText6{}, spareText7{}, spareText8{}, spareText9{}, spareText10{}, spareText11{};
    QString zeroText{QStringLiteral("0")};
    QStringList spareList1{};
    bool spareFlag2{false};
    qint32 spareInt8{-1};
    qint64 spareCount3{0};
    qint32 spareInt9{-1}, spareInt10{0};
    qint64 spareCount4{0}, spareCount5{0}, spareCount6{0}, spareCount7{0}, spareCount8{0};
    qint32 spareInt11{0};
    qint32 timeoutShort{30}; ///< First number of `timeoutText`.
    qint64 timeoutLong{600}; ///< Second number of `timeoutText`.
    QString spareText12{}, spareText13{}, spareText14{}, spareText15{};
    QString highText4{QStringLiteral("ZZZZ")};
    QString highText2{QStringLiteral("ZZ")};
    QString languageCode{QStringLiteral("JA")}; ///< Language of the program's texts.
    QString spareText16{};
    QString realMode1{QStringLiteral("REAL")};
    QString realMode2{QStringLiteral("REAL")}; ///< Names a directory of the time program, with `subdirTag`.

    // Machine, error and directories
    QString hostName{};      ///< Name of this machine without its domain; from setupPlatform().
    QString hostNameUpper{}; ///< `hostName` in upper case; from setupPlatform().
    QString subdirTag{};     ///< Names a directory of the time program, with `realMode2`.
    QString spareText18{}, spareText19{};
    QString lastError{}; ///< Message of the last failed operation; success leaves it alone.
    QString spareText20{}, spareText21{}, spareText22{}, spareText23{}, spareText24{};
    QString spareText25{};
    QString traceFileName{QStringLiteral("_TRACE.TXT")}; ///< Not used: the trace goes to the standard output.
    QString outputTag{QStringLiteral("OT")};
    QString spareText26{};
    QString hostKey{};       ///< `hostNameUpper` with `_` for every `-`; from setupPlatform().
    QString homeDirectory{}; ///< `%SystemDrive%` on 'W' (`C:`), else `/home`; from setupPlatform().
    QString spareText27{};
    QString programPath{};      ///< Path of the running program, from argv[0].
    QString programDirectory{}; ///< `programPath` up to and with its last separator.
    QString spareText28{};
    QString timeoutText{QStringLiteral("30/600")}; ///< `timeoutShort` and `timeoutLong` as a text.
    QString startDirectory{}; ///< Current directory at construction; from setupPlatform().
    QString spareText29{}, spareText30{}, spareText31{};
    QString notText1{QStringLiteral("NOT")};
    QString ngLower{QStringLiteral("ng")}, ngUpper{QStringLiteral("NG")};
    QString spareText32{}, spareText33{};
    QString answerA{QStringLiteral("A")};
    QString spareText34{}, spareText35{}, spareText36{}, spareText37{}, spareText38{}, spareText39{};
    QString spareText40{}, spareText41{}, spareText42{}, spareText43{}, spareText44{}, spareText45{};

    // Dates
    QString dateOrder{QStringLiteral("Y")}; ///< Order of date parts on display: `Y` YMD, `M` MDY, else DMY.
    QString dateSeparator{QStringLiteral("-")}; ///< Text between date parts on display.
    QString highKey{QStringLiteral("ZZZZ000000")};
    QString lowKey{QStringLiteral("zzzz800000")};
    QString spareText46{}, spareText47{};
    QString blankText{QStringLiteral(" ")};
    QString spareText48{}, spareText49{};
    qint32 spareInt12{32};

    // Input modes of entry fields: code, label, code, label, separated by commas. A field that names no code
    // has the empty one.
    /// Decimals, by sign.
    QString numericModesSigned{QStringLiteral("+,{Numeric}.[0-9],-,{Numeric}-.[0-9]")};
    /// Display of numbers.
    QString numericFormats{QStringLiteral(",Normal,C,No Comma,Z,Display 0,E,C+Z")};
    /// Japanese input.
    QString japaneseModes{QStringLiteral(
        "/,All,*,All+IME,!,Full All,N,Name[0-9A-Z_(Japanese)],:,File Name(Japanese),J,Japanese Only"
    )};
    /// The codes of `japaneseModes`, in order.
    QString japaneseModeKeys{QStringLiteral("/*!N:J")};
    /// Text input.
    QString asciiModes{QStringLiteral(
        ",Default(ASCII)[^`~{}]],9,[0-9],A,[0-9A-Z],B,BarCode39,C,[0-9A-Z] or -,D,Date(8),H,ASCII ALL,"
        "I,File Name,M,Name[0-9A-Z_],S,String(ASCII)[^`~{}]],T,DateTime(17),U,Upper(ASCII)[^ `~{}]],"
        "V,(ASCII)[^ ],Z,[A-Z]"
    )};
    /// Floating-point input.
    QString floatModes{QStringLiteral("F,Float")};
    /// Whole numbers, by sign.
    QString integerModes{QStringLiteral("+,{Numeric}[0-9],-,{Numeric}-[0-9]")};
    /// Date and time input.
    QString dateTimeModes{QStringLiteral("E,DateTime")};
    /// Display of texts, kana included: `displayModes` and one mode more.
    QString displayModesKana{
        QStringLiteral(",Normal,I,[^IO],L,[a-z],R,[a-z](Reverse),*,Display *,#,Display *[a-z],X,[^{}],K,Kana"
        )};
    /// The code that `displayModesKana` adds.
    QString kanaKey{QStringLiteral("K")};
    /// Display of texts.
    QString displayModes{
        QStringLiteral(",Normal,I,[^IO],L,[a-z],R,[a-z](Reverse),*,Display *,#,Display *[a-z],X,[^{}]")};
    QString notText2{QStringLiteral("NOT")};
    QString spareText50{};
    qint64 spareCount9{0};
    qint32 spareInt13{0}, spareInt14{-1};

    // Message catalogue: loaded by the program, both lists of one length.
    /// Texts of the messages.
    std::unique_ptr<QStringList> messageTexts{std::make_unique<QStringList>()};
    /// Key of the text at the same index.
    std::unique_ptr<QStringList> messageKeys{std::make_unique<QStringList>()};
    std::unique_ptr<QStringList> lookupList3{std::make_unique<QStringList>()};
    std::unique_ptr<QStringList> lookupList4{std::make_unique<QStringList>()};
    std::unique_ptr<QStringList> lookupList5{std::make_unique<QStringList>()};
    std::unique_ptr<QStringList> lookupList6{std::make_unique<QStringList>()};
    std::unique_ptr<QStringList> lookupList7{std::make_unique<QStringList>()};
    qint64 spareCount10{0};
    qint64 spareCount11{-2};
    qint32 spareInt15{0}, spareInt16{1};
    qint64 spareCount12{2};
    qint32 spareInt17{1}, spareInt18{5};
    qint32 spareInt19{9};

    // Shared state of the scanner; null in an object built from a name alone.
    std::unique_ptr<ScanCursor> scanCursor{};    ///< Its `position` is where the shared scan stands.
    std::unique_ptr<ScanCursor> scanSource{};    ///< Its `text` is the text under scan.
    std::unique_ptr<ScanCursor> scanDelimiter{}; ///< Its `delimiter` ended the last token.

    // Classes of characters, which a program may set. Read by charClass() and the members that say so, not
    // where columns are counted by ranges, as in displayWidth() and truncateToWidth().
    qint32 charClassNone{0};          ///< Reserved: no character is of it by default.
    qint32 charClassNarrow{1};        ///< U+0000 to U+007F: one column.
    qint32 charClassWide{2};          ///< Every character not listed here: two columns.
    qint32 charClassHalfKana{3};      ///< U+FF66 to U+FF9F, half-width katakana: one column.
    qint32 charClassHighSurrogate{4}; ///< U+D800 to U+DBFF: two columns, for the pair.
    qint32 charClassLowSurrogate{5};  ///< U+DC00 to U+DFFF: no column of its own.

    /// @}
};
