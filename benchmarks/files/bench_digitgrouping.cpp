// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QLocale>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const AppRuntime &runtime()
{
    static const AppRuntime one(u"BENCH"_s);
    return one;
}

constexpr qlonglong shortAmount = 12800, longAmount = -1234567890123456;
constexpr double decimalAmount = 1234567.89;

void groupThousands(benchmark::State &state, const QString &number)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime().groupThousands(number).constData());
}
BENCHMARK_CAPTURE(groupThousands, short_amount, QString::number(shortAmount));
BENCHMARK_CAPTURE(groupThousands, long_amount, QString::number(longAmount));
BENCHMARK_CAPTURE(groupThousands, decimals, u"1234567.89"_s);

void localeToString(benchmark::State &state, qlonglong number)
{
    const QLocale locale(QLocale::English);
    for (auto _ : state) {
        benchmark::DoNotOptimize(number);
        benchmark::DoNotOptimize(locale.toString(number).constData());
    }
}
BENCHMARK_CAPTURE(localeToString, short_amount, shortAmount);
BENCHMARK_CAPTURE(localeToString, long_amount, longAmount);

void localeToStringDecimals(benchmark::State &state)
{
    const QLocale locale(QLocale::English);
    double number = decimalAmount;
    for (auto _ : state) {
        benchmark::DoNotOptimize(number);
        benchmark::DoNotOptimize(locale.toString(number, 'f', 2).constData());
    }
}
BENCHMARK(localeToStringDecimals);

// The time per digit must not grow with the number.
void groupThousandsOfDigits(benchmark::State &state)
{
    const QString number(state.range(0), u'7');
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime().groupThousands(number).constData());
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * state.range(0)));
}
BENCHMARK(groupThousandsOfDigits)->RangeMultiplier(100)->Range(10, 1000000);

} // namespace
