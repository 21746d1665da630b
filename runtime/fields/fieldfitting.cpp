// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/columns.h>
#include <runtime/strings/copyunits.h>

#include <algorithm>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

/// Columns of a code unit by the default classes. The fields that a program may set do not count: stored
/// values are cut alike in every program.
constexpr int columnsOfUnit(char16_t unit)
{
    const bool low = unit >= 0xdc00 && unit <= 0xdfff;
    return 2 - 2 * int(low) - int(isOneColumn(unit));
}

constexpr qsizetype fewUnits = 0x4000; // whose columns fit in 16 bits

/// Columns of so few units. Without a branch, so that a compiler makes vector code of it.
int columnsOfFew(const char16_t *units, qsizetype count)
{
    quint16 columns = 0;
    for (qsizetype i = 0; i < count; ++i)
        columns = static_cast<quint16>(columns + columnsOfUnit(units[i]));
    return columns;
}

Q_NEVER_INLINE qsizetype columnsOfMany(const char16_t *units, qsizetype count)
{
    qsizetype columns = 0;
    for (qsizetype begin = 0; begin < count; begin += fewUnits)
        columns += columnsOfFew(units + begin, std::min(fewUnits, count - begin));
    return columns;
}

/// How many of the units are left when those that make `over` columns too many go from the end.
Q_NEVER_INLINE qsizetype withoutLast(const char16_t *units, qsizetype count, qsizetype over)
{
    // No unit takes more than two columns, so at least half as many units as there are columns too many go.
    while (over >= 16) {
        const qsizetype sure = over / 2;
        count -= sure;
        over -= columnsOfMany(units + count, sure);
    }
    while (over > 0)
        over -= columnsOfUnit(units[--count]);
    return count;
}

/// Code units of the longest beginning of the text that takes no more than `columns` columns.
///
/// A low surrogate takes no column, so the cut never falls before one: pairs stay whole.
qsizetype unitsWithin(QStringView text, qsizetype columns)
{
    if (columns < 0)
        return 0;
    const char16_t *const units = text.utf16();
    // As many units as columns fit where all are narrow.
    qsizetype count = std::min(columns, text.size());
    qsizetype over = (count <= fewUnits ? columnsOfFew(units, count) : columnsOfMany(units, count)) - columns;
    if (over > 0)
        return withoutLast(units, count, over);
    while (count < text.size() && (over += columnsOfUnit(units[count])) <= 0)
        ++count;
    return count;
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
    QString result = text.left(unitsWithin(text, columns));
    checkIn(text, u""_s); // for its message; last, because the text may be checkMessage itself
    return result;
}

QString AppRuntime::fitToWidth(const QString &text, int columns)
{
    // Cut by columns, but padded by characters: programs count on both.
    const qsizetype kept = unitsWithin(text, columns);
    const qsizetype size = std::max<qsizetype>(kept, columns);
    QString result(size, Qt::Uninitialized);
    QChar *const begin = result.data();
    std::fill(copyUnits(QStringView(text).first(kept), begin), begin + size, QChar(u' '));
    checkIn(text, u""_s); // for its message; last, because the text may be checkMessage itself
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
    checkIn(text, u""_s); // for its message; last, because the text may be checkMessage itself
    return result;
}
