// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/owncopy.h>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

QString AppRuntime::columnTypeMode(const QString &typeName)
{
    const QString name = ownCopy(typeName);
    if (checkIn(name, u"CHAR"_s, u"VARCHAR"_s, u"VARCHAR2"_s))
        return u" "_s;
    if (checkIn(name, u"NCHAR"_s, u"NVARCHAR"_s, u"NVARCHAR2"_s, u"MCHAR"_s, u"MVARCHAR"_s))
        return u"/"_s;
    if (checkIn(name, u"DECIMAL"_s, u"INT"_s))
        return u"-"_s;
    if (checkIn(name, u"FLOAT"_s, u"DOUBLE"_s))
        return u"F"_s;
    if (checkIn(name, u"DATETIME"_s, u"TIMESTAMP"_s, u"DATE"_s))
        return u"E"_s;
    return u" "_s;
}

int AppRuntime::compareTyped(
    QString &relation,
    QString left,
    QChar mode,
    int acceptGreater,
    int acceptEqual,
    int acceptLess,
    QString right
)
{
    const auto answer = [&relation](const QString &found, int accept) {
        relation = found;
        return accept == 1 ? 0 : 1;
    };
    relation = u"?"_s;

    if (charIn(mode, u'+', u'-', u'F')) {
        const double leftNumber = validDouble(left, u'-', 0.0, /*report=*/1);
        if (!convertOk)
            return 9;
        const double rightNumber = validDouble(right, u'-', 0.0, /*report=*/1);
        if (!convertOk)
            return 9;
        if (leftNumber == rightNumber)
            return answer(u"="_s, acceptEqual);
        if (leftNumber > rightNumber)
            return answer(u">"_s, acceptGreater);
        return answer(u"<"_s, acceptLess); // also where one of them is "nan"
    }

    left = trimRight(left);
    right = trimRight(right);
    if (checkIn(left, right))
        return answer(u"="_s, acceptEqual);
    if (left > right)
        return answer(u">"_s, acceptGreater);
    return answer(u"<"_s, acceptLess);
}
