// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString asciiText = u"Yamada Trading Co., Ltd."_s;
const QString japaneseText = u"山田商事株式会社 東京支店"_s;

void fitToWidth(benchmark::State &state, const QString &text, int columns)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.fitToWidth(text, columns).constData());
}

void leftJustified(benchmark::State &state, const QString &text, int width)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(text.leftJustified(width, u' ', /*truncate=*/true).constData());
}

BENCHMARK_CAPTURE(fitToWidth, asciiCut, asciiText, 20);
BENCHMARK_CAPTURE(leftJustified, asciiCut, asciiText, 20);
BENCHMARK_CAPTURE(fitToWidth, asciiPadded, asciiText, 40);
BENCHMARK_CAPTURE(leftJustified, asciiPadded, asciiText, 40);
BENCHMARK_CAPTURE(fitToWidth, japaneseCut, japaneseText, 20);
BENCHMARK_CAPTURE(leftJustified, japaneseCut, japaneseText, 10);
BENCHMARK_CAPTURE(fitToWidth, japanesePadded, japaneseText, 40);
BENCHMARK_CAPTURE(leftJustified, japanesePadded, japaneseText, 40);

// Linear: a text a hundred times as long.
void fitLongToWidth(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QString text = asciiText.repeated(int(state.range(0)));
    const int columns = int(text.size()) - 4;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.fitToWidth(text, columns).constData());
}
BENCHMARK(fitLongToWidth)->Arg(1)->Arg(100);

void leftJustifyLong(benchmark::State &state)
{
    const QString text = asciiText.repeated(int(state.range(0)));
    const qsizetype width = text.size() - 4;
    for (auto _ : state)
        benchmark::DoNotOptimize(text.leftJustified(width, u' ', /*truncate=*/true).constData());
}
BENCHMARK(leftJustifyLong)->Arg(1)->Arg(100);

void normaliseNumber(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QString text = u"-007.500"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.normaliseNumber(text).constData());
}
BENCHMARK(normaliseNumber);

void numberThroughDouble(benchmark::State &state)
{
    const QString text = u"-007.500"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(QString::number(text.toDouble()).constData());
}
BENCHMARK(numberThroughDouble);

} // namespace
