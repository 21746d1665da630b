// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

namespace
{

bool isMark(QChar unit)
{
    return unit == u'ﾞ' || unit == u'ﾟ';
}

/// Half-width letters by the marks that they take.
bool takes(QChar letter, QChar mark)
{
    static const QString voiced = u"ｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾊﾋﾌﾍﾎ"_s, semiVoiced = u"ﾊﾋﾌﾍﾎ"_s;
    return (mark == u'ﾞ' && voiced.contains(letter)) || (mark == u'ﾟ' && semiVoiced.contains(letter));
}

/// Unicode's own table of widths; Qt has it as one of the normal forms.
QString wideForm(QChar unit)
{
    if (unit > u' ' && unit < u'\x7f')
        return QString(QChar(char16_t(unit.unicode() + 0xfee0)));
    if (unit >= u'ｦ' && unit <= u'ﾝ')
        return QString(unit).normalized(QString::NormalizationForm_KC);
    return QString(unit);
}

QString readSlowly(const QString &text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool joined = i + 1 < text.size() && takes(text[i], text[i + 1]);
        result += joined ? text.sliced(i, 2).normalized(QString::NormalizationForm_KC) : wideForm(text[i]);
        i += joined ? 1 : 0;
    }
    return result;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();
    const QString text = input.text(), next = input.text();

    const QString full = runtime.toFullWidth(text);
    Fuzz::requireEqual(full, readSlowly(text), "every character takes the form that Unicode has for it");
    Fuzz::require(full.size() <= text.size(), "no text gets longer");
    Fuzz::requireEqual(runtime.toFullWidth(full), full, "a full-width text stays");
    if (next.isEmpty() || !isMark(next.front()))
        Fuzz::requireEqual(runtime.toFullWidth(text + next), full + runtime.toFullWidth(next), "texts join");
    return 0;
}
