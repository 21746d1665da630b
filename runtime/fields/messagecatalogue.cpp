// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// Index of the first element at or after `first` that equals the value; the size of the list when there is
/// none.
qsizetype indexOfEqual(const QStringList &list, const QString &value, qsizetype first)
{
    const auto isValue = [&value](const QString &element) {
        // Keys of a catalogue are of one length and begin alike, so their ends are compared first. In short
        // lists that saves as much time as the message takes.
        return element.size() == value.size() && (value.isEmpty() || element.back() == value.back())
            && element == value;
    };
    return std::find_if(list.begin() + first, list.end(), isValue) - list.begin();
}

} // namespace

int AppRuntime::indexOfValue(const QStringList &list, const QString &value, int from)
{
    const qsizetype size = list.size();
    const qsizetype first = from < 0 ? std::max<qsizetype>(from + size, 0) : std::min<qsizetype>(from, size);
    const qsizetype found = indexOfEqual(list, value, first);

    // What comparing every element by checkIn() would leave, without a message for each element.
    if (found > first)
        checkIn(list[found - 1], value);
    return found < size ? static_cast<int>(found) : -1;
}

void AppRuntime::setElement(QStringList &list, int index, const QString &text) const
{
    if (index >= 0 && index < list.size())
        list[index] = text;
}

QString AppRuntime::messageText(const QString &key)
{
    const bool marked = key.startsWith(u"MSG_"_s);
    const int index = indexOfValue(*messageKeys, key);
    if (index < 0)
        return QString();
    const QString text = elementAt(*messageTexts, index);
    return marked ? text.mid(1) : text;
}
