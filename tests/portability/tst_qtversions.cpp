// SPDX-License-Identifier: MIT
// The members that hand their work to Qt, over input that its versions treat differently: two programs built
// with two versions must write the same files. Each row is one sweep; what is pinned is the digest of all its
// lines, made with Qt 6.4.2. To see what differs, run this with APPRUNTIME_SWEEPS naming a folder, once with
// each Qt, and compare the files that it writes there.
//
// No character is in here whose case or kind has changed in a later version of Unicode.
#include <runtime/core/appruntime.h>

#include <QTest>

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <algorithm>
#include <bit>
#include <filesystem>
#include <functional>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// The lines of one sweep: what went in, and what came out.
class Lines
{
public:
    explicit Lines(AppRuntime &used)
        : runtime(used)
    {
    }

    template<typename... Results> void add(const Results &...results)
    {
        (put(results), ...);
        m_bytes.back() = '\n';
    }

    [[nodiscard]] const QByteArray &bytes() const
    {
        return m_bytes;
    }

    AppRuntime &runtime;

private:
    void put(QStringView text)
    {
        for (const QChar unit : text) {
            if (unit > u' ' && unit < u'\x7f' && unit != u'\\')
                m_bytes += unit.toLatin1();
            else
                m_bytes += '\\' + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
        }
        m_bytes += ' ';
    }
    void put(const QByteArray &bytes)
    {
        m_bytes += bytes.toHex() + ' ';
    }
    void put(QChar unit)
    {
        put(QStringView(&unit, 1));
    }
    void put(qint64 number)
    {
        m_bytes += QByteArray::number(number) + ' ';
    }
    void put(int number)
    {
        put(qint64{number});
    }
    void put(bool answer)
    {
        put(qint64{answer});
    }
    void put(double number)
    {
        m_bytes += QByteArray::number(std::bit_cast<quint64>(number), 16) + ' ';
    }

    QByteArray m_bytes;
};

/// One line. In the braces the results are made from left to right with every compiler; a call promises no
/// order.
struct Line {
    template<typename... Results> explicit Line(Lines &lines, const Results &...results)
    {
        lines.add(results...);
    }
};

/// All texts of up to `longest` units of an alphabet, the null and the empty text first.
QStringList textsOf(QStringView alphabet, int longest)
{
    QStringList texts{QString(), u""_s};
    qsizetype begin = 1;
    for (int length = 1; length <= longest; ++length) {
        const qsizetype end = texts.size();
        for (qsizetype i = begin; i < end; ++i) {
            for (const QChar unit : alphabet)
                texts.append(texts[i] + unit);
        }
        begin = end;
    }
    return texts;
}

QString units(std::initializer_list<char16_t> values)
{
    return QString(reinterpret_cast<const QChar *>(values.begin()), static_cast<qsizetype>(values.size()));
}

const QString halves = units({0xd83d, 0xde00, 0xd800, 0xdfff});

void utf8Bytes(Lines &lines)
{
    const QString alphabet
        = halves + units({0, u'a', 0x7f, 0x80, 0x7ff, 0x800, 0x3042, 0xfeff, 0xfffd, 0xfffe, 0xffff});
    for (const QString &text : textsOf(alphabet, 3))
        Line{lines, text, lines.runtime.toUtf8(text)};
    // At the borders of what a vector unit takes in one step.
    for (int before = 0; before < 40; ++before) {
        for (const QString &text : textsOf(halves, 2)) {
            const QString padded = QString(before, u'x') + text;
            Line{
                lines,
                before,
                text,
                lines.runtime.toUtf8(padded),
                lines.runtime.toUtf8(padded + u"\u3042yyyyyyyyyyyyyyyy"_s)};
        }
    }
}

void utf8Texts(Lines &lines)
{
    const QByteArray alphabet("\0a\x7f\x80\x90\x9f\xa0\xbb\xbf\xc0\xc2\xe0\xed\xef\xf0\xf4\xf5\xff", 18);
    QByteArrayList all{QByteArray(), QByteArray("")};
    qsizetype begin = 1;
    for (int length = 1; length <= 4; ++length) {
        const qsizetype end = all.size();
        for (qsizetype i = begin; i < end; ++i) {
            for (const char byte : alphabet)
                all.append(all[i] + byte);
        }
        begin = end;
    }
    for (const QByteArray &bytes : std::as_const(all))
        Line{lines, bytes, lines.runtime.fromUtf8(bytes), lines.runtime.mid(bytes.constData(), 0, 9)};
    for (int before = 0; before < 40; ++before) {
        for (const QByteArray &bytes : all.first(400)) {
            const QByteArray padded = QByteArray(before, 'x') + bytes;
            Line{
                lines,
                before,
                bytes,
                lines.runtime.fromUtf8(padded),
                lines.runtime.fromUtf8(padded + "\xe3\x81\x82yyyyyyyyyyyyyy")};
        }
    }
}

void urlDecoding(Lines &lines)
{
    const QString alphabet = u"%04aFgGz +"_s + units({0, 0x3042, 0xd83d, 0xde00, 0xe9});
    for (const QString &text : textsOf(alphabet, 4))
        Line{lines, text, lines.runtime.urlDecode(text, QString())};
}

void urlEncoding(Lines &lines)
{
    const QString alphabet
        = u"aA0%:/?#[]@\\ \n\"<{|~.-_&+;="_s + units({0, 0x7f, 0x3042, 0xdf, 0x131, 0xd83d, 0xde00, 0xfffd});
    for (const QString &text : textsOf(alphabet, 3))
        Line{lines, text, lines.runtime.urlEncode(text, QString())};
    for (const QString &text : textsOf(alphabet, 2)) {
        // A host that begins or ends so is refused by newer versions, as the standard has it.
        if (text.startsWith(u'-') || text.endsWith(u'-'))
            continue;
        for (const QString &before :
             u"http:// http://h/ http://h? http://u@h:1/# mailto: file: //"_s.split(u' '))
            Line{lines, text, lines.runtime.urlEncode(before + text, QString())};
    }
}

/// Texts that come near to being numbers.
QStringList nearNumbers()
{
    QStringList texts = textsOf(
        u"017afxXeE+-., \t_"_s + units({0, 0x2212, 0xff11, 0x661, 0xa0, 0x3000, 0xff0b, 0xff0d}), 3
    );
    const QString words
        = u"inf INF infinity nan NaN nan(1) 1e308 1.8e308 1e309 4.9e-324 2e-324 1e-400 0x10 0X1f "
          u"0b11 0B2 0o17 017 08 1e 1e+ 1e+5 1d5 1_000 1,000 1.5.2 .5 5. 0x1p3 0x1.8p1 "
          u"2147483647 2147483648 4294967295 9223372036854775807 9223372036854775808 "
          u"18446744073709551616 00000000000000000000000000000000000000000001 "
          u"0.1000000000000000055511151231257827 9007199254740993 1.7976931348623158e308 "
          u"2.2250738585072011e-308 123456789012345678901234567890 zz 7fffffff 80000000 1\uff11 "
          u"1e1000000000000 \u221e"_s;
    for (const QString &text : words.split(u' ')) {
        for (const QString &sign : {u""_s, u"+"_s, u"-"_s, u" "_s, u"\u2212"_s, u"+-"_s})
            texts += {sign + text, sign + text + u' ', sign + text + QChar(u'\0')};
    }
    return texts;
}

void wholeNumbers(Lines &lines)
{
    for (const QString &text : nearNumbers()) {
        Line{
            lines,
            text,
            lines.runtime.toInt(text),
            lines.runtime.validInt(text, u'+', 7, 1),
            lines.runtime.convertOk};
        for (const int base : {-1, 0, 1, 2, 8, 10, 16, 36, 37, 64})
            Line{lines, base, lines.runtime.toIntBase(text, base)};
    }
}

void decimalNumbers(Lines &lines)
{
    QString relation;
    for (const QString &text : nearNumbers()) {
        const double value = lines.runtime.validDouble(text, u'-', 7.5, 1);
        Line{
            lines,
            text,
            value != value ? u"nan"_s : QString(),
            value != value ? 0 : value,
            lines.runtime.convertOk};
        Line{lines, lines.runtime.compareTyped(relation, text, u'-', 1, 0, 0, u"1"_s), relation};
        Line{lines, lines.runtime.normaliseNumber(text)};
    }
    const double most = std::numeric_limits<double>::max(), least = std::numeric_limits<double>::denorm_min();
    for (const double value :
         {0.0,       -0.0,      0.1,           0.5,      1.0,   1.5,
          2.5,       1e5,       123456.5,      999999.5, 1e6,   1e7,
          1e-4,      1e-5,      1e15,          1e16,     1e17,  1e22,
          1e100,     1.0 / 3,   2.0 / 3,       most,     least, std::numeric_limits<double>::min(),
          1.0000005, 9.9999995, 0.000123456789}) {
        Line{lines, value, lines.runtime.number(value), lines.runtime.number(-value)};
    }
    const double none = std::numeric_limits<double>::quiet_NaN(),
                 infinite = std::numeric_limits<double>::infinity();
    Line{lines, lines.runtime.number(none), lines.runtime.number(infinite), lines.runtime.number(-infinite)};
    for (const int value : {0, 1, -1, 9, 10, -10, INT_MAX, INT_MIN}) {
        Line{
            lines,
            lines.runtime.number(value),
            lines.runtime.intText(value),
            lines.runtime.zeroPadded(value, 12)};
    }
}

/// Letters whose case is the same in every version of Unicode since long, and what makes the case difficult.
QString casedLetters()
{
    QString letters = halves + units({0, 0x149, 0x1c5, 0x1f0, 0x345, 0x587, 0x1e96, 0x1e9e, 0x1fb3, 0x1fbc});
    letters += u"\u2126\u212a\u212b\u2160\u2170\u24b6\u24d0"_s;
    const std::pair<char16_t, char16_t> ranges[]
        = {{0x20, 0x17f}, {0x386, 0x3ce}, {0x400, 0x45f}, {0xfb00, 0xfb06}, {0xff10, 0xff9f}};
    for (const auto &[first, last] : ranges) {
        for (char16_t unit = first; unit <= last; ++unit)
            letters += QChar(unit);
    }
    return letters;
}

void letterCase(Lines &lines)
{
    AppRuntime &runtime = lines.runtime;
    const QString letters = casedLetters();
    for (const QChar unit : letters) {
        Line{
            lines,
            unit,
            runtime.charUpper(unit),
            runtime.charLower(unit),
            runtime.isUpper(unit),
            runtime.isLower(unit),
            runtime.isDigit(unit),
            runtime.isLetter(unit)};
        Line{
            lines,
            runtime.toUpper(QString(unit)),
            runtime.toLower(QString(unit)),
            runtime.code39CheckChar(QString(unit))};
    }
    const QString difficult = u"aIi\u00df\u0130\u0131\u03a3\u03c3\u03c2\ufb03\u0149\u01c5\u1e9e\u0307\u212a"_s
        + units({0xd801, 0xdc00, 0xdc28});
    for (const QString &text : textsOf(difficult, 3))
        Line{lines, text, runtime.toUpper(text), runtime.toLower(text)};
    for (const QString &text : textsOf(difficult, 2)) {
        Line{lines, text, runtime.normaliseEncodingName(text + u"jis"_s), runtime.isCsvKind(text + u"CSV"_s)};
        for (const QString &keyword : textsOf(difficult, 1)) {
            ScanCursor cursor;
            Line{lines, keyword, runtime.acceptKeyword(cursor, keyword, text), cursor.position};
        }
    }
}

void searches(Lines &lines)
{
    AppRuntime &runtime = lines.runtime;
    const QStringList subs = textsOf(u"ab"_s + units({0xd83d}), 2) + QStringList{u"aaaaaaa"_s};
    for (const QString &text : textsOf(u"ab"_s + units({0, 0xd83d}), 4)) {
        for (const QString &sub : subs) {
            Line{
                lines,
                text,
                sub,
                runtime.find(text, sub),
                runtime.lastIndexOf(text, sub),
                runtime.startsWith(text, sub),
                runtime.endsWith(text, sub)};
            for (int from = -6; from <= 6; ++from)
                Line{
                    lines,
                    runtime.indexOf(text, sub, from),
                    runtime.lastIndexOf(text, sub, from),
                    runtime.indexOfAny(text, sub, from)};
            for (const int from : {INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX})
                Line{
                    lines,
                    runtime.indexOf(text, sub, from),
                    runtime.lastIndexOf(text, sub, from),
                    runtime.indexOfAny(text, sub, from)};
        }
        for (const QChar unit : u"ab\0"_s) {
            Line{
                lines,
                unit,
                runtime.findChar(text, unit),
                runtime.lastIndexOf(text, unit),
                runtime.containsChar(unit, text)};
            for (int from = -6; from <= 6; ++from)
                Line{lines, runtime.indexOf(text, unit, from), runtime.lastIndexOf(text, unit, from)};
        }
    }
    const QStringList list{u""_s, QString(), u"a"_s, u"A"_s, u"a"_s};
    for (int from = -7; from <= 7; ++from)
        Line{lines, runtime.indexOfValue(list, u"a"_s, from), runtime.indexOfValue(list, QString(), from)};
}

void shapes(Lines &lines)
{
    AppRuntime &runtime = lines.runtime;
    const QString alphabet
        = u"ab,\" \t\r\n"_s + units({0, 0xb, 0x1f, 0x85, 0xa0, 0x200b, 0x2028, 0x3000, 0xfeff, 0xd83d});
    const QStringList parts = {QString(), u""_s, u"a"_s, u"ab"_s, u"xyz"_s};
    for (const QString &text : textsOf(alphabet, 3)) {
        Line{
            lines,
            text,
            runtime.trimmed(text),
            runtime.trimLeft(text),
            runtime.trimRight(text),
            runtime.extensionOf(text),
            runtime.maskText(u'*', text)};
        Line{
            lines,
            runtime.splitByChar(text, u'a').join(u'|'),
            runtime.splitByChar(text, u'\0').join(u'|'),
            runtime.replaceLineBreaks(text, u'-')};
        QStringList fields;
        runtime.splitRecord(fields, text, u"CSV"_s);
        Line{lines, fields.join(u'|'), runtime.padLeft(text, 2), runtime.padRight(text, 2, u'\0')};
    }
    for (const QString &text : textsOf(u"ab"_s + units({0, 0xd83d}), 4)) {
        for (const QString &before : parts) {
            for (const QString &after : parts)
                Line{lines, text, before, after, runtime.replace(text, before, after)};
        }
        Line{lines, runtime.replace(text, u'a', u'\0'), runtime.replace(text, u'\0', u'b')};
    }
}

void moments(Lines &lines)
{
    for (const int year :
         {INT_MIN, -10000, -9999, -4713, -1000, -1,   0,    1,    4,     33,    99,    100,    999,
          1000,    1582,   1899,  1900,  1970,  2024, 2038, 9999, 10000, 12345, 99999, 292278, INT_MAX}) {
        for (const QTime time : {QTime(0, 0), QTime(23, 59, 59, 999), QTime()}) {
            const QDateTime moment(QDate(year, 2, 28), time, QTimeZone::utc());
            Line{
                lines,
                year,
                lines.runtime.formatTimestamp(moment, 0),
                lines.runtime.formatTimestamp(moment, 1)};
        }
    }
    for (const qint64 milliseconds :
         {std::numeric_limits<qint64>::min(),
          std::numeric_limits<qint64>::min() + 1,
          qint64{-1},
          qint64{0},
          std::numeric_limits<qint64>::max()}) {
        const QDateTime moment = QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone::utc());
        Line{
            lines,
            milliseconds,
            lines.runtime.formatTimestamp(moment, 0),
            lines.runtime.formatTimestamp(moment, 1)};
    }
    for (const QString &text : textsOf(u"019 -+"_s + units({0, 0x2212, 0xff11}), 2)) {
        for (int before = 0; before <= 4; before += 2)
            Line{lines, text, lines.runtime.previousSecond(QString(before, u'0') + text)};
    }
}

void linesRead(Lines &lines)
{
    const QTemporaryDir folder;
    const QByteArrayList pieces = {
        "\xe3\x81\x82",
        "\xf0\x9f\x98\x80",
        "\xe3\x81",
        "\xf0\x9f\x98",
        "\xff",
        "\x80",
        "\xed\xa0\x80",
        "\xc0\x80",
        "\xef\xbb\xbf",
        "\r\n",
        "\r",
        "\n",
        "\n\n",
        "\r\r\n",
        QByteArray("\0", 1),
        "\xe2\x80\xa8",
        "\xe3\x81\n",
        "\xf0\x9f\r\n",
        "\xe3\xff\x81\x82",
    };
    // A block of a stream, two, and the portion that a line is read in; the small ones are the beginning of a
    // file.
    QList<int> sizes = {0, 1, 2};
    for (const int border : {16384, 32768, 65536}) {
        for (int size = border - 4; size <= border + 1; ++size)
            sizes.append(size);
    }
    for (const QByteArray &piece : pieces) {
        for (const int size : std::as_const(sizes)) {
            for (const QByteArray &after : {QByteArray(), QByteArray("z\n\xe3\x81\x84")}) {
                QFile file(folder.filePath(u"read"_s));
                if (!file.open(QIODevice::WriteOnly))
                    return;
                file.write(QByteArray(size, 'x') + piece + after);
                file.close();
                TextReadChannel channel(&lines.runtime);
                channel.openRead(file.fileName(), u"UTF-8"_s);
                Line{lines, size, piece, after};
                for (int i = 0; i < 6; ++i)
                    Line{
                        lines,
                        channel.readLine(),
                        qint64{channel.line.size()},
                        channel.line.last(qMin(channel.line.size(), qsizetype{12}))};
            }
        }
    }
    for (const QByteArray &start :
         {QByteArray(
              "\xff\xfe"
              "a\0",
              4
          ),
          QByteArray("\xfe\xff\0a", 4),
          QByteArray("\xef\xbb")}) {
        QFile file(folder.filePath(u"read"_s));
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write(start + "\xe3\x81\x82\n\xff\n");
        file.close();
        for (const QString &encoding : {u"UTF-8"_s, u"SJIS"_s}) {
            TextReadChannel channel(&lines.runtime);
            channel.openRead(file.fileName(), encoding);
            for (int i = 0; i < 4; ++i)
                Line{lines, start, channel.readLine(), channel.line};
        }
    }
}

void linesWritten(Lines &lines)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(u"written"_s);
    QList<int> sizes = {0, 1};
    for (const int border : {8192, 16384, 32768}) {
        for (int size = border - 3; size <= border + 1; ++size)
            sizes.append(size);
    }
    const QStringList texts = textsOf(halves + units({0xfeff, 0}), 2);
    for (const int size : std::as_const(sizes)) {
        for (const QString &text : texts) {
            for (const QString &encoding : {u"UTF-8,U"_s, u"SJIS,U"_s}) {
                TextWriteChannel channel(&lines.runtime);
                channel.openWrite(name, u"OT"_s, encoding);
                channel.writeLine(QString(size, u'x') + text);
                channel.writeLine(text + u"\u3042"_s + text);
                channel.closeWrite();
                QFile file(name);
                if (!file.open(QIODevice::ReadOnly))
                    return;
                const QByteArray bytes = file.readAll();
                Line{lines, size, text, qint64{bytes.size()}, bytes.mid(size)};
            }
        }
    }
}

/// What stands in a folder, as the bytes of its names.
QByteArray namesIn(const QString &folder)
{
    QByteArrayList names;
    for (const auto &entry : std::filesystem::directory_iterator(folder.toStdString()))
        names.append(QByteArray::fromStdString(entry.path().filename().string()));
    std::sort(names.begin(), names.end());
    return names.join('/');
}

void names(Lines &lines)
{
    AppRuntime &runtime = lines.runtime;
    const QString before = QDir::currentPath();
    for (const QString &text : textsOf(u"a./\\ "_s + halves.first(2) + units({0, 0xe9}), 2)) {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"in"_s);
        if (!QDir().mkpath(path + u"/deep"_s) || !QDir::setCurrent(path + u"/deep"_s))
            return;
        runtime.lastError.clear();
        Line{
            lines,
            text,
            runtime.makeDirectory(u"x"_s + text),
            runtime.makeDirectory(text),
            runtime.lastError};
        Line{lines, namesIn(path + u"/deep"_s)};
        Line{
            lines,
            runtime.renameFile(path + u"/deep/x"_s + text, path + u"/y"_s + text),
            runtime.setCurrentPath(path + u"/y"_s + text)};
        Line{lines, namesIn(path + u"/deep"_s), namesIn(path)};
        TextWriteChannel channel(&runtime);
        Line{lines, channel.openWrite(path + u"/z"_s + text, u"OT"_s, QString())};
        channel.closeWrite();
        Line{lines, namesIn(path)};
        Line{lines, runtime.deleteFile(path + u"/z"_s + text)};
        Line{lines, namesIn(path)};
        QDir::setCurrent(before);
    }
}

void environment(Lines &lines)
{
    for (const QByteArray &name : QByteArrayList{"SWEPT", "SWEPT?", "SWEPT\xef\xbf\xbd", "SWEPT\xff"}) {
        qputenv(name.constData(), name + '\xff' + "\xe3\x81\x82\xe3");
        for (const QString &text : textsOf(halves + u'?', 2))
            Line{lines, name, text, lines.runtime.environmentValue(u"SWEPT"_s + text)};
        qunsetenv(name.constData());
    }
}

/// The bytes that a program is started with; as the names of the files that it makes.
void arguments(Lines &lines)
{
    const QString before = QDir::currentPath();
    for (const QString &text : textsOf(halves.first(2) + u"\u00e9'\"\\\n\t%$"_s + units({0xfeff}), 2)) {
        const QTemporaryDir folder;
        QDir::setCurrent(folder.path());
        Line{lines, text, lines.runtime.runProgram(u"touch"_s, u"-- x"_s + text, QString(), true)};
        Line{lines, namesIn(folder.path())};
        QDir::setCurrent(before);
    }
}

} // namespace

class QtVersionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sameWhicheverQt_data();
    void sameWhicheverQt();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void QtVersionsTest::sameWhicheverQt_data()
{
    QTest::addColumn<std::function<void(Lines &)>>("sweep");
    QTest::addColumn<QByteArray>("digest");
    const auto row = [](const char *name, void (*sweep)(Lines &), const char *digest) {
        QTest::newRow(name) << std::function<void(Lines &)>(sweep) << QByteArray(digest);
    };
    row("texts to UTF-8", utf8Bytes, "7ead00a18ed89447");
    row("UTF-8 to texts", utf8Texts, "e84334ed39814da0");
    row("URL decoding", urlDecoding, "6d8025f37383ae9c");
    row("URL encoding", urlEncoding, "fd1085421dc76015");
    row("whole numbers", wholeNumbers, "39f6791e41bd2e48");
    row("decimal numbers", decimalNumbers, "50b4c6dd92c79ec0");
    row("case", letterCase, "6622a37d797e0482");
    row("searches", searches, "76f226b1d945e6f2");
    row("blanks, parts and replacing", shapes, "7943560d299a78bd");
    row("moments", moments, "d7f442c0f11f30a2");
    row("lines read", linesRead, "113280aa3a04e1bf");
    row("lines written", linesWritten, "11549a1a54636ea0");
    row("names of files", names, "0e2da30d27b0b486");
    row("environment", environment, "e5b472debb384334");
    row("arguments of programs", arguments, "251251a70ec99376");
}

void QtVersionsTest::sameWhicheverQt()
{
    QFETCH(std::function<void(Lines &)>, sweep);
    Lines lines(m_runtime);
    sweep(lines);
    const QString folder = qEnvironmentVariable("APPRUNTIME_SWEEPS");
    if (!folder.isEmpty()) {
        QFile file(folder + u'/' + QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(lines.bytes());
    }
    QTEST(QCryptographicHash::hash(lines.bytes(), QCryptographicHash::Sha256).toHex().first(16), "digest");
}

QTEST_GUILESS_MAIN(QtVersionsTest)
#include "tst_qtversions.moc"
