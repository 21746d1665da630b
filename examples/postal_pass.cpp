// SPDX-License-Identifier: MIT
//
// Takes the national postal code table of Japan (UTF-8, comma-separated, 15 fields, half-width kana in fields
// 3 to 5) through the runtime: every record is read, split, its kana made full-width, and written as
// tab-separated text. Then both files are read once more, side by side, and every field is compared.
//
//     postal_pass ken_all.utf8.csv ken_all.tsv
//
// postal_check.py compares the same two files by other means. Exits with 0 when no field was lost or changed.
#include <runtime/core/appruntime.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <ctime>
#include <utility>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype firstKana = 3, lastKana = 5;

/// Most memory the process has held so far, in KB; 0 where the system does not tell.
long peakMemory()
{
#ifdef Q_OS_UNIX
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
#else
    return 0;
#endif
}

/// What the files hold.
struct Counts {
    qint64 records{0};
    qint64 fields{0};
    qint64 changed{0}; ///< Fields that differ, are missing, or are too many.
};

void convertKana(const AppRuntime &runtime, QStringList &fields)
{
    for (qsizetype i = firstKana; i <= lastKana && i < fields.size(); ++i)
        fields[i] = runtime.toFullWidth(fields[i]);
}

bool convertTable(AppRuntime &runtime, const QString &table, const QString &output, Counts &counts)
{
    TextReadChannel reader(&runtime);
    TextWriteChannel writer(&runtime);
    if (!reader.openRead(table, u"UTF-8"_s) || !writer.openWrite(output, u"OT"_s, u"UTF-8"_s))
        return false;

    const QString csv = u"CSV"_s, tsv = u"TSV"_s;
    CsvRecord record;
    QStringList fields;
    QString line;
    while (reader.readLine() == 0) {
        runtime.splitRecord(fields, reader.line, csv);
        convertKana(runtime, fields);
        line.resize(0);
        for (const QString &field : std::as_const(fields)) {
            line += runtime.csvField(record, field, tsv);
            line += record.separator;
        }
        line.chop(record.separator.size());
        writer.writeLine(line);
        ++counts.records;
        counts.fields += fields.size();
    }
    return true;
}

bool compareTables(AppRuntime &runtime, const QString &table, const QString &output, Counts &counts)
{
    TextReadChannel wanted(&runtime);
    TextReadChannel written(&runtime);
    if (!wanted.openRead(table, u"UTF-8"_s) || !written.openRead(output, u"UTF-8"_s))
        return false;

    const QString csv = u"CSV"_s, tsv = u"TSV"_s;
    QStringList fields, copies;
    while (wanted.readLine() == 0) {
        runtime.splitRecord(fields, wanted.line, csv);
        convertKana(runtime, fields);
        if (written.readLine() == 0)
            runtime.splitRecord(copies, written.line, tsv);
        else
            copies.clear();
        ++counts.records;
        counts.fields += fields.size();
        const qsizetype common = qMin(fields.size(), copies.size());
        counts.changed += qMax(fields.size(), copies.size()) - common;
        for (qsizetype i = 0; i < common; ++i) {
            if (fields[i] != copies[i])
                ++counts.changed;
        }
    }
    while (written.readLine() == 0)
        ++counts.changed;
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"POSTAL"_s, argc, argv);
    if (runtime.count(*runtime.arguments) != 2) {
        std::fputs("postal_pass TABLE OUTPUT\n", stderr);
        return 2;
    }
    const QString table = runtime.elementAt(*runtime.arguments, 0);
    const QString output = runtime.elementAt(*runtime.arguments, 1);

    QElapsedTimer timer;
    timer.start();
    const std::clock_t startClock = std::clock();
    Counts written, compared;
    const bool passed = convertTable(runtime, table, output, written);
    const qint64 passMilliseconds = timer.restart();
    const auto processorMilliseconds
        = static_cast<long long>((std::clock() - startClock) * 1000 / CLOCKS_PER_SEC);
    if (!passed || !compareTables(runtime, table, output, compared)) {
        runtime.writeTrace(runtime.lastError);
        return 2;
    }
    const qint64 compareMilliseconds = timer.elapsed();

    std::printf(
        "%lld records, %lld fields: read, split, converted and written in %lld ms (processor: %lld ms)\n",
        static_cast<long long>(written.records),
        static_cast<long long>(written.fields),
        static_cast<long long>(passMilliseconds),
        processorMilliseconds
    );
    std::printf(
        "%lld fields read back and compared in %lld ms, %lld changed\n",
        static_cast<long long>(compared.fields),
        static_cast<long long>(compareMilliseconds),
        static_cast<long long>(compared.changed)
    );
    std::printf("peak memory %ld KB\n", peakMemory());
    const bool same = written.records == compared.records && compared.changed == 0;
    return same ? 0 : 1;
}
