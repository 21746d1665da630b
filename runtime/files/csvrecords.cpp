// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/files/listfiller.h>
#include <runtime/strings/blanks.h>

#include <utility>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

constexpr QChar quote = u'"', comma = u',', tab = u'\t';

void splitTabs(ListFiller &fields)
{
    const QStringView line = fields.text();
    qsizetype start = 0;
    for (qsizetype end = line.indexOf(tab); end >= 0; end = line.indexOf(tab, start)) {
        fields.add(withoutTrailingBlanks(line.sliced(start, end - start)));
        start = end + 1;
    }
    fields.add(withoutTrailingBlanks(line.sliced(start)));
}

/// One quote for every two, from left to right. QString::replace() would move the rest of the text once for
/// every thousand pairs, which takes the square of the time in a long one.
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

void addCommaField(ListFiller &fields, QStringView text, qsizetype quotes)
{
    text = text.trimmed();
    if (text.size() >= 2 && text.front() == quote && text.back() == quote) {
        text = text.sliced(1, text.size() - 2);
        quotes -= 2;
    }
    // The blanks before a closing quote go with the others: programs pad their fields to a width and count on
    // getting them back without the padding.
    QString &field = fields.add(withoutTrailingBlanks(text));
    // Pairs are folded wherever they stand, also in a field that no quotes enclose.
    if (quotes >= 2)
        foldQuotePairs(field);
}

void splitCommas(ListFiller &fields)
{
    const QStringView line = fields.text();
    // Every quote counts, one inside a field too, so that a quote that is never closed takes in the rest of
    // the line. Commas outside are one less than the fields: a line that ends in one ends in an empty field.
    bool inQuotes = false;
    qsizetype quotes = 0;
    const QChar *start = line.begin();
    for (const QChar *next = line.begin(); next != line.end(); ++next) {
        if (*next == quote) {
            inQuotes = !inQuotes;
            ++quotes;
        } else if (*next == comma && !inQuotes) {
            addCommaField(fields, QStringView(start, next), quotes);
            start = next + 1;
            quotes = 0;
        }
    }
    addCommaField(fields, QStringView(start, line.end()), quotes);
}

} // namespace

bool AppRuntime::isCsvKind(const QString &kind) const
{
    // A record asks for each of its fields, so no upper-case copy is made. Of all other characters only the
    // long s becomes one of these letters.
    const qsizetype last = kind.size() - 1;
    return last >= 2 && charIn(kind[last], u'V', u'v') && charIn(kind[last - 1], u'S', u's', u'ſ')
        && charIn(kind[last - 2], u'C', u'c');
}

void AppRuntime::splitRecord(QStringList &fields, const QString &line, const QString &kind) const
{
    const bool csv = isCsvKind(kind); // before the first write: the kind may be an element, too
    ListFiller filler(fields, line);
    if (csv)
        splitCommas(filler);
    else
        splitTabs(filler);
    filler.finish();
}

QString AppRuntime::csvField(CsvRecord &record, const QString &value, const QString &kind) const
{
    bool hasLineBreak = false, hasComma = false;
    qsizetype quotes = 0;
    for (const QChar character : value) {
        if (character > comma) // nearly all are: what is looked for stands below
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
