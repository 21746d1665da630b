// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString whole = u"-1234567"_s;
const QString decimal = u"1234.5678"_s;
const QString bad = u"12a4567"_s;

void toInt(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.toInt(whole));
}
BENCHMARK(toInt);

void qtToInt(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(whole.toInt());
}
BENCHMARK(qtToInt);

// What a program writes that has no such check: the conversion, the rule, and the message for the user.
int plainCheck(const QString &text, int defaultValue, QString &message)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok) {
        message = u"not numeric \"%1\""_s.arg(text);
        return defaultValue;
    }
    if (value < 0)
        message = u"not plus \"%1\""_s.arg(text);
    return value;
}

void validInt(benchmark::State &state, const QString &text)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state) {
        benchmark::DoNotOptimize(runtime.validInt(text, u'+', 0, 1));
        benchmark::DoNotOptimize(runtime.lastError.constData());
    }
}
BENCHMARK_CAPTURE(validInt, passes, u"1234567"_s);
BENCHMARK_CAPTURE(validInt, notNumeric, bad);
BENCHMARK_CAPTURE(validInt, notPlus, whole);

void qtCheck(benchmark::State &state, const QString &text)
{
    QString message;
    for (auto _ : state) {
        benchmark::DoNotOptimize(plainCheck(text, 0, message));
        benchmark::DoNotOptimize(message.constData());
    }
}
BENCHMARK_CAPTURE(qtCheck, passes, u"1234567"_s);
BENCHMARK_CAPTURE(qtCheck, notNumeric, bad);
BENCHMARK_CAPTURE(qtCheck, notPlus, whole);

void validDouble(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.validDouble(decimal, u'+', 0.0, 1));
}
BENCHMARK(validDouble);

void qtToDouble(benchmark::State &state)
{
    for (auto _ : state) {
        bool ok = false;
        benchmark::DoNotOptimize(decimal.toDouble(&ok));
        benchmark::DoNotOptimize(ok);
    }
}
BENCHMARK(qtToDouble);

} // namespace
