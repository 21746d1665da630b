// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

#ifdef BENCH_WITH_ICU
#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <memory>
#endif

using namespace Qt::StringLiterals;

namespace
{

// By the length of a field, of a line and of a whole file.
QString repeated(const QString &pattern, const benchmark::State &state)
{
    return pattern.repeated(state.range(0) / pattern.size() + 1).first(state.range(0));
}

QString mixedText(const benchmark::State &state)
{
    return repeated(u"ORDER 12345 ﾔﾏﾀﾞ ﾀﾛｳ 東京都港区 No.17 ｶﾌﾞｼｷｶﾞｲｼｬ テスト 98.5% "_s, state);
}

QString halfKana(const benchmark::State &state)
{
    return repeated(u"ｶﾞｷﾞｸｹｺﾊﾟﾋﾞｱｲｳﾔﾏﾀﾞﾀﾛｳｽｽﾞｷｼﾞﾛｳﾜｶﾊﾞﾔｼﾓﾓｺ"_s, state);
}

QString asciiText(const benchmark::State &state)
{
    return repeated(u"The quick brown fox jumps over the lazy dog, 0123456789 times. "_s, state);
}

void setCounters(benchmark::State &state)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0) * qint64(sizeof(QChar)));
}

template<QString (*text)(const benchmark::State &)> void toFullWidth(benchmark::State &state)
{
    const AppRuntime runtime(u"BENCH"_s);
    const QString half = text(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(runtime.toFullWidth(half).constData());
    setCounters(state);
}

template<QString (*text)(const benchmark::State &)> void normalized(benchmark::State &state)
{
    const QString half = text(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(half.normalized(QString::NormalizationForm_KC).constData());
    setCounters(state);
}

template<QString (*text)(const benchmark::State &)> void copy(benchmark::State &state)
{
    const QString half = text(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(QString(half.constData(), half.size()).constData());
    setCounters(state);
}

#ifdef BENCH_WITH_ICU
template<QString (*text)(const benchmark::State &)> void transliterate(benchmark::State &state)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Transliterator> toFull(
        icu::Transliterator::createInstance("Halfwidth-Fullwidth", UTRANS_FORWARD, status)
    );
    if (U_FAILURE(status)) {
        state.SkipWithError("no such transliterator");
        return;
    }
    const QString half = text(state);
    for (auto _ : state) {
        icu::UnicodeString result(reinterpret_cast<const char16_t *>(half.utf16()), int(half.size()));
        toFull->transliterate(result);
        benchmark::DoNotOptimize(result.getBuffer());
    }
    setCounters(state);
}
#define COMPARE_WITH_ICU(text) BENCHMARK(transliterate<text>)->Arg(20)->Arg(100)->Arg(4'000)
#else
#define COMPARE_WITH_ICU(text) static_assert(true)
#endif

#define COMPARE(text)                                                                                        \
    BENCHMARK(toFullWidth<text>)->Arg(20)->Arg(100)->Arg(4'000);                                             \
    BENCHMARK(copy<text>)->Arg(20)->Arg(100)->Arg(4'000);                                                    \
    BENCHMARK(normalized<text>)->Arg(20)->Arg(100)->Arg(4'000);                                              \
    COMPARE_WITH_ICU(text)

COMPARE(mixedText);
COMPARE(halfKana);
COMPARE(asciiText);

} // namespace
