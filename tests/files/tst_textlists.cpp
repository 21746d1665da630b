// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

QString fromCode(int code, int size, const QString &alphabet)
{
    QString text;
    for (int i = 0; i < size; ++i) {
        text.append(alphabet[code % int(alphabet.size())]);
        code /= int(alphabet.size());
    }
    return text;
}

/// The states of the keys word for word.
QString keysByRule(const QString &text)
{
    qsizetype start = 0;
    QString result;
    int state = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (state == 0) {
            if (c == u'=') {
                result.append(text.mid(start, i - start));
                state = 1;
            }
        } else if (state == 1) {
            if (c == u',') {
                start = i;
                state = 0;
            } else if (c == u'\'') {
                state = 2;
            }
        } else if (c == u'\'') {
            state = 1;
        }
    }
    if (state == 0)
        result.append(text.mid(start));
    return result;
}

} // namespace

class TextListsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;

    void splitByChar_data();
    void splitByChar();
    void splitByCharIntoTakesItsOwnElement();
    void splitByCharIntoLeavesOtherOwners();
    void splitQuotedList_data();
    void splitQuotedList();
    void splitQuotedListOfEveryShortText();
    void splitQuotedListTakesItsOwnElement();
    void appendToList_data();
    void appendToList();
    void appendToListTakesItsOwnElement();
    void copyList_data();
    void copyList();
    void copyListOntoItself();
    void insertIntoList_data();
    void insertIntoList();
    void insertIntoListTakesItsOwnElement();
    void assignmentKeys_data();
    void assignmentKeys();
    void assignmentKeysOfEveryShortText();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void TextListsTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"old"_s;
    m_runtime.convertOk = true;
}

void TextListsTest::cleanup() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QVERIFY(m_runtime.convertOk);
}

void TextListsTest::splitByChar_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("separator");
    QTest::addColumn<QStringList>("parts");

    const QChar comma = u',';
    QTest::newRow("null") << QString() << comma << QStringList{u""_s};
    QTest::newRow("empty") << u""_s << comma << QStringList{u""_s};
    QTest::newRow("one part") << u"abc"_s << comma << QStringList{u"abc"_s};
    QTest::newRow("only a separator") << u","_s << comma << QStringList{u""_s, u""_s};
    QTest::newRow("only separators") << u",,"_s << comma << QStringList{u""_s, u""_s, u""_s};
    QTest::newRow("empty part inside") << u"a,,b"_s << comma << QStringList{u"a"_s, u""_s, u"b"_s};
    QTest::newRow("separator at the end") << u"a,"_s << comma << QStringList{u"a"_s, u""_s};
    QTest::newRow("separator in front") << u",a"_s << comma << QStringList{u""_s, u"a"_s};
    QTest::newRow("nothing is trimmed")
        << u" a ,\tb\u3000"_s << comma << QStringList{u" a "_s, u"\tb\u3000"_s};
    QTest::newRow("quotes mean nothing")
        << u"\"a,b\",'c,d'"_s << comma << QStringList{u"\"a"_s, u"b\""_s, u"'c"_s, u"d'"_s};
    QTest::newRow("blank as separator")
        << u"a  b "_s << QChar(u' ') << QStringList{u"a"_s, u""_s, u"b"_s, u""_s};
    QTest::newRow("tab as separator") << u"a\tb,c"_s << QChar(u'\t') << QStringList{u"a"_s, u"b,c"_s};
    QTest::newRow("quote as separator") << u"a\"b"_s << QChar(u'"') << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("case counts") << u"axbXc"_s << QChar(u'x') << QStringList{u"a"_s, u"bXc"_s};
    QTest::newRow("kanji as separator") << u"一、二"_s << QChar(u'、') << QStringList{u"一"_s, u"二"_s};
    QTest::newRow("full-width comma is none") << u"a，b"_s << comma << QStringList{u"a，b"_s};
    QTest::newRow("NUL as separator") << u"a\0b"_s << QChar(u'\0') << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("NUL in a part") << u"a\0b,c"_s << comma << QStringList{u"a\0b"_s, u"c"_s};
    QTest::newRow("lone surrogates") << QChar(0xd842) + u","_s + QChar(0xdfb7) << comma
                                     << QStringList{QString(QChar(0xd842)), QString(QChar(0xdfb7))};
    QTest::newRow("a surrogate as separator cuts a pair")
        << u"a\U00020bb7b"_s << QChar(0xdfb7) << QStringList{u"a"_s + QChar(0xd842), u"b"_s};
    QTest::newRow("many parts") << QString(10000, u',') << comma << QStringList(10001, u""_s);
    QTest::newRow("a long part") << QString(1000000, u'a') << comma << QStringList{QString(1000000, u'a')};
}

void TextListsTest::splitByChar()
{
    QFETCH(QString, text);
    QFETCH(QChar, separator);
    QFETCH(QStringList, parts);

    QCOMPARE(m_runtime.splitByChar(text, separator), parts);

    QStringList list;
    m_runtime.splitByCharInto(list, text, separator);
    QCOMPARE(list, parts);
    m_runtime.splitByCharInto(list, text, separator);
    QCOMPARE(list, parts);

    // The former elements leave no trace, whether they are more or fewer, longer or shorter.
    list = {u"something long enough to be seen"_s, u""_s, QString(), u"x"_s, u"y"_s, u"z"_s, u"xyz"_s};
    list[1].append(u"y"_s);
    m_runtime.splitByCharInto(list, text, separator);
    QCOMPARE(list, parts);
}

void TextListsTest::splitByCharIntoTakesItsOwnElement()
{
    for (int element = 0; element < 4; ++element) {
        QStringList list = {u"a"_s, u"bb"_s, u"ccc"_s, u"dddd"_s};
        list[element] = u"one,two,three,four,five"_s;
        list[element].detach();
        m_runtime.splitByCharInto(list, list[element], u',');
        QCOMPARE(list, QStringList({u"one"_s, u"two"_s, u"three"_s, u"four"_s, u"five"_s}));
    }
}

void TextListsTest::splitByCharIntoLeavesOtherOwners()
{
    QStringList list;
    m_runtime.splitByCharInto(list, u"one,two,three"_s, u',');
    const QStringList whole = list;
    m_runtime.splitByCharInto(list, u"1,2"_s, u',');
    QCOMPARE(whole, QStringList({u"one"_s, u"two"_s, u"three"_s}));
    QCOMPARE(list, QStringList({u"1"_s, u"2"_s}));

    const QString element = list[1];
    m_runtime.splitByCharInto(list, u"x,y,z"_s, u',');
    QCOMPARE(element, u"2"_s);
    QCOMPARE(list, QStringList({u"x"_s, u"y"_s, u"z"_s}));
}

void TextListsTest::splitQuotedList_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("parts");

    QTest::newRow("null") << QString() << QStringList{u""_s};
    QTest::newRow("empty") << u""_s << QStringList{u""_s};
    QTest::newRow("comma in quotes") << u"'a,b',c"_s << QStringList{u"'a,b'"_s, u"c"_s};
    QTest::newRow("no quotes") << u"a,b"_s << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("only a comma") << u","_s << QStringList{u""_s, u""_s};
    QTest::newRow("comma at the end") << u"a,"_s << QStringList{u"a"_s, u""_s};
    QTest::newRow("quoted comma at the end") << u"a,'b,'"_s << QStringList{u"a"_s, u"'b,'"_s};
    QTest::newRow("comma behind the quotes at the end") << u"'a,',"_s << QStringList{u"'a,'"_s, u""_s};
    QTest::newRow("nothing is trimmed") << u" 'a' , b\t"_s << QStringList{u" 'a' "_s, u" b\t"_s};
    QTest::newRow("never closed") << u"a,'b,c"_s << QStringList{u"a"_s, u"'b,c"_s};
    QTest::newRow("never closed at the end") << u"a,b'"_s << QStringList{u"a"_s, u"b'"_s};
    QTest::newRow("only a quote") << u"'"_s << QStringList{u"'"_s};
    QTest::newRow("quote inside a part") << u"a'b,c'd,e"_s << QStringList{u"a'b,c'd"_s, u"e"_s};
    QTest::newRow("doubled quote stays doubled") << u"'a'',b',c"_s << QStringList{u"'a'',b'"_s, u"c"_s};
    QTest::newRow("three quotes and a comma") << u"''',a',b"_s << QStringList{u"''',a'"_s, u"b"_s};
    QTest::newRow("empty quotes") << u"'',''"_s << QStringList{u"''"_s, u"''"_s};
    QTest::newRow("double quotes mean nothing") << u"\"a,b\""_s << QStringList{u"\"a"_s, u"b\""_s};
    QTest::newRow("other apostrophes mean nothing")
        << u"’a,b’,＇c,d＇"_s << QStringList{u"’a"_s, u"b’"_s, u"＇c"_s, u"d＇"_s};
    QTest::newRow("backslash escapes nothing") << u"'a\\',b"_s << QStringList{u"'a\\'"_s, u"b"_s};
    QTest::newRow("kanji") << u"'東京都, 千代田区',丸の内"_s
                           << QStringList{u"'東京都, 千代田区'"_s, u"丸の内"_s};
    QTest::newRow("NUL") << u"a\0,'\0,'"_s << QStringList{u"a\0"_s, u"'\0,'"_s};
    QTest::newRow("lone surrogates") << QChar(0xd842) + u",'"_s + QChar(0xdfb7)
                                     << QStringList{QString(QChar(0xd842)), u"'"_s + QChar(0xdfb7)};
    QTest::newRow("line breaks") << u"a\r\nb,'c\n,'"_s << QStringList{u"a\r\nb"_s, u"'c\n,'"_s};
}

void TextListsTest::splitQuotedList()
{
    QFETCH(QString, text);
    QFETCH(QStringList, parts);

    QStringList list;
    m_runtime.splitQuotedList(list, text);
    QCOMPARE(list, parts);
    m_runtime.splitQuotedList(list, text);
    QCOMPARE(list, parts);

    list = {u"something long enough to be seen"_s, u""_s, QString(), u"x"_s};
    list[1].append(u"y"_s);
    m_runtime.splitQuotedList(list, text);
    QCOMPARE(list, parts);
}

void TextListsTest::splitQuotedListOfEveryShortText()
{
    const QString alphabet = u"a',"_s;
    QStringList list;
    for (int size = 0, count = 1; size <= 8; ++size, count *= 3) {
        for (int code = 0; code < count; ++code) {
            const QString text = fromCode(code, size, alphabet);
            m_runtime.splitQuotedList(list, text);
            // The parts are the text, cut at every comma with an even number of quotes before it.
            QCOMPARE(list.join(u','), text);
            QString before;
            int cuts = 0;
            for (const QChar c : text) {
                if (c == u',' && before.count(u'\'') % 2 == 0) {
                    QCOMPARE(list.first(cuts + 1).join(u','), before);
                    ++cuts;
                }
                before.append(c);
            }
            QCOMPARE(list.size(), cuts + 1);
        }
    }
}

void TextListsTest::splitQuotedListTakesItsOwnElement()
{
    QStringList list = {u"a"_s, u"'1,2',3,4"_s, u"c"_s};
    list[1].detach();
    m_runtime.splitQuotedList(list, list[1]);
    QCOMPARE(list, QStringList({u"'1,2'"_s, u"3"_s, u"4"_s}));

    const QStringList whole = list;
    m_runtime.splitQuotedList(list, u"x,y"_s);
    QCOMPARE(whole, QStringList({u"'1,2'"_s, u"3"_s, u"4"_s}));
    QCOMPARE(list, QStringList({u"x"_s, u"y"_s}));
}

void TextListsTest::appendToList_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("longer");

    QTest::newRow("first") << QStringList() << u"a"_s << QStringList{u"a"_s};
    QTest::newRow("second") << QStringList{u"a"_s} << u"b"_s << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("equal to another") << QStringList{u"a"_s} << u"a"_s << QStringList{u"a"_s, u"a"_s};
    QTest::newRow("empty") << QStringList{u"a"_s} << u""_s << QStringList{u"a"_s, u""_s};
    QTest::newRow("null") << QStringList{u"a"_s} << QString() << QStringList{u"a"_s, u""_s};
    QTest::newRow("not split, not trimmed") << QStringList() << u" a,b "_s << QStringList{u" a,b "_s};
    QTest::newRow("NUL and lone surrogate")
        << QStringList() << u"\0"_s + QChar(0xd842) << QStringList{u"\0"_s + QChar(0xd842)};
}

void TextListsTest::appendToList()
{
    QFETCH(QStringList, list);
    QFETCH(QString, value);
    QFETCH(QStringList, longer);

    const QStringList other = list;
    QString returned = m_runtime.appendToList(list, value);
    QCOMPARE(list, longer);
    QCOMPARE(returned, value);
    QCOMPARE(other, longer.first(longer.size() - 1));

    returned.append(u"changed"_s);
    QCOMPARE(list, longer);
}

void TextListsTest::appendToListTakesItsOwnElement()
{
    QStringList list = {u"a"_s};
    for (int i = 0; i < 100; ++i)
        QCOMPARE(m_runtime.appendToList(list, list[0]), u"a"_s);
    QCOMPARE(list, QStringList(101, u"a"_s));
}

void TextListsTest::copyList_data()
{
    QTest::addColumn<QStringList>("target");
    QTest::addColumn<QStringList>("source");

    QTest::newRow("empty onto empty") << QStringList() << QStringList();
    QTest::newRow("empty onto some") << QStringList{u"a"_s} << QStringList();
    QTest::newRow("some onto empty") << QStringList() << QStringList{u"a"_s, u""_s, u"b"_s};
    QTest::newRow("fewer") << QStringList{u"1"_s, u"2"_s, u"3"_s} << QStringList{u"a"_s};
    QTest::newRow("more") << QStringList{u"1"_s} << QStringList{u"a"_s, u"b"_s, u"b"_s};
    QTest::newRow("one empty element") << QStringList{u"1"_s, u"2"_s} << QStringList{u""_s};
}

void TextListsTest::copyList()
{
    QFETCH(QStringList, target);
    QFETCH(QStringList, source);

    const QStringList elements = QStringList(source.cbegin(), source.cend());
    m_runtime.copyList(target, source);
    QCOMPARE(target, elements);
    QCOMPARE(source, elements);

    target.append(u"changed"_s);
    QCOMPARE(source, elements);
}

void TextListsTest::copyListOntoItself()
{
    QStringList list = {u"a"_s, u"b"_s};
    m_runtime.copyList(list, list);
    QCOMPARE(list, QStringList({u"a"_s, u"b"_s}));
}

void TextListsTest::insertIntoList_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("longer");

    const QStringList two = {u"a"_s, u"b"_s};
    const QStringList atEnd = {u"a"_s, u"b"_s, u"x"_s};
    QTest::newRow("in front") << two << 0 << QStringList{u"x"_s, u"a"_s, u"b"_s};
    QTest::newRow("between") << two << 1 << QStringList{u"a"_s, u"x"_s, u"b"_s};
    QTest::newRow("at the end") << two << 2 << atEnd;
    QTest::newRow("past the end") << two << 3 << atEnd;
    QTest::newRow("far past the end") << two << std::numeric_limits<int>::max() << atEnd;
    QTest::newRow("negative") << two << -1 << atEnd;
    QTest::newRow("most negative") << two << std::numeric_limits<int>::min() << atEnd;
    QTest::newRow("empty list") << QStringList() << 0 << QStringList{u"x"_s};
    QTest::newRow("empty list, past the end") << QStringList() << 1 << QStringList{u"x"_s};
    QTest::newRow("empty list, negative") << QStringList() << -1 << QStringList{u"x"_s};
}

void TextListsTest::insertIntoList()
{
    QFETCH(QStringList, list);
    QFETCH(int, index);
    QFETCH(QStringList, longer);

    const QStringList other = list, elements = QStringList(list.cbegin(), list.cend());
    m_runtime.insertIntoList(list, index, u"x"_s);
    QCOMPARE(list, longer);
    QCOMPARE(other, elements);
}

void TextListsTest::insertIntoListTakesItsOwnElement()
{
    QStringList list = {u"a"_s, u"b"_s};
    for (int i = 0; i < 100; ++i)
        m_runtime.insertIntoList(list, 0, list[list.size() - 1]);
    QCOMPARE(list, QStringList(100, u"b"_s) + QStringList({u"a"_s, u"b"_s}));
}

void TextListsTest::assignmentKeys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("keys");

    QTest::newRow("null") << QString() << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("one pair") << u"a=1"_s << u"a"_s;
    QTest::newRow("three pairs, one quoted") << u"a=1,b='x,y',c=3"_s << u"a,b,c"_s;
    QTest::newRow("no assignment comes back whole") << u"a, 'b' ,c"_s << u"a, 'b' ,c"_s;
    QTest::newRow("key without a value at the end") << u"a=1,b"_s << u"a,b"_s;
    QTest::newRow("key without a value in front") << u"a,b=1"_s << u"a,b"_s;
    QTest::newRow("comma at the end") << u"a=1,"_s << u"a,"_s;
    QTest::newRow("comma in front") << u",a=1"_s << u",a"_s;
    QTest::newRow("empty value") << u"a=,b=2"_s << u"a,b"_s;
    QTest::newRow("empty value at the end") << u"a=1,b="_s << u"a,b"_s;
    QTest::newRow("empty key") << u"=1,b=2"_s << u",b"_s;
    QTest::newRow("empty key in the middle") << u"a=1,=2,c=3"_s << u"a,,c"_s;
    QTest::newRow("only an equals sign") << u"="_s << u""_s;
    QTest::newRow("only a comma") << u","_s << u","_s;
    QTest::newRow("two commas") << u"a=1,,b=2"_s << u"a,,b"_s;
    QTest::newRow("equals sign in a value") << u"a=b=c,d=1"_s << u"a,d"_s;
    QTest::newRow("two equals signs") << u"a==1,b=2"_s << u"a,b"_s;
    QTest::newRow("equals sign in quotes") << u"a='b=1,c=2',d=3"_s << u"a,d"_s;
    QTest::newRow("nothing is trimmed") << u" a = 1 , b =2"_s << u" a , b "_s;
    QTest::newRow("quote in a key stays and quotes nothing") << u"'a,b'=1,c=2"_s << u"'a,b',c"_s;
    QTest::newRow("equals sign in a quoted key") << u"'a=b',c=1"_s << u"'a"_s;
    QTest::newRow("quote inside a value") << u"a=x'y,z'w,b=2"_s << u"a,b"_s;
    QTest::newRow("doubled quote closes and opens") << u"a='x'',y',b=2"_s << u"a,b"_s;
    QTest::newRow("doubled quote does not escape") << u"a='',b=2"_s << u"a,b"_s;
    QTest::newRow("three quotes stay open") << u"a=''',b=2"_s << u"a"_s;
    QTest::newRow("never closed") << u"a=1,b='x,c=3,d=4"_s << u"a,b"_s;
    QTest::newRow("never closed at the end") << u"a=1,b='"_s << u"a,b"_s;
    QTest::newRow("double quotes mean nothing") << u"a=\"x,y\",b=2"_s << u"a,y\",b"_s;
    QTest::newRow("kanji") << u"住所='東京都,千代田区',名前=丸の内"_s << u"住所,名前"_s;
    QTest::newRow("full-width signs mean nothing") << u"a＝1，b＝'2"_s << u"a＝1，b＝'2"_s;
    QTest::newRow("NUL") << u"a\0=\0,b\0"_s << u"a\0,b\0"_s;
    QTest::newRow("lone surrogates") << QChar(0xd842) + u"="_s + QChar(0xdfb7) + u",b"_s
                                     << QChar(0xd842) + u",b"_s;
    QTest::newRow("line breaks") << u"a\n=1\n,\r\nb=2"_s << u"a\n,\r\nb"_s;
}

void TextListsTest::assignmentKeys()
{
    QFETCH(QString, text);
    QFETCH(QString, keys);

    const QString copy = QString(text.constData(), text.size());
    QCOMPARE(m_runtime.assignmentKeys(text), keys);
    QCOMPARE(keysByRule(text), keys);
    QCOMPARE(text, copy);
}

void TextListsTest::assignmentKeysOfEveryShortText()
{
    const QString alphabet = u"a=,'"_s;
    for (int size = 0, count = 1; size <= 8; ++size, count *= 4) {
        for (int code = 0; code < count; ++code) {
            const QString text = fromCode(code, size, alphabet);
            const QString keys = m_runtime.assignmentKeys(text);
            if (keys != keysByRule(text))
                QFAIL(qPrintable(u"\"%1\" gives \"%2\""_s.arg(text, keys)));
        }
    }
}

QTEST_GUILESS_MAIN(TextListsTest)
#include "tst_textlists.moc"
