// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The text with a question mark for each surrogate that is not one of a pair.
QString wellFormed(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i + 1 < text.size() && text[i].isHighSurrogate() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = u'?';
    }
    return text;
}

/// The value of a hexadecimal digit; any other byte stands for its own value.
int digitOrByte(char byte)
{
    bool isDigit = false;
    const int value = QByteArray(1, byte).toInt(&isDigit, 16);
    return isDigit ? value : static_cast<unsigned char>(byte);
}

/// The text with each per cent sign that two bytes follow, and them, as one byte.
QByteArray bytesOf(const QString &text)
{
    QByteArray result;
    const QByteArray source = wellFormed(text).toUtf8();
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (source[i] != '%' || i + 2 >= source.size()) {
            result += source[i];
            continue;
        }
        result += static_cast<char>(digitOrByte(source[i + 1]) * 16 | digitOrByte(source[i + 2]));
        i += 2;
    }
    return result;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();
    runtime.lastError = u"before"_s;

    const QString encoding = input.text(), text = input.text(), other = input.text();
    const QString decoded = runtime.urlDecode(text, encoding);
    Fuzz::requireEqual(decoded, QString::fromUtf8(bytesOf(text)), "codes are bytes of UTF-8");
    Fuzz::requireEqual(
        runtime.urlDecode(QString::fromLatin1(QUrl::toPercentEncoding(wellFormed(text))), encoding),
        QString::fromUtf8(wellFormed(text).toUtf8()), // without a byte order mark
        "a text comes back from its codes"
    );

    const QString encoded = runtime.urlEncode(text, encoding);
    Fuzz::require(
        std::all_of(encoded.begin(), encoded.end(), [](QChar unit) { return unit > u' ' && unit < u'\x7f'; }),
        "an encoded text is printable ASCII without blanks"
    );
    Fuzz::requireEqual(runtime.urlEncode(text, other), encoded, "the name of the encoding changes nothing");
    Fuzz::requireEqual(runtime.urlDecode(text, other), decoded, "in neither direction");
    Fuzz::requireEqual(runtime.lastError, u"before"_s, "no text is an error");

    const QString name = runtime.normaliseEncodingName(other);
    Fuzz::requireEqual(runtime.normaliseEncodingName(name), name, "the one spelling of a name is its own");
    return 0;
}
