// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace appruntime_internal
{

/// The bytes of one trace line, line feed included, for a text given in the local encoding and in UTF-8.
///
/// The local form comes first; the UTF-8 form follows in round brackets where the two are not the same bytes,
/// so that a reader on another system still gets what the local encoding has no form for.
[[nodiscard]] inline QByteArray traceLine(const QByteArray &local, const QByteArray &utf8)
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

} // namespace appruntime_internal
