// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

// Sums have 64 bits, so that they do not overflow in a text of any length.

namespace
{

QString digitText(qint64 digit)
{
    return QChar(static_cast<char16_t>(u'0' + digit));
}

} // namespace

QString AppRuntime::code39CheckChar(const QString &code) const
{
    constexpr QStringView alphabet = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
    static_assert(alphabet.size() == 43);

    qint64 sum = 0;
    for (const QChar character : code) {
        // By Unicode's rules, the dotless i and the long s count as I and S too.
        const qsizetype value = alphabet.indexOf(character.toUpper());
        if (value < 0)
            return QString();
        sum += value;
    }
    return alphabet.at(static_cast<qsizetype>(sum % alphabet.size()));
}

QString AppRuntime::mod11CheckDigit(const QString &code) const
{
    qint64 sum = 0;
    int weight = 2;
    for (qsizetype position = code.size() - 1; position >= 0; --position) {
        // No unit is refused, because codes with letters have a check digit too.
        const int unit = code.at(position).unicode();
        const qint64 value = (unit & 15) <= 9 ? unit & 15 : unit & 7;
        sum += value * weight;
        weight = weight == 7 ? 2 : weight + 1;
    }
    // A remainder of 1 would need a digit 10: it becomes 0.
    const qint64 remainder = sum % 11;
    return digitText(remainder <= 1 ? 0 : 11 - remainder);
}

QString AppRuntime::mod10CheckDigit(const QString &code) const
{
    if (code.isEmpty())
        return QString();

    qint64 sum = 0;
    int weight = 3;
    for (qsizetype position = code.size() - 1; position >= 0; --position) {
        const char16_t unit = code.at(position).unicode();
        if (unit >= u'0' && unit <= u'9')
            sum += static_cast<qint64>(unit - u'0') * weight;
        weight = 4 - weight; // after every position, not only after digits
    }
    return digitText((10 - sum % 10) % 10);
}
