// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/utf8.h>

#include <QUrl>

using namespace appruntime_internal;

namespace
{

/// The value of a hexadecimal digit; any other byte stands for its own value.
int digitOrByte(char byte)
{
    if (byte >= '0' && byte <= '9')
        return byte - '0';
    if (byte >= 'a' && byte <= 'f')
        return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F')
        return byte - 'A' + 10;
    return static_cast<unsigned char>(byte);
}

} // namespace

// The encoding's name is normalised for the message that this leaves in checkMessage; the coding is always
// UTF-8. The text is coded first, because it may be that message.

QString AppRuntime::urlEncode(const QString &text, const QString &encodingName)
{
    QString encoded = QUrl(text, QUrl::TolerantMode).toString(QUrl::FullyEncoded);
    normaliseEncodingName(encodingName);
    return encoded;
}

QString AppRuntime::urlDecode(const QString &text, const QString &encodingName)
{
    // Not by QUrl, whose versions differ where no two digits follow a per cent sign.
    QByteArray bytes = utf8Of(text);
    char *to = bytes.data();
    const char *const end = to + bytes.size();
    for (const char *from = to; from != end; ++from, ++to) {
        *to = *from;
        if (*from == '%' && end - from > 2) {
            *to = static_cast<char>(digitOrByte(from[1]) << 4 | digitOrByte(from[2]));
            from += 2;
        }
    }
    QString decoded = QString::fromUtf8(bytes.first(to - bytes.constData()));
    normaliseEncodingName(encodingName);
    return decoded;
}
