// SPDX-License-Identifier: MIT
//
// Checks an order form, a field and its value to a line, and says of each field what is wrong with it.
//
//     order_form order.csv
#include "column.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// What the form knows of a field: the catalogue of modes it is of, and its mode in there.
struct FormField {
    QString name;
    QString AppRuntime::*catalogue;
    QString mode;
    QString (*check)(AppRuntime &runtime, const QString &value); ///< The complaint; empty when all is well.
};

/// What a check character is computed of; a field may have been left empty.
QString withoutLast(const QString &value)
{
    return value.first(qMax(value.size() - 1, 0));
}

QString digitsWithCheck(AppRuntime &runtime, const QString &value, int digits, const QString &checkDigit)
{
    const bool numeric
        = std::all_of(value.cbegin(), value.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!numeric || runtime.length(value) != digits)
        return runtime.messageText(u"MSG_DIGITS"_s).arg(digits);
    return value.endsWith(checkDigit) ? QString() : runtime.messageText(u"MSG_CHECK"_s).arg(checkDigit);
}

QString checkArticle(AppRuntime &runtime, const QString &value)
{
    return digitsWithCheck(runtime, value, 13, runtime.mod10CheckDigit(withoutLast(value)));
}

QString checkCustomer(AppRuntime &runtime, const QString &value)
{
    return digitsWithCheck(runtime, value, 6, runtime.mod11CheckDigit(withoutLast(value)));
}

QString checkShelf(AppRuntime &runtime, const QString &value)
{
    const QString character = runtime.code39CheckChar(withoutLast(value));
    if (character.isEmpty())
        return runtime.messageText(u"MSG_CODE39"_s);
    return value.endsWith(character) ? QString() : runtime.messageText(u"MSG_CHECK"_s).arg(character);
}

/// The runtime has words of its own for numbers.
QString numberComplaint(const AppRuntime &runtime)
{
    return runtime.convertOk ? QString() : runtime.lastError;
}

QString checkQuantity(AppRuntime &runtime, const QString &value)
{
    runtime.validInt(value, /*rule=*/u'0', /*defaultValue=*/0, /*report=*/1);
    return numberComplaint(runtime);
}

QString checkPrice(AppRuntime &runtime, const QString &value)
{
    runtime.validDouble(value, /*rule=*/u'+', /*defaultValue=*/0, /*report=*/1);
    return numberComplaint(runtime);
}

QString checkDate(AppRuntime &runtime, const QString &value)
{
    const QString nearest = runtime.normalizeDate(value, /*minYearFlag=*/1);
    if (nearest == value)
        return {};
    return runtime.messageText(u"MSG_DATE"_s).arg(runtime.formatDateTime(nearest, /*style=*/1));
}

const FormField form[] = {
    {u"ARTICLE"_s, &AppRuntime::asciiModes, u"9"_s, checkArticle},
    {u"CUSTOMER"_s, &AppRuntime::asciiModes, u"9"_s, checkCustomer},
    {u"SHELF"_s, &AppRuntime::asciiModes, u"B"_s, checkShelf},
    {u"QUANTITY"_s, &AppRuntime::integerModes, u"+"_s, checkQuantity},
    {u"PRICE"_s, &AppRuntime::numericModesSigned, u"+"_s, checkPrice},
    {u"DELIVERY"_s, &AppRuntime::asciiModes, u"D"_s, checkDate},
};

/// Messages of a mark for the program (E, an error) and the words; a program has them in its own language.
void loadMessages(AppRuntime &runtime)
{
    *runtime.messageKeys = {u"MSG_DIGITS"_s, u"MSG_CHECK"_s, u"MSG_CODE39"_s, u"MSG_DATE"_s};
    *runtime.messageTexts = {
        u"E%1 digits, please"_s,
        u"Ewrong check character, should be %1"_s,
        u"Ea character that Code 39 does not have"_s,
        u"Eno such day; the nearest is %1"_s,
    };
}

QString modeLabel(const AppRuntime &runtime, const FormField &field)
{
    for (const InputMode &mode : runtime.inputModes(runtime.*field.catalogue)) {
        if (mode.code == field.mode)
            return mode.label;
    }
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"ORDERS"_s, argc, argv);
    if (runtime.count(*runtime.arguments) != 1) {
        runtime.writeTrace(u"order_form ORDER"_s);
        return 2;
    }
    loadMessages(runtime);

    TextReadChannel order(&runtime);
    if (!order.openRead(runtime.elementAt(*runtime.arguments, 0), u"UTF-8"_s)) {
        runtime.writeTrace(runtime.lastError);
        return 1;
    }
    int refused = 0;
    QStringList entry;
    while (order.readLine() == 0) {
        runtime.splitRecord(entry, order.line, u"CSV"_s);
        const QString value = runtime.elementAt(entry, 1);
        const auto *const field
            = std::find_if(std::begin(form), std::end(form), [&](const FormField &candidate) {
                  return candidate.name == runtime.elementAt(entry, 0);
              });
        if (field == std::end(form))
            continue;
        const QString complaint = field->check(runtime, value);
        if (!complaint.isEmpty())
            ++refused;
        runtime.writeTrace(
            column(runtime, field->name, 10) + column(runtime, value, 15)
            + column(runtime, modeLabel(runtime, *field), 17) + (complaint.isEmpty() ? u"ok"_s : complaint)
        );
    }
    runtime.writeTrace(runtime.number(refused) + u" refused"_s);
    return refused == 0 ? 0 : 1;
}
