// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// Mostly what looks like a number.
QString someNumber(Fuzz::Input &input)
{
    if (input.flag())
        return input.text();
    const QString letters = u"0123456789+-.eE \t\n\x00a0xn"_s;
    const QStringList words{
        u"2147483647"_s,
        u"2147483648"_s,
        u"18446744073709551616"_s,
        u"nan"_s,
        u"inf"_s,
        u"1e308"_s,
        u"4.9e-324"_s,
        u"00000000000000000"_s};
    QString number;
    for (int count = input.between(0, 24); count > 0; --count) {
        const int choice = input.between(0, 63);
        number += choice < words.size() ? words[choice] : QString(letters[choice % letters.size()]);
    }
    return number;
}

bool isBlank(QChar unit)
{
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

QString withoutBlanks(QString text)
{
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    while (!text.isEmpty() && isBlank(text.front()))
        text.remove(0, 1);
    return text;
}

/// The number of 32 bits that the text stands for up to a NUL, by hand. Only ASCII white space may stand
/// around it.
std::optional<int> wholeNumber(const QString &text)
{
    const qsizetype nul = text.indexOf(QChar::Null);
    QString digits = withoutBlanks(nul < 0 ? text : text.first(nul));
    const bool negative = digits.startsWith(u'-');
    if (negative || digits.startsWith(u'+'))
        digits.remove(0, 1);
    if (digits.isEmpty())
        return std::nullopt;
    qint64 value = 0;
    for (const QChar unit : digits) {
        if (unit < u'0' || unit > u'9')
            return std::nullopt;
        value = qMin(value * 10 + (unit.unicode() - u'0'), qint64(1) << 40);
    }
    value = negative ? -value : value;
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(value);
}

/// The decimal number that the text stands for, by Qt. Not every version of it takes U+2212 for a minus.
std::optional<double> decimalNumber(QString text)
{
    bool ok = false;
    const double value = text.replace(u'\u2212', u'-').toDouble(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

void check(const AppRuntime &runtime, const QString &text, const QString &reason, bool ok, int report)
{
    Fuzz::requireEqual(runtime.convertOk, ok, "convertOk tells whether the text passed");
    const bool said = !ok && report == 1;
    Fuzz::requireEqual(
        runtime.lastError,
        said ? reason + u" \""_s + text + u'"' : u"before"_s,
        "a refusal is said when asked for"
    );
    Fuzz::requireEqual(
        runtime.checkMessage,
        text.isEmpty() ? u"untouched"_s : u'"' + text + u"\" not in('')"_s,
        "the text is compared with the empty one"
    );
}

void prepare(AppRuntime &runtime)
{
    runtime.lastError = u"before"_s;
    runtime.checkMessage = u"untouched"_s;
    runtime.convertOk = false;
}

void whole(AppRuntime &runtime, const QString &text, QChar rule, int standard, int report)
{
    const std::optional<int> read = text.isEmpty() ? 0 : wholeNumber(text);
    Fuzz::requireEqual(runtime.toInt(text), read.value_or(0), "a whole number is read, anything else is 0");

    prepare(runtime);
    const int value = runtime.validInt(text, rule, standard, report);
    Fuzz::requireEqual(value, read.value_or(standard), "a whole number is what is read by hand");
    const bool negative = read && *read < 0 && rule != u'-';
    const bool zero = read && *read == 0 && rule == u'0';
    const QString reason = !read ? u"not numeric"_s : negative ? u"not plus"_s : u"bad zero"_s;
    check(runtime, text, reason, read && !negative && !zero, report);
}

void decimal(AppRuntime &runtime, const QString &text, QChar rule, int report)
{
    constexpr double standard = 7.5;
    prepare(runtime);
    const double value = runtime.validDouble(text, rule, standard, report);

    const std::optional<double> read = text.isEmpty() ? 0.0 : decimalNumber(text);
    const bool negative = read && *read < 0.0 && rule == u'+';
    const double expected = read && !negative ? *read : standard;
    Fuzz::require(
        value == expected || (std::isnan(value) && std::isnan(expected)), "a decimal number is what Qt reads"
    );
    check(runtime, text, negative ? u"not plus"_s : u"not numeric"_s, read && !negative, report);
}

void bases(const AppRuntime &runtime, const QString &text, int base, int number, QChar character)
{
    if (base >= 2 && base <= 36) {
        const QString shown = QString::number(number, base);
        Fuzz::requireEqual(runtime.toIntBase(shown, base), number, "a number is read in its base");
        Fuzz::requireEqual(runtime.toIntBase(shown.toUpper(), base), number, "in either case");
    } else if (base != 0) {
        Fuzz::requireEqual(runtime.toIntBase(text, base), 0, "there is no such base");
    }
    Fuzz::requireEqual(runtime.toIntBase(text, 10), runtime.toInt(text), "the base of every day is 10");
    Fuzz::requireEqual(runtime.toInt(runtime.intText(number)), number, "a number's text is read");

    const qsizetype digit = u"0123456789abcdefABCDEF"_s.indexOf(character);
    Fuzz::requireEqual(
        runtime.hexDigitValue(character),
        digit < 16 ? digit : digit - 6,
        "a digit of either case has its value"
    );
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QStringList rules{u"-"_s, u"0"_s, u"+"_s, u" "_s};
    const int choice = input.between(0, 4);
    const QChar rule = choice < rules.size() ? rules[choice].front() : input.character();
    const int report = input.between(0, 2), standard = input.anyInt();
    const QString any = input.text();
    const int base = input.position(), value = input.anyInt();
    bases(runtime, any, base, value, input.character());

    const QString text = someNumber(input);
    whole(runtime, text, rule, standard, report);
    decimal(runtime, text, rule, report);
    return 0;
}
