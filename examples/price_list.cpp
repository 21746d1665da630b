// SPDX-License-Identifier: MIT
//
// Prints a list of sales in pages, each with a heading, its total and the amount carried over.
//
//     price_list sales.csv [LINES]
//
// A line of the file is a date, an article, a quantity and a price. A page has LINES of them, 20 when no
// number is given.
#include "column.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace
{

/// Prints line by line, and a heading and a total where a page begins and ends.
struct List {
    AppRuntime &runtime;
    int linesOfPage;
    int page{0};
    int lines{0}; ///< On this page so far.
    qint64 pageTotal{0};
    qint64 total{0};

    void add(const QString &date, const QString &article, int quantity, int price)
    {
        if (lines == linesOfPage)
            endPage(u"carried over"_s);
        if (lines == 0)
            beginPage();
        ++lines;
        const qint64 amount = qint64(quantity) * price;
        pageTotal += amount;
        total += amount;
        write(runtime.formatDateTime(date, 1), article, runtime.number(quantity), amountText(amount));
    }

    void end()
    {
        if (lines > 0)
            endPage(u"total"_s);
    }

    void beginPage()
    {
        ++page;
        runtime.writeTrace(u"SALES"_s + runtime.padLeft(u"page "_s + runtime.number(page), 44));
        write(u"date"_s, u"article"_s, u"quantity"_s, u"amount"_s);
    }

    void endPage(const QString &text)
    {
        write(QString(), u"this page"_s, QString(), amountText(pageTotal));
        write(QString(), text, QString(), amountText(total));
        runtime.writeTrace(QString());
        lines = 0;
        pageTotal = 0;
    }

    [[nodiscard]] QString amountText(qint64 amount) const
    {
        return runtime.groupThousands(QString::number(amount));
    }

    /// Texts fill their columns from the left, numbers from the right.
    void write(const QString &date, const QString &article, const QString &quantity, const QString &amount)
    {
        runtime.writeTrace(
            column(runtime, date, 12) + column(runtime, article, 18) + runtime.padLeft(quantity, 8)
            + runtime.padLeft(amount, 11)
        );
    }
};

} // namespace

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"LIST"_s, argc, argv);
    const QStringList &arguments = *runtime.arguments;
    const QString linesText = runtime.count(arguments) == 2 ? arguments[1] : u"20"_s;
    const int linesOfPage = runtime.validInt(linesText, u'0', 0, 0);
    if (runtime.count(arguments) < 1 || runtime.count(arguments) > 2 || !runtime.convertOk) {
        runtime.writeTrace(u"price_list SALES [LINES]"_s);
        return 2;
    }

    TextReadChannel sales(&runtime);
    if (!sales.openRead(arguments[0], u"UTF-8"_s)) {
        runtime.writeTrace(runtime.lastError);
        return 1;
    }
    List list{runtime, linesOfPage};
    QStringList sale;
    while (sales.readLine() == 0) {
        runtime.splitRecord(sale, sales.line, u"CSV"_s);
        const int quantity = runtime.validInt(runtime.elementAt(sale, 2), u'+', 0, 0);
        const bool counted = runtime.convertOk;
        const int price = runtime.validInt(runtime.elementAt(sale, 3), u'+', 0, 0);
        if (counted && runtime.convertOk)
            list.add(sale[0], sale[1], quantity, price);
        else
            runtime.writeTrace(u"left out: "_s + sales.line);
    }
    list.end();
    return 0;
}
