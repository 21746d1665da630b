// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The index of the first delimiter at or after `from` with an even number of quotes between the two, or -1.
qsizetype delimiterAfter(const QString &text, const QString &delimiters, qsizetype from)
{
    for (qsizetype i = from; i < text.size(); ++i) {
        const bool quoted = text.sliced(from, i - from).count(u'\'') % 2 != 0;
        if (!quoted && text[i] != u'\'' && delimiters.contains(text[i]))
            return i;
    }
    return -1;
}

struct Session {
    AppRuntime &runtime;
    const QString text;
    ScanCursor cursor{};

    [[nodiscard]] qsizetype start() const
    {
        return std::clamp<qsizetype>(cursor.position, 0, text.size());
    }

    void token(const QString &delimiters, bool store)
    {
        const qsizetype from = start();
        const qsizetype found = delimiterAfter(text, delimiters, from);
        ScanCursor out;
        out.text = u"kept"_s;
        QChar delimiter(u'?');
        runtime.lastError = u"before"_s;
        const bool more = runtime.nextToken(out, cursor, delimiter, text, delimiters, store);

        Fuzz::requireEqual(more, found >= 0, "a token ends at a delimiter outside quotes, if there is one");
        QString expected = more ? text.sliced(from, found - from).trimmed() : text.sliced(from);
        if (!store)
            expected = out.text == u"kept" ? out.text : QString();
        Fuzz::requireEqual(out.text, expected, "the token is what stood before the delimiter");
        Fuzz::requireEqual(cursor.position, more ? found + 1 : text.size(), "the scan goes on behind it");
        Fuzz::requireEqual(delimiter.unicode(), more ? text[found].unicode() : 0, "the delimiter is told");
        const QString error = more ? u"before"_s : u"not found ('"_s + delimiters + u"')"_s;
        Fuzz::requireEqual(runtime.lastError, error, "only the end is reported");
    }

    void keyword(const QString &word)
    {
        const qint32 before = cursor.position;
        qsizetype from = start();
        while (from < text.size() && text[from] <= u' ')
            ++from;
        const bool there = from < text.size() && text.sliced(from).toUpper().startsWith(word.toUpper());
        Fuzz::requireEqual(
            runtime.acceptKeyword(cursor, word, text), there, "a keyword is found in any case"
        );
        Fuzz::requireEqual(
            cursor.position, there ? from + word.size() : before, "only a keyword found is stepped over"
        );
    }

    void unused() const
    {
        Fuzz::require(
            cursor.delimiter == u' ' && cursor.reserved1 == 0 && cursor.reserved2 == 0
                && cursor.text.isEmpty(),
            "of a cursor only the position changes"
        );
    }
};

/// The shared scan gives the tokens and keywords that a cursor of one's own gives.
void sharedScan(AppRuntime &runtime, const QString &text, const QString &delimiters, const QString &word)
{
    runtime.setScanText(text);
    ScanCursor cursor;
    for (qsizetype tokens = 0;; ++tokens) {
        Fuzz::require(tokens <= text.size() + 1, "a scan comes to its end");
        ScanCursor before = *runtime.scanCursor;
        const bool accepted = runtime.acceptKeyword(word);
        Fuzz::requireEqual(accepted, runtime.acceptKeyword(cursor, word, text), "the keyword is shared");
        Fuzz::requireEqual(
            accepted,
            runtime.acceptKeyword(word, text.sliced(std::clamp<qsizetype>(before.position, 0, text.size()))),
            "a text on its own is like the rest"
        );

        before = *runtime.scanCursor;
        Fuzz::requireEqual(before.position, cursor.position, "the position is shared");
        ScanCursor shared, own;
        QChar delimiter;
        const bool more = runtime.nextToken(shared, delimiters);
        Fuzz::requireEqual(
            more, runtime.nextToken(own, cursor, delimiter, text, delimiters, true), "the end is shared"
        );
        Fuzz::requireEqual(shared.text, own.text, "the token is shared");
        Fuzz::require(runtime.scanDelimiter->delimiter == delimiter, "the delimiter is shared");

        runtime.scanCursor->position = before.position;
        Fuzz::requireEqual(runtime.skipToken(delimiters), more, "skipping ends where taking does");
        Fuzz::requireEqual(runtime.scanCursor->position, cursor.position, "skipping goes as far as taking");
        Fuzz::requireEqual(runtime.scanSource->text, text, "the text under scan stays");
        if (!more)
            return;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();
    runtime.checkMessage = u"untouched"_s;

    Session session{runtime, input.text()};
    const QString delimiters = input.text();
    const int begin = input.position(), length = input.between(0, 8);
    const QString word = input.flag() ? input.text() : session.text.mid(begin, length).toLower();
    session.cursor.position = input.flag() ? input.position() : 0;
    for (int steps = input.between(0, 12); steps > 0; --steps) {
        switch (input.between(0, 3)) {
        case 0: session.keyword(input.text()); break;
        case 1: session.keyword(word); break;
        default: session.token(delimiters, input.flag());
        }
        session.unused();
    }
    sharedScan(runtime, session.text, delimiters, word);
    Fuzz::requireEqual(runtime.checkMessage, u"untouched"_s, "a scan checks no value");
    return 0;
}
