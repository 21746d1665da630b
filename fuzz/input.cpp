// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

/// What a text may hold beside ASCII and half-width katakana: the ends of the ranges that the runtime
/// distinguishes, white space of every kind, digits of other scripts, characters whose other case is longer.
constexpr std::array<char16_t, 48> oddUnits{
    0x007f, 0x0080, 0x0085, 0x00a0, 0x00a5, 0x00df, 0x00e9, 0x0130, 0x0131, 0x0149, 0x017f, 0x01c5,
    0x0301, 0x0345, 0x03a3, 0x0660, 0x06f9, 0x1680, 0x200b, 0x2003, 0x2028, 0x2029, 0x202e, 0x3000,
    0x3042, 0x30a6, 0x30ab, 0x30ac, 0x30cf, 0x3099, 0x309b, 0x4e00, 0x6f22, 0xac00, 0xd800, 0xd83d,
    0xd842, 0xdbff, 0xdc00, 0xde00, 0xdfb7, 0xdfff, 0xfeff, 0xff11, 0xff21, 0xff5e, 0xfffd, 0xffff,
};

// From these bytes on, a byte of a text is not a character of its own.
constexpr std::uint8_t firstKana = 0x80, firstOdd = 0xc0, firstAny = 0xf0, firstEnd = 0xf8;
static_assert(firstOdd + oddUnits.size() == firstAny);

[[noreturn]] void broken(const char *property, const QString &values)
{
    std::fprintf(stderr, "Does not hold: %s\n%s", property, values.toUtf8().constData());
    throw std::runtime_error(property);
}

/// The text with everything except printable ASCII as a number: texts that look alike can be told apart.
QString shown(const QString &text)
{
    QString result;
    for (const QChar unit : text) {
        if (unit >= u' ' && unit <= u'~' && unit != u'\\')
            result += unit;
        else
            result += "\\u"_L1 + QString::number(unit.unicode(), 16).rightJustified(4, u'0');
    }
    return u'"' + result + u'"';
}

QString shown(const QStringList &list)
{
    QStringList parts;
    for (const QString &text : list)
        parts += shown(text);
    return u'[' + parts.join(u", ") + u']';
}

QString shown(const QByteArray &bytes)
{
    return shown(QString::fromLatin1(bytes));
}

QString shown(long long value)
{
    return QString::number(value);
}

/// Both texts from shortly before they differ; a text may be as long as a file.
QString difference(const QString &found, const QString &expected)
{
    constexpr qsizetype before = 60, length = 400;
    const auto [first, second] = std::mismatch(found.begin(), found.end(), expected.begin(), expected.end());
    const qsizetype from = qMax<qsizetype>(first - found.begin() - before, 0);
    const QString prefix = from > 0 ? "from %1: ..."_L1.arg(QString::number(from)) : QString();
    return "found    "_L1 + prefix + found.mid(from, length) + "\nexpected "_L1 + prefix
        + expected.mid(from, length) + u'\n';
}

template<typename Value> void compare(const Value &found, const Value &expected, const char *property)
{
    if (found != expected)
        broken(property, difference(shown(found), shown(expected)));
}

} // namespace

std::uint8_t Fuzz::Input::byte()
{
    if (m_bytes.empty())
        return 0;
    const std::uint8_t value = m_bytes.front();
    m_bytes = m_bytes.subspan(1);
    return value;
}

bool Fuzz::Input::flag()
{
    return (byte() & 1) != 0;
}

int Fuzz::Input::between(int low, int high)
{
    return low + byte() % (high - low + 1);
}

int Fuzz::Input::position()
{
    const int value = byte();
    if (value < 0xf0)
        return value % 64 - 4;
    constexpr std::array<int, 4> extremes{
        std::numeric_limits<int>::max(),
        std::numeric_limits<int>::max() - 1,
        std::numeric_limits<int>::min(),
        -1000};
    return extremes[static_cast<std::size_t>(value % 4)];
}

int Fuzz::Input::anyInt()
{
    unsigned value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | byte();
    return static_cast<int>(value);
}

QChar Fuzz::Input::wide(std::uint8_t code)
{
    if (code < firstOdd)
        return QChar(static_cast<char16_t>(0xff61 + (code - firstKana)));
    if (code < firstAny)
        return oddUnits[code - firstOdd];
    const int high = byte();
    return QChar(static_cast<char16_t>(high << 8 | byte()));
}

QChar Fuzz::Input::character()
{
    const std::uint8_t code = byte();
    return code < firstKana ? QChar(char16_t(code)) : wide(code);
}

QString Fuzz::Input::text()
{
    QString result;
    while (!atEnd()) {
        const std::uint8_t code = byte();
        if (code >= firstEnd)
            break;
        result += code < firstKana ? QChar(char16_t(code)) : wide(code);
    }
    return result;
}

QStringList Fuzz::Input::texts(int most)
{
    QStringList result;
    do {
        result += text();
    } while (!atEnd() && result.size() < most);
    return result;
}

QByteArray Fuzz::Input::bytes(int most)
{
    const std::size_t count = qMin(m_bytes.size(), static_cast<std::size_t>(most));
    QByteArray result(reinterpret_cast<const char *>(m_bytes.data()), static_cast<qsizetype>(count));
    m_bytes = m_bytes.subspan(count);
    return result;
}

AppRuntime &Fuzz::runtime()
{
    static std::array<char, 5> program{"fuzz"};
    static std::array<char *, 2> arguments{program.data(), nullptr};
    static AppRuntime instance(u"FUZZ"_s, 1, arguments.data());
    return instance;
}

void Fuzz::require(bool holds, const char *property)
{
    if (!holds)
        broken(property, QString());
}

void Fuzz::requireEqual(const QString &found, const QString &expected, const char *property)
{
    compare(found, expected, property);
}

void Fuzz::requireEqual(const QStringList &found, const QStringList &expected, const char *property)
{
    compare(found, expected, property);
}

void Fuzz::requireEqual(const QByteArray &found, const QByteArray &expected, const char *property)
{
    compare(found, expected, property);
}

void Fuzz::requireEqual(long long found, long long expected, const char *property)
{
    compare(found, expected, property);
}
