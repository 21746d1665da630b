// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

} // namespace

class NumberTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void intTextAndNumber_data();
    void intTextAndNumber();
    void numberOfDouble_data();
    void numberOfDouble();
    void zeroPadded_data();
    void zeroPadded();
    void digitValueOfEveryUnit();
    void numberOverloads();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void NumberTextTest::init()
{
    // Some languages group digits and write a comma; none of that may show.
    QLocale::setDefault(QLocale(QLocale::German));
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void NumberTextTest::cleanup() const
{
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void NumberTextTest::intTextAndNumber_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("zero") << 0 << u"0"_s;
    QTest::newRow("one digit") << 7 << u"7"_s;
    QTest::newRow("no groups") << 1234567 << u"1234567"_s;
    QTest::newRow("minus one") << -1 << u"-1"_s;
    QTest::newRow("largest") << most << u"2147483647"_s;
    QTest::newRow("smallest") << least << u"-2147483648"_s;
}

void NumberTextTest::intTextAndNumber()
{
    QFETCH(int, value);

    QTEST(m_runtime.intText(value), "expected");
    QTEST(m_runtime.number(value), "expected");
    QCOMPARE(m_runtime.toInt(m_runtime.intText(value)), value);
}

void NumberTextTest::numberOfDouble_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");

    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("zero") << 0.0 << u"0"_s;
    QTest::newRow("whole") << 5.0 << u"5"_s;
    QTest::newRow("negative") << -1.5 << u"-1.5"_s;
    QTest::newRow("rounded sum") << 0.1 + 0.2 << u"0.3"_s;
    QTest::newRow("six digits") << 123456.0 << u"123456"_s;
    QTest::newRow("seven digits") << 1234567.0 << u"1.23457e+06"_s;
    QTest::newRow("last without an exponent") << 999999.4 << u"999999"_s;
    QTest::newRow("rounded into an exponent") << 999999.5 << u"1e+06"_s;
    QTest::newRow("ten million") << 1e7 << u"1e+07"_s;
    QTest::newRow("one million") << 1e6 << u"1e+06"_s;
    QTest::newRow("hundred thousand") << 1e5 << u"100000"_s;
    QTest::newRow("four places") << 0.0001 << u"0.0001"_s;
    QTest::newRow("five places") << 0.00001 << u"1e-05"_s;
    QTest::newRow("third") << 1.0 / 3.0 << u"0.333333"_s;
    QTest::newRow("two thirds") << 2.0 / 3.0 << u"0.666667"_s;
    QTest::newRow("trailing zeros go") << 1.5000001 << u"1.5"_s;
    QTest::newRow("three digits of exponent") << 1e100 << u"1e+100"_s;
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min() << u"4.94066e-324"_s;
    QTest::newRow("largest") << std::numeric_limits<double>::max() << u"1.79769e+308"_s;
    QTest::newRow("infinity") << infinity << u"inf"_s;
    QTest::newRow("negative infinity") << -infinity << u"-inf"_s;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << u"nan"_s;
}

void NumberTextTest::numberOfDouble()
{
    QFETCH(double, value);

    QTEST(m_runtime.number(value), "expected");
}

void NumberTextTest::zeroPadded_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("expected");

    QTest::newRow("shorter") << 7 << 3 << u"007"_s;
    QTest::newRow("one shorter") << 12 << 3 << u"012"_s;
    QTest::newRow("as long") << 123 << 3 << u"123"_s;
    QTest::newRow("longer") << 1234 << 3 << u"1234"_s;
    QTest::newRow("zero") << 0 << 2 << u"00"_s;
    QTest::newRow("width zero") << 0 << 0 << u"0"_s;
    QTest::newRow("width one") << 0 << 1 << u"0"_s;
    QTest::newRow("negative width") << 5 << -3 << u"5"_s;
    QTest::newRow("smallest width") << 5 << least << u"5"_s;
    QTest::newRow("sign stays in front of the digits") << -5 << 3 << u"0-5"_s;
    QTest::newRow("sign counts") << -5 << 2 << u"-5"_s;
    QTest::newRow("negative, longer") << -123 << 3 << u"-123"_s;
    QTest::newRow("smallest") << least << 12 << u"0-2147483648"_s;
    QTest::newRow("largest") << most << 11 << u"02147483647"_s;
    QTest::newRow("wide") << 1 << 100000 << QString(99999, u'0') + u'1';
}

void NumberTextTest::zeroPadded()
{
    QFETCH(int, value);
    QFETCH(int, width);

    QTEST(m_runtime.zeroPadded(value, width), "expected");
}

void NumberTextTest::digitValueOfEveryUnit()
{
    for (int unit = 0; unit <= 0xffff; ++unit) {
        const int expected = unit >= '0' && unit <= '9' ? unit - '0' : 0;
        if (m_runtime.digitValue(QChar(unit)) != expected
            || m_runtime.toInt(QString(QChar(unit))) != expected)
            QFAIL(qPrintable(QString::number(unit, 16)));
    }
}

void NumberTextTest::numberOverloads()
{
    QCOMPARE(m_runtime.number(5), u"5"_s);
    QCOMPARE(m_runtime.number(5.0), u"5"_s);
    QCOMPARE(m_runtime.number(0.5F), u"0.5"_s);
    QCOMPARE(m_runtime.number(short{5}), u"5"_s);
    QCOMPARE(m_runtime.digitValue(u'5'), 5);
}

QTEST_GUILESS_MAIN(NumberTextTest)
#include "tst_numbertext.moc"
