// SPDX-License-Identifier: MIT
#include <runtime/strings/casemapping.h>

#include <algorithm>

namespace
{

/// QString moves the rest of a text for every character that becomes several, such as ß (SS). A long text of
/// them would take time that grows with the square of its length, so a long text is converted in pieces.
constexpr qsizetype mappedAtOnce = 1024;

/// The text as `convert` gives it. `letter` is one that `convert` changes.
template<typename Convert> QString inPieces(const QString &text, QChar letter, Convert convert)
{
    if (text.size() <= mappedAtOnce)
        return convert(text);

    QString result;
    bool changed = false;
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        end = std::min(begin + mappedAtOnce, text.size());
        // A pair stays whole. And only high surrogates at the end of the text are left alone by QString.
        while (end < text.size() && text[end - 1].isHighSurrogate())
            ++end;
        const QString piece = text.sliced(begin, end - begin);
        if (changed) {
            // A lone surrogate becomes U+FFFD behind the first character that changes, and stays before it.
            result += QStringView(convert(letter + piece)).sliced(1);
            continue;
        }
        const QString converted = convert(piece);
        if (converted != piece) {
            changed = true;
            result.reserve(text.size());
            result += QStringView(text).first(begin);
            result += converted;
        }
    }
    return changed ? result : text;
}

} // namespace

QString appruntime_internal::upperCased(const QString &text)
{
    return inPieces(text, u'a', [](const QString &piece) { return piece.toUpper(); });
}

QString appruntime_internal::lowerCased(const QString &text)
{
    return inPieces(text, u'A', [](const QString &piece) { return piece.toLower(); });
}
