// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

#include <iterator>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int least = std::numeric_limits<int>::min();

} // namespace

class ShapingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void trimLeftAndRight_data();
    void trimLeftAndRight();
    void trimLeftAndRightOfEveryUnit();
    void trimLeftAndRightOfLongTexts();
    void trimLeftAndRightShareWhatStays();
    void padLeftAndRight_data();
    void padLeftAndRight();
    void padLeftAndRightLikeOneAtATime();
    void toUpperAndLower_data();
    void toUpperAndLower();
    void toUpperAndLowerOfLongTexts();
    void replaceCharacter_data();
    void replaceCharacter();
    void replaceText_data();
    void replaceText();
    void replaceFollowsQt();
    void replaceInLongTexts();
    void replaceArgumentsOfEveryKind();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void ShapingTest::init()
{
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void ShapingTest::cleanup() const
{
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void ShapingTest::trimLeftAndRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("both");

    const QString nul = QString(QChar(u'\0')), lone = QString(QChar(0xd800));
    const auto row = [](const char *name,
                        const QString &text,
                        const QString &left,
                        const QString &right,
                        const QString &both) {
        QTest::newRow(name) << text << left << right << both;
    };
    row("null", QString(), u""_s, u""_s, u""_s);
    row("empty", u""_s, u""_s, u""_s, u""_s);
    row("one blank", u" "_s, u""_s, u""_s, u""_s);
    row("blanks only", u"   "_s, u""_s, u""_s, u""_s);
    row("one letter", u"a"_s, u"a"_s, u"a"_s, u"a"_s);
    row("nothing to cut", u"a b"_s, u"a b"_s, u"a b"_s, u"a b"_s);
    row("blanks around", u"  a b "_s, u"a b "_s, u"  a b"_s, u"a b"_s);
    row("blank in front", u" a"_s, u"a"_s, u" a"_s, u"a"_s);
    row("blank behind", u"a "_s, u"a "_s, u"a"_s, u"a"_s);
    row("tabs and line ends", u"\t\r\na\r\n"_s, u"a\r\n"_s, u"\t\r\na"_s, u"a"_s);
    row("control characters are no white space",
        u"\u0001a\u001b"_s,
        u"a\u001b"_s,
        u"\u0001a"_s,
        u"\u0001a\u001b"_s);
    row("NUL", nul + u'a' + nul, u'a' + nul, nul + u'a', nul + u'a' + nul);
    row("mixed run", u" \u0002\t a"_s, u"a"_s, u" \u0002\t a"_s, u"\u0002\t a"_s);
    row("exclamation mark stays", u"!a!"_s, u"!a!"_s, u"!a!"_s, u"!a!"_s);
    row("ideographic space", u"\u3000a\u3000"_s, u"\u3000a\u3000"_s, u"\u3000a\u3000"_s, u"a"_s);
    row("ideographic space ends the cut",
        u" \u3000 a \u3000 "_s,
        u"\u3000 a \u3000 "_s,
        u" \u3000 a \u3000"_s,
        u"a"_s);
    row("no-break space", u"\u00a0a\u00a0"_s, u"\u00a0a\u00a0"_s, u"\u00a0a\u00a0"_s, u"a"_s);
    row("next line", u"\u0085a"_s, u"\u0085a"_s, u"\u0085a"_s, u"a"_s);
    row("delete is above the blank", u"\u007fa"_s, u"\u007fa"_s, u"\u007fa"_s, u"\u007fa"_s);
    row("zero-width space", u"\u200ba"_s, u"\u200ba"_s, u"\u200ba"_s, u"\u200ba"_s);
    row("low byte of a blank", u"\u0120a\u0120"_s, u"\u0120a\u0120"_s, u"\u0120a\u0120"_s, u"\u0120a\u0120"_s
    );
    row("lone surrogate", u' ' + lone + u' ', lone + u' ', u' ' + lone, lone);
}

void ShapingTest::trimLeftAndRight()
{
    QFETCH(QString, text);

    QTEST(m_runtime.trimLeft(text), "left");
    QTEST(m_runtime.trimRight(text), "right");
    QTEST(m_runtime.trimmed(text), "both");
}

void ShapingTest::trimLeftAndRightOfEveryUnit()
{
    for (int unit = 0; unit <= 0xffff; ++unit) {
        const QString kept = unit <= 0x20 ? QString() : QString(QChar(unit));
        if (m_runtime.trimLeft(QChar(unit) + u"x"_s) != kept + u'x'
            || m_runtime.trimRight(u'x' + QString(QChar(unit))) != u'x' + kept)
            QFAIL(qPrintable(QString::number(unit, 16)));
    }
}

void ShapingTest::trimLeftAndRightOfLongTexts()
{
    const QString blanks(1000000, u' ');
    QCOMPARE(m_runtime.trimLeft(blanks), u""_s);
    QCOMPARE(m_runtime.trimRight(blanks), u""_s);
    QCOMPARE(m_runtime.trimLeft(blanks + u'a'), u"a"_s);
    QCOMPARE(m_runtime.trimRight(u'a' + blanks), u"a"_s);
}

void ShapingTest::trimLeftAndRightShareWhatStays()
{
    const QString text(3, u'x');
    QCOMPARE(m_runtime.trimLeft(text).constData(), text.constData());
    QCOMPARE(m_runtime.trimRight(text).constData(), text.constData());
    // A copy of a null text would be null with some versions of Qt only.
    QVERIFY(m_runtime.trimLeft(QString()).isNull());
    QVERIFY(m_runtime.trimRight(QString()).isNull());
    QVERIFY(!m_runtime.trimLeft(u" "_s).isNull());
    QVERIFY(!m_runtime.trimRight(u" "_s).isNull());
}

void ShapingTest::padLeftAndRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<QChar>("fill");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");

    const auto row = [](const char *name,
                        const QString &text,
                        int width,
                        QChar fill,
                        const QString &left,
                        const QString &right) {
        QTest::newRow(name) << text << width << fill << left << right;
    };
    row("shorter", u"7"_s, 3, u'0', u"007"_s, u"700"_s);
    row("one shorter", u"12"_s, 3, u'0', u"012"_s, u"120"_s);
    row("as long", u"123"_s, 3, u'0', u"123"_s, u"123"_s);
    row("one longer", u"1234"_s, 3, u'0', u"1234"_s, u"1234"_s);
    row("empty", u""_s, 2, u'x', u"xx"_s, u"xx"_s);
    row("null", QString(), 2, u'x', u"xx"_s, u"xx"_s);
    row("empty to nothing", u""_s, 0, u'x', u""_s, u""_s);
    row("width zero", u"ab"_s, 0, u'x', u"ab"_s, u"ab"_s);
    row("negative width", u"ab"_s, -1, u'x', u"ab"_s, u"ab"_s);
    row("negative width as long as the text", u"ab"_s, -2, u'x', u"ab"_s, u"ab"_s);
    row("negative width, empty", u""_s, -1, u'x', u""_s, u""_s);
    row("smallest width", u"ab"_s, least, u'x', u"ab"_s, u"ab"_s);
    row("blank", u"ab"_s, 4, u' ', u"  ab"_s, u"ab  "_s);
    row("wide characters count once", u"漢字"_s, 3, u'　', u"　漢字"_s, u"漢字　"_s);
    row("pair counts twice", u"\U00020bb7"_s, 3, u'x', u"x\U00020bb7"_s, u"\U00020bb7x"_s);
    row("NUL as fill", u"a"_s, 2, u'\0', QChar(u'\0') + u"a"_s, u'a' + QString(QChar(u'\0')));
    row("surrogate as fill", u"a"_s, 2, QChar(0xd800), QChar(0xd800) + u"a"_s, u'a' + QString(QChar(0xd800)));
}

void ShapingTest::padLeftAndRight()
{
    QFETCH(QString, text);
    QFETCH(int, width);
    QFETCH(QChar, fill);

    QTEST(m_runtime.padLeft(text, width, fill), "left");
    QTEST(m_runtime.padRight(text, width, fill), "right");
    if (fill == u' ') {
        QTEST(m_runtime.padLeft(text, width), "left");
        QTEST(m_runtime.padRight(text, width), "right");
    }
}

void ShapingTest::padLeftAndRightLikeOneAtATime()
{
    QString left = u"ab"_s, right = u"ab"_s;
    for (int width = -3; width < 300; ++width) {
        if (left.size() < width)
            left.prepend(u' ');
        if (right.size() < width)
            right.append(u' ');
        QCOMPARE(m_runtime.padLeft(u"ab"_s, width), left);
        QCOMPARE(m_runtime.padRight(u"ab"_s, width), right);
    }
    QCOMPARE(m_runtime.padLeft(u"a"_s, 1000000, u'0').size(), 1000000);
    QCOMPARE(m_runtime.padRight(u"a"_s, 1000000, u'0').size(), 1000000);
}

void ShapingTest::toUpperAndLower_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("upper");
    QTest::addColumn<QString>("lower");

    const QString lone = QString(QChar(0xd801));
    QTest::newRow("null") << QString() << u""_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s << u""_s;
    QTest::newRow("mixed") << u"aBc1"_s << u"ABC1"_s << u"abc1"_s;
    QTest::newRow("beyond ASCII") << u"äÖ"_s << u"ÄÖ"_s << u"äö"_s;
    QTest::newRow("sharp s") << u"ß"_s << u"SS"_s << u"ß"_s;
    QTest::newRow("full-width") << u"ａＢ"_s << u"ＡＢ"_s << u"ａｂ"_s;
    QTest::newRow("kana and kanji") << u"ァ漢"_s << u"ァ漢"_s << u"ァ漢"_s;
    QTest::newRow("letters outside the basic plane") << u"\U00010428"_s << u"\U00010400"_s << u"\U00010428"_s;
    QTest::newRow("lone surrogate") << lone + u'a' << lone + u'A' << lone + u'a';
    QTest::newRow("longer than a piece") << QString(5000, u'a') << QString(5000, u'A') << QString(5000, u'a');
    QTest::newRow("change far behind")
        << QString(5000, u'1') + u'b' << QString(5000, u'1') + u'B' << QString(5000, u'1') + u'b';
    // Half a minute each where the rest of the text is moved for every character.
    QTest::newRow("a million sharp s")
        << QString(1'000'000, u'ß') << QString(2'000'000, u'S') << QString(1'000'000, u'ß');
    QTest::newRow("a million ligatures")
        << QString(1'000'000, u'ﬃ') << u"FFI"_s.repeated(1'000'000) << QString(1'000'000, u'ﬃ');
    QTest::newRow("a million dotted capitals")
        << QString(1'000'000, u'İ') << QString(1'000'000, u'İ') << u"i\u0307"_s.repeated(1'000'000);
}

void ShapingTest::toUpperAndLower()
{
    QFETCH(QString, text);

    QTEST(m_runtime.toUpper(text), "upper");
    QTEST(m_runtime.toLower(text), "lower");
}

void ShapingTest::toUpperAndLowerOfLongTexts()
{
    // A text of several pieces becomes what QString makes of it as a whole: pairs stand across the ends of
    // the pieces, lone surrogates before and behind the first character that changes, and at the end.
    const QString letters = u"aZSsßŉǰΐﬀﬃıİςσΣéÀ漢ｱ1 \u0149\u0345\u0307\ufffd"_s;
    const QString others = u"12漢字"_s;
    const char16_t halves[] = {0xd800, 0xd801, 0xd83a, 0xdbff, 0xdc00, 0xdc28, 0xdd22, 0xdfff};
    QRandomGenerator random(20261121);
    for (int round = 0; round < 600; ++round) {
        const int size = random.bounded(1000, 4200);
        // Nothing changes in the first part, which may be all.
        const int unchanged = round % 3 == 0 ? 0 : random.bounded(size + 1000);
        const int halvesInHundred = round % 5 * 25;
        QString text;
        for (int i = 0; i < size; ++i) {
            if (random.bounded(100) < halvesInHundred)
                text += QChar(halves[random.bounded(int(std::size(halves)))]);
            else if (i < unchanged)
                text += others[random.bounded(int(others.size()))];
            else
                text += letters[random.bounded(int(letters.size()))];
        }
        QVERIFY(m_runtime.toUpper(text) == text.toUpper());
        QVERIFY(m_runtime.toLower(text) == text.toLower());
    }
    // A run of high halves that is longer than a piece, in front of a letter and at the end.
    const QString run(3000, QChar(0xd801));
    for (const QString &text : {u"a"_s + run + u'A', run + u"aA"_s, u"aA"_s + run, run})
        QVERIFY(m_runtime.toUpper(text) == text.toUpper() && m_runtime.toLower(text) == text.toLower());
}

void ShapingTest::replaceCharacter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("before");
    QTest::addColumn<QChar>("after");
    QTest::addColumn<QString>("result");

    QTest::newRow("null") << QString() << QChar(u'a') << QChar(u'b') << u""_s;
    QTest::newRow("every one") << u"banana"_s << QChar(u'a') << QChar(u'o') << u"bonono"_s;
    QTest::newRow("none") << u"banana"_s << QChar(u'x') << QChar(u'o') << u"banana"_s;
    QTest::newRow("first and last") << u"xax"_s << QChar(u'x') << QChar(u'y') << u"yay"_s;
    QTest::newRow("case counts") << u"aA"_s << QChar(u'a') << QChar(u'b') << u"bA"_s;
    QTest::newRow("by itself") << u"aa"_s << QChar(u'a') << QChar(u'a') << u"aa"_s;
    QTest::newRow("by NUL") << u"a"_s << QChar(u'a') << QChar(u'\0') << QString(QChar(u'\0'));
    QTest::newRow("half of a pair") << u"\U00020bb7"_s << QChar(0xdfb7) << QChar(u'x')
                                    << QChar(0xd842) + u"x"_s;
}

void ShapingTest::replaceCharacter()
{
    QFETCH(QString, text);
    QFETCH(QChar, before);
    QFETCH(QChar, after);

    QTEST(m_runtime.replace(text, before, after), "result");
}

void ShapingTest::replaceText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("result");

    QTest::newRow("null") << QString() << u"a"_s << u"b"_s << u""_s;
    QTest::newRow("none") << u"abc"_s << u"x"_s << u"y"_s << u"abc"_s;
    QTest::newRow("longer than the text") << u"ab"_s << u"abc"_s << u"y"_s << u"ab"_s;
    QTest::newRow("the whole text") << u"abc"_s << u"abc"_s << u"y"_s << u"y"_s;
    QTest::newRow("longer") << u"1-2-3"_s << u"-"_s << u"--"_s << u"1--2--3"_s;
    QTest::newRow("shorter") << u"1--2--3"_s << u"--"_s << u"-"_s << u"1-2-3"_s;
    QTest::newRow("as long") << u"abab"_s << u"ab"_s << u"ba"_s << u"baba"_s;
    QTest::newRow("by nothing") << u"a.b."_s << u"."_s << u""_s << u"ab"_s;
    QTest::newRow("all by nothing") << u"..."_s << u"."_s << QString() << u""_s;
    QTest::newRow("first and last") << u"xax"_s << u"x"_s << u"yy"_s << u"yyayy"_s;
    QTest::newRow("without overlap, from the left") << u"aaa"_s << u"aa"_s << u"b"_s << u"ba"_s;
    QTest::newRow("what was put in is not searched") << u"aab"_s << u"ab"_s << u"b"_s << u"ab"_s;
    QTest::newRow("what was put in holds it") << u"aa"_s << u"a"_s << u"aa"_s << u"aaaa"_s;
    QTest::newRow("case counts") << u"abAB"_s << u"ab"_s << u"x"_s << u"xAB"_s;
    QTest::newRow("nothing stands everywhere") << u"abc"_s << u""_s << u"-"_s << u"-a-b-c-"_s;
    QTest::newRow("null stands everywhere") << u"ab"_s << QString() << u"xy"_s << u"xyaxybxy"_s;
    QTest::newRow("nothing in nothing") << u""_s << u""_s << u"x"_s << u"x"_s;
    QTest::newRow("nothing in null") << QString() << u""_s << u"x"_s << u"x"_s;
    QTest::newRow("nothing by nothing") << u"ab"_s << u""_s << u""_s << u"ab"_s;
    QTest::newRow("NUL characters") << QString(QChar(u'\0')) + u'a' + QChar(u'\0') << QString(QChar(u'\0'))
                                    << u"00"_s << u"00a00"_s;
    QTest::newRow("half of a pair") << u"\U00020bb7"_s << QString(QChar(0xd842)) << u"x"_s
                                    << u'x' + QString(QChar(0xdfb7));
    QTest::newRow("no pattern") << u"a.b"_s << u"."_s << u"\\1"_s << u"a\\1b"_s;
}

void ShapingTest::replaceText()
{
    QFETCH(QString, text);
    QFETCH(QString, before);
    QFETCH(QString, after);

    QTEST(m_runtime.replace(text, before, after), "result");
}

void ShapingTest::replaceFollowsQt()
{
    QRandomGenerator random(20240102);
    const auto word = [&random](int longest) {
        QString text;
        for (auto size = random.bounded(longest + 1); size > 0; --size)
            text += QChar(u'a' + random.bounded(2));
        return text;
    };
    for (int round = 0; round < 100000; ++round) {
        const QString text = word(20), before = word(3), after = word(3);
        if (m_runtime.replace(text, before, after) != QString(text).replace(before, after))
            QFAIL(qPrintable(u"%1, %2 by %3"_s.arg(text, before, after)));
    }
}

void ShapingTest::replaceInLongTexts()
{
    const int times = 1000000;
    QCOMPARE(m_runtime.replace(u"ab"_s.repeated(times), u"a"_s, u"xyz"_s), u"xyzb"_s.repeated(times));
    QCOMPARE(m_runtime.replace(u"ab"_s.repeated(times), u"ab"_s, u"x"_s), QString(times, u'x'));
    QCOMPARE(m_runtime.replace(QString(times, u'a'), u""_s, u"x"_s), u"xa"_s.repeated(times) + u'x');
    const QString plain(times, u'a');
    QCOMPARE(m_runtime.replace(plain, u"b"_s, u"x"_s).constData(), plain.constData()); // not even a copy
}

void ShapingTest::replaceArgumentsOfEveryKind()
{
    // Characters, literals and texts all find their overload.
    QCOMPARE(m_runtime.replace(u"aa"_s, u'a', u'b'), u"bb"_s);
    QCOMPARE(m_runtime.replace(u"aa"_s, QChar(u'a'), u'b'), u"bb"_s);
    QCOMPARE(m_runtime.replace(u"aa"_s, u"a"_s, QChar(u'b')), u"bb"_s);
    QCOMPARE(m_runtime.replace(u"aa"_s, QChar(u'a'), u"bc"_s), u"bcbc"_s);
    QCOMPARE(m_runtime.replace(u"aa"_s, "a"_L1, "b"_L1), u"bb"_s);
    QCOMPARE(m_runtime.padLeft(QChar(u'a'), 2, u'b'), u"ba"_s);
    QCOMPARE(m_runtime.padRight(QChar(u'a'), 2), u"a "_s);

    QString text = u" a "_s;
    const QString copy = text;
    text = m_runtime.padLeft(text, 4);
    text = m_runtime.replace(text, text, text);
    QCOMPARE(text, u"  a "_s);
    QCOMPARE(copy, u" a "_s);
    QCOMPARE(m_runtime.padLeft(copy, 3).constData(), copy.constData());
    QCOMPARE(m_runtime.padRight(copy, 2).constData(), copy.constData());
    QCOMPARE(m_runtime.replace(copy, u"x"_s, u"y"_s).constData(), copy.constData());
}

QTEST_GUILESS_MAIN(ShapingTest)
#include "tst_shaping.moc"
