// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/files/splitting.h>
#include <runtime/strings/blanks.h>

#include <optional>
#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

constexpr QChar quote = u'"', comma = u',', tab = u'\t';

/// One quote for every two, from left to right. QString::replace() moves the rest of the text once for every
/// thousand pairs, so its time grows with the square of the length.
void foldQuotePairs(QString &text)
{
    QChar *const begin = text.data();
    const QChar *const end = begin + text.size();
    QChar *out = begin;
    for (const QChar *next = begin; next != end; ++next) {
        *out++ = *next;
        if (*next == quote && next + 1 != end && next[1] == quote)
            ++next;
    }
    text.truncate(out - begin);
}

/// The text without white space at both ends. Nearly all ends are ASCII, for which Qt need not be asked.
QStringView trimmed(QStringView text)
{
    const auto isPrintable = [](QChar character) {
        return character > u' ' && character < u'\x7f';
    };
    return text.isEmpty() || (isPrintable(text.front()) && isPrintable(text.back())) ? text : text.trimmed();
}

void addCommaField(ListFiller &filler, QStringView text, bool mayHavePair)
{
    text = trimmed(text);
    if (text.size() >= 2 && text.front() == quote && text.back() == quote)
        text = text.sliced(1, text.size() - 2);
    // Blanks before a closing quote go too: programs pad their fields to a width and count on getting them
    // back without the padding.
    QString &field = filler.add(withoutTrailingBlanks(text));
    // Pairs are folded wherever they stand, also in a field without enclosing quotes. The two quotes of an
    // empty field are gone already.
    if (mayHavePair)
        foldQuotePairs(field);
}

} // namespace

bool AppRuntime::isCsvKind(const QString &kind) const
{
    // Without an upper-case copy, because csvField() asks for every field. The long s is the only other
    // character whose upper case is one of these letters.
    const qsizetype last = kind.size() - 1;
    return last >= 2 && charIn(kind[last], u'V', u'v') && charIn(kind[last - 1], u'S', u's', u'ſ')
        && charIn(kind[last - 2], u'C', u'c');
}

void AppRuntime::splitRecord(QStringList &fields, const QString &line, const QString &kind) const
{
    const bool csv = isCsvKind(kind); // first, because the kind may be an element too
    if (csv) {
        splitInto(fields, line, comma, quote, addCommaField);
    } else {
        splitInto(fields, line, tab, std::nullopt, [](ListFiller &filler, QStringView part, bool) {
            filler.add(withoutTrailingBlanks(part));
        });
    }
}

QString AppRuntime::csvField(CsvRecord &record, const QString &value, const QString &kind) const
{
    bool hasLineBreak = false, hasComma = false;
    qsizetype quotes = 0;
    for (const QChar character : value) {
        if (character > comma) // nearly all are
            continue;
        hasLineBreak = hasLineBreak || character == u'\r' || character == u'\n';
        hasComma = hasComma || character == comma;
        quotes += character == quote ? 1 : 0;
    }
    QString field = hasLineBreak ? replaceLineBreaks(value, u'?') : value;
    const bool csv = isCsvKind(kind);
    record.separator = csv ? u","_s : u"\t"_s;
    if (!csv || (quotes == 0 && !hasComma))
        return field;

    QString quoted(field.size() + quotes + 2, Qt::Uninitialized);
    QChar *end = quoted.data();
    *end++ = quote;
    for (const QChar character : std::as_const(field)) {
        if (character == quote)
            *end++ = quote;
        *end++ = character;
    }
    *end = quote;
    return quoted;
}
