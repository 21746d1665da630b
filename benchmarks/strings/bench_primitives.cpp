// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRegularExpression>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

const QString line = u"2024-01-02 受注番号 ABC ﾃｽﾄ 漢字, カナ / "_s.repeated(50);
const QString padded = QString(40, u' ') + line + QString(40, u' ');
const QString separators = u";|!"_s;
const QString manySeparators = u";|!#$%&'()*+:<=>?@[]^_`{}~\"\\"_s;

template<typename Call> void measure(benchmark::State &state, const Call &call)
{
    for (auto _ : state) {
        auto result = call();
        benchmark::DoNotOptimize(result);
    }
}

AppRuntime &runtime()
{
    static AppRuntime one(u"BENCH"_s);
    return one;
}

void indexOfAny(benchmark::State &state, const QString &chars)
{
    measure(state, [&chars] { return runtime().indexOfAny(line, chars, 0); });
}
BENCHMARK_CAPTURE(indexOfAny, three, separators);
BENCHMARK_CAPTURE(indexOfAny, many, manySeparators);

void regularExpression(benchmark::State &state, const QString &chars)
{
    const QRegularExpression any(u'[' + QRegularExpression::escape(chars) + u']');
    measure(state, [&any] { return line.indexOf(any); });
}
BENCHMARK_CAPTURE(regularExpression, three, separators);
BENCHMARK_CAPTURE(regularExpression, many, manySeparators);

void trimLeft(benchmark::State &state)
{
    measure(state, [] { return runtime().trimLeft(padded); });
}
BENCHMARK(trimLeft);

void trimRight(benchmark::State &state)
{
    measure(state, [] { return runtime().trimRight(padded); });
}
BENCHMARK(trimRight);

void qtTrimmed(benchmark::State &state)
{
    measure(state, [] { return padded.trimmed(); });
}
BENCHMARK(qtTrimmed);

void zeroPadded(benchmark::State &state)
{
    measure(state, [] { return runtime().zeroPadded(4711, 8); });
}
BENCHMARK(zeroPadded);

void qtArgPadded(benchmark::State &state)
{
    measure(state, [] { return u"%1"_s.arg(4711, 8, 10, QChar(u'0')); });
}
BENCHMARK(qtArgPadded);

void replaceText(benchmark::State &state)
{
    const QString text = u"ab"_s.repeated(state.range(0) / 2);
    measure(state, [&text] { return runtime().replace(text, u"a"_s, u"xyz"_s); });
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(replaceText)->Arg(16)->Arg(1000)->Arg(1000000)->Arg(4000000);

void qtReplaceText(benchmark::State &state)
{
    const QString text = u"ab"_s.repeated(state.range(0) / 2);
    measure(state, [&text] { return QString(text).replace(u"a"_s, u"xyz"_s); });
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(qtReplaceText)->Arg(16)->Arg(1000)->Arg(1000000)->Arg(4000000);

void charClasses(benchmark::State &state)
{
    measure(state, [] {
        int columns = 0;
        for (const QChar character : line)
            columns += runtime().charDisplayWidth(character);
        return columns;
    });
    state.SetItemsProcessed(state.iterations() * line.size());
}
BENCHMARK(charClasses);

} // namespace
