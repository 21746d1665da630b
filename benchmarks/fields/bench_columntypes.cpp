// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

const QString typeNames[] = {u"VARCHAR"_s, u"DATE"_s, u"BLOB"_s};

void columnTypeMode(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const QString name = typeNames[state.range(0)];
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.columnTypeMode(name));
}
BENCHMARK(columnTypeMode)->DenseRange(0, 2);

/// The same with a list a line and the message for the last one that did not fit.
void containsAndArg(benchmark::State &state)
{
    const QString name = typeNames[state.range(0)];
    const std::pair<QStringList, QString> lines[] = {
        {{u"CHAR"_s, u"VARCHAR"_s, u"VARCHAR2"_s}, u" "_s},
        {{u"NCHAR"_s, u"NVARCHAR"_s, u"NVARCHAR2"_s, u"MCHAR"_s, u"MVARCHAR"_s}, u"/"_s},
        {{u"DECIMAL"_s, u"INT"_s}, u"-"_s},
        {{u"FLOAT"_s, u"DOUBLE"_s}, u"F"_s},
        {{u"DATETIME"_s, u"TIMESTAMP"_s, u"DATE"_s}, u"E"_s},
    };
    QString message;
    for (auto _ : state) {
        QString mode = u" "_s;
        const QStringList *failed = nullptr;
        for (const auto &[names, itsMode] : lines) {
            if (names.contains(name)) {
                mode = itsMode;
                break;
            }
            failed = &names;
        }
        if (failed)
            message = u"\"%1\" not in('%2')"_s.arg(name, failed->join(u"','"_s));
        benchmark::DoNotOptimize(mode);
        benchmark::DoNotOptimize(message.constData());
    }
}
BENCHMARK(containsAndArg)->DenseRange(0, 2);

const std::pair<QString, QString> texts[] = {
    {u"ORDER-10023"_s, u"ORDER-10023   "_s},
    {u"ORDER-10023"_s, u"ORDER-10024"_s},
    {u"株式会社　東京商事　　"_s, u"株式会社　大阪商事"_s},
};

void compareTypedTexts(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const auto &[left, right] = texts[state.range(0)];
    QString relation;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.compareTyped(relation, left, u' ', 1, 1, 0, right));
}
BENCHMARK(compareTypedTexts)->DenseRange(0, 2);

QStringView withoutBlanksBehind(QStringView text)
{
    while (!text.isEmpty() && text.back() <= u' ')
        text.chop(1);
    return text;
}

void compareAndArg(benchmark::State &state)
{
    const auto &[left, right] = texts[state.range(0)];
    QString relation, message;
    for (auto _ : state) {
        const QString a = withoutBlanksBehind(left).toString(), b = withoutBlanksBehind(right).toString();
        const int order = a.compare(b);
        relation = order == 0 ? u"="_s : order > 0 ? u">"_s : u"<"_s;
        if (order != 0)
            message = u"\"%1\" not in('%2')"_s.arg(a, b);
        benchmark::DoNotOptimize(relation);
        benchmark::DoNotOptimize(message.constData());
    }
}
BENCHMARK(compareAndArg)->DenseRange(0, 2);

const std::pair<QString, QString> numbers[] = {{u"10"_s, u"9"_s}, {u"-1980.55"_s, u"1980.5"_s}};

void compareTypedNumbers(benchmark::State &state)
{
    AppRuntime runtime(u"BENCH"_s);
    const auto &[left, right] = numbers[state.range(0)];
    QString relation;
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.compareTyped(relation, left, u'-', 1, 1, 0, right));
}
BENCHMARK(compareTypedNumbers)->DenseRange(0, 1);

void toDoubleAndCompare(benchmark::State &state)
{
    const auto &[left, right] = numbers[state.range(0)];
    QString relation;
    for (auto _ : state) {
        bool leftOk = false, rightOk = false;
        const double a = left.toDouble(&leftOk), b = right.toDouble(&rightOk);
        relation = !leftOk || !rightOk ? u"?"_s : a == b ? u"="_s : a > b ? u">"_s : u"<"_s;
        benchmark::DoNotOptimize(relation);
    }
}
BENCHMARK(toDoubleAndCompare)->DenseRange(0, 1);

} // namespace
