// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <runtime/files/listfiller.h>

using namespace appruntime_internal;

QStringList AppRuntime::splitByChar(const QString &text, QChar separator) const
{
    return text.split(separator, Qt::KeepEmptyParts, Qt::CaseSensitive);
}

void AppRuntime::splitByCharInto(QStringList &list, const QString &text, QChar separator) const
{
    ListFiller filler(list, text);
    const QStringView whole = filler.text();
    qsizetype start = 0;
    for (qsizetype end = whole.indexOf(separator); end >= 0; end = whole.indexOf(separator, start)) {
        filler.add(whole.sliced(start, end - start));
        start = end + 1;
    }
    filler.add(whole.sliced(start));
    filler.finish();
}

void AppRuntime::splitQuotedList(QStringList &list, const QString &text) const
{
    ListFiller filler(list, text);
    const QStringView whole = filler.text();
    bool inQuotes = false;
    const QChar *start = whole.begin();
    for (const QChar *next = start; next != whole.end(); ++next) {
        if (*next == u'\'') {
            inQuotes = !inQuotes;
        } else if (*next == u',' && !inQuotes) {
            filler.add(QStringView(start, next));
            start = next + 1;
        }
    }
    filler.add(QStringView(start, whole.end()));
    filler.finish();
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
            // A quote or a comma is part of the key: only a value can be quoted.
            if (character == u'=') {
                keys += whole.sliced(start, position - start);
                state = State::Value;
            }
            break;
        case State::Value:
            if (character == u',') {
                start = position; // the comma comes along with the key behind it
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
