// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <utility>

QString AppRuntime::maskText(QChar mode, QString text) const
{
    constexpr QChar narrowMask = u'*', wideMask = u'\uff0a';

    // `#` is another mode of entry fields, but shows asterisks too.
    if (mode != u'*' && mode != u'#')
        return text;

    QString masked = std::move(text).trimmed();
    QChar *end = masked.data();
    for (const QChar character : std::as_const(masked)) {
        if (const int columns = charDisplayWidth(character); columns > 0)
            *end++ = columns == 2 ? wideMask : narrowMask;
    }
    masked.truncate(end - masked.constData());
    return masked;
}
