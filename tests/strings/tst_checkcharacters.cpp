// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

const QString alphabet = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"_s;

} // namespace

class CheckCharactersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void code39CheckChar_data();
    void code39CheckChar();
    void code39CheckCharTakesItsAlphabetOnly();
    void code39CheckCharTakesEverySum();
    void mod11CheckDigit_data();
    void mod11CheckDigit();
    void mod11CheckDigitTakesEveryUnit();
    void mod11CheckDigitRepeatsItsWeights();
    void mod10CheckDigit_data();
    void mod10CheckDigit();
    void mod10CheckDigitCountsOnlyAsciiDigits();
    void mod10CheckDigitFindsChanges();
    void mod10CheckDigitAndOthersOfLongCodes();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void CheckCharactersTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"check"_s;
    m_runtime.convertOk = true;
}

void CheckCharactersTest::cleanup() const
{
    // A refused character shows in the result alone.
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"check"_s);
    QVERIFY(m_runtime.convertOk);
}

void CheckCharactersTest::code39CheckChar_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("character");

    const auto row = [](const char *name, const QString &code, const QString &character) {
        QTest::newRow(name) << code << character;
    };

    // Printed elsewhere: the primary code in the HIBC supplier labeling standard, and the message that
    // introductions to the symbology compute.
    row("HIBC supplier standard, +A123BJC5D6E71 with G", u"+A123BJC5D6E71"_s, u"G"_s);
    row("textbook example, 12345ABCDE/ with T", u"12345ABCDE/"_s, u"T"_s);

    row("name of the symbology", u"CODE39"_s, u"W"_s);
    row("lower case counts as upper case", u"code39"_s, u"W"_s);
    row("mixed case", u"cOdE39"_s, u"W"_s);
    row("empty", u""_s, u"0"_s);
    row("null", QString(), u"0"_s);
    row("order of the characters does not count", u"93EDOC"_s, u"W"_s);

    row("sum 0", u"000"_s, u"0"_s);
    row("sum 41", u"+"_s, u"+"_s);
    row("sum 42", u"%"_s, u"%"_s);
    row("sum 42 of two", u"+1"_s, u"%"_s);
    row("sum 43", u"%1"_s, u"0"_s);
    row("sum 44", u"%2"_s, u"1"_s);
    row("sum 85", u"%%1"_s, u"%"_s);
    row("sum 86", u"%%2"_s, u"0"_s);
    row("blank counts 38", u" "_s, u" "_s);
    row("blanks at the ends count", u" 1 "_s, u"Y"_s);

    row("start and stop character", u"AB*"_s, u""_s);
    row("refused at the start", u"*AB"_s, u""_s);
    row("refused in the middle", u"A*B"_s, u""_s);
    row("refused alone", u"*"_s, u""_s);
    row("tab", u"A\tB"_s, u""_s);
    row("NUL", QString(u"A"_s + QChar(u'\0')), u""_s);
    row("comma", u"A,B"_s, u""_s);
    row("full-width letter", u"Ａ"_s, u""_s);
    row("full-width small letter", u"ａ"_s, u""_s);
    row("full-width digit", u"１"_s, u""_s);
    row("kanji", u"漢"_s, u""_s);
    row("half-width katakana", u"ｱ"_s, u""_s);
    row("lone high surrogate", QString(QChar(0xd800)), u""_s);
    row("lone low surrogate", QString(QChar(0xdc41)), u""_s);
    row("letter outside the basic plane", u"\U0001d400"_s, u""_s);
    row("unit with the low byte of a letter", QString(QChar(0x0141)), u""_s);

    // Upper case is Unicode's, so two letters besides the ASCII ones land in the alphabet.
    row("dotless i counts as I", u"ı"_s, u"I"_s);
    row("long s counts as S", u"ſ"_s, u"S"_s);
    row("dotted capital I", u"İ"_s, u""_s);
    row("Kelvin sign", u"\u212a"_s, u""_s);
    row("sharp s", u"ß"_s, u""_s);
    row("ligature st", u"\ufb06"_s, u""_s);
}

void CheckCharactersTest::code39CheckChar()
{
    QFETCH(QString, code);
    QFETCH(QString, character);

    QCOMPARE(m_runtime.code39CheckChar(code), character);
}

void CheckCharactersTest::code39CheckCharTakesItsAlphabetOnly()
{
    const QString small = u"abcdefghijklmnopqrstuvwxyz"_s;
    const QString others = u"ıſ"_s, counted = u"IS"_s;
    for (int unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        QString expected;
        if (alphabet.contains(character))
            expected = character;
        else if (small.contains(character))
            expected = alphabet[10 + small.indexOf(character)];
        else if (others.contains(character))
            expected = counted[others.indexOf(character)];
        QCOMPARE(m_runtime.code39CheckChar(character), expected);
    }
}

void CheckCharactersTest::code39CheckCharTakesEverySum()
{
    for (int first = 0; first < 43; ++first) {
        for (int second = 0; second < 43; ++second) {
            const QString code = QString(alphabet[first]) + alphabet[second];
            QCOMPARE(m_runtime.code39CheckChar(code), QString(alphabet[(first + second) % 43]));
        }
    }
}

void CheckCharactersTest::mod11CheckDigit_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("digit");

    const auto row = [](const char *name, const QString &code, const QString &digit) {
        QTest::newRow(name) << code << digit;
    };

    row("empty", u""_s, u"0"_s);
    row("null", QString(), u"0"_s);
    row("five digits", u"12345"_s, u"5"_s);
    row("one digit", u"1"_s, u"9"_s);
    row("remainder 0", u"0"_s, u"0"_s);
    row("remainder 1", u"6"_s, u"0"_s);
    row("remainder 2", u"01"_s, u"9"_s);
    row("remainder 10", u"5"_s, u"1"_s);
    row("remainder 0 of a sum above 0", u"14"_s, u"0"_s); // 1 * 3 + 4 * 2 = 11
    row("weight 7", u"100000"_s, u"4"_s);
    row("weight 2 again", u"1000000"_s, u"9"_s);
    row("weight 7 for the second time", u"100000000000"_s, u"4"_s);
    row("weight 2 for the third time", u"1000000000000"_s, u"9"_s);
    row("twelve digits", u"123456789012"_s, u"5"_s); // the sum is 226
    row("letter counts its low bits", u"A"_s, u"9"_s);
    row("letter Z counts 2", u"Z"_s, u"7"_s);
    row("small letter as its capital", u"a"_s, u"9"_s);
    row("minus sign counts 5", u"-"_s, u"1"_s);
    row("blank counts 0", u" "_s, u"0"_s);
    row("blank keeps a place", u"1 "_s, u"8"_s);
    row("letter I counts 9", u"I"_s, u"4"_s);
    row("letter J counts 2, not 10", u"J"_s, u"7"_s);
    row("letter O counts 7, not 15", u"O"_s, u"8"_s);
    row("full-width digit counts as its digit", u"５"_s, u"1"_s);
    row("NUL counts 0", QString(QChar(u'\0')), u"0"_s);
    row("lone high surrogate", QString(QChar(0xd801)), u"9"_s);
    row("lone low surrogate", QString(QChar(0xdfff)), u"8"_s);
    row("surrogate pair holds two places", u"\U00010001"_s, u"9"_s); // d800 and dc01 count 0 and 1
}

void CheckCharactersTest::mod11CheckDigit()
{
    QFETCH(QString, code);
    QFETCH(QString, digit);

    QCOMPARE(m_runtime.mod11CheckDigit(code), digit);
}

void CheckCharactersTest::mod11CheckDigitTakesEveryUnit()
{
    // The value of a unit by its last hexadecimal figure, and the digit that twice the value leads to.
    constexpr int values[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 2, 3, 4, 5, 6, 7};
    constexpr char16_t digits[] = u"0975310864";
    for (int unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        QCOMPARE(m_runtime.mod11CheckDigit(character), QString(QChar(digits[values[unit % 16]])));
    }
}

void CheckCharactersTest::mod11CheckDigitRepeatsItsWeights()
{
    // From the left, as the weights are usually printed.
    QRandomGenerator random(11);
    for (int length = 1; length <= 60; ++length) {
        QString code;
        int weight = (length - 1) % 6 + 2;
        int sum = 0;
        for (int i = 0; i < length; ++i) {
            const int value = random.bounded(10);
            code += QString::number(value);
            sum += value * weight;
            weight = weight == 2 ? 7 : weight - 1;
        }
        const int check = 11 - sum % 11;
        QCOMPARE(m_runtime.mod11CheckDigit(code), check >= 10 ? u"0"_s : QString::number(check));
    }
}

void CheckCharactersTest::mod10CheckDigit_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("digit");

    const auto row = [](const char *name, const QString &code, const QString &digit) {
        QTest::newRow(name) << code << digit;
    };

    // Numbers as printed, the last figure apart.
    row("JAN 4901234567894", u"490123456789"_s, u"4"_s);
    row("JAN 4569951116179, from GS1 Japan's guide", u"456995111617"_s, u"9"_s);
    row("JAN-8 49968712, from GS1 Japan's guide", u"4996871"_s, u"2"_s);
    row("GTIN-13 6291041500213, from GS1's check digit page", u"629104150021"_s, u"3"_s);
    row("ISBN 978-0-11-000222-4, from the ISBN users' manual", u"978011000222"_s, u"4"_s);
    row("ISBN 978-3-16-148410-0", u"978316148410"_s, u"0"_s);
    row("EAN-13 4006381333931, on a pen", u"400638133393"_s, u"1"_s);
    row("EAN-8 73513537", u"7351353"_s, u"7"_s);
    row("EAN-8 96385074", u"9638507"_s, u"4"_s);
    row("UPC 036000291452", u"03600029145"_s, u"2"_s);

    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);
    row("one digit has weight 3", u"1"_s, u"7"_s);
    row("second digit has weight 1", u"10"_s, u"9"_s);
    row("third digit has weight 3", u"100"_s, u"7"_s);
    row("sum 0", u"0"_s, u"0"_s);
    row("sum 10", u"13"_s, u"0"_s);
    row("sum 9", u"3"_s, u"1"_s);
    row("sum 11", u"23"_s, u"9"_s);
    row("minus sign keeps its place", u"12-3"_s, u"4"_s);
    row("the same without it", u"123"_s, u"6"_s);
    row("blank at the end keeps its place", u"1 "_s, u"9"_s);
    row("blank at the start changes nothing", u" 1"_s, u"7"_s);
    row("letters alone", u"ABC"_s, u"0"_s);
    row("one letter", u"A"_s, u"0"_s);
    row("full-width digit counts nothing", u"１"_s, u"0"_s);
    row("slash and colon count nothing", u"/:"_s, u"0"_s);
    row("NUL keeps its place", QString(u"1"_s + QChar(u'\0')), u"9"_s);
    row("NUL alone is no empty code", QString(QChar(u'\0')), u"0"_s);
    row("lone high surrogate keeps its place", QString(u"1"_s + QChar(0xd835)), u"9"_s);
    row("lone low surrogate keeps its place", QString(u"1"_s + QChar(0xdfd1)), u"9"_s);
    row("surrogate pair holds two places", u"1\U0001d7d1"_s, u"7"_s);
}

void CheckCharactersTest::mod10CheckDigit()
{
    QFETCH(QString, code);
    QFETCH(QString, digit);

    QCOMPARE(m_runtime.mod10CheckDigit(code), digit);
}

void CheckCharactersTest::mod10CheckDigitCountsOnlyAsciiDigits()
{
    constexpr char16_t digits[] = u"0741852963";
    for (int unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        const bool isDigit = unit >= u'0' && unit <= u'9';
        QCOMPARE(m_runtime.mod10CheckDigit(character), QString(QChar(isDigit ? digits[unit - u'0'] : u'0')));
    }
}

void CheckCharactersTest::mod10CheckDigitFindsChanges()
{
    // What the digit is for: one wrong figure anywhere gives another one.
    const QString code = u"456995111617"_s;
    for (int place = 0; place < code.size(); ++place) {
        for (char16_t figure = u'0'; figure <= u'9'; ++figure) {
            QString changed = code;
            changed[place] = figure;
            QCOMPARE(m_runtime.mod10CheckDigit(changed) == u"9"_s, changed == code);
        }
    }
}

void CheckCharactersTest::mod10CheckDigitAndOthersOfLongCodes()
{
    // Long enough for each sum to pass 31 bits.
    QString code(120000000, u'9');
    QCOMPARE(m_runtime.mod10CheckDigit(code), u"0"_s); // 60 million times 36 is a multiple of 10
    code.truncate(60000000);
    QCOMPARE(m_runtime.mod11CheckDigit(code), u"1"_s); // 10 million times 9 * 27 leaves 10
    code.fill(u'%');
    QCOMPARE(m_runtime.code39CheckChar(code), QString(alphabet[42LL * 60000000 % 43]));
}

QTEST_GUILESS_MAIN(CheckCharactersTest)
#include "tst_checkcharacters.moc"
