// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <utility>

QString AppRuntime::maskText(QChar mode, QString text) const
{
    constexpr QChar narrowMask = u'*', wideMask = u'\uff0a';

    // `#` is a mode of its own on entry fields, but it shows asterisks as well.
    if (mode != u'*' && mode != u'#')
        return text;

    QString masked = std::move(text).trimmed();
    QChar *end = masked.data();
    for (const QChar character : std::as_const(masked)) {
        // In the order that decides where a program gives two classes one value.
        const int kind = charClass(character);
        if (kind == charClassLowSurrogate)
            continue;
        const bool isWide
            = kind == charClassHighSurrogate || (kind != charClassHalfKana && kind != charClassNarrow);
        *end++ = isWide ? wideMask : narrowMask;
    }
    masked.truncate(end - masked.constData());
    return masked;
}
