// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QUrl>

// The encoding's name is normalised for the words that this leaves in checkMessage; the coding is UTF-8
// always. Coded first, for the text may be that message.

QString AppRuntime::urlEncode(const QString &text, const QString &encodingName)
{
    QString encoded = QUrl(text, QUrl::TolerantMode).toString(QUrl::FullyEncoded);
    normaliseEncodingName(encodingName);
    return encoded;
}

QString AppRuntime::urlDecode(const QString &text, const QString &encodingName)
{
    QString decoded = QUrl::fromPercentEncoding(text.toUtf8());
    normaliseEncodingName(encodingName);
    return decoded;
}
