// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QByteArray>
#include <QFile>
#include <QTextStream>

#include <benchmark/benchmark.h>

#ifdef BENCH_WITH_LIBCSV
#include <csv.h>
#endif

using namespace Qt::StringLiterals;

namespace
{

/// Records of the shape of the national postal code table: 15 fields, kana, padded and quoted ones.
QStringList postalLines()
{
    static const QStringList kana
        = {u"ｲｶﾆｹｲｻｲｶﾞﾅｲﾊﾞｱｲ"_s, u"ｱｻﾋｶﾞｵｶ"_s, u"ｵｵﾄﾞｵﾘﾋｶﾞｼ"_s, u"ｷﾀ1ｼﾞｮｳﾆｼ(1-19ﾁｮｳﾒ)"_s, u"ﾏﾙﾉｳﾁ"_s};
    static const QStringList kanji
        = {u"以下に掲載がない場合"_s, u"旭ケ丘"_s, u"大通東"_s, u"北一条西（１～１９丁目）"_s, u"丸の内"_s};
    QStringList lines;
    for (int i = 0; i < 1000; ++i) {
        lines.append(u"%1,\"%2  \",\"%3\",\"ﾎｯｶｲﾄﾞｳ\",\"ｻｯﾎﾟﾛｼﾁｭｳｵｳｸ\",\"%4\",\"北海道\","
                     "\"札幌市中央区\",\"%5\",0,0,%6,0,0,0"_s.arg(1101 + i, 5, 10, QChar(u'0'))
                         .arg(i % 1000, 3, 10, QChar(u'0'))
                         .arg(600000 + i, 7, 10, QChar(u'0'))
                         .arg(kana[i % 5], kanji[i % 5])
                         .arg(i % 2));
    }
    return lines;
}

/// The lines of the file that POSTAL_TABLE names (UTF-8), or else lines of that shape.
const QStringList &lines()
{
    static const QStringList all = [] {
        QFile file(qEnvironmentVariable("POSTAL_TABLE"));
        if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
            return postalLines();
        QTextStream stream(&file);
        QStringList read;
        for (QString line; stream.readLineInto(&line);)
            read.append(line);
        return read;
    }();
    return all;
}

const QStringList &linesOfTabs()
{
    static const QStringList all = [] {
        QStringList replaced = lines();
        replaced.replaceInStrings(u","_s, u"\t"_s);
        return replaced;
    }();
    return all;
}

const AppRuntime &runtime()
{
    static const AppRuntime one(u"BENCH"_s);
    return one;
}

void countLines(benchmark::State &state, const QStringList &split)
{
    qsizetype units = 0;
    for (const QString &line : split)
        units += line.size();
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * split.size()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * units * qsizetype(sizeof(QChar))));
}

void splitRecords(benchmark::State &state, const QStringList &records, const QString &kind)
{
    QStringList fields;
    for (auto _ : state) {
        for (const QString &line : records) {
            runtime().splitRecord(fields, line, kind);
            benchmark::DoNotOptimize(fields.constData());
        }
    }
    countLines(state, records);
}

void splitAt(benchmark::State &state, const QStringList &records, QChar separator)
{
    QStringList fields;
    for (auto _ : state) {
        for (const QString &line : records) {
            fields = line.split(separator);
            benchmark::DoNotOptimize(fields.constData());
        }
    }
    countLines(state, records);
}

void splitRecord(benchmark::State &state)
{
    splitRecords(state, lines(), u"CSV"_s);
}
BENCHMARK(splitRecord);

void splitAtCommas(benchmark::State &state)
{
    splitAt(state, lines(), u',');
}
BENCHMARK(splitAtCommas);

#ifdef BENCH_WITH_LIBCSV
void splitWithLibcsv(benchmark::State &state)
{
    QList<QByteArray> encoded;
    for (const QString &line : lines())
        encoded.append(line.toUtf8() + '\n');

    csv_parser parser;
    csv_init(&parser, 0);
    QStringList fields;
    const auto addField = [](void *bytes, size_t size, void *list) {
        static_cast<QStringList *>(list)->append(
            QString::fromUtf8(static_cast<const char *>(bytes), static_cast<qsizetype>(size))
        );
    };
    const auto endRecord = [](int, void *list) {
        benchmark::DoNotOptimize(static_cast<QStringList *>(list)->constData());
    };
    for (auto _ : state) {
        for (const QByteArray &line : encoded) {
            fields.clear();
            csv_parse(
                &parser, line.constData(), static_cast<size_t>(line.size()), addField, endRecord, &fields
            );
        }
    }
    csv_free(&parser);
    countLines(state, lines());
}
BENCHMARK(splitWithLibcsv);
#endif

void splitRecordTabs(benchmark::State &state)
{
    splitRecords(state, linesOfTabs(), u"TSV"_s);
}
BENCHMARK(splitRecordTabs);

void splitAtTabs(benchmark::State &state)
{
    splitAt(state, linesOfTabs(), u'\t');
}
BENCHMARK(splitAtTabs);

// One line of so many fields: the time per field must not grow with the line.
void splitRecordLongLine(benchmark::State &state)
{
    const qsizetype count = state.range(0);
    const QString line = QStringList(count, u"\"a \"\"b\"\"\""_s).join(u',');
    const QString kind = u"CSV"_s;
    QStringList fields;
    for (auto _ : state) {
        runtime().splitRecord(fields, line, kind);
        benchmark::DoNotOptimize(fields.constData());
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
}
BENCHMARK(splitRecordLongLine)->RangeMultiplier(100)->Range(10, 100000);

// One field of so many pairs of quotes.
void splitRecordLongField(benchmark::State &state)
{
    const qsizetype count = state.range(0);
    const QString line = u'"' + u"\"\""_s.repeated(count) + u'"';
    const QString kind = u"CSV"_s;
    QStringList fields;
    for (auto _ : state) {
        runtime().splitRecord(fields, line, kind);
        benchmark::DoNotOptimize(fields.constData());
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
}
BENCHMARK(splitRecordLongField)->RangeMultiplier(100)->Range(10, 1000000);

const QString plainValue = u"札幌市中央区"_s, quotedValue = u"北一条西, \"大通\""_s;

void csvField(benchmark::State &state, const QString &value)
{
    const QString kind = u"CSV"_s;
    CsvRecord record;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime().csvField(record, value, kind).constData());
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK_CAPTURE(csvField, plain, plainValue);
BENCHMARK_CAPTURE(csvField, quoted, quotedValue);

void replaceAndQuote(benchmark::State &state, const QString &value)
{
    for (auto _ : state) {
        QString field = value;
        field.replace(u'\r', u'?').replace(u'\n', u'?');
        if (field.contains(u',') || field.contains(u'"'))
            field = u'"' + field.replace(u"\""_s, u"\"\""_s) + u'"';
        benchmark::DoNotOptimize(field.constData());
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK_CAPTURE(replaceAndQuote, plain, plainValue);
BENCHMARK_CAPTURE(replaceAndQuote, quoted, quotedValue);

} // namespace
