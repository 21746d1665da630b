// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>
#include <runtime/strings/casemapping.h>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

QString AppRuntime::normaliseEncodingName(const QString &name)
{
    QString kept = ownCopy(name);
    // The version file is opened under this name.
    if (checkIn(kept, u"/"_s))
        return u"Shift-JIS"_s;

    const QString upper = upperCased(kept);
    if (checkIn(upper, u"UTF8"_s, u"UTF-8"_s, u"UTF_8"_s, QString()))
        return u"UTF-8"_s;
    if (checkIn(upper, u"EUCJP"_s, u"EUC-JP"_s, u"EUC_JP"_s))
        return u"EUC-JP"_s;
    if (checkIn(upper, u"SJIS"_s, u"SHIFT-JIS"_s, u"SHIFT_JIS"_s))
        return u"Shift-JIS"_s;
    return kept;
}
