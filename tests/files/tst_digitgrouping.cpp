// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// The rule word for word, one character at a time.
QString groupedByRule(const QString &text)
{
    qsizetype whole = text.contains(u'.') ? text.lastIndexOf(u'.') : text.size();
    if (text.size() > 1 && text[0] == u'-')
        whole = whole - 1;
    if (whole <= 3)
        return text;

    qsizetype countdown = whole % 3;
    if (countdown == 0)
        countdown = 3;
    bool grouping = true;
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        result.append(text[i]);
        if (i == text.size() - 1 || text[i + 1] == u'.') {
            grouping = false;
        } else if (grouping) {
            if (text[i] != u'-') {
                countdown = countdown - 1;
                if (countdown == 0) {
                    result.append(u',');
                    countdown = 3;
                }
            }
        }
    }
    return result;
}

} // namespace

class DigitGroupingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;

    void groupThousands_data();
    void groupThousands();
    void groupThousandsOfEveryShortText();
    void groupThousandsOfEveryLength();
    void groupThousandsLeavesItsArgument();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void DigitGroupingTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"old"_s;
    m_runtime.convertOk = true;
}

void DigitGroupingTest::cleanup() const
{
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QVERIFY(m_runtime.convertOk);
}

void DigitGroupingTest::groupThousands_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("grouped");

    QTest::newRow("null") << QString() << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("one digit") << u"1"_s << u"1"_s;
    QTest::newRow("two digits") << u"12"_s << u"12"_s;
    QTest::newRow("three digits") << u"123"_s << u"123"_s;
    QTest::newRow("four digits") << u"1234"_s << u"1,234"_s;
    QTest::newRow("five digits") << u"12345"_s << u"12,345"_s;
    QTest::newRow("six digits") << u"123456"_s << u"123,456"_s;
    QTest::newRow("seven digits") << u"1234567"_s << u"1,234,567"_s;
    QTest::newRow("twenty digits") << u"12345678901234567890"_s << u"12,345,678,901,234,567,890"_s;
    QTest::newRow("leading zeros") << u"0000012"_s << u"0,000,012"_s;
    QTest::newRow("minus three digits") << u"-123"_s << u"-123"_s;
    QTest::newRow("minus four digits") << u"-1234"_s << u"-1,234"_s;
    QTest::newRow("minus six digits") << u"-123456"_s << u"-123,456"_s;
    QTest::newRow("minus seven digits") << u"-1234567"_s << u"-1,234,567"_s;
    QTest::newRow("decimals are not grouped") << u"1234567.891"_s << u"1,234,567.891"_s;
    QTest::newRow("long decimals are not grouped") << u"1234.1234567"_s << u"1,234.1234567"_s;
    QTest::newRow("minus and decimals") << u"-1234567.8912"_s << u"-1,234,567.8912"_s;
    QTest::newRow("three digits and long decimals") << u"123.4567"_s << u"123.4567"_s;
    QTest::newRow("minus three digits and decimals") << u"-123.4567"_s << u"-123.4567"_s;
    QTest::newRow("point at the end") << u"1234."_s << u"1,234."_s;
    QTest::newRow("minus and point at the end") << u"-1234."_s << u"-1,234."_s;
    QTest::newRow("three digits and point at the end") << u"123."_s << u"123."_s;
    QTest::newRow("point in front") << u".5"_s << u".5"_s;
    QTest::newRow("point in front of many") << u".56789"_s << u".56789"_s;
    QTest::newRow("minus and point in front") << u"-.56789"_s << u"-.56789"_s;
    QTest::newRow("only a point") << u"."_s << u"."_s;
    QTest::newRow("only a minus") << u"-"_s << u"-"_s;
    QTest::newRow("minus and point") << u"-."_s << u"-."_s;

    QTest::newRow("commas count as digits") << u"1,234"_s << u"1,,234"_s;
    QTest::newRow("grouped twice") << u"1,234,567"_s << u"1,2,34,,567"_s;
    QTest::newRow("plus counts as a digit") << u"+123"_s << u"+,123"_s;
    QTest::newRow("plus and five digits") << u"+12345"_s << u"+12,345"_s;
    QTest::newRow("blank counts as a digit") << u" 1234"_s << u" 1,234"_s;
    QTest::newRow("trailing minus is a place but not counted") << u"123456-"_s << u"1,234,56-"_s;
    QTest::newRow("two minus signs") << u"--12345"_s << u"--123,45"_s;
    QTest::newRow("two minus signs and three digits") << u"--123"_s << u"--1,23"_s;
    QTest::newRow("minus signs only") << u"-----"_s << u"-----"_s;
    QTest::newRow("minus in the middle") << u"12-345"_s << u"12-3,45"_s;
    QTest::newRow("minus before the group ends") << u"1-2345"_s << u"1-23,45"_s;
    QTest::newRow("two points, three in front") << u"1.2.3456"_s << u"1.2.3456"_s;
    QTest::newRow("two points, grouping ends at the first") << u"12345.6.7"_s << u"1,234,5.6.7"_s;
    QTest::newRow("two points, the first too early") << u"12.34.5"_s << u"12.34.5"_s;
    QTest::newRow("points at the end") << u"1...."_s << u"1...."_s;
    QTest::newRow("points only") << u"....."_s << u"....."_s;
    QTest::newRow("points in front and at the end") << u".1234."_s << u".1,234."_s;
    QTest::newRow("letters count as digits") << u"abcdefg"_s << u"a,bcd,efg"_s;
    QTest::newRow("exponent is not known") << u"1.5e+10"_s << u"1.5e+10"_s;
    QTest::newRow("full-width digits") << u"１２３４"_s << u"１,２３４"_s;
    QTest::newRow("full-width point and minus are digits") << u"－１２．３４"_s << u"－１２,．３４"_s;
    QTest::newRow("NUL counts as a digit") << u"12\0x"_s << u"1,2\0x"_s;
    QTest::newRow("a pair counts as two") << u"1\U00020bb7あ"_s << u"1,\U00020bb7あ"_s;
    QTest::newRow("a pair is cut") << u"\U00020bb7あい"_s
                                   << QChar(0xd842) + u","_s + QChar(0xdfb7) + u"あい"_s;
    QTest::newRow("lone surrogate") << QChar(0xdfb7) + u"123"_s << QChar(0xdfb7) + u",123"_s;
}

void DigitGroupingTest::groupThousands()
{
    QFETCH(QString, number);
    QFETCH(QString, grouped);

    QCOMPARE(m_runtime.groupThousands(number), grouped);
    QCOMPARE(groupedByRule(number), grouped);
}

void DigitGroupingTest::groupThousandsOfEveryShortText()
{
    const QString alphabet = u"1-.,"_s;
    int texts = 0;
    for (int size = 0; size <= 8; ++size) {
        const int count = 1 << (2 * size);
        for (int code = 0; code < count; ++code, ++texts) {
            QString text;
            for (int i = 0; i < size; ++i)
                text.append(alphabet[(code >> (2 * i)) & 3]);
            const QString grouped = m_runtime.groupThousands(text);
            if (grouped != groupedByRule(text))
                QFAIL(qPrintable(u"\"%1\" gives \"%2\""_s.arg(text, grouped)));
        }
    }
    QCOMPARE(texts, 87381);
}

void DigitGroupingTest::groupThousandsOfEveryLength()
{
    for (int digits = 0; digits <= 2000; ++digits) {
        QString text;
        for (int i = 0; i < digits; ++i)
            text.append(QChar(u'0' + i % 10));
        for (const QString &front : {u""_s, u"-"_s}) {
            for (const QString &tail : {u""_s, u"."_s, u".25"_s, u".2512"_s}) {
                const QString number = front + text + tail;
                const QString grouped = m_runtime.groupThousands(number);
                QCOMPARE(grouped.size() - number.size(), digits == 0 ? 0 : (digits - 1) / 3);
                QCOMPARE(grouped, groupedByRule(number));
                QCOMPARE(QString(grouped).remove(u','), number);
            }
        }
    }
}

void DigitGroupingTest::groupThousandsLeavesItsArgument()
{
    const QString number = u"1234567.891"_s;
    const QString copy = QString(number.constData(), number.size());
    QString grouped = m_runtime.groupThousands(number);
    QCOMPARE(number, copy);

    // Changing a text that was returned unchanged does not change the argument.
    const QString small = u"123"_s;
    grouped = m_runtime.groupThousands(small);
    grouped[0] = u'x';
    QCOMPARE(small, u"123"_s);

    // A text without a NUL behind it is not read beyond its end.
    const QString beyond = u"1234567"_s;
    QCOMPARE(m_runtime.groupThousands(QString::fromRawData(beyond.constData(), 4)), u"1,234"_s);
}

QTEST_GUILESS_MAIN(DigitGroupingTest)
#include "tst_digitgrouping.moc"
