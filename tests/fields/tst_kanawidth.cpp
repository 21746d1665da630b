// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

// The three texts of the rule, each of 56 entries.
const QString halfLetters = u"ｦｧｨｩｪｫｬｭｮｯｰｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜﾝ"_s;
const QString markClasses = u"00000000000000001111111111111110000022222000000000000000"_s;
const QString fullLetters = u"ヲァィゥェォャュョッーアイウエオカキクケコサシスセ"_s + QChar(0x30bd)
    + u"タチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン"_s;

constexpr QChar voiced(0xff9e), semiVoiced(0xff9f);

// The rule step by step.
QString byTheRule(const QString &text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const QChar next = i + 1 < text.size() ? text.at(i + 1) : QChar(u' ');
        const bool inTable = c >= QChar(0xff66) && c <= QChar(0xff9f);
        const qsizetype k = inTable ? halfLetters.indexOf(c) : -1;
        if (c > QChar(0x20) && c < QChar(0x7f)) {
            result += QChar(c.unicode() + 0xfee0);
        } else if (k < 0) {
            result += c;
        } else if (markClasses.at(k) != u'0' && next == voiced) {
            result += QChar(fullLetters.at(k).unicode() + 1);
            ++i;
        } else if (markClasses.at(k) == u'2' && next == semiVoiced) {
            result += QChar(fullLetters.at(k).unicode() + 2);
            ++i;
        } else {
            result += fullLetters.at(k);
        }
    }
    return result;
}

} // namespace

class KanaWidthTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toFullWidth_data();
    void toFullWidth();
    void toFullWidthOfEveryLetter();
    void toFullWidthOfEveryUnit();
    void toFullWidthAgainstUnicode();
    void toFullWidthOfAsciiAgainstUnicode();
    void toFullWidthOfRandomTexts();
    void toFullWidthOfEveryLength();
    void toFullWidthLeavesTheText();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void KanaWidthTest::toFullWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &text, const QString &expected) {
        QTest::newRow(name) << text << expected;
    };
    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);

    row("first and last printable", u"!~"_s, u"！～"_s);
    row("letters and digits", u"AZaz09"_s, u"ＡＺａｚ０９"_s);
    row("blank stays ASCII", u"A 1"_s, u"Ａ １"_s);
    row("tab", u"A\t1"_s, u"Ａ\t１"_s);
    row("line end", u"A\r\n1"_s, u"Ａ\r\n１"_s);
    row("U+001F", QString(QChar(0x1f)), QString(QChar(0x1f)));
    row("U+007F", u"A\u007fB"_s, u"Ａ\u007fＢ"_s);
    row("U+0080", QString(QChar(0x80)), QString(QChar(0x80)));
    row("NUL inside", QString(u"A\0B"_s), u"Ａ"_s + QChar(u'\0') + u"Ｂ"_s);
    row("no-break space", QString(QChar(0xa0)), QString(QChar(0xa0)));
    row("Latin-1", u"é¥£"_s, u"é¥£"_s);
    row("ideographic space", u"\u3000"_s, u"\u3000"_s);
    row("full width already", u"Ａ１アガパ！"_s, u"Ａ１アガパ！"_s);
    row("kanji", u"東京 A1"_s, u"東京 Ａ１"_s);
    row("hiragana", u"あが"_s, u"あが"_s);

    row("half-width punctuation", u"｡｢｣､･"_s, u"｡｢｣､･"_s);
    row("U+FF65 and U+FF66", u"･ｦ"_s, u"･ヲ"_s);
    row("U+FF9D to U+FFA0", u"\uff9d\uff9e\uff9f\uffa0"_s, u"\u30f3\uff9e\uff9f\uffa0"_s);
    row("half-width Hangul", u"ﾡￜ"_s, u"ﾡￜ"_s);
    row("full-width forms and beyond", u"\uffe5\uffff\ufffe"_s, u"\uffe5\uffff\ufffe"_s);

    row("voiced", u"ｶﾞｷﾞ"_s, u"ガギ"_s);
    row("semi-voiced", u"ﾊﾟﾋﾟ"_s, u"パピ"_s);
    row("voiced of two", u"ﾊﾞ"_s, u"バ"_s);
    row("semi-voiced where only voiced is taken", u"ｶﾟ"_s, u"カﾟ"_s);
    row("U takes no mark", u"ｳﾞ"_s, u"ウﾞ"_s);
    row("WA takes no mark", u"ﾜﾞ"_s, u"ワﾞ"_s);
    row("WO takes no mark", u"ｦﾞ"_s, u"ヲﾞ"_s);
    row("first that takes a mark", u"ｵﾞｶﾞ"_s, u"オﾞガ"_s);
    row("last that takes a mark", u"ﾄﾞﾅﾞ"_s, u"ドナﾞ"_s);
    row("first that takes both", u"ﾉﾟﾊﾟ"_s, u"ノﾟパ"_s);
    row("last that takes both", u"ﾎﾟﾏﾟ"_s, u"ポマﾟ"_s);
    row("small TSU takes no mark", u"ｯﾞ"_s, u"ッﾞ"_s);

    row("voiced mark first", u"ﾞｶ"_s, u"ﾞカ"_s);
    row("semi-voiced mark first", u"ﾟﾊ"_s, u"ﾟハ"_s);
    row("voiced mark alone", u"ﾞ"_s, u"ﾞ"_s);
    row("semi-voiced mark alone", u"ﾟ"_s, u"ﾟ"_s);
    row("voiced mark twice", u"ｶﾞﾞ"_s, u"ガﾞ"_s);
    row("semi-voiced mark twice", u"ﾊﾟﾟ"_s, u"パﾟ"_s);
    row("voiced, then semi-voiced", u"ﾊﾞﾟ"_s, u"バﾟ"_s);
    row("semi-voiced, then voiced", u"ﾊﾟﾞ"_s, u"パﾞ"_s);
    row("refused mark, then a good one", u"ｶﾟﾞ"_s, u"カﾟﾞ"_s);
    row("letter last", u"ﾞｶ"_s, u"ﾞカ"_s);
    row("same letter twice, then a mark", u"ｶｶﾞ"_s, u"カガ"_s);
    row("mark before what stands behind the marks", u"ｶﾞ￥"_s, u"ガ￥"_s);
    row("no mark, but what stands behind the marks", u"ｶ￥"_s, u"カ￥"_s);
    row("mark behind a blank", u"ｶ ﾞ"_s, u"カ ﾞ"_s);
    row("mark behind ASCII", u"Aﾞ"_s, u"Ａﾞ"_s);
    row("mark behind a full-width letter", u"カﾞハﾟ"_s, u"カﾞハﾟ"_s);
    row("full-width and combining marks", u"ｶ゛ｶ\u3099"_s, u"カ゛カ\u3099"_s);
    row("long vowel", u"ｺｰﾋｰ"_s, u"コーヒー"_s);
    row("name", u"ﾔﾏﾀﾞ ﾀﾛｳ"_s, u"ヤマダ タロウ"_s);

    row("surrogate pair", u"A😀ｶﾞ"_s, u"Ａ😀ガ"_s);
    const QString high(QChar(0xd800)), low(QChar(0xdfff));
    row("lone high surrogate", u"ｶ"_s + high + u"ﾞ"_s, u"カ"_s + high + u"ﾞ"_s);
    row("lone low surrogate", low + u"A"_s, low + u"Ａ"_s);

    row("long ASCII", QString(100'000, u'a'), QString(100'000, u'ａ'));
    row("long pairs", u"ｶﾞ"_s.repeated(50'000), QString(50'000, u'ガ'));
    row("long and odd", u"ｶﾞﾊﾟﾞ"_s.repeated(20'001), u"ガパﾞ"_s.repeated(20'001));
}

void KanaWidthTest::toFullWidth()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);

    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
    QCOMPARE(m_runtime.toFullWidth(text), expected);
    QCOMPARE(byTheRule(text), expected);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void KanaWidthTest::toFullWidthOfEveryLetter()
{
    QCOMPARE(halfLetters.size(), 56);
    QCOMPARE(markClasses.size(), 56);
    QCOMPARE(fullLetters.size(), 56);
    // With the voiced mark, then with the semi-voiced one; what takes none keeps the mark.
    const QString withVoiced
        = u"ヲﾞァﾞィﾞゥﾞェﾞォﾞャﾞュﾞョﾞッﾞーﾞアﾞイﾞウﾞエﾞオﾞガギグゲゴザジズゼゾダヂヅデドナﾞニﾞヌﾞネﾞノﾞ"
          u"バビブベボマﾞミﾞムﾞメﾞモﾞヤﾞユﾞヨﾞラﾞリﾞルﾞレﾞロﾞワﾞンﾞ"_s;
    const QString withSemiVoiced
        = u"ヲﾟァﾟィﾟゥﾟェﾟォﾟャﾟュﾟョﾟッﾟーﾟアﾟイﾟウﾟエﾟオﾟカﾟキﾟクﾟケﾟコﾟサﾟシﾟスﾟセﾟソﾟタﾟチﾟツﾟテﾟトﾟナﾟニﾟヌﾟネﾟノﾟ"
          u"パピプペポマﾟミﾟムﾟメﾟモﾟヤﾟユﾟヨﾟラﾟリﾟルﾟレﾟロﾟワﾟンﾟ"_s;

    QString allVoiced, allSemiVoiced, joinedVoiced, joinedSemiVoiced;
    for (qsizetype i = 0; i < halfLetters.size(); ++i) {
        const QString letter = halfLetters.at(i);
        QCOMPARE(letter.at(0).unicode(), 0xff66 + i);
        QCOMPARE(m_runtime.toFullWidth(letter), QString(fullLetters.at(i)));
        QCOMPARE(m_runtime.toFullWidth(letter + letter), QString(2, fullLetters.at(i)));
        allVoiced += letter + voiced;
        allSemiVoiced += letter + semiVoiced;
        joinedVoiced += m_runtime.toFullWidth(letter + voiced);
        joinedSemiVoiced += m_runtime.toFullWidth(letter + semiVoiced);
    }
    QCOMPARE(m_runtime.toFullWidth(halfLetters), fullLetters);
    QCOMPARE(joinedVoiced, withVoiced);
    QCOMPARE(joinedSemiVoiced, withSemiVoiced);
    QCOMPARE(m_runtime.toFullWidth(allVoiced), withVoiced);
    QCOMPARE(m_runtime.toFullWidth(allSemiVoiced), withSemiVoiced);
}

// Alone, before each mark, behind a letter that takes both, and between the two.
void KanaWidthTest::toFullWidthOfEveryUnit()
{
    for (int unit = 0; unit <= 0xffff; ++unit) {
        const QString text = QChar(unit);
        for (const QString &before : {QString(), u"ﾊ"_s}) {
            for (const QString &behind : {QString(), u"ﾞ"_s, u"ﾟ"_s}) {
                const QString whole = before + text + behind;
                if (m_runtime.toFullWidth(whole) != byTheRule(whole))
                    QCOMPARE(
                        m_runtime.toFullWidth(whole).toUtf8().toHex(), byTheRule(whole).toUtf8().toHex()
                    );
            }
        }
    }
}

// Unicode's compatibility composition knows the same letters, with three exceptions: it makes ヴ of ｳﾞ, ヷ of
// ﾜﾞ and ヺ of ｦﾞ. And a mark that stays becomes the combining one there.
void KanaWidthTest::toFullWidthAgainstUnicode()
{
    QStringList different;
    for (const QChar letter : halfLetters) {
        for (const QString &mark : {QString(), QString(voiced), QString(semiVoiced)}) {
            const QString text = letter + mark;
            const QString composed = text.normalized(QString::NormalizationForm_KC)
                                         .replace(QChar(0x3099), voiced)
                                         .replace(QChar(0x309a), semiVoiced);
            if (m_runtime.toFullWidth(text) != composed)
                different += text + m_runtime.toFullWidth(text) + composed;
        }
    }
    QCOMPARE(different, QStringList({u"ｦﾞヲﾞヺ"_s, u"ｳﾞウﾞヴ"_s, u"ﾜﾞワﾞヷ"_s}));
}

void KanaWidthTest::toFullWidthOfAsciiAgainstUnicode()
{
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        const QString text = QChar(unit);
        const QString full = m_runtime.toFullWidth(text);
        QCOMPARE(full != text, unit > 0x20 && unit < 0x7f);
        QCOMPARE(full.normalized(QString::NormalizationForm_KC), text);
    }
}

void KanaWidthTest::toFullWidthOfRandomTexts()
{
    const QString alphabet = u"ｶﾞﾊﾟｳﾜｱﾄﾎﾅｦﾝｰ A~!ア漢｡･\t\u007f"_s + QChar(0xd83d) + QChar(0xde00);
    QRandomGenerator random(20240131);
    for (int round = 0; round < 20'000; ++round) {
        // Some texts are mostly marks and letters that take them.
        const int letters = round % 3 == 0 ? 4 : int(alphabet.size());
        QString text(random.bounded(150), Qt::Uninitialized);
        for (QChar &unit : text)
            unit = alphabet.at(random.bounded(letters));
        const QString full = m_runtime.toFullWidth(text);
        QCOMPARE(full, byTheRule(text));
        QVERIFY(full.size() <= text.size());
        // What is full width stays so.
        QCOMPARE(m_runtime.toFullWidth(full), full);
    }
}

// A mark to merge at every position of texts of every length up to 140.
void KanaWidthTest::toFullWidthOfEveryLength()
{
    for (int length = 1; length <= 140; ++length) {
        for (int position = 0; position < length; ++position) {
            QString text(length, u'ﾊ');
            text[position] = position % 2 == 0 ? voiced : semiVoiced;
            QCOMPARE(m_runtime.toFullWidth(text), byTheRule(text));
        }
    }
}

void KanaWidthTest::toFullWidthLeavesTheText()
{
    const QString text = u"ｶﾞA"_s;
    QCOMPARE(m_runtime.toFullWidth(text), u"ガＡ"_s);
    QCOMPARE(text, u"ｶﾞA"_s);

    // The text may be a field, and part of a longer buffer.
    m_runtime.lastError = u"ﾊﾟ"_s;
    m_runtime.lastError = m_runtime.toFullWidth(m_runtime.lastError);
    QCOMPARE(m_runtime.lastError, u"パ"_s);
    // What stands behind its end in the buffer does not count.
    const QString longer(100, u'ｶ');
    for (int length = 1; length < 100; ++length) {
        QString marked = longer;
        marked[length] = voiced;
        const QString part = QString::fromRawData(marked.constData(), length);
        QCOMPARE(m_runtime.toFullWidth(part), QString(length, u'カ'));
    }
}

QTEST_GUILESS_MAIN(KanaWidthTest)
#include "tst_kanawidth.moc"
