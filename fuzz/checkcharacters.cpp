// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

int digitOf(QChar unit)
{
    return unit >= u'0' && unit <= u'9' ? unit.unicode() - u'0' : 0;
}

/// What the digits of a number with its check digit add up to is a multiple of ten.
void modulus10(const AppRuntime &runtime, const QString &code)
{
    const QString check = runtime.mod10CheckDigit(code);
    if (code.isEmpty()) {
        Fuzz::require(check.isEmpty(), "an empty code has no digit");
        return;
    }
    Fuzz::require(check.size() == 1 && check.front() >= u'0' && check.front() <= u'9', "a digit is a digit");
    const QString whole = code + check;
    int sum = 0;
    for (qsizetype i = 0; i < whole.size(); ++i)
        sum = (sum + digitOf(whole[whole.size() - 1 - i]) * (i % 2 == 0 ? 1 : 3)) % 10;
    Fuzz::requireEqual(sum, 0, "with its digit a number is a multiple of ten");
}

void modulus11(const AppRuntime &runtime, const QString &code)
{
    const QString check = runtime.mod11CheckDigit(code);
    Fuzz::require(check.size() == 1, "every code has a digit");
    int sum = 0;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const int low = code[code.size() - 1 - i].unicode() & 15;
        sum = (sum + (low > 9 ? low & 7 : low) * static_cast<int>(i % 6 + 2)) % 11;
    }
    const int whole = (sum + digitOf(check.front())) % 11;
    Fuzz::require(
        whole == 0 || (whole == 1 && check == u"0"), "with its digit a number is a multiple of eleven"
    );
}

void code39(const AppRuntime &runtime, const QString &code)
{
    const QString alphabet = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"_s;
    qsizetype sum = 0;
    for (const QChar unit : code) {
        const qsizetype value = alphabet.indexOf(unit.toUpper());
        if (value < 0) {
            Fuzz::requireEqual(runtime.code39CheckChar(code), QString(), "no bar code, no check character");
            return;
        }
        sum += value;
    }
    Fuzz::requireEqual(
        runtime.code39CheckChar(code), QString(alphabet[sum % 43]), "the check character is the rest of 43"
    );
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const int times = input.flag() ? input.between(1, 64) : 1;
    QString text = input.text().repeated(times);
    modulus10(runtime, text);
    modulus11(runtime, text);
    code39(runtime, text);

    text.removeIf([](QChar unit) { return unit < u' ' || unit > u'z' || unit == u'*'; });
    code39(runtime, text);
    return 0;
}
