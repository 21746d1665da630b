// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QUrl>

// The encoding's name is normalised for the words that this leaves in checkMessage; the coding is UTF-8
// always.

QString AppRuntime::urlEncode(const QString &text, const QString &encodingName)
{
    normaliseEncodingName(encodingName);
    return QUrl(text, QUrl::TolerantMode).toString(QUrl::FullyEncoded);
}

QString AppRuntime::urlDecode(const QString &text, const QString &encodingName)
{
    normaliseEncodingName(encodingName);
    return QUrl::fromPercentEncoding(text.toUtf8());
}
