// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QString withoutTrailing(QString text)
{
    while (!text.isEmpty() && text.back() <= u' ')
        text.chop(1);
    return text;
}

QString someKind(Fuzz::Input &input)
{
    const QStringList kinds{u"CSV"_s, u"csv"_s, u"MYCSV"_s, u"TSV"_s, QString(), u"CSV2"_s};
    const int choice = input.between(0, 7);
    return choice < kinds.size() ? kinds[choice] : input.text();
}

/// The fields of a line, read rule by rule where the runtime does it in one walk.
QStringList readSlowly(const QString &line, bool commas)
{
    QStringList fields;
    if (!commas) {
        for (const QString &part : line.split(u'\t'))
            fields += withoutTrailing(part);
        return fields;
    }
    QStringList raw{QString()};
    for (const QString &part : line.split(u',')) {
        const bool quoted = raw.last().count(u'"') % 2 != 0;
        if (quoted)
            raw.last() += u',' + part;
        else
            raw += part;
    }
    raw.removeFirst();
    for (QString &field : raw) {
        field = field.trimmed();
        if (field.size() >= 2 && field.startsWith(u'"') && field.endsWith(u'"'))
            field = field.sliced(1, field.size() - 2);
        fields += withoutTrailing(field.replace(u"\"\""_s, u"\""_s));
    }
    return fields;
}

/// What a value is after it has been written into a line and read from it.
QStringList readBack(QString value, bool commas)
{
    value.replace(u'\r', u'?').replace(u'\n', u'?');
    if (!commas)
        return readSlowly(value, false);
    const bool enclosed = value.contains(u',') || value.contains(u'"');
    return {withoutTrailing(enclosed ? value : value.trimmed())};
}

void splitting(AppRuntime &runtime, Fuzz::Input &input, const QString &kind, bool commas)
{
    const QString line = input.text();
    const QStringList expected = readSlowly(line, commas);

    QStringList fields;
    runtime.splitRecord(fields, line, kind);
    Fuzz::requireEqual(fields, expected, "a line splits as its rules say, one after the other");

    QStringList used = input.texts(4);
    const QStringList others = used;
    if (input.flag())
        used.detach();
    runtime.splitRecord(used, line, kind);
    Fuzz::requireEqual(used, expected, "what the list held before does not show");

    QStringList own = others;
    own.append(line);
    const QStringList copy = own;
    runtime.splitRecord(own, own.last(), kind);
    Fuzz::requireEqual(own, expected, "the line may be an element of the list it is split into");
    Fuzz::requireEqual(copy, others + QStringList(line), "a copy of the list stays what it was");
}

void building(AppRuntime &runtime, Fuzz::Input &input, const QString &kind, bool commas)
{
    CsvRecord record;
    QStringList written, expected;
    for (const QString &value : input.texts(6)) {
        const QString field = runtime.csvField(record, value, kind);
        Fuzz::require(!field.contains(u'\r') && !field.contains(u'\n'), "a field never breaks the line");
        written += field;
        expected += readBack(value, commas);
    }
    Fuzz::requireEqual(record.separator, commas ? u","_s : u"\t"_s, "the separator is that of the kind");

    QStringList fields;
    runtime.splitRecord(fields, written.join(record.separator), kind);
    Fuzz::requireEqual(fields, expected, "what was written is read back");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QString kind = someKind(input);
    const bool commas = kind.toUpper().endsWith("CSV"_L1);
    Fuzz::requireEqual(runtime.isCsvKind(kind), commas, "a kind is told by its end");
    splitting(runtime, input, kind, commas);
    building(runtime, input, kind, commas);
    return 0;
}
