// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/files/splitting.h>

#include <optional>

using namespace appruntime_internal;

namespace
{

void addWhole(ListFiller &filler, QStringView part, bool /*mayHavePair*/)
{
    filler.add(part);
}

} // namespace

QStringList AppRuntime::splitByChar(const QString &text, QChar separator) const
{
    return text.split(separator, Qt::KeepEmptyParts, Qt::CaseSensitive);
}

void AppRuntime::splitByCharInto(QStringList &list, const QString &text, QChar separator) const
{
    splitInto(list, text, separator, std::nullopt, addWhole);
}

void AppRuntime::splitQuotedList(QStringList &list, const QString &text) const
{
    splitInto(list, text, u',', u'\'', addWhole);
}

QString AppRuntime::appendToList(QStringList &list, const QString &value) const
{
    list.append(value);
    return list.constLast();
}

void AppRuntime::copyList(QStringList &target, const QStringList &source) const
{
    target = source;
}

void AppRuntime::insertIntoList(QStringList &list, int index, const QString &value) const
{
    const bool inside = index >= 0 && index < list.size();
    list.insert(inside ? index : list.size(), value);
}

QString AppRuntime::assignmentKeys(const QString &text) const
{
    enum class State { Key, Value, QuotedValue };
    const QStringView whole = text;
    QString keys;
    State state = State::Key;
    qsizetype start = 0;
    for (qsizetype position = 0; position < whole.size(); ++position) {
        const QChar character = whole[position];
        switch (state) {
        case State::Key:
            // Quotes and commas are part of the key: only a value can be quoted.
            if (character == u'=') {
                keys += whole.sliced(start, position - start);
                state = State::Value;
            }
            break;
        case State::Value:
            if (character == u',') {
                start = position; // the comma is copied with the next key
                state = State::Key;
            } else if (character == u'\'') {
                state = State::QuotedValue;
            }
            break;
        case State::QuotedValue:
            if (character == u'\'')
                state = State::Value;
            break;
        }
    }
    if (state == State::Key)
        keys += whole.sliced(start);
    return keys;
}
