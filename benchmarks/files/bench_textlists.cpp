// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRegularExpression>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString modes = u",Normal,I,[^IO],L,[a-z],R,[a-z](Reverse),*,Display *,#,Display *[a-z],X,[^{}]"_s;
const QString values = u"'東京都, 千代田区','丸の内',100,'x',NULL,'a,b,c','',12345.67"_s;
const QString assignments = u"NAME='丸の内, 一丁目',CODE=100,COUNT=3,TEXT='a=b',UPDATED=20240401"_s;

const AppRuntime &runtime()
{
    static const AppRuntime one(u"BENCH"_s);
    return one;
}

void splitByCharInto(benchmark::State &state)
{
    QStringList list;
    for (auto _ : state) {
        runtime().splitByCharInto(list, modes, u',');
        benchmark::DoNotOptimize(list.constData());
    }
}
BENCHMARK(splitByCharInto);

void splitByChar(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime().splitByChar(modes, u',').constData());
}
BENCHMARK(splitByChar);

void split(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(modes.split(u',').constData());
}
BENCHMARK(split);

void splitQuotedList(benchmark::State &state)
{
    QStringList list;
    for (auto _ : state) {
        runtime().splitQuotedList(list, values);
        benchmark::DoNotOptimize(list.constData());
    }
}
BENCHMARK(splitQuotedList);

void splitAtOuterCommas(benchmark::State &state)
{
    static const QRegularExpression outerComma(u",(?=(?:[^']*'[^']*')*[^']*$)"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(values.split(outerComma).constData());
}
BENCHMARK(splitAtOuterCommas);

void assignmentKeys(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime().assignmentKeys(assignments).constData());
}
BENCHMARK(assignmentKeys);

void removeValues(benchmark::State &state)
{
    static const QRegularExpression value(u"=(?:'[^']*'|[^,'])*"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(QString(assignments).remove(value).constData());
}
BENCHMARK(removeValues);

} // namespace
