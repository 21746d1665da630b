// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>

using namespace appruntime_internal;

namespace
{

/// Records that a text did not pass, with the words for the user where they are asked for.
void refuse(AppRuntime &runtime, QStringView reason, const QString &text, int report)
{
    runtime.convertOk = false;
    if (report == 1)
        runtime.lastError = reason + u" \"" + text + u'"';
}

} // namespace

int AppRuntime::toInt(const QString &text) const
{
    return text.toInt();
}

int AppRuntime::toIntBase(const QString &text, int base) const
{
    // Other bases are not the toolkit's to know: some of its versions make numbers of them, others hand them
    // on to a library that may end the program.
    if (base != 0 && (base < 2 || base > 36))
        return 0;
    return text.toInt(nullptr, base);
}

int AppRuntime::validInt(const QString &text, QChar rule, int defaultValue, int report)
{
    const QString kept = ownCopy(text);
    convertOk = true;

    int value = 0;
    if (!checkIn(kept, QString())) {
        bool numeric = false;
        value = kept.toInt(&numeric);
        if (!numeric) {
            refuse(*this, u"not numeric", kept, report);
            return defaultValue;
        }
    }
    if (rule == u'-')
        return value;
    // Not the default: a program that does not look at convertOk sees the number as it was typed.
    if (value < 0)
        refuse(*this, u"not plus", kept, report);
    else if (value == 0 && rule == u'0')
        refuse(*this, u"bad zero", kept, report);
    return value;
}

double AppRuntime::validDouble(const QString &text, QChar rule, double defaultValue, int report)
{
    const QString kept = ownCopy(text);
    convertOk = true;

    if (checkIn(kept, QString()))
        return 0.0;
    bool numeric = false;
    const double value = kept.toDouble(&numeric);
    if (!numeric) {
        refuse(*this, u"not numeric", kept, report);
        return defaultValue;
    }
    // Unlike validInt(): no other rule looks at the sign, and the number itself is not handed out.
    if (rule == u'+' && value < 0.0) {
        refuse(*this, u"not plus", kept, report);
        return defaultValue;
    }
    return value;
}

int AppRuntime::hexDigitValue(QChar character) const
{
    const QChar digit = character.toUpper();
    if (digit >= u'0' && digit <= u'9')
        return digit.unicode() - u'0';
    if (digit >= u'A' && digit <= u'F')
        return digit.unicode() - u'A' + 10;
    return -1;
}
