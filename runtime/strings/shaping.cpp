// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/blanks.h>
#include <runtime/strings/casemapping.h>

#include <algorithm>

using namespace appruntime_internal;

namespace
{

/// The text with `after` in front of every code unit and at the end.
QString replaceNothing(const QString &text, const QString &after)
{
    QString result;
    result.reserve(text.size() + (text.size() + 1) * after.size());
    for (const QChar character : text)
        result.append(after).append(character);
    return result.append(after);
}

} // namespace

QString AppRuntime::trimmed(const QString &text) const
{
    return text.trimmed();
}

QString AppRuntime::trimLeft(const QString &text) const
{
    return text.right(withoutLeadingBlanks(text).size()); // not last(): a text that stays is shared
}

QString AppRuntime::trimRight(const QString &text) const
{
    return text.left(withoutTrailingBlanks(text).size());
}

QString AppRuntime::padLeft(const QString &text, int width, QChar fill) const
{
    return text.rightJustified(std::max(width, 0), fill); // Qt subtracts from it, in 32 bits on some systems
}

QString AppRuntime::padLeft(const QString &text, int width) const
{
    return padLeft(text, width, u' ');
}

QString AppRuntime::padRight(const QString &text, int width, QChar fill) const
{
    return text.leftJustified(std::max(width, 0), fill);
}

QString AppRuntime::padRight(const QString &text, int width) const
{
    return padRight(text, width, u' ');
}

QString AppRuntime::toUpper(const QString &text) const
{
    return upperCased(text);
}

QString AppRuntime::toLower(const QString &text) const
{
    return lowerCased(text);
}

QString AppRuntime::replace(const QString &text, QChar before, QChar after) const
{
    return QString(text).replace(before, after);
}

QString AppRuntime::replace(const QString &text, const QString &before, const QString &after) const
{
    // QString::replace() moves the rest of the text once for every thousand hits or so. That is fastest in a
    // short text, and takes seconds in a long one.
    constexpr qsizetype longText = 65'536;
    if (text.size() < longText)
        return QString(text).replace(before, after);

    if (before.isEmpty())
        return replaceNothing(text, after);
    qsizetype hit = text.indexOf(before);
    if (hit < 0)
        return text;
    QString result;
    result.reserve(text.size());
    qsizetype from = 0;
    for (; hit >= 0; hit = text.indexOf(before, from)) {
        result.append(QStringView(text).sliced(from, hit - from)).append(after);
        from = hit + before.size();
    }
    return result.append(QStringView(text).sliced(from));
}
