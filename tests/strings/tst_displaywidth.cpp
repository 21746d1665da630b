// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QRandomGenerator>
#include <QTest>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

const QString high = QChar(0xd842);
const QString low = QChar(0xdfb7);

bool isHigh(QChar unit)
{
    return unit.unicode() >= 0xd800 && unit.unicode() <= 0xdbff;
}

int columnsOfUnit(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= 0xdc00 && unit <= 0xdfff)
        return 0;
    return unit <= 0x7f || (unit >= 0xff66 && unit <= 0xff9f) ? 1 : 2;
}

/// The first `units` code units stepped over one by one.
int steppedWidth(const QString &text, int units)
{
    int columns = 0;
    for (int position = 0; position < text.size() && position < units;) {
        columns += columnsOfUnit(text[position]);
        position += isHigh(text[position]) ? 2 : 1;
    }
    return columns;
}

int classOf(const AppRuntime &runtime, QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= 0xd800 && unit <= 0xdbff)
        return runtime.charClassHighSurrogate;
    if (unit >= 0xdc00 && unit <= 0xdfff)
        return runtime.charClassLowSurrogate;
    if (unit >= 0xff66 && unit <= 0xff9f)
        return runtime.charClassHalfKana;
    return unit < 0x80 ? runtime.charClassNarrow : runtime.charClassWide;
}

struct Stepped {
    int units;
    bool splits;
};

Stepped steppedUnits(const AppRuntime &runtime, const QString &text, int limit)
{
    int units = 0, columns = 0;
    while (units < text.size() && columns < limit) {
        const QChar unit = text[units];
        columns += columnsOfUnit(unit);
        units += isHigh(unit) ? 2 : 1;
        if (!isHigh(unit)) {
            while (units < text.size() && classOf(runtime, text[units]) == runtime.charClassNone)
                ++units;
        }
    }
    return {
        std::min(units, static_cast<int>(text.size())),
        limit >= 0 && columns != limit && units < text.size()};
}

int steppedCount(const AppRuntime &runtime, const QString &text)
{
    int count = 0;
    for (int position = 0; position < text.size(); ++count) {
        const int kind = classOf(runtime, text[position]);
        if (kind == runtime.charClassHighSurrogate || kind == runtime.charClassLowSurrogate) {
            position += 2;
        } else {
            while (position < text.size() && classOf(runtime, text[position]) == runtime.charClassNone)
                ++position;
            ++position;
        }
    }
    return count;
}

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

/// Units around the ends of all ranges, with a surrogate in one of `rarity`.
QString randomText(QRandomGenerator &random, int length, int rarity)
{
    constexpr char16_t plain[] = u"A~\u007f\u0080\ud7ff\ue000漢ア、\uff01\uff65\uff66\uff9f\uffa0\uffff";
    constexpr char16_t surrogates[] = {0xd800, 0xdbff, 0xdc00, 0xdfff};
    QString text;
    for (int i = 0; i < length; ++i) {
        const bool isSurrogate = random.bounded(rarity) == 0;
        text += isSurrogate ? QChar(surrogates[random.bounded(4)]) : QChar(plain[random.bounded(15)]);
    }
    return text;
}

void setClasses(AppRuntime &runtime, const QList<int> &classes)
{
    runtime.charClassNone = classes[0];
    runtime.charClassNarrow = classes[1];
    runtime.charClassWide = classes[2];
    runtime.charClassHalfKana = classes[3];
    runtime.charClassHighSurrogate = classes[4];
    runtime.charClassLowSurrogate = classes[5];
}

} // namespace

class DisplayWidthTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void displayWidth_data();
    void displayWidth();
    void displayWidthTakesEveryUnit();
    void displayWidthAtTheEndsOfPieces();
    void displayWidthOf_data();
    void displayWidthOf();
    void displayWidthOfLongTexts_data();
    void displayWidthOfLongTexts();
    void unitsForWidth_data();
    void unitsForWidth();
    void characterCount_data();
    void characterCount();
    void unitsForWidthAndOthersOfShortTextsUnderTheClasses_data();
    void unitsForWidthAndOthersOfShortTextsUnderTheClasses();
    void unitsForWidthUnderTheClasses_data();
    void unitsForWidthUnderTheClasses();
    void characterCountUnderTheClasses_data();
    void characterCountUnderTheClasses();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void DisplayWidthTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"check"_s;
    m_runtime.convertOk = true;
    setClasses(m_runtime, {0, 1, 2, 3, 4, 5});
}

void DisplayWidthTest::cleanup() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"check"_s);
    QVERIFY(m_runtime.convertOk);
}

void DisplayWidthTest::displayWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");

    const auto row = [](const char *name, const QString &text, int columns) {
        QTest::newRow(name) << text << columns;
    };

    row("empty", u""_s, 0);
    row("null", QString(), 0);
    row("ASCII", u"ABC"_s, 3);
    row("half-width katakana", u"ABｱ"_s, 3);
    row("kanji", u"A漢"_s, 3);
    row("outside the basic plane", u"𠮷"_s, 2);
    row("outside the basic plane among others", u"A𠮷ｱ漢"_s, 6);
    row("NUL", QString(QChar(u'\0')), 1);
    row("control characters", u"\t\n\u007f"_s, 3);
    row("first above ASCII", u"\u0080"_s, 2);
    row("Latin letter with accent", u"é"_s, 2);
    row("combining mark", u"e\u0301"_s, 3);
    row("zero width joiner", u"\u200d"_s, 2);
    row("below the surrogates", u"\ud7ff"_s, 2);
    row("above the surrogates", u"\ue000"_s, 2);
    row("below half-width katakana", u"\uff65"_s, 2);
    row("first half-width katakana", u"\uff66"_s, 1);
    row("last half-width katakana", u"\uff9f"_s, 1);
    row("above half-width katakana", u"\uffa0"_s, 2);
    row("full-width letter", u"Ａ"_s, 2);
    row("last code unit", u"\uffff"_s, 2);
    row("voiced katakana of two", u"ｶﾞ"_s, 2);

    row("lone high surrogate", high, 2);
    row("lone low surrogate", low, 0);
    row("first high surrogate", QString(QChar(0xd800)), 2);
    row("last high surrogate", QString(QChar(0xdbff)), 2);
    row("first low surrogate", QString(QChar(0xdc00)), 0);
    row("last low surrogate", QString(QChar(0xdfff)), 0);
    row("high surrogate takes a letter along", QString(high + u"AB"_s), 3);
    row("high surrogate takes a kanji along", QString(high + u"漢B"_s), 3);
    row("high surrogate takes another along", QString(high + high + u"B"_s), 3);
    row("three high surrogates", QString(high + high + high), 4);
    row("two high surrogates and a low one", QString(high + high + low), 2);
    row("low surrogates after a pair", QString(high + low + low + low), 2);
    row("low before high", QString(low + high), 2);
    row("letters around a low surrogate", QString(u"A"_s + low + u"B"_s), 2);
    row("high surrogate at the end", QString(u"AB"_s + high), 4);

    row("very long", QString(1000000, u'A'), 1000000);
    row("very long and wide", QString(1000000, u'漢'), 2000000);
    row("very long and half wide", u"ｱ漢"_s.repeated(500000), 1500000);
    row("very long and outside the basic plane", u"𠮷"_s.repeated(500000), 1000000);
    row("very long low surrogates", QString(1000000, low.front()), 0);
}

void DisplayWidthTest::displayWidth()
{
    QFETCH(QString, text);
    QFETCH(int, columns);

    QCOMPARE(m_runtime.displayWidth(text), columns);
    QCOMPARE(m_runtime.displayWidthOf(text, static_cast<int>(text.size())), columns);
    QCOMPARE(m_runtime.displayWidthOf(text, most), columns);
    QCOMPARE(m_runtime.displayWidthOf(text, 0), 0);
    QCOMPARE(m_runtime.displayWidthOf(text, -1), 0);
    QCOMPARE(m_runtime.displayWidthOf(text, least), 0);
}

void DisplayWidthTest::displayWidthTakesEveryUnit()
{
    for (int unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        const int columns = columnsOfUnit(character);
        QCOMPARE(m_runtime.displayWidth(character), columns);
        // Enough of them for any way of counting many units at once.
        if (!character.isSurrogate())
            QCOMPARE(m_runtime.displayWidth(QString(67, character)), 67 * columns);
    }
}

void DisplayWidthTest::displayWidthAtTheEndsOfPieces()
{
    // Long texts are counted in pieces of 1,024 units; a surrogate stands before, at and behind each end.
    const QString inserted[] = {u"A"_s, high, low, high + low, high + high, low + high, high + high + low};
    for (int place = 1020; place <= 1030; ++place) {
        for (const QString &middle : inserted) {
            const QString text = QString(place, u'漢') + middle + QString(1100, u'b') + middle + u"漢b"_s;
            QCOMPARE(m_runtime.displayWidth(text), steppedWidth(text, most));
            const int shorter = place + static_cast<int>(middle.size());
            for (const int units : {place, place + 1, shorter, shorter + 1})
                QCOMPARE(m_runtime.displayWidthOf(text, units), steppedWidth(text, units));
        }
    }
}

void DisplayWidthTest::displayWidthOf_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("units");
    QTest::addColumn<int>("columns");

    const auto row = [](const char *name, const QString &text, int units, int columns) {
        QTest::newRow(name) << text << units << columns;
    };

    row("nothing of a kanji", u"漢字"_s, 0, 0);
    row("one kanji", u"漢字"_s, 1, 2);
    row("two kanji", u"漢字"_s, 2, 4);
    row("more units than there are", u"漢字"_s, 3, 4);
    row("largest number of units", u"漢字"_s, most, 4);
    row("negative units", u"漢字"_s, -1, 0);
    row("smallest number of units", u"漢字"_s, least, 0);
    row("one unit of nothing", u""_s, 1, 0);
    row("first half of a pair counts whole", u"A𠮷B"_s, 2, 3);
    row("both halves of a pair", u"A𠮷B"_s, 3, 3);
    row("one unit behind a pair", u"A𠮷B"_s, 4, 4);
    row("high surrogate and not what it takes along", QString(high + u"漢A"_s), 1, 2);
    row("high surrogate and what it takes along", QString(high + u"漢A"_s), 2, 2);
    row("behind what it takes along", QString(high + u"漢A"_s), 3, 3);
    row("low surrogate of no pair", QString(low + u"A"_s), 1, 0);
}

void DisplayWidthTest::displayWidthOf()
{
    QFETCH(QString, text);
    QFETCH(int, units);
    QFETCH(int, columns);

    QCOMPARE(m_runtime.displayWidthOf(text, units), columns);
}

void DisplayWidthTest::displayWidthOfLongTexts_data()
{
    QTest::addColumn<int>("rarity"); // of surrogates

    QTest::newRow("hardly any surrogate") << 2000;
    QTest::newRow("a surrogate now and then") << 200;
    QTest::newRow("many surrogates") << 10;
    QTest::newRow("nothing but surrogates") << 1;
}

void DisplayWidthTest::displayWidthOfLongTexts()
{
    QFETCH(int, rarity);

    QRandomGenerator random(static_cast<quint32>(rarity));
    for (int round = 0; round < 200; ++round) {
        const QString text = randomText(random, random.bounded(1200), rarity);
        const int length = static_cast<int>(text.size());
        QCOMPARE(m_runtime.displayWidth(text), steppedWidth(text, length));
        for (int units = round % 7; units <= length; units += 7)
            QCOMPARE(m_runtime.displayWidthOf(text, units), steppedWidth(text, units));
    }
    // One surrogate at every place of a text that is even except for it.
    for (int place = 0; place < 700; ++place) {
        for (const QString &surrogate : {high, low}) {
            QString text(700, u'漢');
            text[place] = surrogate.front();
            QCOMPARE(m_runtime.displayWidth(text), steppedWidth(text, 700));
            QCOMPARE(m_runtime.displayWidthOf(text, place + 1), steppedWidth(text, place + 1));
        }
    }
}

void DisplayWidthTest::unitsForWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("units");
    QTest::addColumn<bool>("splits");

    const auto row = [](const char *name, const QString &text, int columns, int units, bool splits) {
        QTest::newRow(name) << text << columns << units << splits;
    };

    row("empty", u""_s, 0, 0, false);
    row("one column of nothing", u""_s, 1, 0, false);
    row("negative columns of nothing", u""_s, -1, 0, false);
    row("null", QString(), 1, 0, false);
    row("no column", u"ABC"_s, 0, 0, false);
    row("one column", u"ABC"_s, 1, 1, false);
    row("all columns", u"ABC"_s, 3, 3, false);
    row("more columns than there are", u"ABC"_s, 10, 3, false);
    row("largest number of columns", u"ABC"_s, most, 3, false);
    row("negative columns", u"ABC"_s, -1, 0, false);
    row("smallest number of columns", u"ABC"_s, least, 0, false);
    row("no column of a kanji", u"漢B"_s, 0, 0, false);
    row("negative columns of a kanji", u"漢B"_s, -1, 0, false);

    row("limit inside a kanji", u"A漢B"_s, 2, 2, true);
    row("limit inside the last kanji", u"A漢"_s, 2, 2, false);
    row("limit before a kanji", u"AB漢"_s, 2, 2, false);
    row("limit behind a kanji", u"A漢B"_s, 3, 2, false);
    row("limit inside the first kanji", u"漢B"_s, 1, 1, true);
    row("limit inside the second kanji", u"漢字x"_s, 3, 2, true);
    row("limit behind the second kanji", u"漢字x"_s, 4, 2, false);
    row("half-width katakana", u"ｱｲｳ"_s, 2, 2, false);
    row("limit inside a character above half-width katakana", u"\uffa0x"_s, 1, 1, true);

    row("limit inside a pair", u"A𠮷B"_s, 2, 3, true);
    row("limit inside the last pair", u"A𠮷"_s, 2, 3, false);
    row("limit behind a pair", u"A𠮷B"_s, 3, 3, false);
    row("limit before a pair", u"A𠮷B"_s, 1, 1, false);
    row("high surrogate at the end", QString(u"A"_s + high), 3, 2, false);
    row("limit inside a high surrogate at the end", QString(u"A"_s + high), 2, 2, false);
    row("high surrogate before a letter", QString(high + u"AB"_s), 2, 2, false);
    row("limit inside a high surrogate before a letter", QString(high + u"AB"_s), 1, 2, true);
    row("limit inside a high surrogate and its letter", QString(high + u"A"_s), 1, 2, false);
    row("high surrogate before another", QString(high + high + low), 2, 2, false);
    row("low surrogate has no column", QString(low + u"AB"_s), 1, 2, false);
    row("low surrogate behind the limit stays", QString(u"A"_s + low), 1, 1, false);
    row("low surrogate before the limit is taken", QString(u"A"_s + low), 2, 2, false);
    row("low surrogates alone", QString(low + low), 1, 2, false);
    row("low surrogates and no column", QString(low + low), 0, 0, false);

    row("very long", QString(100000, u'漢'), 99999, 50000, true);
}

void DisplayWidthTest::unitsForWidth()
{
    QFETCH(QString, text);
    QFETCH(int, columns);
    QFETCH(int, units);
    QFETCH(bool, splits);

    QCOMPARE(m_runtime.unitsForWidth(text, columns), units);
    QCOMPARE(m_runtime.splitsWideChar(text, columns), splits);
}

void DisplayWidthTest::characterCount_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");

    const auto row = [](const char *name, const QString &text, int count) {
        QTest::newRow(name) << text << count;
    };

    row("empty", u""_s, 0);
    row("null", QString(), 0);
    row("ASCII", u"ABC"_s, 3);
    row("kanji and half-width katakana", u"漢ｱ"_s, 2);
    row("pair between letters", u"A𠮷B"_s, 3);
    row("pairs", u"𠮷𠮷"_s, 2);
    row("combining mark", u"e\u0301"_s, 2);
    row("NUL", QString(3, QChar(u'\0')), 3);
    row("lone high surrogate", high, 1);
    row("high surrogate takes a letter along", QString(high + u"AB"_s), 2);
    row("high surrogate takes another along", QString(high + high + low), 2);
    row("lone low surrogate", low, 1);
    row("low surrogate takes a letter along", QString(low + u"AB"_s), 2);
    row("low surrogates", QString(low + low + low), 2);
    row("low surrogate takes a high one along", QString(low + high + low), 2);
    row("letter between low surrogates", QString(low + u"A"_s + low), 2);
    row("very long", u"A𠮷"_s.repeated(100000), 200000);
}

void DisplayWidthTest::characterCount()
{
    QFETCH(QString, text);
    QFETCH(int, count);

    QCOMPARE(m_runtime.characterCount(text), count);
}

void DisplayWidthTest::unitsForWidthAndOthersOfShortTextsUnderTheClasses_data()
{
    QTest::addColumn<QList<int>>("classes"); // none, narrow, wide, half-width katakana, high, low

    QTest::newRow("defaults") << QList<int>{0, 1, 2, 3, 4, 5};
    QTest::newRow("defaults backwards") << QList<int>{5, 4, 3, 2, 1, 0};
    QTest::newRow("ends of the range") << QList<int>{least, most, most - 1, least + 1, -1, 0};
    QTest::newRow("narrow as none") << QList<int>{0, 0, 2, 3, 4, 5};
    QTest::newRow("wide as none") << QList<int>{0, 1, 0, 3, 4, 5};
    QTest::newRow("none as wide") << QList<int>{2, 1, 2, 3, 4, 5};
    QTest::newRow("half-width katakana as none") << QList<int>{0, 1, 2, 0, 4, 5};
    QTest::newRow("high as none") << QList<int>{0, 1, 2, 3, 0, 5};
    QTest::newRow("low as none") << QList<int>{0, 1, 2, 3, 4, 0};
    QTest::newRow("both surrogates as none") << QList<int>{0, 1, 2, 3, 0, 0};
    QTest::newRow("narrow and wide as none") << QList<int>{0, 0, 0, 3, 4, 5};
    QTest::newRow("wide as narrow") << QList<int>{0, 1, 1, 3, 4, 5};
    QTest::newRow("wide as low") << QList<int>{0, 1, 5, 3, 4, 5};
    QTest::newRow("narrow as high") << QList<int>{0, 4, 2, 3, 4, 5};
    QTest::newRow("high as low") << QList<int>{0, 1, 2, 3, 5, 5};
    QTest::newRow("all alike") << QList<int>{0, 0, 0, 0, 0, 0};
    QTest::newRow("all but none alike") << QList<int>{0, 1, 1, 1, 1, 1};
}

void DisplayWidthTest::unitsForWidthAndOthersOfShortTextsUnderTheClasses()
{
    QFETCH(QList<int>, classes);

    setClasses(m_runtime, classes);
    const QString alphabet = u"A漢ｱ"_s + high + low;
    forEveryText(alphabet, 5, [this](const QString &text) {
        const int length = static_cast<int>(text.size());
        for (int number = -1; number <= 2 * length + 1; ++number) {
            const Stepped expected = steppedUnits(m_runtime, text, number);
            if (m_runtime.unitsForWidth(text, number) != expected.units)
                QCOMPARE(m_runtime.unitsForWidth(text, number), expected.units);
            if (m_runtime.splitsWideChar(text, number) != expected.splits)
                QCOMPARE(m_runtime.splitsWideChar(text, number), expected.splits);
            if (m_runtime.displayWidthOf(text, number) != steppedWidth(text, number))
                QCOMPARE(m_runtime.displayWidthOf(text, number), steppedWidth(text, number));
        }
        QCOMPARE(m_runtime.displayWidth(text), steppedWidth(text, length));
        QCOMPARE(m_runtime.characterCount(text), steppedCount(m_runtime, text));
    });
}

void DisplayWidthTest::unitsForWidthUnderTheClasses_data()
{
    QTest::addColumn<QList<int>>("classes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("units");
    QTest::addColumn<bool>("splits");

    const auto row = [](const char *name,
                        const QList<int> &classes,
                        const QString &text,
                        int columns,
                        int units,
                        bool splits) {
        QTest::newRow(name) << classes << text << columns << units << splits;
    };
    const QList<int> wide = {0, 1, 0, 3, 4, 5}, narrow = {0, 0, 2, 3, 4, 5}, kana = {0, 1, 2, 0, 4, 5};
    const QList<int> highs = {0, 1, 2, 3, 0, 5}, lows = {0, 1, 2, 3, 4, 0};

    row("wide as none joins the letter", wide, u"A漢字B"_s, 1, 3, false);
    row("wide as none joins a kanji", wide, u"漢字B"_s, 2, 2, false);
    row("wide as none, limit inside a kanji", wide, u"漢字B"_s, 1, 2, true);
    row("wide as none, to the end", wide, u"漢字"_s, 1, 2, false);
    row("wide as none, no column", wide, u"漢字"_s, 0, 0, false);
    row("wide as none, after a pair", wide, u"𠮷漢B"_s, 2, 2, false);
    row("wide as none, after a low surrogate", wide, QString(low + u"漢字B"_s), 1, 4, false);
    row("wide as none, after half-width katakana", wide, u"ｱ漢B"_s, 1, 2, false);
    row("narrow as none joins all letters", narrow, u"ABC漢"_s, 1, 3, false);
    row("narrow as none joins the kanji", narrow, u"漢AB字"_s, 2, 3, false);
    row("narrow as none, limit inside the kanji", narrow, u"漢AB字"_s, 1, 3, true);
    row("narrow as none, limit inside the last kanji", narrow, u"漢AB"_s, 1, 3, false);
    row("half-width katakana as none", kana, u"Aｱｲ漢"_s, 1, 3, false);
    row("high surrogate as none joins its letter alone", highs, u"A𠮷B"_s, 1, 2, false);
    row("high surrogate as none still starts a pair", highs, u"𠮷B"_s, 2, 2, false);
    row("low surrogate as none joins its letter", lows, QString(u"A"_s + low + low + u"B"_s), 1, 3, false);
    row("low surrogate as none, not after a pair", lows, QString(u"𠮷"_s + low + u"B"_s), 2, 2, false);
}

void DisplayWidthTest::unitsForWidthUnderTheClasses()
{
    QFETCH(QList<int>, classes);
    QFETCH(QString, text);
    QFETCH(int, columns);
    QFETCH(int, units);
    QFETCH(bool, splits);

    setClasses(m_runtime, classes);
    QCOMPARE(m_runtime.unitsForWidth(text, columns), units);
    QCOMPARE(m_runtime.splitsWideChar(text, columns), splits);
}

void DisplayWidthTest::characterCountUnderTheClasses_data()
{
    QTest::addColumn<QList<int>>("classes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");

    const auto row = [](const char *name, const QList<int> &classes, const QString &text, int count) {
        QTest::newRow(name) << classes << text << count;
    };
    const QList<int> wide = {0, 1, 0, 3, 4, 5}, narrow = {0, 0, 2, 3, 4, 5};

    row("wide as none counts with the letter behind", wide, u"漢字A"_s, 1);
    row("letter before stands alone", wide, u"B漢字A"_s, 2);
    row("wide as none at the end", wide, u"A漢字"_s, 2);
    row("wide as none alone", wide, u"漢字"_s, 1);
    row("wide as none takes half of a pair", wide, u"漢𠮷A"_s, 2);
    row("wide as none behind a pair", wide, u"𠮷漢A"_s, 2);
    row("narrow as none ends at the end of the text", narrow, u"ABC"_s, 1);
    row("narrow as none counts with the kanji behind", narrow, u"AB漢CD"_s, 2);
    row("narrow as none, empty", narrow, u""_s, 0);
    row("half-width katakana as none", {0, 1, 2, 0, 4, 5}, u"ｱｲAｳ"_s, 2);
    row("high surrogate as none still takes two", {0, 1, 2, 3, 0, 5}, u"𠮷A"_s, 2);
    row("low surrogate as none still takes two", {0, 1, 2, 3, 4, 0}, QString(low + u"AB"_s), 2);
    row("wide as high takes two", {0, 1, 4, 3, 4, 5}, u"漢A字"_s, 2);
    row("narrow as low takes two", {0, 5, 2, 3, 4, 5}, u"AB漢"_s, 2);
    row("none of its own value", {7, 1, 2, 3, 4, 5}, u"A漢ｱ𠮷"_s, 4);
    row("all alike takes two", {0, 0, 0, 0, 0, 0}, u"A漢ｱ"_s, 2);
}

void DisplayWidthTest::characterCountUnderTheClasses()
{
    QFETCH(QList<int>, classes);
    QFETCH(QString, text);
    QFETCH(int, count);

    setClasses(m_runtime, classes);
    QCOMPARE(m_runtime.characterCount(text), count);
}

QTEST_GUILESS_MAIN(DisplayWidthTest)
#include "tst_displaywidth.moc"
