// SPDX-License-Identifier: MIT
//
// Prints an address card for every customer, with the town of the postal code from a postal table.
//
//     address_card postal.csv customers.csv
//
// The table has the fields of the national one: the code in field 2, the kana of prefecture, city and town in
// fields 3 to 5, half-width, and the same in kanji in fields 6 to 8. A customer is a postal code, the rest of
// the address, a name and a telephone number, which is nobody's business.
#include "column.h"

#include <QCoreApplication>
#include <QHash>

using namespace Qt::StringLiterals;

namespace
{

constexpr int cardColumns = 44;

struct Town {
    QString kana;
    QString kanji;
};

bool readTowns(AppRuntime &runtime, const QString &fileName, QHash<QString, Town> &towns)
{
    TextReadChannel table(&runtime);
    if (!table.openRead(fileName, u"UTF-8"_s))
        return false;
    QStringList fields;
    while (table.readLine() == 0) {
        runtime.splitRecord(fields, table.line, runtime.extensionOf(fileName));
        if (runtime.count(fields) < 9)
            continue;
        const QString kana = fields[3] + u' ' + fields[4] + u' ' + fields[5];
        towns.insert(fields[2], {runtime.toFullWidth(kana), fields[6] + fields[7] + fields[8]});
    }
    return true;
}

void printCard(AppRuntime &runtime, const Town &town, const QStringList &customer)
{
    const QString &code = customer[0];
    const QString edge = u'+' + runtime.padLeft(QString(), cardColumns + 2, u'-') + u'+';
    runtime.writeTrace(edge);
    for (const QString &line : {
             u"〒"_s + runtime.mid(code, 0, 3) + u'-' + runtime.midFrom(code, 3),
             town.kanji + runtime.toFullWidth(customer[1]),
             town.kana,
             runtime.toFullWidth(customer[2]) + u" 様"_s,
             u"電話 "_s + runtime.maskText(u'*', customer[3]),
         })
        runtime.writeTrace(u"| "_s + column(runtime, line, cardColumns) + u" |"_s);
    runtime.writeTrace(edge);
}

} // namespace

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"CARDS"_s, argc, argv);
    if (runtime.count(*runtime.arguments) != 2) {
        runtime.writeTrace(u"address_card TABLE CUSTOMERS"_s);
        return 2;
    }

    QHash<QString, Town> towns;
    TextReadChannel customers(&runtime);
    const QString customerFile = runtime.elementAt(*runtime.arguments, 1);
    if (!readTowns(runtime, runtime.elementAt(*runtime.arguments, 0), towns)
        || !customers.openRead(customerFile, u"UTF-8"_s)) {
        runtime.writeTrace(runtime.lastError);
        return 1;
    }

    QStringList customer;
    while (customers.readLine() == 0) {
        runtime.splitRecord(customer, customers.line, runtime.extensionOf(customerFile));
        if (runtime.count(customer) == 4 && towns.contains(customer[0]))
            printCard(runtime, towns[customer[0]], customer);
        else
            runtime.writeTrace(u"no card for: "_s + runtime.elementAt(customer, 0));
    }
    return 0;
}
