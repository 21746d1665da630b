// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

QString AppRuntime::intText(int value) const
{
    return QString::number(value);
}

QString AppRuntime::number(int value) const
{
    return QString::number(value);
}

QString AppRuntime::number(double value) const
{
    return QString::number(value, 'g', 6);
}

QString AppRuntime::zeroPadded(int value, int width) const
{
    return padLeft(QString::number(value), width, u'0');
}

int AppRuntime::digitValue(QChar character) const
{
    return character >= u'0' && character <= u'9' ? character.unicode() - u'0' : 0;
}
