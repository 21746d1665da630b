// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/columns.h>

#include <algorithm>
#include <array>
#include <string_view>

using namespace appruntime_internal;

namespace
{

constexpr char16_t voicedMark = 0xff9e;      // ﾞ; the semi-voiced one, ﾟ, is behind it
constexpr char16_t firstPrintable = u'!';    // the blank before it stays
constexpr char16_t lastPrintable = u'~';     // U+007F behind it stays
constexpr char16_t fullWidthOffset = 0xfee0; // from "!" to U+FF01 "！", and so on to "~"

// The letters from U+FF66 on, in Unicode's order of the half-width letters. The full-width letters have
// another order.
constexpr std::u16string_view fullKana
    = u"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン";

// How many of the two marks each letter takes: none, the voiced one, or both. A letter with its mark stands
// directly behind the plain letter (カガ, ハバパ). Unicode has ウ, ワ and ヲ with a mark too, but elsewhere:
// here they take none, and programs rely on it.
constexpr std::string_view marksTaken = "00000000000000001111111111111110000022222000000000000000";

static_assert(fullKana.size() == voicedMark - firstHalfKana && marksTaken.size() == fullKana.size());

struct Form {
    char16_t distance{0}; // from the unit to its full-width form, modulo 65,536
    char16_t marks{0};    // that the unit takes
};

// The units from U+FF66 to U+FFFF, then those from 0 to U+007F: counted from U+FF66, modulo 65,536, they are
// neighbours. The last entry stands for all other units, which stay.
constexpr auto forms = [] {
    std::array<Form, 0x10000 - firstHalfKana + 0x80> table{};
    for (char16_t unit = firstPrintable; unit <= lastPrintable; ++unit)
        table[static_cast<char16_t>(unit - firstHalfKana)].distance = fullWidthOffset;
    for (size_t i = 0; i < fullKana.size(); ++i) {
        const auto distance = static_cast<char16_t>(fullKana[i] - firstHalfKana - i);
        table[i] = {distance, static_cast<char16_t>(marksTaken[i] - '0')};
    }
    return table;
}();

Form formOf(char16_t unit)
{
    return forms[std::min<size_t>(static_cast<char16_t>(unit - firstHalfKana), forms.size() - 1)];
}

} // namespace

QString AppRuntime::toFullWidth(const QString &text) const
{
    // No letter becomes more than one, so there is room for all.
    QString result(text.size(), Qt::Uninitialized);
    QChar *out = result.data();

    // No processor foresees where the marks are, so there is no branch on them: a mark that the letter before
    // it took is written as well, and the next unit is written over it.
    bool isTaken = false;
    const QChar *const end = text.cend();
    for (const QChar *in = text.cbegin(); in != end; ++in) {
        const char16_t unit = in->unicode();
        const Form form = formOf(unit);
        // 0 for the voiced mark, 1 for the semi-voiced one, and more than any letter takes for all else.
        const auto mark = static_cast<char16_t>((in + 1 != end ? in[1].unicode() : u'\0') - voicedMark);
        const bool takesMark = mark < form.marks;
        *out = QChar(static_cast<char16_t>(unit + form.distance + (takesMark ? mark + 1 : 0)));
        out += isTaken ? 0 : 1;
        isTaken = takesMark;
    }
    result.truncate(out - result.constData());
    return result;
}
