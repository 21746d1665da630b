// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>
#include <array>

// The coding is defined as a row of replacements over the whole text, `#` first when encoding and last when
// decoding. One walk gives the same: no replacement makes a new `#` or puts two characters side by side that
// a later one could take for a code. Whoever adds a code has to keep that true: a code is `#` and a letter,
// and what it stands for is neither.

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

/// What each ASCII character maps to; 0 for those that map to nothing.
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
        // Both places are always written, one of them for nothing: cheaper than a branch nobody can foresee.
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
