// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/casemapping.h>
#include <runtime/strings/firstof.h>

#include <algorithm>
#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

constexpr QChar quote = u'\'';

/// The cursor's position, moved into the text where it stands outside.
qsizetype startOf(const ScanCursor &cursor, QStringView text)
{
    return std::clamp<qsizetype>(cursor.position, 0, text.size());
}

/// Index of the first delimiter at or after `from` that is not in quotes, or -1. A quote is never a
/// delimiter, even if the caller lists it as one.
qsizetype indexOfDelimiter(QStringView text, QStringView delimiters, qsizetype from)
{
    qsizetype found = indexOfFirst(text, delimiters, from);
    while (from < text.size()) {
        // Looks no further than the delimiter, or a text of many tokens would be read once for each.
        const qsizetype last = std::min(found, text.size() - 1);
        const qsizetype opening = text.first(last + 1).indexOf(quote, from);
        if (opening < 0)
            return found < text.size() ? found : -1;
        const qsizetype closing = text.indexOf(quote, opening + 1);
        if (closing < 0)
            return -1;
        from = closing + 1;
        if (found < from)
            found = indexOfFirst(text, delimiters, from);
    }
    return -1;
}

/// Whether the text in upper case begins with the keyword in upper case.
///
/// A rest of a megabyte is not converted for a word of six letters: upper-casing turns one character after
/// the other, and none into fewer code units than it had.
bool beginsWithKeyword(QStringView text, const QString &keyword)
{
    const auto upperAscii = [](QChar unit) {
        return unit >= u'a' && unit <= u'z' ? QChar(char16_t(unit.unicode() - u'a' + u'A')) : unit;
    };
    // ASCII, as nearly every keyword is, needs no copy.
    const qsizetype both = std::min(text.size(), keyword.size());
    qsizetype same = 0;
    while (same < both && text[same] < u'\u0080' && upperAscii(text[same]) == upperAscii(keyword[same]))
        ++same;
    if (same == keyword.size())
        return true;
    if (same == text.size() || (text[same] < u'\u0080' && keyword[same] < u'\u0080'))
        return false;

    const QString upperKeyword = upperCased(keyword);
    qsizetype size = std::min(upperKeyword.size(), text.size());
    if (size < text.size() && text[size - 1].isHighSurrogate())
        ++size;
    const QString part = text.first(size).toString();
    QString upperPart = upperCased(part);
    // Behind a character that changes, QString makes U+FFFD of a lone surrogate, but not of the high ones at
    // the end of a text. Here the end is that of the whole text.
    const auto isHigh = [](QChar unit) {
        return unit.isHighSurrogate();
    };
    if (isHigh(part.back()) && upperPart != part && !std::all_of(text.begin() + size, text.end(), isHigh))
        upperPart = upperCased(part + u' ');
    return upperPart.startsWith(upperKeyword);
}

} // namespace

void AppRuntime::setScanText(const QString &text)
{
    if (!scanCursor || !scanSource)
        return;
    scanSource->text = text;
    scanCursor->position = 0;
}

bool AppRuntime::acceptKeyword(ScanCursor &cursor, const QString &keyword, const QString &text) const
{
    qsizetype begin = startOf(cursor, text);
    while (begin < text.size() && text[begin] <= u' ')
        ++begin;
    if (begin == text.size())
        return false;

    if (!beginsWithKeyword(QStringView(text).sliced(begin), keyword))
        return false;

    // Moves by the keyword's length, also where upper-casing changed it: past "ß", which accepts "SS", by one
    // unit too many. A position past the end counts as the end everywhere.
    cursor.position = static_cast<qint32>(begin + keyword.size());
    return true;
}

bool AppRuntime::acceptKeyword(const QString &keyword, const QString &text) const
{
    ScanCursor cursor;
    return acceptKeyword(cursor, keyword, text);
}

bool AppRuntime::acceptKeyword(const QString &keyword)
{
    if (!scanCursor || !scanSource)
        return false;
    return acceptKeyword(*scanCursor, keyword, scanSource->text);
}

bool AppRuntime::nextToken(
    ScanCursor &tokenOut,
    ScanCursor &cursor,
    QChar &delimiterOut,
    const QString &text,
    const QString &delimiters,
    bool store
)
{
    // Reads everything before it writes anything: the text may be the token of the last call, and token,
    // cursor and delimiter may be parts of one record.
    const qsizetype start = startOf(cursor, text);
    const qsizetype found = indexOfDelimiter(text, delimiters, start);
    const bool ended = found < 0;
    const QChar delimiter = ended ? QChar(u'\0') : text[found];
    const qsizetype end = ended ? text.size() : found + 1;

    QString token;
    if (store) {
        // The last token keeps its blanks, the others do not. Programs count on both.
        const QStringView rest = QStringView(text).sliced(start);
        token = (ended ? rest : rest.first(found - start).trimmed()).toString();
    }
    QString message;
    if (ended)
        message = u"not found ('"_s + delimiters + u"')"_s;

    delimiterOut = delimiter;
    cursor.position = static_cast<qint32>(end);
    if (store)
        tokenOut.text = std::move(token);
    if (ended)
        lastError = std::move(message);
    return !ended;
}

bool AppRuntime::nextToken(ScanCursor &tokenOut, const QString &delimiters)
{
    if (!scanCursor || !scanSource || !scanDelimiter)
        return false;
    return nextToken(
        tokenOut, *scanCursor, scanDelimiter->delimiter, scanSource->text, delimiters, /*store=*/true
    );
}

bool AppRuntime::skipToken(const QString &delimiters)
{
    if (!scanCursor || !scanSource || !scanDelimiter)
        return false;
    ScanCursor unused;
    return nextToken(
        unused, *scanCursor, scanDelimiter->delimiter, scanSource->text, delimiters, /*store=*/false
    );
}
