// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

qint32 &classField(AppRuntime &runtime, QChar letter)
{
    switch (letter.unicode()) {
    case u'N': return runtime.charClassNarrow;
    case u'W': return runtime.charClassWide;
    case u'K': return runtime.charClassHalfKana;
    case u'H': return runtime.charClassHighSurrogate;
    case u'L': return runtime.charClassLowSurrogate;
    default: return runtime.charClassNone;
    }
}

/// Sets class fields: `W=0 N=W` gives the wide class the value of the reserved one, then the narrow class
/// that.
void setClasses(AppRuntime &runtime, const QString &changes)
{
    runtime.charClassNone = 0;
    runtime.charClassNarrow = 1;
    runtime.charClassWide = 2;
    runtime.charClassHalfKana = 3;
    runtime.charClassHighSurrogate = 4;
    runtime.charClassLowSurrogate = 5;
    for (const QString &change : changes.split(u' ', Qt::SkipEmptyParts))
        classField(runtime, change[0]) = classField(runtime, change[2]);
}

const QString high = QString(QChar(0xd842));
const QString low = QString(QChar(0xdfb7));

} // namespace

class CharactersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void isUpperIsLowerIsDigitIsLetter_data();
    void isUpperIsLowerIsDigitIsLetter();
    void isUpperIsLowerIsDigitIsLetterOfEveryUnit();
    void charUpperAndLower_data();
    void charUpperAndLower();
    void charClass_data();
    void charClass();
    void charClassFollowsTheFields();
    void charClassAt_data();
    void charClassAt();
    void charDisplayWidth_data();
    void charDisplayWidth();
    void charDisplayWidthOfEveryMixOfClasses();
    void charUnitsAtAndIsTrailAt_data();
    void charUnitsAtAndIsTrailAt();
    void charUnitsAtOfManyTrails();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void CharactersTest::init()
{
    setClasses(m_runtime, QString());
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void CharactersTest::cleanup() const
{
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void CharactersTest::isUpperIsLowerIsDigitIsLetter_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<QString>("kinds"); // of upper, lower, digit and letter: their first letters

    const auto row = [](const char *name, char16_t unit, const QString &kinds) {
        QTest::newRow(name) << QChar(unit) << kinds;
    };
    row("A", u'A', u"UA"_s);
    row("Z", u'Z', u"UA"_s);
    row("in front of A", u'@', u""_s);
    row("behind Z", u'[', u""_s);
    row("a", u'a', u"LA"_s);
    row("z", u'z', u"LA"_s);
    row("in front of a", u'`', u""_s);
    row("behind z", u'{', u""_s);
    row("0", u'0', u"D"_s);
    row("9", u'9', u"D"_s);
    row("in front of 0", u'/', u""_s);
    row("behind 9", u':', u""_s);
    row("NUL", u'\0', u""_s);
    row("last of ASCII", u'\u007f', u""_s);
    row("first beyond ASCII", u'\u0080', u""_s);
    row("A with diaeresis", u'Ä', u"UA"_s);
    row("a with diaeresis", u'ä', u"LA"_s);
    row("sharp s", u'ß', u"LA"_s);
    row("feminine ordinal is a letter of neither case", u'\u00aa', u"A"_s);
    row("title case is neither", u'\u01c5', u"A"_s);
    row("superscript two is no decimal digit", u'\u00b2', u""_s);
    row("Roman numeral is no digit and no letter", u'\u2160', u""_s);
    row("full-width digit", u'\uff11', u"D"_s);
    row("Arabic digit", u'\u0665', u"D"_s);
    row("full-width capital", u'\uff21', u"UA"_s);
    row("full-width small letter", u'\uff41', u"LA"_s);
    row("Cyrillic capital", u'Ж', u"UA"_s);
    row("kana", u'ア', u"A"_s);
    row("half-width kana", u'ｱ', u"A"_s);
    row("prolonged sound mark", u'ー', u"A"_s);
    row("kanji", u'漢', u"A"_s);
    row("ideographic space", u'\u3000', u""_s);
    row("combining mark", u'\u0301', u""_s);
    row("high surrogate", 0xd835, u""_s);
    row("low surrogate", 0xdc00, u""_s);
    row("private use", 0xe000, u""_s);
    row("no character", 0xffff, u""_s);
}

void CharactersTest::isUpperIsLowerIsDigitIsLetter()
{
    QFETCH(QChar, character);
    QFETCH(QString, kinds);

    QString found;
    if (m_runtime.isUpper(character))
        found += u'U';
    if (m_runtime.isLower(character))
        found += u'L';
    if (m_runtime.isDigit(character))
        found += u'D';
    if (m_runtime.isLetter(character))
        found += u'A';
    QCOMPARE(found, kinds);
}

void CharactersTest::isUpperIsLowerIsDigitIsLetterOfEveryUnit()
{
    const QString capitals = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s, smalls = u"abcdefghijklmnopqrstuvwxyz"_s;
    for (int unit = 0; unit <= 0xffff; ++unit) {
        const QChar c(unit);
        const bool ascii = unit < 0x80;
        const bool upper = ascii ? capitals.contains(c) : c.category() == QChar::Letter_Uppercase;
        const bool lower = ascii ? smalls.contains(c) : c.category() == QChar::Letter_Lowercase;
        const bool digit = ascii ? u"0123456789"_s.contains(c) : c.category() == QChar::Number_DecimalDigit;
        const bool letter = ascii ? upper || lower : c.isLetter();
        if (m_runtime.isUpper(c) != upper || m_runtime.isLower(c) != lower || m_runtime.isDigit(c) != digit
            || m_runtime.isLetter(c) != letter)
            QFAIL(qPrintable(QString::number(unit, 16)));
    }
}

void CharactersTest::charUpperAndLower_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<QChar>("upper");
    QTest::addColumn<QChar>("lower");

    const auto row = [](const char *name, char16_t unit, char16_t upper, char16_t lower) {
        QTest::newRow(name) << QChar(unit) << QChar(upper) << QChar(lower);
    };
    row("small letter", u'a', u'A', u'a');
    row("capital", u'Z', u'Z', u'z');
    row("digit", u'5', u'5', u'5');
    row("behind Z", u'[', u'[', u'[');
    row("small letter beyond ASCII", u'ä', u'Ä', u'ä');
    row("sharp s has no single capital", u'ß', u'ß', u'ß');
    row("title case", u'\u01c5', u'\u01c4', u'\u01c6');
    row("dotless i", u'\u0131', u'I', u'\u0131');
    row("full-width", u'\uff41', u'\uff21', u'\uff41');
    row("small kana is another letter", u'ァ', u'ァ', u'ァ');
    row("high surrogate", 0xd801, 0xd801, 0xd801);
    row("low surrogate", 0xdc28, 0xdc28, 0xdc28);
    row("NUL", u'\0', u'\0', u'\0');
}

void CharactersTest::charUpperAndLower()
{
    QFETCH(QChar, character);

    QTEST(m_runtime.charUpper(character), "upper");
    QTEST(m_runtime.charLower(character), "lower");
}

void CharactersTest::charClass_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<int>("expected");

    const auto row = [](const char *name, char16_t unit, int expected) {
        QTest::newRow(name) << QChar(unit) << expected;
    };
    row("NUL", 0x0000, 1);
    row("last narrow", 0x007f, 1);
    row("first wide", 0x0080, 2);
    row("last below the surrogates", 0xd7ff, 2);
    row("first high surrogate", 0xd800, 4);
    row("last high surrogate", 0xdbff, 4);
    row("first low surrogate", 0xdc00, 5);
    row("last low surrogate", 0xdfff, 5);
    row("first above the surrogates", 0xe000, 2);
    row("half-width full stop is wide", 0xff61, 2);
    row("half-width middle dot is wide", 0xff65, 2);
    row("first half-width katakana", 0xff66, 3);
    row("last half-width katakana", 0xff9f, 3);
    row("behind half-width katakana", 0xffa0, 2);
    row("last unit", 0xffff, 2);
}

void CharactersTest::charClass()
{
    QFETCH(QChar, character);
    QFETCH(int, expected);

    QCOMPARE(m_runtime.charClass(character), expected);
    QCOMPARE(m_runtime.charClassAt(QString(character), 0), expected);
}

void CharactersTest::charClassFollowsTheFields()
{
    m_runtime.charClassNone = 99;
    m_runtime.charClassNarrow = -1;
    m_runtime.charClassWide = most;
    m_runtime.charClassHalfKana = least;
    m_runtime.charClassHighSurrogate = 70;
    m_runtime.charClassLowSurrogate = 0;
    for (int unit = 0; unit <= 0xffff; ++unit) {
        int expected = most;
        if (unit < 0x80)
            expected = -1;
        else if (unit >= 0xd800 && unit < 0xdc00)
            expected = 70;
        else if (unit >= 0xdc00 && unit < 0xe000)
            expected = 0;
        else if (unit >= 0xff66 && unit < 0xffa0)
            expected = least;
        if (m_runtime.charClass(QChar(unit)) != expected)
            QFAIL(qPrintable(QString::number(unit, 16)));
    }
    QCOMPARE(m_runtime.charClassAt(u"漢"_s, 1), -1);
}

void CharactersTest::charClassAt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("expected");

    const QString text = u"漢Aｱ"_s + high + low;
    QTest::newRow("first") << text << 0 << 2;
    QTest::newRow("second") << text << 1 << 1;
    QTest::newRow("third") << text << 2 << 3;
    QTest::newRow("high half") << text << 3 << 4;
    QTest::newRow("last, low half") << text << 4 << 5;
    QTest::newRow("at the end") << text << 5 << 1;
    QTest::newRow("past the end") << text << 6 << 1;
    QTest::newRow("largest position") << text << most << 1;
    QTest::newRow("one below zero") << text << -1 << 2;
    QTest::newRow("smallest position") << text << least << 2;
    QTest::newRow("empty text") << u""_s << 0 << 1;
    QTest::newRow("empty text, negative position") << u""_s << -1 << 1;
    QTest::newRow("null text") << QString() << 0 << 1;
}

void CharactersTest::charClassAt()
{
    QFETCH(QString, text);
    QFETCH(int, pos);

    QTEST(m_runtime.charClassAt(text, pos), "expected");
}

void CharactersTest::charDisplayWidth_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<QString>("classes");
    QTest::addColumn<int>("expected");

    const auto row = [](const char *name, char16_t unit, const QString &classes, int expected) {
        QTest::newRow(name) << QChar(unit) << classes << expected;
    };
    row("ASCII", u'A', u""_s, 1);
    row("NUL", u'\0', u""_s, 1);
    row("last narrow", 0x007f, u""_s, 1);
    row("first wide", 0x0080, u""_s, 2);
    row("half-width katakana", u'ｱ', u""_s, 1);
    row("in front of half-width katakana", 0xff65, u""_s, 2);
    row("behind half-width katakana", 0xffa0, u""_s, 2);
    row("katakana", u'ア', u""_s, 2);
    row("full-width yen sign", 0xffe5, u""_s, 2);
    row("high surrogate", 0xd800, u""_s, 2);
    row("last high surrogate", 0xdbff, u""_s, 2);
    row("low surrogate", 0xdc00, u""_s, 0);
    row("last low surrogate", 0xdfff, u""_s, 0);

    row("wide as none stays wide", u'漢', u"W=0"_s, 2);
    row("wide as narrow", u'漢', u"W=N"_s, 1);
    row("narrow as wide is narrow still", u'A', u"N=W"_s, 1);
    row("wide as what narrow has become", u'漢', u"N=W"_s, 1);
    row("wide as half-width katakana", u'漢', u"W=K"_s, 1);
    row("wide as low surrogate", u'漢', u"W=L"_s, 0);
    row("wide as high surrogate", u'漢', u"W=H"_s, 2);
    row("narrow as low surrogate", u'A', u"N=L"_s, 0);
    row("narrow as high surrogate", u'A', u"N=H"_s, 2);
    row("katakana as high surrogate", u'ｱ', u"K=H"_s, 2);
    row("katakana as wide", u'ｱ', u"K=W"_s, 1);
    row("katakana as low surrogate", u'ｱ', u"K=L"_s, 0);
    row("low surrogate as high", 0xdc00, u"L=H"_s, 0);
    row("high surrogate as low", 0xd800, u"H=L"_s, 0);
    row("high surrogate as narrow", 0xd800, u"H=N"_s, 2);
    row("low surrogate as wide", 0xdc00, u"L=W"_s, 0);
    row("none as wide changes nothing", u'漢', u"0=W"_s, 2);
    row("all as none, wide", u'漢', u"N=0 W=0 K=0 H=0 L=0"_s, 0);
    row("all but the low surrogate as none, narrow", u'A', u"N=0 W=0 K=0 H=0"_s, 2);
    row("narrow, wide and katakana as none, wide", u'漢', u"N=0 W=0 K=0"_s, 1);
}

void CharactersTest::charDisplayWidth()
{
    QFETCH(QChar, character);
    QFETCH(QString, classes);

    setClasses(m_runtime, classes);
    QTEST(m_runtime.charDisplayWidth(character), "expected");
}

void CharactersTest::charDisplayWidthOfEveryMixOfClasses()
{
    // The classes in the order that decides, with a unit and the columns of each.
    struct Class {
        QChar letter;
        QChar unit;
        int columns;
    };
    const Class classes[] = {
        {u'L', QChar(0xdc00), 0},
        {u'H', QChar(0xd800), 2},
        {u'K', u'ｱ', 1},
        {u'N', u'A', 1},
        {u'W', u'漢', 2},
    };
    for (int mix = 0; mix < 3125; ++mix) {
        int rest = mix;
        for (const Class &one : classes) {
            classField(m_runtime, one.letter) = rest % 5;
            rest /= 5;
        }
        for (const Class &one : classes) {
            const int value = classField(m_runtime, one.letter);
            const Class *first = classes;
            while (classField(m_runtime, first->letter) != value)
                ++first;
            QCOMPARE(m_runtime.charClass(one.unit), value);
            QCOMPARE(m_runtime.charDisplayWidth(one.unit), first->columns);
        }
    }
}

void CharactersTest::charUnitsAtAndIsTrailAt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");
    QTest::addColumn<QString>("classes");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("trail");

    const auto row
        = [](const char *name, const QString &text, int pos, const QString &classes, int count, bool trail) {
              QTest::newRow(name) << text << pos << classes << count << trail;
          };
    const QString pair = high + low;
    row("ASCII", u"AB"_s, 0, u""_s, 1, false);
    row("wide", u"漢字"_s, 0, u""_s, 1, false);
    row("half-width katakana", u"ｱ"_s, 0, u""_s, 1, false);
    row("combining mark is a character", u"e\u0301"_s, 0, u""_s, 1, false);
    row("pair, high half", pair, 0, u""_s, 2, false);
    row("pair, low half", pair, 1, u""_s, 1, true);
    row("pair, past it", pair, 2, u""_s, 1, false);
    row("pair, far past it", pair, 3, u""_s, 1, false);
    row("lone high surrogate at the end", u"A"_s + high, 1, u""_s, 2, false);
    row("lone high surrogate in front of a letter", high + u"A"_s, 0, u""_s, 2, false);
    row("lone low surrogate", low + u"A"_s, 0, u""_s, 1, true);
    row("two high surrogates", high + high, 0, u""_s, 2, false);
    row("empty", u""_s, 0, u""_s, 1, false);
    row("null", QString(), 0, u""_s, 1, false);
    row("negative position", pair, -1, u""_s, 2, false);
    row("smallest position", low, least, u""_s, 1, true);
    row("negative position, empty", u""_s, -1, u""_s, 1, false);
    row("largest position", pair, most, u""_s, 1, false);

    row("wide as none, trails of a letter", u"A漢字B"_s, 0, u"W=0"_s, 3, false);
    row("wide as none, up to the end", u"A漢字"_s, 0, u"W=0"_s, 3, false);
    row("wide as none, on a trail", u"A漢字B"_s, 1, u"W=0"_s, 2, true);
    row("wide as none, on the last trail", u"A漢字B"_s, 2, u"W=0"_s, 1, true);
    row("wide as none, in front of a letter", u"AB漢"_s, 0, u"W=0"_s, 1, false);
    row("wide as none, behind a pair", pair + u"漢"_s, 0, u"W=0"_s, 2, false);
    row("wide as none, behind a low half", pair + u"漢字"_s, 1, u"W=0"_s, 3, true);
    row("wide as none, past the end", u"漢"_s, 1, u"W=0"_s, 1, false);
    row("wide as none, negative position", u"漢字A"_s, -5, u"W=0"_s, 2, true);
    row("none as wide", u"A漢字B"_s, 0, u"0=W"_s, 3, false);
    row("katakana as none", u"ｶﾞｷ"_s, 0, u"K=0"_s, 3, true);
    row("narrow as none ends at the end", u"ABC"_s, 0, u"N=0"_s, 3, true);
    row("narrow as none, last", u"ABC"_s, 2, u"N=0"_s, 1, true);
    row("narrow as none, at the end", u"ABC"_s, 3, u"N=0"_s, 1, false);
    row("narrow as none, far past the end", u"ABC"_s, most, u"N=0"_s, 1, false);
    row("narrow as none, empty", u""_s, 0, u"N=0"_s, 1, false);
    row("low surrogate as none", u"A"_s + low + low + u"B"_s, 0, u"L=0"_s, 3, false);
    row("low surrogate as none, on a trail", u"A"_s + low + low + u"B"_s, 1, u"L=0"_s, 2, true);
    row("low surrogate as none, pair", pair + low, 0, u"L=0"_s, 2, false);
    row("high surrogate as none", high + high + u"A"_s, 0, u"H=0"_s, 2, true);
    row("high surrogate as none, behind a letter", u"A"_s + high + low, 0, u"H=0"_s, 2, false);
    row("narrow as high surrogate", u"ABC"_s, 0, u"N=H"_s, 2, false);
    row("narrow as high surrogate, past the end", u"ABC"_s, 3, u"N=H"_s, 2, false);
    row("wide as low surrogate is a trail", u"漢"_s, 0, u"W=L"_s, 1, true);
    row("narrow as low surrogate, past the end", u"A"_s, 1, u"N=L"_s, 1, false);
    row("low surrogate as high", low, 0, u"L=H"_s, 2, true);
    row("high surrogate as wide, wide has two units", u"漢"_s, 0, u"W=H"_s, 2, false);
    row("all as none", u"A漢"_s, 0, u"N=0 W=0 K=0 H=0 L=0"_s, 2, true);
    row("all but high surrogate as none", u"A漢Bｱ"_s, 1, u"N=0 W=0 K=0 L=0"_s, 3, true);
}

void CharactersTest::charUnitsAtAndIsTrailAt()
{
    QFETCH(QString, text);
    QFETCH(int, pos);
    QFETCH(QString, classes);

    setClasses(m_runtime, classes);
    QTEST(m_runtime.isTrailAt(text, pos), "trail");
    QTEST(m_runtime.charUnitsAt(text, pos), "count");
}

void CharactersTest::charUnitsAtOfManyTrails()
{
    setClasses(m_runtime, u"W=0"_s);
    const QString text = u'A' + QString(1000000, u'漢') + u'B';
    QCOMPARE(m_runtime.charUnitsAt(text, 0), 1000001);
    QCOMPARE(m_runtime.charUnitsAt(text, 1), 1000000);
    QCOMPARE(m_runtime.charUnitsAt(text, 1000000), 1);
}

QTEST_GUILESS_MAIN(CharactersTest)
#include "tst_characters.moc"
