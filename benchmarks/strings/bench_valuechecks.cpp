// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString missing = u"TIMESTAMPTZ"_s;
const QString last = u"MVARCHAR"_s;
const QString a = u"NCHAR"_s, b = u"NVARCHAR"_s, c = u"NVARCHAR2"_s, d = u"MCHAR"_s, e = u"MVARCHAR"_s;

void checkInFails(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state) {
        benchmark::DoNotOptimize(runtime.checkIn(missing, a, b, c, d, e));
        benchmark::DoNotOptimize(runtime.checkMessage.constData());
    }
}
BENCHMARK(checkInFails);

void containsAndArgFails(benchmark::State &state)
{
    QString message;
    for (auto _ : state) {
        const QStringList alternatives = {a, b, c, d, e};
        bool found = alternatives.contains(missing);
        if (!found)
            message = u"\"%1\" not in('%2','%3','%4','%5','%6')"_s.arg(missing, a, b, c, d, e);
        benchmark::DoNotOptimize(found);
        benchmark::DoNotOptimize(message.constData());
    }
}
BENCHMARK(containsAndArgFails);

void checkInSucceeds(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.checkIn(last, a, b, c, d, e));
}
BENCHMARK(checkInSucceeds);

void containsSucceeds(benchmark::State &state)
{
    for (auto _ : state) {
        const QStringList alternatives = {a, b, c, d, e};
        benchmark::DoNotOptimize(alternatives.contains(last));
    }
}
BENCHMARK(containsSucceeds);

} // namespace
