// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// The fields of the classes, changed for one run.
class Classes
{
public:
    Classes(AppRuntime &runtime, Fuzz::Input &input)
        : m_fields{
            &runtime.charClassNone,
            &runtime.charClassNarrow,
            &runtime.charClassWide,
            &runtime.charClassHalfKana,
            &runtime.charClassHighSurrogate,
            &runtime.charClassLowSurrogate}
    {
        for (qint32 value = 0; qint32 *const field : m_fields)
            *field = value++;
        for (int changes = input.between(0, 4); changes > 0; --changes)
            *m_fields.at(static_cast<std::size_t>(input.between(0, 5))) = input.between(-1, 6);
    }

    ~Classes()
    {
        for (qint32 value = 0; qint32 *const field : m_fields)
            *field = value++;
    }

    Q_DISABLE_COPY_MOVE(Classes)

private:
    std::array<qint32 *, 6> m_fields;
};

bool oneColumn(QChar unit)
{
    return unit < u'\x80' || (unit >= u'ｦ' && unit <= u'ﾟ');
}

/// Columns, and units taken, of the character at a position, whatever the classes.
std::pair<int, int> characterAt(const QString &text, qsizetype at)
{
    if (text[at].isHighSurrogate())
        return {2, 2};
    if (text[at].isLowSurrogate())
        return {0, 1};
    return {oneColumn(text[at]) ? 1 : 2, 1};
}

int classOf(const AppRuntime &runtime, QChar unit)
{
    if (unit.isLowSurrogate())
        return runtime.charClassLowSurrogate;
    if (unit.isHighSurrogate())
        return runtime.charClassHighSurrogate;
    if (!oneColumn(unit))
        return runtime.charClassWide;
    return unit < u'\x80' ? runtime.charClassNarrow : runtime.charClassHalfKana;
}

void widths(const AppRuntime &runtime, const QString &text, int units, int columns)
{
    int width = 0;
    for (qsizetype at = 0; at < text.size() && at < units;) {
        const auto [taken, length] = characterAt(text, at);
        width += taken;
        at += length;
    }
    Fuzz::requireEqual(runtime.displayWidthOf(text, units), width, "columns add up");
    Fuzz::requireEqual(
        runtime.displayWidthOf(text, static_cast<int>(text.size())),
        runtime.displayWidth(text),
        "the whole text is its units"
    );

    qsizetype at = 0;
    int counted = 0;
    while (at < text.size() && counted < columns) {
        const auto [taken, length] = characterAt(text, at);
        counted += taken;
        at += length;
        while (length == 1 && at < text.size() && classOf(runtime, text[at]) == runtime.charClassNone)
            ++at;
    }
    at = std::min(at, text.size());
    Fuzz::requireEqual(runtime.unitsForWidth(text, columns), at, "characters are taken in up to the limit");
    Fuzz::requireEqual(
        runtime.splitsWideChar(text, columns),
        columns >= 0 && counted > columns && at < text.size(),
        "a limit splits a wide character that is not the last"
    );
}

void classes(const AppRuntime &runtime, const QString &text, int position)
{
    int count = 0;
    for (qsizetype at = 0; at < text.size(); ++count) {
        const int kind = classOf(runtime, text[at]);
        Fuzz::requireEqual(runtime.charClass(text[at]), kind, "a character has the class of its range");
        if (kind == runtime.charClassHighSurrogate || kind == runtime.charClassLowSurrogate) {
            at += 2;
            continue;
        }
        while (at < text.size() && classOf(runtime, text[at]) == runtime.charClassNone)
            ++at;
        ++at;
    }
    Fuzz::requireEqual(runtime.characterCount(text), count, "characters are counted by their class");

    const int at = std::max(position, 0);
    const bool inside = at < text.size();
    const int kind = inside ? classOf(runtime, text[at]) : runtime.charClassNarrow;
    Fuzz::requireEqual(runtime.charClassAt(text, position), kind, "past the end is narrow");
    int units = 1;
    while (at < text.size() - units && classOf(runtime, text[at + units]) == runtime.charClassNone)
        ++units;
    if (kind == runtime.charClassHighSurrogate)
        units = 2;
    Fuzz::requireEqual(runtime.charUnitsAt(text, position), units, "what has no class joins");
    const bool trail = inside && (kind == runtime.charClassLowSurrogate || kind == runtime.charClassNone);
    Fuzz::requireEqual(runtime.isTrailAt(text, position), trail, "what belongs to the character before it");
}

/// The default classes decide here, whatever the fields hold.
void fitting(AppRuntime &runtime, const QString &text, int columns)
{
    const auto columnsOf = [](QStringView part) {
        int sum = 0;
        for (const QChar unit : part)
            sum += unit.isLowSurrogate() ? 0 : oneColumn(unit) ? 1 : 2;
        return sum;
    };
    const int limit = std::max(columns, 0);
    const QString cut = runtime.truncateToWidth(text, columns);
    Fuzz::require(text.startsWith(cut), "what is left is the beginning");
    Fuzz::require(columnsOf(cut) <= limit, "what is left fits");
    if (columns < 0)
        Fuzz::require(cut.isEmpty(), "nothing fits a negative count, half a pair neither");
    else if (cut.size() < text.size())
        Fuzz::require(columnsOf(text.first(cut.size() + 1)) > limit, "no character more would fit");
    if (columns < 1000) {
        const QString fitted = runtime.fitToWidth(text, columns);
        Fuzz::requireEqual(fitted, cut.leftJustified(limit), "a fitted text is padded by units");
    }
}

void masking(const AppRuntime &runtime, const QString &text)
{
    QString expected;
    for (const QChar unit : text.trimmed()) {
        if (!unit.isLowSurrogate())
            expected += oneColumn(unit) ? u'*' : u'＊';
    }
    Fuzz::requireEqual(runtime.maskText(u'*', text), expected, "a masked text shows its characters' widths");
    Fuzz::requireEqual(runtime.maskText(u'#', text), expected, "both modes of masking are alike");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const int units = input.position(), columns = input.position();
    // Long enough, at times, for the loops that count in pieces.
    const int times = input.flag() ? input.between(1, 40) : 1;
    const Classes changed(runtime, input);
    const bool standard = input.flag();
    const QString text = input.text().repeated(times);

    widths(runtime, text, units, columns);
    classes(runtime, text, units);
    fitting(runtime, text, columns);
    if (standard) {
        Fuzz::Input none(nullptr, 0);
        const Classes defaults(runtime, none);
        masking(runtime, text);
    }
    return 0;
}
