// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

} // namespace

class SearchingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void indexOfAndLastIndexOfText_data();
    void indexOfAndLastIndexOfText();
    void indexOfAndLastIndexOfCharacter_data();
    void indexOfAndLastIndexOfCharacter();
    void indexOfNegativePosition_data();
    void indexOfNegativePosition();
    void lastIndexOfSeesNothingBehindTheText();
    void findInTheWholeText_data();
    void findInTheWholeText();
    void indexOfAny_data();
    void indexOfAny();
    void indexOfAnyFollowsTheWalk();
    void indexOfAnyAtEveryPlace();
    void indexOfAnyInLongTexts();
    void startsWithAndEndsWith_data();
    void startsWithAndEndsWith();
    void indexOfAndOtherOverloads();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void SearchingTest::init()
{
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void SearchingTest::cleanup() const
{
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void SearchingTest::indexOfAndLastIndexOfText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sub");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    const QString text = u"abcab"_s;
    QTest::newRow("from the start") << text << u"ab"_s << 0 << 0 << 0;
    QTest::newRow("behind the first") << text << u"ab"_s << 1 << 3 << 0;
    QTest::newRow("in front of the second") << text << u"ab"_s << 2 << 3 << 0;
    QTest::newRow("at the second") << text << u"ab"_s << 3 << 3 << 3;
    QTest::newRow("behind the second") << text << u"ab"_s << 4 << -1 << 3;
    QTest::newRow("at the end") << text << u"ab"_s << 5 << -1 << 3;
    QTest::newRow("largest position") << text << u"ab"_s << most << -1 << -1;
    QTest::newRow("overlapping") << u"aaa"_s << u"aa"_s << 1 << 1 << 1;
    QTest::newRow("case counts") << u"AB"_s << u"ab"_s << 0 << -1 << -1;
    QTest::newRow("longer than the text") << u"ab"_s << u"abc"_s << 0 << -1 << -1;
    QTest::newRow("empty in a text") << text << u""_s << 0 << 0 << 0;
    QTest::newRow("empty inside") << text << u""_s << 2 << 2 << 2;
    QTest::newRow("empty at the end") << text << u""_s << 5 << 5 << 5;
    QTest::newRow("empty past the end") << text << u""_s << 6 << -1 << -1;
    QTest::newRow("empty in empty") << u""_s << u""_s << 0 << 0 << 0;
    QTest::newRow("text in empty") << u""_s << u"a"_s << 0 << -1 << -1;
    QTest::newRow("text in null") << QString() << u"a"_s << 0 << -1 << -1;
    QTest::newRow("no folding of width") << u"ア"_s << u"ｱ"_s << 0 << -1 << -1;
    QTest::newRow("half of a pair") << u"\U00020bb7"_s << QString(QChar(0xdfb7)) << 1 << 1 << 1;
    QTest::newRow("NUL") << u'a' + QString(QChar(u'\0')) << QString(QChar(u'\0')) << 1 << 1 << 1;
}

void SearchingTest::indexOfAndLastIndexOfText()
{
    QFETCH(QString, text);
    QFETCH(QString, sub);
    QFETCH(int, from);

    QTEST(m_runtime.indexOf(text, sub, from), "first");
    QTEST(m_runtime.lastIndexOf(text, sub, from), "last");
}

void SearchingTest::indexOfAndLastIndexOfCharacter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("wanted");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    const QString text = u"abcab"_s;
    const QChar b = u'b';
    QTest::newRow("from the start") << text << b << 0 << 1 << -1;
    QTest::newRow("at the first") << text << b << 1 << 1 << 1;
    QTest::newRow("behind the first") << text << b << 2 << 4 << 1;
    QTest::newRow("at the last") << text << b << 4 << 4 << 4;
    QTest::newRow("at the end") << text << b << 5 << -1 << 4;
    QTest::newRow("largest position") << text << b << most << -1 << 4;
    QTest::newRow("none") << text << QChar(u'x') << 0 << -1 << -1;
    QTest::newRow("case counts") << text << QChar(u'A') << 0 << -1 << -1;
    QTest::newRow("empty") << u""_s << b << 0 << -1 << -1;
    QTest::newRow("null") << QString() << b << 0 << -1 << -1;
    QTest::newRow("low half") << u"\U00020bb7"_s << QChar(0xdfb7) << 1 << 1 << 1;
    QTest::newRow("NUL") << u'a' + QString(QChar(u'\0')) << QChar(u'\0') << 1 << 1 << 1;
}

void SearchingTest::indexOfAndLastIndexOfCharacter()
{
    QFETCH(QString, text);
    QFETCH(QChar, wanted);
    QFETCH(int, from);

    QTEST(m_runtime.indexOf(text, wanted, from), "first");
    QTEST(m_runtime.lastIndexOf(text, wanted, from), "last");
}

void SearchingTest::indexOfNegativePosition_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sub");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    const QString text = u"abcab"_s;
    const auto row
        = [](const char *name, const QString &in, const QString &sub, int from, int first, int last) {
              QTest::newRow(name) << in << sub << from << first << last;
          };
    row("last unit", text, u"b"_s, -1, 4, 4);
    row("last unit but one", text, u"b"_s, -2, 4, 1);
    row("last unit, two are wanted", text, u"ab"_s, -1, -1, 3);
    row("last place for two", text, u"ab"_s, -2, 3, 3);
    row("middle", text, u"ab"_s, -3, 3, 0);
    row("second unit", text, u"ab"_s, -4, 3, 0);
    row("first unit", text, u"ab"_s, -5, 0, 0);
    row("first unit, one is wanted", text, u"a"_s, -5, 0, 0);
    row("first unit, it is another", text, u"b"_s, -5, 1, -1);
    row("before the text, one is wanted", text, u"a"_s, -6, -1, -1);
    row("before the text, the last unit is wanted", text, u"b"_s, -6, -1, -1);
    row("before the text, two reach into it", text, u"ab"_s, -6, -1, -1);
    row("before the text, two reach up to it", text, u"ab"_s, -7, -1, -1);
    row("before the text, two end before it", text, u"ab"_s, -8, -1, -1);
    row("before the text, five reach into it", text, text, -9, -1, -1);
    row("before the text, five reach up to it", text, text, -10, -1, -1);
    row("before the text, five end before it", text, text, -11, -1, -1);
    row("before the text, more than it has", text, u"abcabc"_s, -6, -1, -1);
    row("far before the text", text, u"ab"_s, -100, -1, -1);
    row("largest", text, u"ab"_s, -most, -1, -1);
    row("least", text, u"ab"_s, least, -1, -1);
    row("least, one is wanted", text, u"a"_s, least, -1, -1);
    row("empty at the last unit", text, u""_s, -1, 4, 4);
    row("empty at the first unit", text, u""_s, -5, 0, 0);
    row("empty before the text", text, u""_s, -6, -1, -1);
    row("one in an empty text", u""_s, u"a"_s, -1, -1, -1);
    row("two in an empty text", u""_s, u"ab"_s, -1, -1, -1);
    row("empty in an empty text", u""_s, u""_s, -1, -1, -1);
    row("two in a null text", QString(), u"ab"_s, -1, -1, -1);
}

void SearchingTest::indexOfNegativePosition()
{
    QFETCH(QString, text);
    QFETCH(QString, sub);
    QFETCH(int, from);

    QTEST(m_runtime.indexOf(text, sub, from), "first");
    QTEST(m_runtime.lastIndexOf(text, sub, from), "last");
    if (sub.size() == 1) {
        QTEST(m_runtime.indexOf(text, sub[0], from), "first");
        QTEST(m_runtime.lastIndexOf(text, sub[0], from), "last");
    }
}

void SearchingTest::lastIndexOfSeesNothingBehindTheText()
{
    // A view into the middle of a buffer, so that a unit read past the end would fit.
    const QString buffer = u"abXX"_s;
    const QString text = QString::fromRawData(buffer.constData(), 2);
    const QString nul = QString(QChar(u'\0'));
    for (const int from : {2, 3, most}) {
        QCOMPARE(m_runtime.lastIndexOf(text, u'X', from), -1);
        QCOMPARE(m_runtime.lastIndexOf(text, u"X"_s, from), -1);
        QCOMPARE(m_runtime.lastIndexOf(u"ab"_s, u'\0', from), -1);
        QCOMPARE(m_runtime.lastIndexOf(u"ab"_s, nul, from), -1);
        QCOMPARE(m_runtime.lastIndexOf(u"ab"_s, u'b', from), 1);
        QCOMPARE(m_runtime.indexOf(text, u'X', from), -1);
        QCOMPARE(m_runtime.indexOf(text, u"X"_s, from), -1);
        QCOMPARE(m_runtime.indexOfAny(text, u"X"_s, from), -1);
    }
    QCOMPARE(m_runtime.lastIndexOf(text, u"X"_s), -1);
    QCOMPARE(m_runtime.lastIndexOf(u"ab"_s, nul), -1);
    QCOMPARE(m_runtime.lastIndexOf(u""_s, nul), -1);
    QCOMPARE(m_runtime.lastIndexOf(QString(), u'\0', 0), -1);
}

void SearchingTest::findInTheWholeText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sub");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    QTest::newRow("twice") << u"abcab"_s << u"ab"_s << 0 << 3;
    QTest::newRow("once, at the end") << u"abc"_s << u"c"_s << 2 << 2;
    QTest::newRow("once, at the start") << u"abc"_s << u"a"_s << 0 << 0;
    QTest::newRow("the whole") << u"abc"_s << u"abc"_s << 0 << 0;
    QTest::newRow("overlapping") << u"aaaa"_s << u"aa"_s << 0 << 2;
    QTest::newRow("none") << u"abc"_s << u"x"_s << -1 << -1;
    QTest::newRow("case counts") << u"abc"_s << u"B"_s << -1 << -1;
    QTest::newRow("empty, behind the last") << u"abc"_s << u""_s << 0 << 3;
    QTest::newRow("null, behind the last") << u"abc"_s << QString() << 0 << 3;
    QTest::newRow("empty in empty") << u""_s << u""_s << 0 << 0;
    QTest::newRow("text in empty") << u""_s << u"a"_s << -1 << -1;
    QTest::newRow("text in null") << QString() << u"a"_s << -1 << -1;
    QTest::newRow("lone surrogate") << u"a\U00020bb7"_s << QString(QChar(0xd842)) << 1 << 1;
    QTest::newRow("NUL") << QString(3, QChar(u'\0')) << QString(QChar(u'\0')) << 0 << 2;
}

void SearchingTest::findInTheWholeText()
{
    QFETCH(QString, text);
    QFETCH(QString, sub);
    QFETCH(int, first);
    QFETCH(int, last);

    QCOMPARE(m_runtime.find(text, sub), first);
    QCOMPARE(m_runtime.lastIndexOf(text, sub), last);
    if (sub.size() == 1) {
        QCOMPARE(m_runtime.findChar(text, sub[0]), first);
        QCOMPARE(m_runtime.containsChar(sub[0], text), first >= 0);
        QCOMPARE(m_runtime.lastIndexOf(text, sub[0]), last);
    }
}

void SearchingTest::indexOfAny_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("chars");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("expected");

    const QString text = u"2024-01/02"_s;
    QTest::newRow("first of the text, not of the characters") << text << u"/-"_s << 0 << 4;
    QTest::newRow("first unit") << text << u"-2"_s << 0 << 0;
    QTest::newRow("at it") << text << u"/-"_s << 4 << 4;
    QTest::newRow("behind it") << text << u"/-"_s << 5 << 7;
    QTest::newRow("behind the last") << text << u"/-"_s << 8 << -1;
    QTest::newRow("last unit") << text << u"x2"_s << 9 << 9;
    QTest::newRow("at the end") << text << u"2"_s << 10 << -1;
    QTest::newRow("past the end") << text << u"2"_s << 11 << -1;
    QTest::newRow("largest position") << text << u"2"_s << most << -1;
    QTest::newRow("position -1 is the start") << text << u"4"_s << -1 << 3;
    QTest::newRow("position -1 finds the first unit") << text << u"2"_s << -1 << 0;
    QTest::newRow("smallest position") << text << u"2"_s << least << 0;
    QTest::newRow("none") << text << u"xyz"_s << 0 << -1;
    QTest::newRow("no characters") << text << u""_s << 0 << -1;
    QTest::newRow("null characters") << text << QString() << 0 << -1;
    QTest::newRow("empty") << u""_s << u"a"_s << 0 << -1;
    QTest::newRow("null, negative position") << QString() << u"a"_s << -1 << -1;
    QTest::newRow("empty in empty") << u""_s << u""_s << 0 << -1;
    QTest::newRow("case counts") << u"aB"_s << u"b"_s << 0 << -1;
    QTest::newRow("pair is two units") << u"a\U00020bb7"_s << u"\U0001f7b7"_s << 0 << 2;
    QTest::newRow("NUL") << u'a' + QString(QChar(u'\0')) << QString(QChar(u'\0')) << 0 << 1;
    const QString many = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s;
    QTest::newRow("fifteen characters") << u"--O-"_s << many.first(15) << 0 << 2;
    QTest::newRow("sixteen characters") << u"--P-"_s << many.first(16) << 0 << 2;
    QTest::newRow("seventeen characters") << u"--Q-"_s << many.first(17) << 0 << 2;
    QTest::newRow("seventeen characters, none") << u"--R-"_s << many.first(17) << 0 << -1;
    QTest::newRow("many characters, negative position") << u"A"_s << many << -1 << 0;
    QTest::newRow("many characters, smallest position") << u"-A"_s << many << least << 1;
    QTest::newRow("many characters, largest position") << u"A"_s << many << most << -1;
    QTest::newRow("many characters, empty") << u""_s << many << 0 << -1;
    QTest::newRow("many characters, last code units") << u"-\uffff"_s << many + u'\uffff' << 0 << 1;
}

void SearchingTest::indexOfAny()
{
    QFETCH(QString, text);
    QFETCH(QString, chars);
    QFETCH(int, from);
    QFETCH(int, expected);

    QCOMPARE(m_runtime.indexOfAny(text, chars, from), expected);
    if (from == 0)
        QCOMPARE(m_runtime.indexOfAny(text, chars), expected);
}

void SearchingTest::indexOfAnyFollowsTheWalk()
{
    QRandomGenerator random(20240102);
    const auto word = [&random](int longest) {
        QString text;
        for (auto size = random.bounded(longest + 1); size > 0; --size)
            text += QChar(u'a' + random.bounded(60));
        return text;
    };
    for (int round = 0; round < 20000; ++round) {
        const QString text = word(20), chars = word(30);
        const int from = random.bounded(-3, 25);
        int expected = -1;
        for (int i = qMax(from, 0); i < text.size() && expected < 0; ++i) {
            if (chars.contains(text[i]))
                expected = i;
        }
        if (m_runtime.indexOfAny(text, chars, from) != expected)
            QFAIL(qPrintable(u"%1, %2 from %3"_s.arg(text, chars).arg(from)));
    }
}

// Alone, and with the other character right behind it, as the last or farther on.
void SearchingTest::indexOfAnyAtEveryPlace()
{
    constexpr int size = 700;
    const QStringList sets{u"ab"_s, u"ba"_s, u"cdefghijklmnopab"_s, u"bcdefghijklmnopqa"_s};
    for (int place = 0; place < size; ++place) {
        QString text(size, u'x');
        text[place] = u'a';
        for (const int other : {place, place + 1, place + 100, size - 1}) {
            QString both = text;
            if (other > place && other < size)
                both[other] = u'b';
            for (const int from : {0, 7, place - 9, place - 8, place - 1, place}) {
                for (const QString &chars : sets) {
                    if (from <= place && m_runtime.indexOfAny(both, chars, from) != place)
                        QFAIL(qPrintable(u"%1 from %2 for %3"_s.arg(place).arg(from).arg(chars)));
                }
            }
        }
        if (m_runtime.indexOfAny(text, u"bc"_s, 0) != -1
            || m_runtime.indexOfAny(text, u"ab"_s, place + 1) != -1)
            QFAIL(qPrintable(u"found where nothing is: %1"_s.arg(place)));
    }
}

void SearchingTest::indexOfAnyInLongTexts()
{
    QString chars;
    for (int unit = 0x100; unit <= 0xffff; ++unit)
        chars += QChar(unit);
    QCOMPARE(m_runtime.indexOfAny(QString(1000000, u'x'), chars), -1);
    QCOMPARE(m_runtime.indexOfAny(QString(1000000, u'x') + u'漢', chars), 1000000);
}

void SearchingTest::startsWithAndEndsWith_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sub");
    QTest::addColumn<bool>("starts");
    QTest::addColumn<bool>("ends");

    QTest::newRow("start") << u"abcd"_s << u"ab"_s << true << false;
    QTest::newRow("end") << u"abcd"_s << u"cd"_s << false << true;
    QTest::newRow("middle") << u"abcd"_s << u"bc"_s << false << false;
    QTest::newRow("whole") << u"abcd"_s << u"abcd"_s << true << true;
    QTest::newRow("one longer") << u"abcd"_s << u"abcde"_s << false << false;
    QTest::newRow("case counts") << u"abab"_s << u"AB"_s << false << false;
    QTest::newRow("empty in a text") << u"ab"_s << u""_s << true << true;
    QTest::newRow("null in a text") << u"ab"_s << QString() << true << true;
    QTest::newRow("empty in empty") << u""_s << u""_s << true << true;
    QTest::newRow("null in empty") << u""_s << QString() << true << true;
    QTest::newRow("null in null") << QString() << QString() << true << true;
    QTest::newRow("text in empty") << u""_s << u"a"_s << false << false;
    QTest::newRow("text in null") << QString() << u"a"_s << false << false;
    QTest::newRow("half of a pair") << u"\U00020bb7"_s << QString(QChar(0xd842)) << true << false;
}

void SearchingTest::startsWithAndEndsWith()
{
    QFETCH(QString, text);
    QFETCH(QString, sub);

    QTEST(m_runtime.startsWith(text, sub), "starts");
    QTEST(m_runtime.endsWith(text, sub), "ends");
}

void SearchingTest::indexOfAndOtherOverloads()
{
    // Characters, literals and texts all find their overload.
    QCOMPARE(m_runtime.indexOf(u"abab"_s, u'b', 2), 3);
    QCOMPARE(m_runtime.indexOf(u"abab"_s, QChar(u'b'), 2), 3);
    QCOMPARE(m_runtime.indexOf(u"abab"_s, u"b"_s, 2), 3);
    QCOMPARE(m_runtime.indexOf(u"abab"_s, "b"_L1, 2), 3);
    QCOMPARE(m_runtime.lastIndexOf(u"abab"_s, u'b'), 3);
    QCOMPARE(m_runtime.lastIndexOf(u"abab"_s, QChar(u'b')), 3);
    QCOMPARE(m_runtime.lastIndexOf(u"abab"_s, u"b"_s), 3);
    QCOMPARE(m_runtime.lastIndexOf(u"abab"_s, u'b', 2), 1);
    QCOMPARE(m_runtime.lastIndexOf(u"abab"_s, u"b"_s, 2), 1);
    QCOMPARE(m_runtime.find(u"abab"_s, QChar(u'b')), 1);
    QCOMPARE(m_runtime.findChar(u"abab"_s, u'b'), 1);
    QVERIFY(m_runtime.containsChar(u'b', u"abab"_s));
    QVERIFY(m_runtime.containsChar(u'b', QChar(u'b')));
    QCOMPARE(m_runtime.indexOfAny(u"abab"_s, QChar(u'b')), 1);
    QVERIFY(m_runtime.startsWith(u"ab"_s, QChar(u'a')));
    QVERIFY(m_runtime.endsWith(u"ab"_s, QChar(u'b')));
}

QTEST_GUILESS_MAIN(SearchingTest)
#include "tst_searching.moc"
