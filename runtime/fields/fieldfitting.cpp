// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/columns.h>

#include <algorithm>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

/// Columns of a code unit. Stored values are cut alike in every program, so this follows the default classes
/// and not the fields that a program may have set for itself.
constexpr int columnsOfUnit(char16_t unit)
{
    const bool low = unit >= 0xdc00 && unit <= 0xdfff;
    return 2 - 2 * int(low) - int(isOneColumn(unit));
}

/// Code units of the longest beginning of the text that takes no more than `columns` columns.
///
/// A low surrogate takes no column, so the cut never falls before one: pairs stay whole.
qsizetype unitsWithin(QStringView text, qsizetype columns)
{
    const char16_t *const units = text.utf16();
    qsizetype position = 0;
    // No unit takes more than two columns: half as many units as columns are left fit in any case, and the
    // compiler makes a loop without a way out several times as fast.
    for (qsizetype sure = 0; (sure = qMin(columns / 2, text.size() - position)) >= 8;) {
        sure = qMin<qsizetype>(sure, 0x4000); // their columns fit in 16 bits
        quint16 taken = 0;
        for (qsizetype i = 0; i < sure; ++i)
            taken = quint16(taken + columnsOfUnit(units[position + i]));
        columns -= taken;
        position += sure;
    }
    for (; position < text.size(); ++position) {
        columns -= columnsOfUnit(units[position]);
        if (columns < 0)
            break;
    }
    return position;
}

/// The number in its shortest form; the text is changed as a number would be, whatever it holds.
QString shortestForm(QStringView text)
{
    const QStringView sign = text.first(text.startsWith(u'-') ? 1 : 0);
    qsizetype start = sign.size();
    while (start < text.size() && text[start] == u'0')
        ++start;

    qsizetype end = text.size();
    if (text.contains(u'.')) {
        while (text[end - 1] == u'0') // as far as the point at most
            --end;
        // The first character stays even so: ".0" becomes "0.".
        if (end > 1 && text[end - 1] == u'.')
            --end;
    }
    if (start >= end)
        return u"0"_s;

    const QStringView zero = text[start] == u'.' ? u"0" : u"";
    return sign % zero % text.sliced(start, end - start);
}

} // namespace

QString AppRuntime::truncateToWidth(const QString &text, int columns)
{
    QString result = text.left(unitsWithin(text, qMax(columns, 0)));
    checkIn(text, u""_s); // for its message; last, for the text may be that message
    return result;
}

QString AppRuntime::fitToWidth(const QString &text, int columns)
{
    // Cut by columns, but padded by characters: programs count on both.
    const qsizetype kept = unitsWithin(text, qMax(columns, 0));
    QString result(qMax<qsizetype>(kept, columns), Qt::Uninitialized);
    QChar *const end = std::copy_n(text.cbegin(), kept, result.begin());
    std::fill(end, result.end(), QChar(u' '));
    checkIn(text, u""_s); // for its message; last, for the text may be that message
    return result;
}

QString AppRuntime::nextCodeChar(const QString &text) const
{
    if (text.isEmpty())
        return QString();
    const char16_t code = text.front().unicode();
    switch (code) {
    case u'9': return u"0"_s;
    case u'z': return u"a"_s;
    case u'Z': return u"A"_s;
    default: break;
    }
    const bool followed
        = (code >= u'0' && code < u'9') || (code >= u'a' && code < u'z') || (code >= u'A' && code < u'Z');
    return QChar(char16_t(followed ? code + 1 : code));
}

QString AppRuntime::normaliseNumber(const QString &text)
{
    QString result = shortestForm(text);
    checkIn(text, u""_s); // for its message; last, for the text may be that message
    return result;
}
