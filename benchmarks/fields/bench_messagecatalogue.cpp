// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{

QString keyOf(qsizetype number)
{
    return u"MSG_%1"_s.arg(number, 6, 10, QChar(u'0'));
}

/// Keys of one shape, as catalogues have them.
QStringList keys(qsizetype count)
{
    QStringList list;
    for (qsizetype i = 0; i < count; ++i)
        list.append(keyOf(i));
    return list;
}

/// Keys as people name them.
QStringList words(qsizetype count)
{
    const QStringList names = {u"save"_s, u"load"_s, u"printer"_s, u"order"_s, u"customer"_s, u"在庫"_s};
    QStringList list;
    for (qsizetype i = 0; i < count; ++i)
        list.append(names[i % names.size()] + QString::number(i));
    return list;
}

void indexOfValueLast(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QStringList list = keys(state.range(0));
    const QString value = keyOf(state.range(0) - 1);
    for (auto _ : state) {
        benchmark::DoNotOptimize(runtime.indexOfValue(list, value));
        benchmark::DoNotOptimize(runtime.checkMessage.constData());
    }
    state.SetItemsProcessed(state.iterations() * list.size());
}
BENCHMARK(indexOfValueLast)->Arg(1)->Arg(2)->Arg(4)->Arg(8)->Arg(16)->Arg(100)->Arg(100'000);

void indexOfLast(benchmark::State &state)
{
    const QStringList list = keys(state.range(0));
    const QString value = keyOf(state.range(0) - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(list.indexOf(value));
    state.SetItemsProcessed(state.iterations() * list.size());
}
BENCHMARK(indexOfLast)->Arg(1)->Arg(2)->Arg(4)->Arg(8)->Arg(16)->Arg(100)->Arg(100'000);

void indexOfValueMissing(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QStringList list = words(state.range(0));
    const QString value = u"customer 4x"_s;
    for (auto _ : state) {
        benchmark::DoNotOptimize(runtime.indexOfValue(list, value));
        benchmark::DoNotOptimize(runtime.checkMessage.constData());
    }
    state.SetItemsProcessed(state.iterations() * list.size());
}
BENCHMARK(indexOfValueMissing)->Arg(8)->Arg(100)->Arg(100'000);

void indexOfMissing(benchmark::State &state)
{
    const QStringList list = words(state.range(0));
    const QString value = u"customer 4x"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(list.indexOf(value));
    state.SetItemsProcessed(state.iterations() * list.size());
}
BENCHMARK(indexOfMissing)->Arg(8)->Arg(100)->Arg(100'000);

void messageText(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    *runtime.messageKeys = keys(state.range(0));
    *runtime.messageTexts = QStringList(state.range(0), u"Ethe file cannot be opened"_s);
    const QString key = keyOf(state.range(0) / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.messageText(key));
}
BENCHMARK(messageText)->Arg(100)->Arg(1000);

void indexOfAndMid(benchmark::State &state)
{
    const QStringList list = keys(state.range(0));
    const QStringList texts = QStringList(state.range(0), u"Ethe file cannot be opened"_s);
    const QString key = keyOf(state.range(0) / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(texts.value(list.indexOf(key)).mid(1));
}
BENCHMARK(indexOfAndMid)->Arg(100)->Arg(1000);

} // namespace
