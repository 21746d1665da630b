// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

#include <clocale>
#include <cwchar>
#include <string>

#ifdef BENCH_WITH_ICU
#include <unicode/uchar.h>
#endif

using namespace Qt::StringLiterals;

// The argument is the length of the text in code units: entry fields have 10 to 60, print lines some 130.

namespace
{

/// A line of a delivery note, over and over: kanji, kana of both widths, digits.
QString mixedText(qsizetype units)
{
    const QString line
        = u"2024年01月05日 株式会社ﾔﾏﾀﾞ商店 御中 No.000123 品名：ボールペン(黒) 数量 12本 単価 ¥108 "_s;
    return line.repeated(units / line.size() + 1).left(units);
}

/// The same with a kanji outside the basic plane in each hundred units.
QString surrogateText(qsizetype units)
{
    QString text = mixedText(units);
    for (qsizetype place = 50; place + 1 < units; place += 100)
        text.replace(place, 2, u"𠮷"_s);
    return text;
}

void count(benchmark::State &state, const QString &text)
{
    state.SetItemsProcessed(state.iterations() * text.size());
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}

void lengths(benchmark::internal::Benchmark *benchmark)
{
    for (const int units : {10, 20, 40, 60, 130, 4000})
        benchmark->Arg(units);
}

void displayWidth(benchmark::State &state)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString text = mixedText(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.displayWidth(text));
    count(state, text);
}
BENCHMARK(displayWidth)->Apply(lengths);

void displayWidthWithSurrogates(benchmark::State &state)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString text = surrogateText(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.displayWidth(text));
    count(state, text);
}
BENCHMARK(displayWidthWithSurrogates)->Apply(lengths);

[[gnu::noinline]] int sumOf(const QString &text)
{
    int columns = 0;
    for (const QChar unit : text) {
        const char16_t c = unit.unicode();
        columns += (c < 0x80 || (c >= 0xff66 && c <= 0xff9f)) ? 1 : 2;
    }
    return columns;
}

void plainSum(benchmark::State &state)
{
    const QString text = mixedText(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(sumOf(text));
    count(state, text);
}
BENCHMARK(plainSum)->Apply(lengths);

#if __has_include(<unistd.h>)
void wideCharacterWidth(benchmark::State &state)
{
    // Without a locale that knows the characters the answer is -1, at once.
    if (std::setlocale(LC_CTYPE, "ja_JP.UTF-8") == nullptr && std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr)
        state.SkipWithError("no UTF-8 locale");
    const QString text = mixedText(state.range(0));
    const std::wstring wide = text.toStdWString();
    if (wcswidth(wide.data(), wide.size()) <= 0)
        state.SkipWithError("not printable here");
    for (auto _ : state)
        benchmark::DoNotOptimize(wcswidth(wide.data(), wide.size()));
    count(state, text);
}
BENCHMARK(wideCharacterWidth)->Apply(lengths);
#endif

#ifdef BENCH_WITH_ICU
void eastAsianWidth(benchmark::State &state)
{
    const QString text = mixedText(state.range(0));
    for (auto _ : state) {
        int columns = 0;
        for (const QChar unit : text) {
            const int width = u_getIntPropertyValue(unit.unicode(), UCHAR_EAST_ASIAN_WIDTH);
            columns += width == U_EA_FULLWIDTH || width == U_EA_WIDE || width == U_EA_AMBIGUOUS ? 2 : 1;
        }
        benchmark::DoNotOptimize(columns);
    }
    count(state, text);
}
BENCHMARK(eastAsianWidth)->Apply(lengths);
#endif

void unitsForWidth(benchmark::State &state)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString text = mixedText(state.range(0));
    const int columns = runtime.displayWidth(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.unitsForWidth(text, columns));
    count(state, text);
}
BENCHMARK(unitsForWidth)->Apply(lengths);

} // namespace
