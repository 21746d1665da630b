// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <QUrl>

#include <algorithm>
#include <cctype>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// The text with its codes as bytes; nothing when a per cent sign begins none, where the toolkit's versions
/// differ.
std::optional<QByteArray> bytesOf(const QString &text)
{
    QByteArray result;
    const QByteArray source = text.toUtf8();
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (source[i] != '%') {
            result += source[i];
            continue;
        }
        bool coded = false;
        const QByteArray digits = source.mid(i + 1, 2);
        const int value = digits.toInt(&coded, 16);
        if (digits.size() < 2 || !coded || !std::isxdigit(static_cast<unsigned char>(digits[0]))
            || !std::isxdigit(static_cast<unsigned char>(digits[1])))
            return std::nullopt;
        result += static_cast<char>(value);
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
    if (const std::optional<QByteArray> expected = bytesOf(text))
        Fuzz::requireEqual(decoded, QString::fromUtf8(*expected), "codes are bytes of UTF-8");
    const QString wellFormed = QString::fromUtf8(text.toUtf8());
    Fuzz::requireEqual(
        runtime.urlDecode(QString::fromLatin1(QUrl::toPercentEncoding(text)), encoding),
        wellFormed,
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
