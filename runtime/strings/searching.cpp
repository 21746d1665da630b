// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/firstof.h>

#include <algorithm>
#include <bitset>

using namespace appruntime_internal;

namespace
{

/// A position that may count from the end of the text, as one from its start; negative before the first unit.
/// Not left to QString: some versions look before the beginning of the text there.
qsizetype fromStart(QStringView text, qsizetype position)
{
    return position < 0 ? position + text.size() : position;
}

} // namespace

qsizetype appruntime_internal::indexOfFirst(QStringView text, QStringView characters, qsizetype from)
{
    if (characters.size() == 1) { // as with nearly every caller
        const qsizetype found = text.indexOf(characters.front(), from);
        return found < 0 ? text.size() : found;
    }

    // A table of all code units costs more to fill than looking for so many one after the other.
    constexpr qsizetype mostCompared = 16;
    if (characters.size() > mostCompared) {
        std::bitset<0x10000> wanted;
        for (const QChar character : characters)
            wanted.set(character.unicode());
        const auto isWanted = [&wanted](QChar character) {
            return wanted.test(character.unicode());
        };
        return std::find_if(text.begin() + from, text.end(), isWanted) - text.begin();
    }

    // Most often it is near. Behind that, QStringView looks for one character in many units at once, which is
    // three to seven times as fast. The stretches grow, so looking twice costs at most a constant factor.
    constexpr qsizetype few = 8, growth = 8;
    qsizetype begin = qMin(from + few, text.size());
    const QChar *const nearEnd = text.begin() + begin;
    const QChar *const found
        = std::find_first_of(text.begin() + from, nearEnd, characters.begin(), characters.end());
    if (found != nearEnd)
        return found - text.begin();
    while (begin < text.size()) {
        const qsizetype end = qMin(begin + growth * (begin - from), text.size());
        QStringView before = text.sliced(begin, end - begin);
        for (const QChar character : characters) {
            const qsizetype index = before.indexOf(character);
            if (index >= 0)
                before = before.first(index);
        }
        begin += before.size();
        if (begin < end)
            break;
    }
    return begin;
}

int AppRuntime::indexOf(const QString &text, const QString &sub, int from) const
{
    const qsizetype start = fromStart(text, from);
    return start < 0 ? -1 : static_cast<int>(text.indexOf(sub, start));
}

int AppRuntime::indexOf(const QString &text, QChar character, int from) const
{
    const qsizetype start = fromStart(text, from);
    return start < 0 ? -1 : static_cast<int>(text.indexOf(character, start));
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
    // From -1 on, an empty text would be found before the last character.
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
    const qsizetype start = fromStart(text, from);
    return start < 0 || start > text.size() ? -1 : static_cast<int>(text.lastIndexOf(sub, start));
}

int AppRuntime::lastIndexOf(const QString &text, QChar character, int from) const
{
    // From the very end on, QString would read the unit behind the text and may find a NUL there.
    const qsizetype start = std::min(fromStart(text, from), text.size() - 1);
    return start < 0 ? -1 : static_cast<int>(text.lastIndexOf(character, start));
}

int AppRuntime::indexOfAny(const QString &text, const QString &chars, int from) const
{
    const qsizetype found = indexOfFirst(text, chars, std::clamp<qsizetype>(from, 0, text.size()));
    return found == text.size() ? -1 : static_cast<int>(found);
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
