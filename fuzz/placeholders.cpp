// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

using Code = std::pair<char16_t, char16_t>;

/// The number sign first: it begins the codes of all the others.
constexpr std::array<Code, 8> codes{
    {{u'#', u'C'},
     {u'"', u'Q'},
     {u'%', u'P'},
     {u'!', u'E'},
     {u'`', u'A'},
     {u'\\', u'Y'},
     {u'$', u'D'},
     {u' ', u'S'}}};

QString codeOf(const Code &code)
{
    return QString(u'#') + QChar(code.second);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();
    const QString text = input.text();

    const QString encoded = runtime.encodePlaceholders(text);
    Fuzz::requireEqual(runtime.decodePlaceholders(encoded), text, "a text comes back from its codes");
    for (const Code &code : codes) {
        if (code.first != u'#')
            Fuzz::require(!encoded.contains(QChar(code.first)), "a coded text is safe");
    }

    QString expected = text;
    for (const Code &code : codes)
        expected.replace(QChar(code.first), codeOf(code));
    Fuzz::requireEqual(encoded, expected, "a text is coded as by one replacement after the other");

    expected = text;
    std::for_each(codes.rbegin(), codes.rend(), [&expected](const Code &code) {
        expected.replace(codeOf(code), QString(QChar(code.first)));
    });
    Fuzz::requireEqual(runtime.decodePlaceholders(text), expected, "and decoded by the same ones backwards");
    return 0;
}
