// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <array>
#include <string_view>

// The compilers that can build one function for a processor other than the rest is built for. Not on Windows,
// where GCC does not align what such a function keeps on the stack, and it would crash.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(_WIN32)
#define APPRUNTIME_HAS_VECTOR_PATH
#include <immintrin.h>

#include <bit>
#endif

namespace
{

constexpr char16_t firstHalfKana = 0xff66;  // ｦ
constexpr char16_t lastHalfKana = 0xff9d;   // ﾝ
constexpr char16_t voicedMark = 0xff9e;     // ﾞ
constexpr char16_t semiVoicedMark = 0xff9f; // ﾟ
constexpr char16_t firstPrintable = u'!';   // the blank before it stays
constexpr char16_t lastPrintable = u'~';
constexpr char16_t fullWidthOffset = 0xfee0; // from "!" to U+FF01 "！", and so on to "~"

// The letters U+FF66 to U+FF9D of the block "Halfwidth and Fullwidth Forms", in its order, which is not the
// order of the full-width letters.
constexpr std::u16string_view fullKana
    = u"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン";

// How many of the marks each letter takes: none, the voiced one, or both; the letter with its mark stands
// directly behind the plain one (カガ, ハバパ). The ones of ウ, ワ and ヲ exist too, but elsewhere: these
// take no mark, which programs rely on.
constexpr std::string_view marksTaken = "00000000000000001111111111111110000022222000000000000000";

static_assert(fullKana.size() == lastHalfKana - firstHalfKana + 1 && marksTaken.size() == fullKana.size());

/// Writes the full-width form of the units from `in` to `end`, and returns the end of what it wrote.
char16_t *writeFullWidth(const char16_t *in, const char16_t *end, char16_t *out)
{
    for (; in != end; ++in) {
        if (*in >= firstPrintable && *in <= lastPrintable) {
            *out++ = char16_t(*in + fullWidthOffset);
        } else if (*in >= firstHalfKana && *in <= lastHalfKana) {
            const size_t letter = *in - firstHalfKana;
            int mark = 0;
            if (in + 1 != end && in[1] >= voicedMark && in[1] <= semiVoicedMark)
                mark = in[1] - voicedMark + 1;
            if (mark > marksTaken[letter] - '0')
                mark = 0;
            *out++ = char16_t(fullKana[letter] + mark);
            in += mark > 0;
        } else {
            *out++ = *in;
        }
    }
    return out;
}

#ifdef APPRUNTIME_HAS_VECTOR_PATH

// Half-width kana have no order that arithmetic could follow, and marks shorten the text at places that no
// branch prediction finds. A processor that can look up and squeeze 32 units at once needs a tenth to a
// thirtieth of the time on texts of a line and more. Whoever changes a rule changes both functions: the tests
// take texts of both kinds.

/// Both tables as the processor looks them up: 64 entries of one unit each.
struct alignas(64) Lookup {
    std::array<char16_t, 64> letters{};
    std::array<char16_t, 64> marks{};
};

constexpr Lookup makeLookup()
{
    Lookup tables;
    for (size_t i = 0; i < fullKana.size(); ++i) {
        tables.letters[i] = fullKana[i];
        tables.marks[i] = char16_t(marksTaken[i] - '0');
    }
    return tables;
}

constexpr Lookup lookup = makeLookup();

bool hasVectorPath()
{
    // GCOVR_EXCL_BR_START: one processor has one answer
    return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vbmi2");
    // GCOVR_EXCL_BR_STOP
}

/// A bit for each of the first `count` units; all for 32 and more.
quint32 firstBits(qsizetype count)
{
    return count >= 32 ? ~quint32(0) : (quint32(1) << count) - 1;
}

/// The same as writeFullWidth(), 32 units at a time.
__attribute__((target("avx512bw,avx512vbmi2"))) char16_t *
writeFullWidthVector(const char16_t *in, const char16_t *end, char16_t *out)
{
    const __m512i letters0 = _mm512_load_si512(lookup.letters.data());
    const __m512i letters1 = _mm512_load_si512(lookup.letters.data() + 32);
    const __m512i marks0 = _mm512_load_si512(lookup.marks.data());
    const __m512i marks1 = _mm512_load_si512(lookup.marks.data() + 32);
    const __m512i one = _mm512_set1_epi16(1);
    const __m512i voicedMarks = _mm512_set1_epi16(short(voicedMark));
    const __m512i firstKana = _mm512_set1_epi16(short(firstHalfKana));
    const __m512i kanaCount = _mm512_set1_epi16(short(fullKana.size()));
    const __m512i printable = _mm512_set1_epi16(short(firstPrintable));
    const __m512i printableCount = _mm512_set1_epi16(short(lastPrintable - firstPrintable + 1));
    const __m512i offset = _mm512_set1_epi16(short(fullWidthOffset));

    quint32 carried = 0; // whether the mark at the beginning belongs to the letter before it
    const qsizetype size = end - in;
    for (qsizetype i = 0; i < size; i += 32) {
        // Masks keep the last round within both texts; before it all units can be read and written.
        const bool last = size - i <= 32;
        const quint32 present = last ? firstBits(size - i) : ~quint32(0);
        const __m512i units = last ? _mm512_maskz_loadu_epi16(present, in + i) : _mm512_loadu_si512(in + i);
        const __m512i next
            = last ? _mm512_maskz_loadu_epi16(present >> 1, in + i + 1) : _mm512_loadu_si512(in + i + 1);

        const __m512i letter = _mm512_sub_epi16(units, firstKana);
        const quint32 isKana = _mm512_cmplt_epu16_mask(letter, kanaCount);
        // 0 for the voiced mark, 1 for the semi-voiced one, and more than any letter takes for all else.
        const __m512i mark = _mm512_sub_epi16(next, voicedMarks);
        const __m512i taken = _mm512_maskz_permutex2var_epi16(isKana, marks0, letter, marks1);
        const quint32 merged = _mm512_cmplt_epu16_mask(mark, taken);

        const quint32 isPrintable
            = _mm512_cmplt_epu16_mask(_mm512_sub_epi16(units, printable), printableCount);
        __m512i full = _mm512_mask_add_epi16(units, isPrintable, units, offset);
        full = _mm512_mask_mov_epi16(full, isKana, _mm512_permutex2var_epi16(letters0, letter, letters1));
        full = _mm512_mask_add_epi16(full, merged, full, _mm512_add_epi16(mark, one));

        const quint32 kept = ~(merged << 1 | carried) & present;
        carried = merged >> 31;
        const int count = std::popcount(kept);
        const __m512i squeezed = _mm512_maskz_compress_epi16(kept, full);
        if (last)
            _mm512_mask_storeu_epi16(out, firstBits(count), squeezed);
        else
            _mm512_storeu_si512(out, squeezed);
        out += count;
    }
    return out;
}

#endif

} // namespace

QString AppRuntime::toFullWidth(const QString &text) const
{
    // No letter becomes more than one, so there is room for all.
    QString result(text.size(), Qt::Uninitialized);
    const char16_t *const in = QStringView(text).utf16();
    auto *const out = reinterpret_cast<char16_t *>(result.data());
#ifdef APPRUNTIME_HAS_VECTOR_PATH
    constexpr qsizetype worthIt = 8; // below, setting up takes longer than the work
    // GCOVR_EXCL_BR_START: as in hasVectorPath()
    const auto write = text.size() >= worthIt && hasVectorPath() ? writeFullWidthVector : writeFullWidth;
    // GCOVR_EXCL_BR_STOP
#else
    const auto write = writeFullWidth;
#endif
    result.truncate(write(in, in + text.size(), out) - out);
    return result;
}
