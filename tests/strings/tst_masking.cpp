// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class MaskingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void maskText_data();
    void maskText();
    void maskTextKnowsTwoModes();
    void maskTextTakesEveryUnit();
    void maskTextFollowsTheClasses_data();
    void maskTextFollowsTheClasses();
    void maskTextLeavesItsArgumentAlone();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void MaskingTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"check"_s;
    m_runtime.convertOk = true;
    m_runtime.charClassNone = 0;
    m_runtime.charClassNarrow = 1;
    m_runtime.charClassWide = 2;
    m_runtime.charClassHalfKana = 3;
    m_runtime.charClassHighSurrogate = 4;
    m_runtime.charClassLowSurrogate = 5;
}

void MaskingTest::cleanup() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"check"_s);
    QVERIFY(m_runtime.convertOk);
}

void MaskingTest::maskText_data()
{
    QTest::addColumn<QChar>("mode");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("masked");

    const auto row = [](const char *name, QChar mode, const QString &text, const QString &masked) {
        QTest::newRow(name) << mode << text << masked;
    };

    row("empty", u'*', u""_s, u""_s);
    row("empty in the other mode", u'#', u""_s, u""_s);
    row("empty in no mode", u'X', u""_s, u""_s);
    row("null", u'*', QString(), u""_s);
    row("narrow", u'*', u"secret"_s, u"******"_s);
    row("number sign mode shows asterisks", u'#', u"secret"_s, u"******"_s);
    row("other mode", u'X', u"secret"_s, u"secret"_s);
    row("other mode keeps blanks", u'X', u" ab "_s, u" ab "_s);
    row("blank mode", u' ', u" ab "_s, u" ab "_s);
    row("NUL mode", u'\0', u" ab "_s, u" ab "_s);
    row("full-width asterisk is no mode", u'＊', u" ab "_s, u" ab "_s);
    row("full-width number sign is no mode", u'＃', u" ab "_s, u" ab "_s);
    row("mode with the low byte of an asterisk", QChar(0x012a), u" ab "_s, u" ab "_s);

    row("blanks at the ends are cut", u'*', u"  ab "_s, u"**"_s);
    row("the same in the other mode", u'#', u"  ab "_s, u"**"_s);
    row("blanks inside stay", u'*', u"a b"_s, u"***"_s);
    row("blanks alone", u'*', u"   "_s, u""_s);
    row("white space of any kind is cut", u'*', u"\t\r\n\u3000\u00a0ab\u2003\u3000"_s, u"**"_s);
    row("ideographic space inside is wide", u'*', u"a\u3000b"_s, u"*＊*"_s);
    row("control characters are no white space", u'*', u"\u0001\u001f"_s, u"**"_s);
    row("zero width space is no white space", u'*', u"\u200b"_s, u"＊"_s);
    row("NUL", u'*', QString(u"a"_s + QChar(u'\0')), u"**"_s);

    row("half-width katakana and kanji", u'#', u"ｱ漢"_s, u"*＊"_s);
    row("one of each", u'*', u"A漢ｱ𠮷"_s, u"*＊*＊"_s);
    row("outside the basic plane", u'*', u"𠮷𠮷"_s, u"＊＊"_s);
    row("voiced mark is a character", u'*', u"ｶﾞ"_s, u"**"_s);
    row("combining mark is a character", u'*', u"e\u0301"_s, u"*＊"_s);
    row("last narrow", u'*', u"\u007f"_s, u"*"_s);
    row("first above ASCII", u'*', u"\u0080x\u0081"_s, u"＊*＊"_s);
    row("below half-width katakana", u'*', u"\uff65"_s, u"＊"_s);
    row("first half-width katakana", u'*', u"\uff66"_s, u"*"_s);
    row("last half-width katakana", u'*', u"\uff9f"_s, u"*"_s);
    row("above half-width katakana", u'*', u"\uffa0"_s, u"＊"_s);
    row("last code unit", u'*', u"\uffff"_s, u"＊"_s);

    row("lone high surrogate", u'*', QString(QChar(0xd800)), u"＊"_s);
    row("lone high surrogate before a letter", u'*', QString(QChar(0xdbff) + u"a"_s), u"＊*"_s);
    row("two high surrogates", u'*', QString(2, QChar(0xd842)), u"＊＊"_s);
    row("lone low surrogate", u'*', QString(QChar(0xdc00)), u""_s);
    row("lone low surrogate between letters", u'*', QString(u"a"_s + QChar(0xdfff) + u"b"_s), u"**"_s);
    row("low before high", u'*', QString(QString(QChar(0xdc00)) + QChar(0xd800)), u"＊"_s);

    row("masked again", u'*', u"*＊"_s, u"*＊"_s);
    row("very long", u'*', QString(100000, u'x'), QString(100000, u'*'));
    row("very long and wide", u'*', QString(100000, u'漢'), QString(100000, u'＊'));
}

void MaskingTest::maskText()
{
    QFETCH(QChar, mode);
    QFETCH(QString, text);
    QFETCH(QString, masked);

    QCOMPARE(m_runtime.maskText(mode, text), masked);
}

void MaskingTest::maskTextKnowsTwoModes()
{
    for (int unit = 0; unit < 0x10000; ++unit) {
        const bool isMode = unit == u'*' || unit == u'#';
        const QString result = m_runtime.maskText(QChar(static_cast<char16_t>(unit)), u" ab "_s);
        QCOMPARE(result, isMode ? u"**"_s : u" ab "_s);
    }
}

void MaskingTest::maskTextTakesEveryUnit()
{
    for (int unit = 0; unit < 0x10000; ++unit) {
        // Between letters, so that white space stays.
        const QString text = u"a"_s + QChar(static_cast<char16_t>(unit)) + u"b"_s;
        const bool isNarrow = unit <= 0x7f || (unit >= 0xff66 && unit <= 0xff9f);
        const bool isLow = unit >= 0xdc00 && unit <= 0xdfff;
        const QString expected = isLow ? u"**"_s : isNarrow ? u"***"_s : u"*＊*"_s;
        QCOMPARE(m_runtime.maskText(u'*', text), expected);
    }
}

void MaskingTest::maskTextFollowsTheClasses_data()
{
    QTest::addColumn<QList<int>>("classes"); // none, narrow, wide, half-width katakana, high, low
    QTest::addColumn<QString>("masked");     // of one of each

    const auto row = [](const char *name, const QList<int> &classes, const QString &masked) {
        QTest::newRow(name) << classes << masked;
    };
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();

    row("defaults", {0, 1, 2, 3, 4, 5}, u"*＊*＊"_s);
    row("defaults backwards", {5, 4, 3, 2, 1, 0}, u"*＊*＊"_s);
    row("ends of the range", {least, most, most - 1, least + 1, -1, 0}, u"*＊*＊"_s);
    row("wide as none", {0, 1, 0, 3, 4, 5}, u"*＊*＊"_s);
    row("narrow as none", {0, 0, 2, 3, 4, 5}, u"*＊*＊"_s);
    row("half-width katakana as none", {0, 1, 2, 0, 4, 5}, u"*＊*＊"_s);
    row("high as none", {0, 1, 2, 3, 0, 5}, u"*＊*＊"_s);
    row("low as none", {0, 1, 2, 3, 4, 0}, u"*＊*＊"_s);
    row("wide as narrow", {0, 1, 1, 3, 4, 5}, u"***＊"_s);
    row("wide as half-width katakana", {0, 1, 3, 3, 4, 5}, u"***＊"_s);
    row("wide as high", {0, 1, 4, 3, 4, 5}, u"*＊*＊"_s);
    row("wide as low", {0, 1, 5, 3, 4, 5}, u"**＊"_s);
    row("narrow as half-width katakana", {0, 3, 2, 3, 4, 5}, u"*＊*＊"_s);
    row("narrow as high", {0, 4, 2, 3, 4, 5}, u"＊＊*＊"_s);
    row("narrow as low", {0, 5, 2, 3, 4, 5}, u"＊*＊"_s);
    row("half-width katakana as high", {0, 1, 2, 4, 4, 5}, u"*＊＊＊"_s);
    row("half-width katakana as low", {0, 1, 2, 5, 4, 5}, u"*＊＊"_s);
    row("high as low", {0, 1, 2, 3, 5, 5}, u"*＊*"_s);
    row("all but the surrogates alike", {1, 1, 1, 1, 4, 5}, u"***＊"_s);
    row("all but low alike", {0, 0, 0, 0, 0, 5}, u"＊＊＊＊"_s);
    row("all alike", {0, 0, 0, 0, 0, 0}, u""_s);
}

void MaskingTest::maskTextFollowsTheClasses()
{
    QFETCH(QList<int>, classes);
    QFETCH(QString, masked);

    m_runtime.charClassNone = classes[0];
    m_runtime.charClassNarrow = classes[1];
    m_runtime.charClassWide = classes[2];
    m_runtime.charClassHalfKana = classes[3];
    m_runtime.charClassHighSurrogate = classes[4];
    m_runtime.charClassLowSurrogate = classes[5];
    QCOMPARE(m_runtime.maskText(u'*', u"A漢ｱ𠮷"_s), masked);
    QCOMPARE(m_runtime.maskText(u'#', u"A漢ｱ𠮷"_s), masked);
}

void MaskingTest::maskTextLeavesItsArgumentAlone()
{
    const QString shared = u"secret"_s;
    const QString blanks = u" secret "_s;
    QCOMPARE(m_runtime.maskText(u'*', shared), u"******"_s);
    QCOMPARE(m_runtime.maskText(u'*', blanks), u"******"_s);
    QCOMPARE(m_runtime.maskText(u'X', blanks), u" secret "_s);
    QCOMPARE(shared, u"secret"_s);
    QCOMPARE(blanks, u" secret "_s);
}

QTEST_GUILESS_MAIN(MaskingTest)
#include "tst_masking.moc"
