// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QDateTime>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString stamp = u"20240131235959123"_s;
const QDateTime moment(QDate(2024, 1, 31), QTime(23, 59, 59, 123));

void formatDateTime(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.formatDateTime(stamp, 1).constData());
}
BENCHMARK(formatDateTime);

// The order that leaves a message behind.
void formatDateTimeDayFirst(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    runtime.dateOrder = u"D"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.formatDateTime(stamp, 1).constData());
}
BENCHMARK(formatDateTimeDayFirst);

void dateTimeToString(benchmark::State &state)
{
    const QString pattern = u"yyyy-MM-dd HH:mm:ss.zzz"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(moment.toString(pattern).constData());
}
BENCHMARK(dateTimeToString);

void formatDate(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QString date = stamp.first(8);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.formatDateTime(date, 1).constData());
}
BENCHMARK(formatDate);

void dateToString(benchmark::State &state)
{
    const QString pattern = u"yyyy-MM-dd"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(moment.toString(pattern).constData());
}
BENCHMARK(dateToString);

void previousSecond(benchmark::State &state)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString time = u"120000"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.previousSecond(time).constData());
}
BENCHMARK(previousSecond);

void timeAddSecs(benchmark::State &state)
{
    const QString pattern = u"HHmmss"_s, time = u"120000"_s;
    for (auto _ : state) {
        const QString before = QTime::fromString(time, pattern).addSecs(-1).toString(pattern);
        benchmark::DoNotOptimize(before.constData());
    }
}
BENCHMARK(timeAddSecs);

} // namespace
