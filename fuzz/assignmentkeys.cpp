// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

namespace
{

/// The keys, one pair at a time: a value is what a quoted list takes for its first part.
QString readSlowly(const AppRuntime &runtime, QString text)
{
    QString keys;
    for (;;) {
        const qsizetype assignment = text.indexOf(u'=');
        if (assignment < 0)
            return keys + text;
        keys += text.first(assignment);
        text.remove(0, assignment + 1);
        QStringList values;
        runtime.splitQuotedList(values, text);
        if (values.size() == 1)
            return keys;
        text.remove(0, values.first().size()); // the comma stays, in front of the next key
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QString text = input.text();
    const QString keys = runtime.assignmentKeys(text);
    Fuzz::requireEqual(keys, readSlowly(runtime, text), "every key and no value is left");
    Fuzz::require(!keys.contains(u'='), "no assignment is left");

    // A list that was built of keys and values gives its keys back.
    QStringList wanted, pairs;
    do {
        const QString key = input.text().remove(u'=');
        QString value = input.text().remove(u'\'');
        if (input.flag())
            value = u'\'' + value + u'\'';
        else
            value.remove(u',');
        wanted += key;
        pairs += key + u'=' + value;
    } while (!input.atEnd() && wanted.size() < 6);
    Fuzz::requireEqual(runtime.assignmentKeys(pairs.join(u',')), wanted.join(u','), "the keys come back");
    return 0;
}
