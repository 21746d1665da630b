// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString command = u"copy \"C:\\data\\order list.txt\" $HOME/out #12 100%"_s;
const QString japanese = u"納品書 No.123 「ボールペン」 ¥108! 数量 #12 値引 5%"_s;
const QString plain = u"ORDER-000123/株式会社山田商店/20240105"_s;
const QString page = command.repeated(100);

QString encodedByReplacing(QString text)
{
    return text.replace(u'#', u"#C"_s)
        .replace(u'"', u"#Q"_s)
        .replace(u'%', u"#P"_s)
        .replace(u'!', u"#E"_s)
        .replace(u'`', u"#A"_s)
        .replace(u'\\', u"#Y"_s)
        .replace(u'$', u"#D"_s)
        .replace(u' ', u"#S"_s);
}

QString decodedByReplacing(QString text)
{
    return text.replace(u"#Q"_s, u"\""_s)
        .replace(u"#P"_s, u"%"_s)
        .replace(u"#E"_s, u"!"_s)
        .replace(u"#A"_s, u"`"_s)
        .replace(u"#Y"_s, u"\\"_s)
        .replace(u"#D"_s, u"$"_s)
        .replace(u"#S"_s, u" "_s)
        .replace(u"#C"_s, u"#"_s);
}

void count(benchmark::State &state, const QString &text)
{
    state.SetItemsProcessed(state.iterations() * text.size());
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}

void encodePlaceholders(benchmark::State &state, const QString &text)
{
    const AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.encodePlaceholders(text));
    count(state, text);
}
BENCHMARK_CAPTURE(encodePlaceholders, command, command);
BENCHMARK_CAPTURE(encodePlaceholders, japanese, japanese);
BENCHMARK_CAPTURE(encodePlaceholders, plain, plain);
BENCHMARK_CAPTURE(encodePlaceholders, page, page);

void eightReplacesEncode(benchmark::State &state, const QString &text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(encodedByReplacing(text));
    count(state, text);
}
BENCHMARK_CAPTURE(eightReplacesEncode, command, command);
BENCHMARK_CAPTURE(eightReplacesEncode, japanese, japanese);
BENCHMARK_CAPTURE(eightReplacesEncode, plain, plain);
BENCHMARK_CAPTURE(eightReplacesEncode, page, page);

void decodePlaceholders(benchmark::State &state, const QString &text)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString encoded = runtime.encodePlaceholders(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.decodePlaceholders(encoded));
    count(state, encoded);
}
BENCHMARK_CAPTURE(decodePlaceholders, command, command);
BENCHMARK_CAPTURE(decodePlaceholders, japanese, japanese);
BENCHMARK_CAPTURE(decodePlaceholders, plain, plain);
BENCHMARK_CAPTURE(decodePlaceholders, page, page);

void eightReplacesDecode(benchmark::State &state, const QString &text)
{
    const QString encoded = encodedByReplacing(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(decodedByReplacing(encoded));
    count(state, encoded);
}
BENCHMARK_CAPTURE(eightReplacesDecode, command, command);
BENCHMARK_CAPTURE(eightReplacesDecode, japanese, japanese);
BENCHMARK_CAPTURE(eightReplacesDecode, plain, plain);
BENCHMARK_CAPTURE(eightReplacesDecode, page, page);

} // namespace
