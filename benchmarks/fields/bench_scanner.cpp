// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Lines as they come out of files: short fields, longer ones, Japanese ones.
QString lineOf(int kind)
{
    switch (kind) {
    case 0: return u"10023,2024-01-31,ORD,7,12,1980,YEN,A,,0"_s;
    case 1:
        return QStringList(10, u"a description of forty characters, more"_s.replace(u',', u';')).join(u',');
    case 2: return QStringList(10, u"株式会社 東京商事 第二営業部"_s).join(u',');
    default: return QStringList(1000, u"12345678"_s).join(u',');
    }
}

void report(benchmark::State &state, const QString &line)
{
    state.SetBytesProcessed(state.iterations() * line.size() * qsizetype(sizeof(QChar)));
    state.SetItemsProcessed(state.iterations() * (line.count(u',') + 1));
}

void nextTokenOverLine(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QString line = lineOf(static_cast<int>(state.range(0)));
    const QString delimiters = u","_s;
    ScanCursor token;
    for (auto _ : state) {
        ScanCursor cursor;
        QChar delimiter;
        bool more = true;
        while (more) {
            more = runtime.nextToken(token, cursor, delimiter, line, delimiters, /*store=*/true);
            benchmark::DoNotOptimize(token.text.constData());
        }
    }
    report(state, line);
}
BENCHMARK(nextTokenOverLine)->DenseRange(0, 3);

void nextTokenIntoList(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QString line = lineOf(static_cast<int>(state.range(0)));
    const QString delimiters = u","_s;
    ScanCursor token;
    for (auto _ : state) {
        QStringList fields;
        ScanCursor cursor;
        QChar delimiter;
        bool more = true;
        while (more) {
            more = runtime.nextToken(token, cursor, delimiter, line, delimiters, /*store=*/true);
            fields.append(std::move(token.text));
        }
        benchmark::DoNotOptimize(fields.constData());
    }
    report(state, line);
}
BENCHMARK(nextTokenIntoList)->DenseRange(0, 3);

void splitLine(benchmark::State &state)
{
    const QString line = lineOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const QStringList fields = line.split(u',');
        benchmark::DoNotOptimize(fields.constData());
    }
    report(state, line);
}
BENCHMARK(splitLine)->DenseRange(0, 3);

void splitAndTrimLine(benchmark::State &state)
{
    const QString line = lineOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QStringList fields = line.split(u',');
        for (QString &field : fields)
            field = field.trimmed();
        benchmark::DoNotOptimize(fields.constData());
    }
    report(state, line);
}
BENCHMARK(splitAndTrimLine)->DenseRange(0, 3);

void acceptKeywordInText(benchmark::State &state)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString text = u"   order by name"_s + QString(state.range(0), u'x');
    const QString keyword = u"ORDER"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.acceptKeyword(keyword, text));
}
BENCHMARK(acceptKeywordInText)->Arg(0)->Arg(1'000'000);

void startsWithInText(benchmark::State &state)
{
    const QString text = u"   order by name"_s + QString(state.range(0), u'x');
    const QString keyword = u"ORDER"_s;
    for (auto _ : state) {
        const QStringView rest = QStringView(text).trimmed();
        benchmark::DoNotOptimize(rest.startsWith(keyword, Qt::CaseInsensitive));
    }
}
BENCHMARK(startsWithInText)->Arg(0)->Arg(1'000'000);

} // namespace
