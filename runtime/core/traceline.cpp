// SPDX-License-Identifier: MIT
#include <runtime/core/traceline.h>

QByteArray traceLine(const QByteArray &local, const QByteArray &utf8)
{
    QByteArray line;
    line.reserve(local.size() + utf8.size() + 3);
    line += local;
    if (local != utf8) {
        line += '(';
        line += utf8;
        line += ')';
    }
    line += '\n';
    return line;
}
