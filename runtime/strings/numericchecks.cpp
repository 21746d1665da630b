// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

// What a text is as a number is decided here and not by QString::toInt() and toDouble(), whose answers are
// not the same in every version of Qt. These are the answers of Qt 6.4.

namespace
{

QStringView withoutAsciiSpace(QStringView text)
{
    while (!text.isEmpty() && (text.front() == u' ' || (text.front() >= u'\t' && text.front() <= u'\r')))
        text = text.sliced(1);
    return text;
}

/// The value of a digit of any base; 36 or more, which no base has, for every other character.
int digitOf(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    const char16_t small = unit | 0x20; // of an ASCII letter
    return small >= u'a' ? small - u'a' + 10 : 36;
}

/// The whole number of 32 bits that the text is in a base from 2 to 36, or, for base 0, in the base that it
/// names.
std::optional<int> wholeNumber(QStringView text, int base)
{
    text = withoutAsciiSpace(text);
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);

    const auto takePrefix = [&](int itsBase, QStringView prefix) {
        if ((base != 0 && base != itsBase) || !text.startsWith(prefix, Qt::CaseInsensitive))
            return;
        base = itsBase;
        text = text.sliced(prefix.size());
    };
    takePrefix(16, u"0x");
    takePrefix(2, u"0b");
    if (base == 0)
        base = text.startsWith(u'0') ? 8 : 10;

    constexpr qint64 tooLarge = qint64(1) << 32;
    qint64 value = 0;
    qsizetype digits = 0;
    for (; digits < text.size(); ++digits) {
        const int digit = digitOf(text[digits]);
        if (digit >= base)
            break;
        value = std::min(value * base + digit, tooLarge);
    }
    if (digits == 0)
        return std::nullopt;

    // A NUL ends the number, whatever follows.
    const QStringView rest = withoutAsciiSpace(text.sliced(digits));
    if (!rest.isEmpty() && rest.front() != u'\0')
        return std::nullopt;
    if (negative)
        value = -value;
    const int result = static_cast<int>(value);
    return result == value ? std::optional(result) : std::nullopt;
}

/// The decimal number that the text is.
std::optional<double> decimalNumber(QStringView text)
{
    text = text.trimmed();
    if (text.isEmpty())
        return std::nullopt;

    // In ASCII and small letters. U+2212, the minus sign of typeset texts, is one here too.
    QVarLengthArray<char, 64> ascii(text.size());
    char *end = ascii.data();
    for (const QChar character : text) {
        const char16_t unit = character == u'\u2212' ? u'-' : character.unicode();
        if (unit >= 0x80)
            return std::nullopt;
        *end++ = static_cast<char>(unit >= u'A' ? unit | 0x20 : unit);
    }

    const char *begin = ascii.data();
    if (std::string_view(begin, end) == "nan")
        return std::numeric_limits<double>::quiet_NaN();
    const bool negative = *begin == '-';
    if (negative || *begin == '+')
        ++begin;
    const std::string_view digits(begin, end);
    if (digits == "inf")
        return negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    // std::from_chars() would take a second sign, and words such as "infinity".
    if (digits.empty() || !((digits[0] >= '0' && digits[0] <= '9') || digits[0] == '.'))
        return std::nullopt;

    // What is too large, or too close to zero, for a double is an error too.
    double value = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (stop != end || error != std::errc())
        return std::nullopt;
    return negative ? -value : value;
}

/// Sets convertOk, and for a reason that the text did not pass the message for the user, where one is asked
/// for.
void record(AppRuntime &runtime, const QString &text, QStringView reason, int report)
{
    // The text may be checkMessage or lastError itself.
    const bool reported = !reason.isEmpty() && report == 1;
    QString message;
    if (reported)
        message = reason + u" \"" + text + u'"';
    runtime.checkIn(text, QString()); // for its message
    runtime.convertOk = reason.isEmpty();
    if (reported)
        runtime.lastError = std::move(message);
}

} // namespace

int AppRuntime::toInt(const QString &text) const
{
    return wholeNumber(text, 10).value_or(0);
}

int AppRuntime::toIntBase(const QString &text, int base) const
{
    if (base != 0 && (base < 2 || base > 36))
        return 0;
    return wholeNumber(text, base).value_or(0);
}

int AppRuntime::validInt(const QString &text, QChar rule, int defaultValue, int report)
{
    const std::optional<int> value = text.isEmpty() ? 0 : wholeNumber(text, 10);
    QStringView reason;
    if (!value)
        reason = u"not numeric";
    else if (rule != u'-' && *value < 0)
        reason = u"not plus";
    else if (rule == u'0' && *value == 0)
        reason = u"bad zero";
    record(*this, text, reason, report);
    // A number that did not pass is not replaced: a program that does not look at convertOk sees it as typed.
    return value.value_or(defaultValue);
}

double AppRuntime::validDouble(const QString &text, QChar rule, double defaultValue, int report)
{
    const std::optional<double> value = text.isEmpty() ? 0.0 : decimalNumber(text);
    QStringView reason;
    if (!value)
        reason = u"not numeric";
    else if (rule == u'+' && *value < 0.0)
        reason = u"not plus";
    record(*this, text, reason, report);
    // Unlike validInt(): a negative number is not handed out.
    return reason.isEmpty() ? *value : defaultValue;
}

int AppRuntime::hexDigitValue(QChar character) const
{
    const QChar digit = character.toUpper();
    if (digit >= u'0' && digit <= u'9')
        return digit.unicode() - u'0';
    if (digit >= u'A' && digit <= u'F')
        return digit.unicode() - u'A' + 10;
    return -1;
}
