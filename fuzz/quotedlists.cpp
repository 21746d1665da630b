// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

namespace
{

void quotedLists(AppRuntime &runtime, const QString &text, const QStringList &before)
{
    QStringList parts = before;
    runtime.splitQuotedList(parts, text);

    // Nothing is lost or added, and commas separate where the quotes before them are even in number: no other
    // list of parts is like that.
    Fuzz::requireEqual(parts.join(u','), text, "the parts and their commas are the text");
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString &part = parts[i];
        if (i + 1 < parts.size())
            Fuzz::requireEqual(part.count(u'\'') % 2, 0, "a part that ends has closed its quotes");
        for (qsizetype comma = part.indexOf(u','); comma >= 0; comma = part.indexOf(u',', comma + 1))
            Fuzz::requireEqual(part.first(comma).count(u'\'') % 2, 1, "a comma within a part is quoted");
    }

    QStringList own = before;
    own.append(text);
    runtime.splitQuotedList(own, own.last());
    Fuzz::requireEqual(own, parts, "the text may be an element of the list");
}

void plainLists(AppRuntime &runtime, const QString &text, QChar separator, const QStringList &before)
{
    const QStringList parts = runtime.splitByChar(text, separator);
    Fuzz::requireEqual(parts.join(separator), text, "the parts and their separators are the text");
    for (const QString &part : parts)
        Fuzz::require(!part.contains(separator), "no part holds the separator");

    QStringList filled = before;
    filled.detach();
    runtime.splitByCharInto(filled, text, separator);
    Fuzz::requireEqual(filled, parts, "both ways of splitting agree");
}

void editing(AppRuntime &runtime, Fuzz::Input &input, const QStringList &before)
{
    QStringList list = before, expected = before;
    for (int steps = input.between(0, 8); steps > 0; --steps) {
        const int index = input.position();
        const QString value = input.text();
        switch (input.between(0, 3)) {
        case 0:
            Fuzz::requireEqual(runtime.appendToList(list, value), value, "what was appended is returned");
            expected.append(value);
            break;
        case 1:
            runtime.insertIntoList(list, index, value);
            expected.insert(index < 0 || index > expected.size() ? expected.size() : index, value);
            break;
        case 2:
            runtime.setElement(list, index, value);
            if (index >= 0 && index < expected.size())
                expected[index] = value;
            break;
        default:
            const bool there = index >= 0 && index < expected.size();
            Fuzz::requireEqual(
                runtime.elementAt(list, index), there ? expected[index] : QString(), "the element is read"
            );
        }
    }
    Fuzz::requireEqual(list, expected, "a list is changed where it was asked to be");
    QStringList copy = before;
    runtime.copyList(copy, list);
    Fuzz::requireEqual(copy, expected, "a copy equals its source");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QString text = input.text();
    const QChar separator = input.character();
    const QStringList before = input.texts(4);
    quotedLists(runtime, text, before);
    plainLists(runtime, text, separator, before);
    editing(runtime, input, before);
    return 0;
}
