// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/firstof.h>

#include <algorithm>
#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

constexpr QChar quote = u'\'';

/// The position of a cursor that may stand anywhere, as an index of the text or its end.
qsizetype startOf(const ScanCursor &cursor, QStringView text)
{
    return std::clamp<qsizetype>(cursor.position, 0, text.size());
}

/// Index of the first delimiter at or after `from` that does not stand in quotes, or -1. A quote only ever
/// opens or closes a quoted stretch, also where the caller counts it among the delimiters.
qsizetype indexOfDelimiter(QStringView text, QStringView delimiters, qsizetype from)
{
    qsizetype found = indexOfFirst(text, delimiters, from);
    while (from < text.size()) {
        // Nothing behind the delimiter is looked at, or a text of many tokens would be read once for each.
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

/// The beginning of `text` that decides whether its upper-cased form begins with `upperKeyword`: a rest of a
/// megabyte is not converted for a word of six letters.
QStringView decidingPart(QStringView text, QStringView upperKeyword)
{
    // Upper-casing turns one character after the other, and none into fewer code units than it had; only the
    // halves of a pair must stay together.
    qsizetype size = std::min(upperKeyword.size(), text.size());
    if (size > 0 && size < text.size() && text[size - 1].isHighSurrogate())
        ++size;
    // Behind a high half without its low one the toolkit takes other characters for halves, and what becomes
    // of them depends on the whole text.
    const QStringView part = text.first(size);
    return part.isValidUtf16() ? part : text;
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

    const QString upperKeyword = keyword.toUpper();
    const QStringView rest = QStringView(text).sliced(begin);
    if (!decidingPart(rest, upperKeyword).toString().toUpper().startsWith(upperKeyword))
        return false;

    // By the keyword's length, also where case mapping changed it: past "ß", which accepts "SS", that may be
    // one unit too far. Positions past the end count as the end everywhere.
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
    // Everything is taken before anything is written: the text under scan may be the token of the call
    // before, and tokens, cursors and delimiters parts of one record.
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
