// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <algorithm>
#include <functional>

namespace
{

/// Whether writing into the text's buffer would change what the view shows.
bool isViewOf(QStringView view, const QString &text)
{
    return std::less_equal<>()(text.cbegin(), view.begin()) && std::less<>()(view.begin(), text.cend());
}

/// Makes `message` the one for a value that is none of the alternatives. It must not be one of these texts.
void describe(QString &message, QStringView value, std::initializer_list<QStringView> alternatives)
{
    constexpr QStringView opening = u"\"", middle = u"\" not in('", comma = u"','", closing = u"')";

    qsizetype size = opening.size() + value.size() + middle.size() - comma.size() + closing.size();
    for (const QStringView alternative : alternatives)
        size += comma.size() + alternative.size();
    if (message.size() != size) // a call
        message.resize(size);

    QChar *end = message.data();
    const auto append = [&end](QStringView piece) {
        if (!piece.isEmpty()) // a call; the alternative is empty most often
            end = std::copy(piece.begin(), piece.end(), end);
    };
    append(opening);
    append(value);
    append(middle);
    append(*alternatives.begin());
    for (const QStringView *next = alternatives.begin() + 1; next != alternatives.end(); ++next) {
        append(comma);
        append(*next);
    }
    append(closing);
}

} // namespace

bool AppRuntime::isOneOf(QStringView value, std::initializer_list<QStringView> alternatives)
{
    bool viewsMessage = isViewOf(value, checkMessage);
    for (const QStringView alternative : alternatives) {
        if (value == alternative)
            return true;
        viewsMessage = viewsMessage || isViewOf(alternative, checkMessage);
    }

    // Most checks fail, so a message is written over the one before it, unless that is one of the texts
    // compared.
    QString apart;
    describe(viewsMessage ? apart : checkMessage, value, alternatives);
    if (viewsMessage)
        checkMessage = std::move(apart);
    return false;
}
