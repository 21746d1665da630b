// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QDateTime>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString valid = u"20240229143005250"_s;
const QString clamped = u"20231341297599123"_s;

void normalizeDateTime(benchmark::State &state, const QString &text)
{
    const AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.normalizeDateTime(text));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(normalizeDateTime, valid, valid);
BENCHMARK_CAPTURE(normalizeDateTime, clamped, clamped);

// Only asks whether the moment is valid: turning it back into a text is not even counted.
void dateTimeFromString(benchmark::State &state, const QString &text)
{
    const QString format = u"yyyyMMddhhmmsszzz"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(QDateTime::fromString(text, format).isValid());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(dateTimeFromString, valid, valid);
BENCHMARK_CAPTURE(dateTimeFromString, clamped, clamped);

void normalizeDate(benchmark::State &state, const QString &text)
{
    const AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.normalizeDate(text, 0));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(normalizeDate, valid, valid);
BENCHMARK_CAPTURE(normalizeDate, clamped, clamped);

void dateFromString(benchmark::State &state, const QString &text)
{
    const QString format = u"yyyyMMdd"_s, date = text.left(8);
    for (auto _ : state)
        benchmark::DoNotOptimize(QDate::fromString(date, format).isValid());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(dateFromString, valid, valid);
BENCHMARK_CAPTURE(dateFromString, clamped, clamped);

} // namespace
