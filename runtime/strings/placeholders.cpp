// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>
#include <array>

// The coding is defined as eight replacements over the whole text, `#` first when encoding and last when
// decoding. One pass gives the same result, because no replacement makes a text that a later one would
// replace. A new code has to keep that true: it is `#` and a letter, and its character is neither.

namespace
{

struct Placeholder {
    char16_t character;
    char16_t letter;
};
constexpr char16_t mark = u'#';
constexpr std::array<Placeholder, 8> placeholders{{
    {mark, u'C'},
    {u'"', u'Q'},
    {u'%', u'P'},
    {u'!', u'E'},
    {u'`', u'A'},
    {u'\\', u'Y'},
    {u'$', u'D'},
    {u' ', u'S'},
}};

/// What each ASCII character is replaced by; 0 where it stays.
using AsciiMap = std::array<char16_t, 128>;

constexpr AsciiMap letters = [] {
    AsciiMap map{};
    for (const Placeholder &placeholder : placeholders)
        map[placeholder.character] = placeholder.letter;
    return map;
}();

constexpr AsciiMap characters = [] {
    AsciiMap map{};
    for (const Placeholder &placeholder : placeholders)
        map[placeholder.letter] = placeholder.character;
    return map;
}();

char16_t mapped(const AsciiMap &map, QChar character)
{
    const char16_t unit = character.unicode();
    return unit < map.size() ? map[unit] : u'\0';
}

} // namespace

QString AppRuntime::encodePlaceholders(const QString &text) const
{
    const QChar *next = std::find_if(text.cbegin(), text.cend(), [](QChar character) {
        return mapped(letters, character) != 0;
    });
    if (next == text.cend())
        return text;

    const qsizetype plain = next - text.cbegin();
    QString encoded(plain + 2 * (text.size() - plain), Qt::Uninitialized);
    QChar *end = std::copy(text.cbegin(), next, encoded.data());
    for (; next != text.cend(); ++next) {
        // Writing both places, even if only one is needed, is cheaper than a branch.
        const char16_t letter = mapped(letters, *next);
        end[0] = letter != 0 ? QChar(mark) : *next;
        end[1] = letter;
        end += letter != 0 ? 2 : 1;
    }
    encoded.truncate(end - encoded.constData());
    return encoded;
}

QString AppRuntime::decodePlaceholders(const QString &text) const
{
    const qsizetype plain = text.indexOf(mark);
    if (plain < 0)
        return text;

    QString decoded(text.size(), Qt::Uninitialized);
    const QChar *next = text.cbegin() + plain;
    QChar *end = std::copy(text.cbegin(), next, decoded.data());
    while (next != text.cend()) {
        const bool isCode = *next == mark && next + 1 != text.cend() && mapped(characters, next[1]) != 0;
        *end++ = isCode ? QChar(mapped(characters, next[1])) : *next;
        next += isCode ? 2 : 1;
    }
    decoded.truncate(end - decoded.constData());
    return decoded;
}
