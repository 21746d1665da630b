// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/core/appruntime_export.h>

#include <QByteArray>

/// The bytes of one trace line, line feed included, for a text given in the local encoding and in UTF-8.
///
/// The local form comes first; the UTF-8 form follows in round brackets where the two are not the same bytes,
/// so that a reader on another system still gets what the local encoding has no form for.
[[nodiscard]] APPRUNTIME_EXPORT QByteArray traceLine(const QByteArray &local, const QByteArray &utf8);
