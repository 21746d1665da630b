// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>
#include <bitset>

namespace
{

/// Up to so many characters are compared one after the other; a table of all code units costs more to fill.
constexpr qsizetype mostCompared = 16;

} // namespace

int AppRuntime::indexOf(const QString &text, const QString &sub, int from) const
{
    return static_cast<int>(text.indexOf(sub, from));
}

int AppRuntime::indexOf(const QString &text, QChar character, int from) const
{
    return static_cast<int>(text.indexOf(character, from));
}

int AppRuntime::find(const QString &text, const QString &sub) const
{
    return indexOf(text, sub, 0);
}

int AppRuntime::findChar(const QString &text, QChar character) const
{
    return indexOf(text, character, 0);
}

bool AppRuntime::containsChar(QChar character, const QString &text) const
{
    return findChar(text, character) >= 0;
}

int AppRuntime::lastIndexOf(const QString &text, const QString &sub) const
{
    // From -1 on, an empty text would be found in front of the last character.
    return lastIndexOf(text, sub, length(text));
}

int AppRuntime::lastIndexOf(const QString &text, QChar character) const
{
    return lastIndexOf(text, character, -1);
}

int AppRuntime::lastIndexOf(const QString &text, const QString &sub, int from) const
{
    if (sub.size() == 1)
        return lastIndexOf(text, sub[0], from);
    return static_cast<int>(text.lastIndexOf(sub, from));
}

int AppRuntime::lastIndexOf(const QString &text, QChar character, int from) const
{
    // From the very end on, the toolkit would read the unit behind the text and may find a NUL there.
    return static_cast<int>(text.lastIndexOf(character, qMin(from, length(text) - 1)));
}

int AppRuntime::indexOfAny(const QString &text, const QString &chars, int from) const
{
    const QStringView rest = QStringView(text).mid(qMax(from, 0));
    const auto position = [&text, &rest](const QChar *found) {
        return found == rest.end() ? -1 : static_cast<int>(found - text.cbegin());
    };
    if (chars.size() <= mostCompared)
        return position(std::find_first_of(rest.begin(), rest.end(), chars.cbegin(), chars.cend()));

    std::bitset<0x10000> wanted;
    for (const QChar character : chars)
        wanted.set(character.unicode());
    return position(std::find_if(rest.begin(), rest.end(), [&wanted](QChar character) {
        return wanted.test(character.unicode());
    }));
}

int AppRuntime::indexOfAny(const QString &text, const QString &chars) const
{
    return indexOfAny(text, chars, 0);
}

bool AppRuntime::startsWith(const QString &text, const QString &sub) const
{
    return text.startsWith(sub);
}

bool AppRuntime::endsWith(const QString &text, const QString &sub) const
{
    return text.endsWith(sub);
}
