// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace
{

// The coding as it is defined: eight replacements, one after the other.
QString encodedByReplacing(QString text)
{
    return text.replace(u"#"_s, u"#C"_s)
        .replace(u"\""_s, u"#Q"_s)
        .replace(u"%"_s, u"#P"_s)
        .replace(u"!"_s, u"#E"_s)
        .replace(u"`"_s, u"#A"_s)
        .replace(u"\\"_s, u"#Y"_s)
        .replace(u"$"_s, u"#D"_s)
        .replace(u" "_s, u"#S"_s);
}

QString decodedByReplacing(QString text)
{
    return text.replace(u"#Q"_s, u"\""_s)
        .replace(u"#P"_s, u"%"_s)
        .replace(u"#E"_s, u"!"_s)
        .replace(u"#A"_s, u"`"_s)
        .replace(u"#Y"_s, u"\\"_s)
        .replace(u"#D"_s, u"$"_s)
        .replace(u"#S"_s, u" "_s)
        .replace(u"#C"_s, u"#"_s);
}

/// Calls the function with every text over the alphabet, of no character up to the length.
void forEveryText(QStringView alphabet, int length, const std::function<void(const QString &)> &function)
{
    for (int size = 0; size <= length; ++size) {
        QString text(size, alphabet.front());
        QList<qsizetype> places(size, 0);
        for (qsizetype turned = 0; turned >= 0;) {
            function(text);
            turned = size - 1;
            while (turned >= 0 && ++places[turned] == alphabet.size())
                places[turned--] = 0;
            for (qsizetype i = std::max<qsizetype>(turned, 0); i < size; ++i)
                text[i] = alphabet[places[i]];
        }
    }
}

/// Any code units, a good part of them characters and letters of the codes.
QString randomText(QRandomGenerator &random, int length)
{
    const QString favourites = u"#\"%!`\\$ CQPEAYDScx"_s;
    QString text;
    for (int i = 0; i < length; ++i) {
        const bool isFavourite = random.bounded(4) != 0;
        text += isFavourite ? favourites[random.bounded(favourites.size())]
                            : QChar(static_cast<char16_t>(random.bounded(0x10000)));
    }
    return text;
}

} // namespace

class PlaceholdersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void encodePlaceholders_data();
    void encodePlaceholders();
    void decodePlaceholders_data();
    void decodePlaceholders();
    void encodePlaceholdersOfEveryUnit();
    void encodePlaceholdersOfEveryShortText();
    void decodePlaceholdersOfEveryShortTextOfCodes_data();
    void decodePlaceholdersOfEveryShortTextOfCodes();
    void encodePlaceholdersOfRandomTexts();
    void encodePlaceholdersSharesPlainTexts();
    void decodePlaceholdersEndsWhereTheTextEnds();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void PlaceholdersTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"check"_s;
    m_runtime.convertOk = true;
}

void PlaceholdersTest::cleanup() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"check"_s);
    QVERIFY(m_runtime.convertOk);
}

void PlaceholdersTest::encodePlaceholders_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");

    const auto row = [](const char *name, const QString &text, const QString &encoded) {
        QTest::newRow(name) << text << encoded;
    };

    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);
    row("number sign", u"#"_s, u"#C"_s);
    row("double quote", u"\""_s, u"#Q"_s);
    row("per cent sign", u"%"_s, u"#P"_s);
    row("exclamation mark", u"!"_s, u"#E"_s);
    row("back-quote", u"`"_s, u"#A"_s);
    row("backslash", u"\\"_s, u"#Y"_s);
    row("dollar sign", u"$"_s, u"#D"_s);
    row("blank", u" "_s, u"#S"_s);
    row("all eight", u"#\"%!`\\$ "_s, u"#C#Q#P#E#A#Y#D#S"_s);
    row("all eight backwards", u" $\\`!%\"#"_s, u"#S#D#Y#A#E#P#Q#C"_s);
    row("blank between letters", u"a b"_s, u"a#Sb"_s);
    row("blanks at the ends", u" a "_s, u"#Sa#S"_s);
    row("two at the end", u"100%!"_s, u"100#P#E"_s);
    row("looks like a code", u"#S"_s, u"#CS"_s);
    row("encoded twice", u"#CS"_s, u"#CCS"_s);
    row("number signs", u"###"_s, u"#C#C#C"_s);
    row("nothing to encode", u"ABC-123/漢字ｱ"_s, u"ABC-123/漢字ｱ"_s);
    row("code letters", u"CQPEAYDS"_s, u"CQPEAYDS"_s);
    row("per cent signs of a message", u"%1 %2"_s, u"#P1#S#P2"_s);
    row("tab is no blank", u"\t"_s, u"\t"_s);
    row("ideographic space is no blank", u"\u3000"_s, u"\u3000"_s);
    row("no-break space is no blank", u"\u00a0"_s, u"\u00a0"_s);
    row("full-width number sign", u"＃＄％！"_s, u"＃＄％！"_s);
    row("yen sign is no backslash", u"¥"_s, u"¥"_s);
    row("units with the low byte of a blank", QString(QChar(0x0120)) + QChar(0x3020), u"\u0120\u3020"_s);
    row("units with the low seven bits of a blank", QString(QChar(0x00a0)) + QChar(0xffa0), u"\u00a0ﾠ"_s);
    row("NUL", QString(u"a"_s + QChar(u'\0') + u" "_s), QString(u"a"_s + QChar(u'\0') + u"#S"_s));
    row("NUL alone", QString(QChar(u'\0')), QString(QChar(u'\0')));
    row("lone high surrogate before a blank",
        QString(QChar(0xd840) + u" "_s),
        QString(QChar(0xd840) + u"#S"_s));
    row("lone low surrogate before a blank", QString(QChar(0xdc00) + u" "_s), QString(QChar(0xdc00) + u"#S"_s)
    );
    row("pair between blanks", u" 𠮷 "_s, u"#S𠮷#S"_s);
    row("first of many", u" "_s + QString(1000, u'x'), u"#S"_s + QString(1000, u'x'));
    row("last of many", QString(1000, u'x') + u" "_s, QString(1000, u'x') + u"#S"_s);
    row("nothing but blanks", QString(100000, u' '), u"#S"_s.repeated(100000));
}

void PlaceholdersTest::encodePlaceholders()
{
    QFETCH(QString, text);
    QFETCH(QString, encoded);

    QCOMPARE(m_runtime.encodePlaceholders(text), encoded);
    QCOMPARE(m_runtime.decodePlaceholders(encoded), text);
}

void PlaceholdersTest::decodePlaceholders_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("decoded");

    const auto row = [](const char *name, const QString &text, const QString &decoded) {
        QTest::newRow(name) << text << decoded;
    };

    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);
    row("blank between letters", u"a#Sb"_s, u"a b"_s);
    row("coded number sign before a letter", u"#CS"_s, u"#S"_s);
    row("coded number sign before its letter", u"#CC"_s, u"#C"_s);
    row("coded twice", u"#CCS"_s, u"#CS"_s);
    row("coded number signs", u"#C#C"_s, u"##"_s);
    row("coded number sign before a code", u"#C#S"_s, u"# "_s);
    row("number sign before a code", u"##S"_s, u"# "_s);
    row("number sign before a code and a letter", u"##QS"_s, u"#\"S"_s);
    row("number sign before its own code", u"##C"_s, u"##"_s);
    row("that before a letter", u"##CQ"_s, u"##Q"_s);
    row("code in two halves around another", u"#C#Q"_s, u"#\""_s);
    row("code after a code", u"#S#S"_s, u"  "_s);
    row("letter after a code", u"#SS"_s, u" S"_s);
    row("lower-case letters", u"#s#x"_s, u"#s#x"_s);
    row("lower-case number sign code", u"#c"_s, u"#c"_s);
    row("unknown letter", u"#B"_s, u"#B"_s);
    row("unknown letter beside a known one", u"#R#T"_s, u"#R#T"_s);
    row("special character behind", u"# "_s, u"# "_s);
    row("number sign alone", u"#"_s, u"#"_s);
    row("number sign at the end", u"#S#"_s, u" #"_s);
    row("number signs", u"###"_s, u"###"_s);
    row("letters alone", u"CQPEAYDS"_s, u"CQPEAYDS"_s);
    row("special characters stay", u"\"%!`\\$ "_s, u"\"%!`\\$ "_s);
    row("full-width letter", u"#Ｓ"_s, u"#Ｓ"_s);
    row("full-width number sign", u"＃S"_s, u"＃S"_s);
    row("unit with the low byte of a letter", QString(u"#"_s + QChar(0x0153)), u"#\u0153"_s);
    row("unit with the low seven bits of a letter", QString(u"#"_s + QChar(0x00d3)), u"#\u00d3"_s);
    row("NUL behind", QString(u"#"_s + QChar(u'\0') + u"S"_s), QString(u"#"_s + QChar(u'\0') + u"S"_s));
    row("NUL before", QString(QChar(u'\0') + u"#S"_s), QString(QChar(u'\0') + u" "_s));
    row("lone high surrogate behind", QString(u"#"_s + QChar(0xd853)), QString(u"#"_s + QChar(0xd853)));
    row("lone low surrogate before", QString(QChar(0xdc53) + u"#S"_s), QString(QChar(0xdc53) + u" "_s));
    row("last of many", QString(1000, u'x') + u"#S"_s, QString(1000, u'x') + u" "_s);
    row("first half at the end of many", QString(1000, u'x') + u"#"_s, QString(1000, u'x') + u"#"_s);
}

void PlaceholdersTest::decodePlaceholders()
{
    QFETCH(QString, text);
    QFETCH(QString, decoded);

    QCOMPARE(m_runtime.decodePlaceholders(text), decoded);
    QCOMPARE(decodedByReplacing(text), decoded);
}

void PlaceholdersTest::encodePlaceholdersOfEveryUnit()
{
    const QString special = u"#\"%!`\\$ "_s, codes = u"CQPEAYDS"_s;
    for (int unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        const qsizetype known = special.indexOf(character);
        const QString encoded = known < 0 ? QString(character) : QString(u"#"_s + codes[known]);
        QCOMPARE(m_runtime.encodePlaceholders(character), encoded);
        QCOMPARE(m_runtime.decodePlaceholders(encoded), QString(character));

        const QString code = u"#"_s + character;
        const qsizetype letter = codes.indexOf(character);
        QCOMPARE(m_runtime.decodePlaceholders(code), letter < 0 ? code : QString(special[letter]));
    }
}

void PlaceholdersTest::encodePlaceholdersOfEveryShortText()
{
    // The eight characters, the letters of their codes and two more.
    int texts = 0;
    forEveryText(u"#\"%!`\\$ CQPEAYDSsx", 3, [this, &texts](const QString &text) {
        ++texts;
        const QString encoded = m_runtime.encodePlaceholders(text);
        QCOMPARE(encoded, encodedByReplacing(text));
        QCOMPARE(m_runtime.decodePlaceholders(encoded), text);
        QCOMPARE(m_runtime.decodePlaceholders(text), decodedByReplacing(text));
        for (const QChar character : u"\"%!`\\$ "_s)
            QVERIFY(!encoded.contains(character));
    });
    QCOMPARE(texts, 1 + 18 + 18 * 18 + 18 * 18 * 18);
}

void PlaceholdersTest::decodePlaceholdersOfEveryShortTextOfCodes_data()
{
    QTest::addColumn<QString>("alphabet");
    QTest::addColumn<int>("length");

    QTest::newRow("two codes, a blank and a quote") << u"#CSQ \""_s << 6;
    QTest::newRow("number signs and their letter") << u"#C"_s << 12;
    QTest::newRow("every code letter") << u"#CQPEAYDS"_s << 5;
}

void PlaceholdersTest::decodePlaceholdersOfEveryShortTextOfCodes()
{
    QFETCH(QString, alphabet);
    QFETCH(int, length);

    // One walk gives what the replacements give, also for texts that no encoding made.
    forEveryText(alphabet, length, [this](const QString &text) {
        const QString decoded = m_runtime.decodePlaceholders(text);
        if (decoded != decodedByReplacing(text))
            QCOMPARE(decoded, decodedByReplacing(text));
        if (m_runtime.decodePlaceholders(m_runtime.encodePlaceholders(text)) != text)
            QCOMPARE(m_runtime.decodePlaceholders(m_runtime.encodePlaceholders(text)), text);
    });
}

void PlaceholdersTest::encodePlaceholdersOfRandomTexts()
{
    QRandomGenerator random(39);
    for (int round = 0; round < 500; ++round) {
        const QString text = randomText(random, random.bounded(round < 490 ? 200 : 100000));
        const QString encoded = m_runtime.encodePlaceholders(text);
        QCOMPARE(encoded, encodedByReplacing(text));
        QCOMPARE(m_runtime.decodePlaceholders(encoded), text);
        QCOMPARE(m_runtime.decodePlaceholders(text), decodedByReplacing(text));
    }
}

void PlaceholdersTest::encodePlaceholdersSharesPlainTexts()
{
    // Most texts hold nothing to code, so those cost no allocation.
    const QString plain = u"ABC-123/漢字"_s;
    QCOMPARE(m_runtime.encodePlaceholders(plain).constData(), plain.constData());
    QCOMPARE(m_runtime.decodePlaceholders(plain).constData(), plain.constData());

    const QString coded = u"a b"_s;
    const QString encoded = m_runtime.encodePlaceholders(coded);
    QCOMPARE(coded, u"a b"_s);
    QCOMPARE(m_runtime.decodePlaceholders(encoded), coded);
    QCOMPARE(encoded, u"a#Sb"_s);
}

void PlaceholdersTest::decodePlaceholdersEndsWhereTheTextEnds()
{
    // A text over characters of another text has no NUL behind it, but a letter.
    const QString whole = u"a#S"_s;
    const QString part = QString::fromRawData(whole.constData(), 2);
    QCOMPARE(m_runtime.decodePlaceholders(part), u"a#"_s);
    QCOMPARE(m_runtime.encodePlaceholders(part), u"a#C"_s);
}

QTEST_GUILESS_MAIN(PlaceholdersTest)
#include "tst_placeholders.moc"
