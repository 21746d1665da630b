// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QString>

/// Where a scan stands, and what it took last.
///
/// Depending on the place it is used in, `text` is the token taken last or the text under scan. Whoever
/// creates a cursor owns it; AppRuntime owns three that together are its shared scanning state.
struct ScanCursor {
    QChar delimiter{u' '}; ///< Delimiter that ended the last token; U+0000 when the text ended first.
    qint64 reserved1{0};   ///< Not used by the scanner.
    qint32 reserved2{0};   ///< Not used by the scanner.
    qint32 position{0};    ///< Index of the next character to read, in UTF-16 code units.
    QString text{};        ///< Token taken last, or for a source cursor the text under scan.
};
