// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

} // namespace

class MessageCatalogueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void indexOfValue_data();
    void indexOfValue();
    void indexOfValueAgainstCheckIn();
    void indexOfValueTakesItsOwnMessage();
    void indexOfValueWritesOneMessage();
    void setElement_data();
    void setElement();
    void setElementTakesSharedLists();
    void messageText_data();
    void messageText();
    void messageTextTakesItsOwnMessage();
    void messageTextOfEmptyCatalogue();

private:
    AppRuntime m_runtime{u"TEST"_s};

    void checkMessageIs(const QString &message) const
    {
        QCOMPARE(m_runtime.checkMessage, message);
        QCOMPARE(m_runtime.lastError, u"error"_s);
        QVERIFY(m_runtime.convertOk);
    }
};

void MessageCatalogueTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"old"_s;
    m_runtime.convertOk = true;
    m_runtime.messageKeys->clear();
    m_runtime.messageTexts->clear();
}

void MessageCatalogueTest::indexOfValue_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("message"); // "old" where nothing fails

    const auto row = [](const char *name,
                        const QStringList &list,
                        const QString &value,
                        int from,
                        int index,
                        const QString &message) {
        QTest::newRow(name) << list << value << from << index << message;
    };
    const QStringList abc = {u"A"_s, u"B"_s, u"C"_s};

    row("first", abc, u"A"_s, 0, 0, u"old"_s);
    row("second", abc, u"B"_s, 0, 1, u"\"A\" not in('B')"_s);
    row("last", abc, u"C"_s, 0, 2, u"\"B\" not in('C')"_s);
    row("missing", abc, u"D"_s, 0, -1, u"\"C\" not in('D')"_s);
    row("found where it starts", abc, u"B"_s, 1, 1, u"old"_s);
    row("found behind the start", abc, u"C"_s, 1, 2, u"\"B\" not in('C')"_s);
    row("in front of the start", abc, u"A"_s, 1, -1, u"\"C\" not in('A')"_s);
    row("last from the last", abc, u"C"_s, 2, 2, u"old"_s);
    row("missing from the last", abc, u"A"_s, 2, -1, u"\"C\" not in('A')"_s);
    row("from the end", abc, u"C"_s, 3, -1, u"old"_s);
    row("from past the end", abc, u"C"_s, 4, -1, u"old"_s);
    row("from far past the end", abc, u"C"_s, most, -1, u"old"_s);
    row("last by a negative start", abc, u"C"_s, -1, 2, u"old"_s);
    row("missing by a negative start", abc, u"B"_s, -1, -1, u"\"C\" not in('B')"_s);
    row("second by a negative start", abc, u"B"_s, -2, 1, u"old"_s);
    row("first by a negative start", abc, u"A"_s, -3, 0, u"old"_s);
    row("second by a start before the first", abc, u"B"_s, -4, 1, u"\"A\" not in('B')"_s);
    row("first by a start far before", abc, u"A"_s, least, 0, u"old"_s);
    row("missing by a start far before", abc, u"D"_s, least, -1, u"\"C\" not in('D')"_s);

    row("empty list", {}, u"A"_s, 0, -1, u"old"_s);
    row("empty list and value", {}, u""_s, 0, -1, u"old"_s);
    row("empty list by a negative start", {}, u"A"_s, -1, -1, u"old"_s);
    row("empty list from past the end", {}, u"A"_s, 1, -1, u"old"_s);
    row("list of one", {u"A"_s}, u"A"_s, 0, 0, u"old"_s);
    row("missing from a list of one", {u"A"_s}, u"B"_s, 0, -1, u"\"A\" not in('B')"_s);
    row("first of two equal ones", {u"X"_s, u"A"_s, u"A"_s}, u"A"_s, 0, 1, u"\"X\" not in('A')"_s);
    row("second of two equal ones", {u"A"_s, u"X"_s, u"A"_s}, u"A"_s, 1, 2, u"\"X\" not in('A')"_s);

    row("empty value", {u"A"_s, u""_s}, u""_s, 0, 1, u"\"A\" not in('')"_s);
    row("null value", {u"A"_s, u""_s}, QString(), 0, 1, u"\"A\" not in('')"_s);
    row("null element", {u"A"_s, QString()}, u""_s, 0, 1, u"\"A\" not in('')"_s);
    row("empty element fails", {u""_s, u"A"_s}, u"A"_s, 0, 1, u"\"\" not in('A')"_s);
    row("case counts", {u"msg_a"_s}, u"MSG_A"_s, 0, -1, u"\"msg_a\" not in('MSG_A')"_s);
    row("blanks count", {u"A "_s, u" A"_s}, u"A"_s, 0, -1, u"\" A\" not in('A')"_s);
    row("only the last character is the same", {u"XA"_s}, u"YA"_s, 0, -1, u"\"XA\" not in('YA')"_s);
    row("only the last character differs", {u"AX"_s}, u"AY"_s, 0, -1, u"\"AX\" not in('AY')"_s);
    row("end of an element", {u"XYZ"_s}, u"YZ"_s, 0, -1, u"\"XYZ\" not in('YZ')"_s);
    row("beginning of an element", {u"XYZ"_s}, u"XY"_s, 0, -1, u"\"XYZ\" not in('XY')"_s);
    row("Japanese", {u"保存"_s, u"印刷"_s}, u"印刷"_s, 0, 1, u"\"保存\" not in('印刷')"_s);
    row("no normalisation", {u"e\u0301"_s}, u"\u00e9"_s, 0, -1, u"\"e\u0301\" not in('\u00e9')"_s);
    row("lone halves",
        {QString(QChar(0xd800)), QString(QChar(0xdc00))},
        QString(QChar(0xdc00)),
        0,
        1,
        u'"' + QString(QChar(0xd800)) + u"\" not in('"_s + QString(QChar(0xdc00)) + u"')"_s);
    row("NUL counts", {u"a"_s, u"a\0"_s}, u"a\0"_s, 0, 1, u"\"a\" not in('a"_s + QChar(u'\0') + u"')"_s);
    row("quotes are not escaped", {u"'\""_s}, u"'"_s, 0, -1, u"\"'\"\" not in(''')"_s);
}

void MessageCatalogueTest::indexOfValue()
{
    QFETCH(QStringList, list);
    QFETCH(QString, value);
    QFETCH(int, from);
    QFETCH(int, index);
    QFETCH(QString, message);

    QCOMPARE(m_runtime.indexOfValue(list, value, from), index);
    checkMessageIs(message);
    // Qt finds the same.
    QCOMPARE(int(list.indexOf(value, from)), index);

    if (from == 0) {
        m_runtime.checkMessage = u"old"_s;
        QCOMPARE(m_runtime.indexOfValue(list, value), index);
        checkMessageIs(message);
    }
}

void MessageCatalogueTest::indexOfValueAgainstCheckIn()
{
    // Every list of up to five elements out of three.
    const QStringList elements = {u"A"_s, u"BA"_s, u""_s};
    for (int size = 0; size <= 5; ++size) {
        int lists = 1;
        for (int i = 0; i < size; ++i)
            lists *= int(elements.size());
        for (int number = 0; number < lists; ++number) {
            QStringList list;
            for (int i = 0, rest = number; i < size; ++i, rest /= int(elements.size()))
                list.append(elements[rest % elements.size()]);
            for (const QString &value : elements) {
                for (int from = 0; from <= size + 1; ++from) {
                    m_runtime.checkMessage = u"old"_s;
                    int expected = -1;
                    for (int i = from; i < size && expected < 0; ++i)
                        expected = m_runtime.checkIn(list[i], value) ? i : -1;
                    const QString message = m_runtime.checkMessage;
                    m_runtime.checkMessage = u"old"_s;
                    QCOMPARE(m_runtime.indexOfValue(list, value, from), expected);
                    checkMessageIs(message);
                }
            }
        }
    }
}

void MessageCatalogueTest::indexOfValueTakesItsOwnMessage()
{
    m_runtime.checkMessage = u"C"_s;
    QCOMPARE(m_runtime.indexOfValue({u"A"_s, u"B"_s, u"C"_s}, m_runtime.checkMessage), 2);
    checkMessageIs(u"\"B\" not in('C')"_s);

    const QStringList list = {u"A"_s, m_runtime.checkMessage, u"B"_s};
    QCOMPARE(m_runtime.indexOfValue(list, u"B"_s), 2);
    checkMessageIs(u"\"\"B\" not in('C')\" not in('B')"_s);
    QCOMPARE(list[1], u"\"B\" not in('C')"_s);

    QCOMPARE(m_runtime.indexOfValue(list, list[2]), 2);
}

void MessageCatalogueTest::indexOfValueWritesOneMessage()
{
    // A message for each element would copy 200 gigabytes.
    const QString element = QString(1'000'000, u'x') + u'A';
    QStringList list(100'000, element);
    list.append(u"B"_s);
    QCOMPARE(m_runtime.indexOfValue(list, u"B"_s), 100'000);
    checkMessageIs(u'"' + element + u"\" not in('B')"_s);
    const QString missing = QString(1'000'000, u'y') + u'A';
    QCOMPARE(m_runtime.indexOfValue(list, missing), -1);
    checkMessageIs(u"\"B\" not in('"_s + missing + u"')"_s);

    QStringList keys;
    for (int i = 0; i < 100'000; ++i)
        keys.append(u"MSG_%1"_s.arg(i, 6, 10, QChar(u'0')));
    QCOMPARE(m_runtime.indexOfValue(keys, u"MSG_099999"_s), 99'999);
    checkMessageIs(u"\"MSG_099998\" not in('MSG_099999')"_s);
}

void MessageCatalogueTest::setElement_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("result");

    const QStringList abc = {u"A"_s, u"B"_s, u"C"_s};
    const auto row = [](const char *name,
                        const QStringList &list,
                        int index,
                        const QString &text,
                        const QStringList &result) {
        QTest::newRow(name) << list << index << text << result;
    };
    row("first", abc, 0, u"x"_s, {u"x"_s, u"B"_s, u"C"_s});
    row("second", abc, 1, u"x"_s, {u"A"_s, u"x"_s, u"C"_s});
    row("last", abc, 2, u"x"_s, {u"A"_s, u"B"_s, u"x"_s});
    row("empty text", abc, 1, u""_s, {u"A"_s, u""_s, u"C"_s});
    row("null text", abc, 1, QString(), {u"A"_s, u""_s, u"C"_s});
    row("at the end", abc, 3, u"x"_s, abc);
    row("far past the end", abc, most, u"x"_s, abc);
    row("one before the first", abc, -1, u"x"_s, abc);
    row("far before the first", abc, least, u"x"_s, abc);
    row("empty list", {}, 0, u"x"_s, {});
    row("empty list, negative index", {}, -1, u"x"_s, {});
    row("only element", {u"A"_s}, 0, u"x"_s, {u"x"_s});
}

void MessageCatalogueTest::setElement()
{
    QFETCH(QStringList, list);
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(QStringList, result);

    m_runtime.setElement(list, index, text);
    QCOMPARE(list, result);
    checkMessageIs(u"old"_s);
}

void MessageCatalogueTest::setElementTakesSharedLists()
{
    QStringList list = {u"A"_s, u"B"_s};
    const QStringList kept = list;
    m_runtime.setElement(list, 0, u"x"_s);
    QCOMPARE(kept, (QStringList{u"A"_s, u"B"_s}));
    QCOMPARE(list, (QStringList{u"x"_s, u"B"_s}));

    // The text may be an element of the list, shared or not.
    m_runtime.setElement(list, 0, list.at(1));
    QCOMPARE(list, (QStringList{u"B"_s, u"B"_s}));
    m_runtime.setElement(list, 1, list.at(1));
    QCOMPARE(list, (QStringList{u"B"_s, u"B"_s}));
    const QStringList again = list;
    m_runtime.setElement(list, 0, again.at(0));
    m_runtime.setElement(list, 1, list.at(0));
    QCOMPARE(list, again);
}

void MessageCatalogueTest::messageText_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    QTest::newRow("first") << u"MSG_A"_s << u"hello"_s << u"old"_s;
    QTest::newRow("key without the prefix") << u"B"_s << u"Iworld"_s << u"\"MSG_A\" not in('B')"_s;
    QTest::newRow("text is empty") << u"MSG_C"_s << u""_s << u"\"B\" not in('MSG_C')"_s;
    QTest::newRow("text is the mark alone") << u"MSG_D"_s << u""_s << u"\"MSG_C\" not in('MSG_D')"_s;
    QTest::newRow("prefix in lower case") << u"msg_e"_s << u"Elower"_s << u"\"MSG_D\" not in('msg_e')"_s;
    QTest::newRow("prefix in mixed case") << u"Msg_E"_s << u"Emixed"_s << u"\"msg_e\" not in('Msg_E')"_s;
    QTest::newRow("prefix alone") << u"MSG_"_s << u"alone"_s << u"\"Msg_E\" not in('MSG_')"_s;
    QTest::newRow("prefix without its last character")
        << u"MSG"_s << u"Eshort"_s << u"\"MSG_\" not in('MSG')"_s;
    QTest::newRow("prefix behind a blank") << u" MSG_F"_s << u"Eblank"_s << u"\"MSG\" not in(' MSG_F')"_s;
    QTest::newRow("prefix inside") << u"XMSG_F"_s << u"Einside"_s << u"\" MSG_F\" not in('XMSG_F')"_s;
    QTest::newRow("Japanese") << u"MSG_保存"_s << u"保存しました"_s << u"\"XMSG_F\" not in('MSG_保存')"_s;
    QTest::newRow("first code unit of a pair")
        << u"MSG_P"_s << QString(QChar(0xdfb7)) + u"野"_s << u"\"MSG_保存\" not in('MSG_P')"_s;
    QTest::newRow("text is null") << u"MSG_N"_s << u""_s << u"\"MSG_P\" not in('MSG_N')"_s;
    QTest::newRow("empty key") << u""_s << u"Enameless"_s << u"\"MSG_N\" not in('')"_s;
    QTest::newRow("null key") << QString() << u"Enameless"_s << u"\"MSG_N\" not in('')"_s;
    QTest::newRow("last text") << u"LAST"_s << u"Elast"_s << u"\"\" not in('LAST')"_s;
    QTest::newRow("no text") << u"MSG_X"_s << u""_s << u"\"LAST\" not in('MSG_X')"_s;
    QTest::newRow("no text, key without the prefix") << u"X"_s << u""_s << u"\"MSG_X\" not in('X')"_s;
    QTest::newRow("missing key") << u"C"_s << u""_s << u"\"MSG_A\" not in('C')"_s;
    QTest::newRow("missing key with the prefix") << u"MSG_Y"_s << u""_s << u"\"MSG_A\" not in('MSG_Y')"_s;
    QTest::newRow("case of a key counts") << u"MSG_a"_s << u""_s << u"\"MSG_A\" not in('MSG_a')"_s;
}

void MessageCatalogueTest::messageText()
{
    QFETCH(QString, key);
    QFETCH(QString, text);
    QFETCH(QString, message);

    const QString pair = QChar(0xd842) + QString(QChar(0xdfb7)) + u"野"_s;
    const std::initializer_list<std::pair<QString, QString>> catalogue = {
        {u"MSG_A"_s, u"Ehello"_s},
        {u"B"_s, u"Iworld"_s},
        {u"MSG_C"_s, u""_s},
        {u"MSG_D"_s, u"E"_s},
        {u"msg_e"_s, u"Elower"_s},
        {u"Msg_E"_s, u"Emixed"_s},
        {u"MSG_"_s, u"Ealone"_s},
        {u"MSG"_s, u"Eshort"_s},
        {u" MSG_F"_s, u"Eblank"_s},
        {u"XMSG_F"_s, u"Einside"_s},
        {u"MSG_保存"_s, u"情保存しました"_s},
        {u"MSG_P"_s, pair},
        {u"MSG_N"_s, QString()},
        {u""_s, u"Enameless"_s},
        {u"LAST"_s, u"Elast"_s},
    };
    for (const auto &[itsKey, itsText] : catalogue) {
        m_runtime.messageKeys->append(itsKey);
        m_runtime.messageTexts->append(itsText);
    }
    // Keys that have no text, and one that is there a second time.
    *m_runtime.messageKeys << u"MSG_X"_s << u"X"_s << u"MSG_A"_s;
    const QStringList keys = *m_runtime.messageKeys, texts = *m_runtime.messageTexts;

    QCOMPARE(m_runtime.messageText(key), text);
    checkMessageIs(message);
    QCOMPARE(*m_runtime.messageKeys, keys);
    QCOMPARE(*m_runtime.messageTexts, texts);
}

void MessageCatalogueTest::messageTextTakesItsOwnMessage()
{
    *m_runtime.messageKeys = {u"B"_s, u"MSG_A"_s};
    *m_runtime.messageTexts = {u"Iworld"_s, u"Ehello"_s};
    m_runtime.checkMessage = u"MSG_A"_s;
    QCOMPARE(m_runtime.messageText(m_runtime.checkMessage), u"hello"_s);
    checkMessageIs(u"\"B\" not in('MSG_A')"_s);
}

void MessageCatalogueTest::messageTextOfEmptyCatalogue()
{
    QCOMPARE(m_runtime.messageText(u"MSG_A"_s), u""_s);
    QCOMPARE(m_runtime.messageText(u""_s), u""_s);
    checkMessageIs(u"old"_s);
}

QTEST_GUILESS_MAIN(MessageCatalogueTest)
#include "tst_messagecatalogue.moc"
