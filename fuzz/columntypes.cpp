// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

namespace
{

/// A text, or a number of few digits: two of them are often equal.
QString someValue(Fuzz::Input &input)
{
    switch (input.between(0, 3)) {
    case 0: return QString::number(input.between(-3, 3));
    case 1: return QString::number(input.anyInt() / 16.0);
    case 2: return u' ' + QString::number(input.between(-3, 3)) + u".0 "_s;
    default: return input.text();
    }
}

/// The relation of two values, with every answer asked for at once.
QString relationOf(AppRuntime &runtime, const QString &left, QChar mode, const QString &right)
{
    QString relation = u"before"_s;
    const int answer = runtime.compareTyped(relation, left, mode, 1, 1, 1, right);
    Fuzz::requireEqual(answer, relation == u"?" ? 9 : 0, "every relation is accepted, but none is none");
    return relation;
}

QString mirrored(const QString &relation)
{
    if (relation == u"<")
        return u">"_s;
    return relation == u">" ? u"<"_s : relation;
}

/// Not a number equals nothing and is less than everything, also than itself.
bool isNoNumber(AppRuntime &runtime, const QString &text)
{
    const double value = runtime.validDouble(text, u'-', 0.0, 0);
    return value != value;
}

int textOrder(const QString &left, const QString &right)
{
    return left.toStdU16String().compare(right.toStdU16String());
}

void accepting(AppRuntime &runtime, Fuzz::Input &input, const QString &left, QChar mode, const QString &right)
{
    const QString expected = relationOf(runtime, left, mode, right);
    const int greater = input.between(-1, 2), equal = input.between(-1, 2), less = input.between(-1, 2);
    QString relation;
    const int answer = runtime.compareTyped(relation, left, mode, greater, equal, less, right);
    Fuzz::requireEqual(relation, expected, "what is accepted changes no relation");
    const int wanted = relation == u">" ? greater : relation == u"=" ? equal : less;
    Fuzz::requireEqual(answer, relation == u"?" ? 9 : wanted == 1 ? 0 : 1, "1 accepts, nothing else does");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QString modes = u"+-F /E*"_s;
    const int choice = input.between(0, 7);
    const QChar mode = choice < modes.size() ? modes[choice] : input.character();
    const bool numeric = mode == u'+' || mode == u'-' || mode == u'F';
    const QString a = someValue(input), b = someValue(input), c = someValue(input);

    accepting(runtime, input, a, mode, b);
    const QString ab = relationOf(runtime, a, mode, b), bc = relationOf(runtime, b, mode, c);
    if (numeric && (isNoNumber(runtime, a) || isNoNumber(runtime, b) || isNoNumber(runtime, c)))
        return 0;

    Fuzz::requireEqual(relationOf(runtime, b, mode, a), mirrored(ab), "the other way round is the opposite");
    if (ab == bc && ab != u"?")
        Fuzz::requireEqual(relationOf(runtime, a, mode, c), ab, "what holds twice in a row holds throughout");
    const QString aa = relationOf(runtime, a, mode, a);
    Fuzz::require(aa == u"=" || (numeric && aa == u"?"), "a value equals itself");
    if (!numeric) {
        const int order = textOrder(runtime.trimRight(a), runtime.trimRight(b));
        Fuzz::requireEqual(ab, order < 0 ? u"<"_s : order > 0 ? u">"_s : u"="_s, "texts compare by unit");
    }
    return 0;
}
