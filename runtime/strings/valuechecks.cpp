// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/copyunits.h>

#include <functional>

using namespace appruntime_internal;

namespace
{

/// Whether writing into the text's buffer would change what the view shows.
bool isViewOf(QStringView view, const QString &text)
{
    return std::less_equal<>()(text.cbegin(), view.begin()) && std::less<>()(view.begin(), text.cend());
}

constexpr QStringView opening = u"\"", middle = u"\" not in('", comma = u"','", closing = u"')";

/// Makes `message` the one for a value that is none of the alternatives, of that size. It must not be one of
/// these texts.
void describe(
    QString &message, qsizetype size, QStringView value, std::initializer_list<QStringView> alternatives
)
{
    if (message.size() != size) // a call
        message.resize(size);

    QChar *end = copyUnits(opening, message.data());
    end = copyUnits(value, end);
    end = copyUnits(middle, end);
    end = copyUnits(*alternatives.begin(), end);
    for (const QStringView *next = alternatives.begin() + 1; next != alternatives.end(); ++next) {
        end = copyUnits(comma, end);
        end = copyUnits(*next, end);
    }
    copyUnits(closing, end);
}

} // namespace

bool AppRuntime::isOneOf(QStringView value, std::initializer_list<QStringView> alternatives)
{
    bool viewsMessage = isViewOf(value, checkMessage);
    qsizetype size = opening.size() + value.size() + middle.size() - comma.size() + closing.size();
    for (const QStringView alternative : alternatives) {
        if (value == alternative)
            return true;
        viewsMessage = viewsMessage || isViewOf(alternative, checkMessage);
        size += comma.size() + alternative.size();
    }

    // Most checks fail, so a message is written over the one before it, unless that is one of the texts
    // compared.
    QString apart;
    describe(viewsMessage ? apart : checkMessage, size, value, alternatives);
    if (viewsMessage)
        checkMessage = std::move(apart);
    return false;
}
