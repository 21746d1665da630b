// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <QDate>
#include <QTime>

using namespace Qt::StringLiterals;

namespace
{

/// The part of the text that starts at `position`, filled up with blanks.
QString part(const QString &text, qsizetype position, qsizetype length)
{
    return text.mid(position, length).leftJustified(length);
}

QString shownSlowly(const AppRuntime &runtime, const QString &value, int style)
{
    if (value.size() < 8)
        return value;
    const bool bare = style == 0;
    const QString dateMark = bare ? QString() : style == 1 ? runtime.dateSeparator : u"-"_s;
    const QString timeMark = bare ? QString() : u":"_s;

    QStringList date{part(value, 0, 4), part(value, 4, 2), part(value, 6, 2)};
    if (style != 2 && runtime.dateOrder != u"Y") {
        date.append(date.takeFirst());
        if (runtime.dateOrder != u"M")
            date.swapItemsAt(0, 1);
    }
    QString result = date.join(dateMark);
    if (value.size() >= 12)
        result += (bare ? u""_s : u" "_s) + part(value, 8, 2) + timeMark + part(value, 10, 2);
    if (value.size() >= 14)
        result += timeMark + part(value, 12, 2);
    if (value.size() >= 17)
        result += (bare ? u""_s : u"."_s) + part(value, 14, 3);
    return result;
}

void display(AppRuntime &runtime, const QString &value, int style)
{
    runtime.checkMessage = u"untouched"_s;
    Fuzz::requireEqual(
        runtime.formatDateTime(value, style),
        shownSlowly(runtime, value, style),
        "a moment shows by its style"
    );
    // The order is asked for as long as it matters, and the answer stays in checkMessage.
    QString message = u"untouched"_s;
    if (value.size() >= 8 && runtime.dateOrder != u"Y") {
        const bool asked = style != 2 && runtime.dateOrder != u"M";
        const bool settled = style != 2 && runtime.dateOrder == u"M";
        message = u'"' + runtime.dateOrder + u"\" not in('"_s + (asked && !settled ? u'M' : u'Y') + u"')"_s;
    }
    Fuzz::requireEqual(runtime.checkMessage, message, "the order is compared");
}

void secondBefore(const AppRuntime &runtime, const QString &any, int seconds)
{
    const QTime time = QTime(0, 0).addSecs(seconds);
    Fuzz::requireEqual(
        runtime.previousSecond(time.toString(u"HHmmss"_s)),
        time.addSecs(-1).toString(u"HHmmss"_s),
        "a second before a time"
    );
    Fuzz::require(runtime.previousSecond(any).size() >= 2, "any text has a second before it");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    const QStringList orders{u"Y"_s, u"M"_s, u"D"_s, u"y"_s};
    const int order = input.between(0, 4);
    runtime.dateOrder = order < orders.size() ? orders[order] : input.text();
    runtime.dateSeparator = input.text();
    const int style = input.between(-1, 4);
    const int seconds = input.anyInt() & 0x1ffff;
    secondBefore(runtime, input.text(), seconds);

    const QString value = input.text();
    display(runtime, value, style);
    display(runtime, value.repeated(5), style);
    return 0;
}
