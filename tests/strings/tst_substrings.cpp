// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

} // namespace

class SubstringsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() const;
    void setText_data();
    void setText();
    void mid_data();
    void mid();
    void midOfCString_data();
    void midOfCString();
    void midFollowsTheSteps();
    void midOfEveryKind();
    void midFrom_data();
    void midFrom();
    void length_data();
    void length();
    void charAt_data();
    void charAt();
    void charCodeAndText_data();
    void charCodeAndText();
    void fromChars_data();
    void fromChars();
    void fromUtf8AndToUtf8_data();
    void fromUtf8AndToUtf8();
    void toUtf8OfLoneSurrogates_data();
    void toUtf8OfLoneSurrogates();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void SubstringsTest::init()
{
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void SubstringsTest::cleanup() const
{
    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void SubstringsTest::setText_data()
{
    QTest::addColumn<QByteArray>("bytes"); // null for a null pointer
    QTest::addColumn<QString>("expected");

    QTest::newRow("null pointer") << QByteArray() << u""_s;
    QTest::newRow("empty") << QByteArray("") << u""_s;
    QTest::newRow("ASCII") << QByteArray("abc") << u"abc"_s;
    QTest::newRow("kanji") << QByteArray("\xe6\xbc\xa2") << u"漢"_s;
    QTest::newRow("pair") << QByteArray("\xf0\xa0\xae\xb7") << u"\U00020bb7"_s;
    QTest::newRow("no UTF-8") << QByteArray("a\xff") << u"a\ufffd"_s;
    QTest::newRow("up to the NUL") << QByteArray("a\0b", 3) << u"a"_s;
}

void SubstringsTest::setText()
{
    QFETCH(QByteArray, bytes);

    QString target = u"former"_s;
    const QString copy = target;
    m_runtime.setText(target, bytes.isNull() ? nullptr : bytes.constData());
    QTEST(target, "expected");
    QCOMPARE(copy, u"former"_s);
}

void SubstringsTest::mid_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("len");
    QTest::addColumn<QString>("expected");

    const QString text = u"ABCDE"_s;
    QTest::newRow("inside") << text << 1 << 3 << u"BCD"_s;
    QTest::newRow("whole") << text << 0 << 5 << u"ABCDE"_s;
    QTest::newRow("all but the last") << text << 0 << 4 << u"ABCD"_s;
    QTest::newRow("one longer than the whole") << text << 0 << 6 << u"ABCDE"_s;
    QTest::newRow("more than what remains") << text << 3 << 10 << u"DE"_s;
    QTest::newRow("just what remains") << text << 3 << 2 << u"DE"_s;
    QTest::newRow("one more than what remains") << text << 3 << 3 << u"DE"_s;
    QTest::newRow("last") << text << 4 << 1 << u"E"_s;
    QTest::newRow("at the end") << text << 5 << 1 << u""_s;
    QTest::newRow("past the end") << text << 6 << 1 << u""_s;
    QTest::newRow("no length") << text << 1 << 0 << u""_s;
    QTest::newRow("length -1") << text << 1 << -1 << u""_s;
    QTest::newRow("length -1 from the start") << text << 0 << -1 << u""_s;
    QTest::newRow("smallest length") << text << 1 << least << u""_s;
    QTest::newRow("position -1") << text << -1 << 2 << u"AB"_s;
    QTest::newRow("the position is clamped before the length counts") << text << -2 << 2 << u"AB"_s;
    QTest::newRow("smallest position") << text << least << 2 << u"AB"_s;
    QTest::newRow("both negative") << text << -1 << -1 << u""_s;
    QTest::newRow("largest length") << text << 1 << most << u"BCDE"_s;
    QTest::newRow("largest length from the start") << text << 0 << most << u"ABCDE"_s;
    QTest::newRow("smallest position, largest length") << text << least << most << u"ABCDE"_s;
    QTest::newRow("largest position") << text << most << 1 << u""_s;
    QTest::newRow("largest position and length") << text << most << most << u""_s;
    QTest::newRow("empty") << u""_s << 0 << 1 << u""_s;
    QTest::newRow("empty, negative position") << u""_s << -1 << 1 << u""_s;
    QTest::newRow("null") << QString() << 0 << 1 << u""_s;
    QTest::newRow("kanji") << u"漢字"_s << 1 << 1 << u"字"_s;
    QTest::newRow("pair is cut in half") << u"\U00020bb7"_s << 1 << 1 << QString(QChar(0xdfb7));
}

void SubstringsTest::mid()
{
    QFETCH(QString, text);
    QFETCH(int, pos);
    QFETCH(int, len);

    QTEST(m_runtime.mid(text, pos, len), "expected");
    if (text != u"\U00020bb7"_s)
        QTEST(m_runtime.mid(text.toUtf8().constData(), pos, len), "expected");
}

void SubstringsTest::midOfCString_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("len");
    QTest::addColumn<QString>("expected");

    const QByteArray kanji("\xe6\xbc\xa2\xe5\xad\x97");
    QTest::newRow("null pointer") << QByteArray() << 0 << 3 << u""_s;
    QTest::newRow("null pointer, negative position") << QByteArray() << -1 << most << u""_s;
    QTest::newRow("positions are characters, not bytes") << kanji << 1 << 1 << u"字"_s;
    QTest::newRow("at the end of the characters") << kanji << 2 << 1 << u""_s;
    QTest::newRow("bytes that are no UTF-8") << QByteArray("\xff") + "ab" << 1 << 1 << u"a"_s;
}

void SubstringsTest::midOfCString()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, pos);
    QFETCH(int, len);

    QTEST(m_runtime.mid(bytes.isNull() ? nullptr : bytes.constData(), pos, len), "expected");
}

void SubstringsTest::midFollowsTheSteps()
{
    const QString text = u"ABCDE"_s;
    for (int size = 0; size <= 5; ++size) {
        for (int pos = -3; pos <= 8; ++pos) {
            for (int len = -3; len <= 8; ++len) {
                QString expected;
                for (int i = qMax(pos, 0); i < size && i < qMax(pos, 0) + len; ++i)
                    expected += text[i];
                QCOMPARE(m_runtime.mid(text.first(size), pos, len), expected);
            }
        }
    }
}

void SubstringsTest::midOfEveryKind()
{
    QCOMPARE(m_runtime.mid("ABC", 1, 1), u"B"_s);
    QCOMPARE(m_runtime.mid(u"ABC"_s, 1, 1), u"B"_s);
    QCOMPARE(m_runtime.mid("ABC"_L1, 1, 1), u"B"_s);
    QCOMPARE(m_runtime.mid(QChar(u'A'), 0, 1), u"A"_s);
    QCOMPARE(m_runtime.midFrom(QChar(u'A'), 0), u"A"_s);
    QCOMPARE(m_runtime.length(QChar(u'A')), 1);
    QCOMPARE(m_runtime.mid(nullptr, 0, 1), u""_s);
    QCOMPARE(m_runtime.charCode(u'A'), 65);
    QCOMPARE(m_runtime.charText(u'A'), u"A"_s);
}

void SubstringsTest::midFrom_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");
    QTest::addColumn<QString>("expected");

    const QString text = u"ABCDE"_s;
    QTest::newRow("start") << text << 0 << u"ABCDE"_s;
    QTest::newRow("inside") << text << 1 << u"BCDE"_s;
    QTest::newRow("last") << text << 4 << u"E"_s;
    QTest::newRow("at the end") << text << 5 << u""_s;
    QTest::newRow("past the end") << text << 6 << u""_s;
    QTest::newRow("largest position") << text << most << u""_s;
    QTest::newRow("negative position") << text << -1 << u"ABCDE"_s;
    QTest::newRow("smallest position") << text << least << u"ABCDE"_s;
    QTest::newRow("empty") << u""_s << 0 << u""_s;
    QTest::newRow("null") << QString() << -1 << u""_s;
}

void SubstringsTest::midFrom()
{
    QFETCH(QString, text);
    QFETCH(int, pos);

    QTEST(m_runtime.midFrom(text, pos), "expected");
}

void SubstringsTest::length_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("null") << QString() << 0;
    QTest::newRow("empty") << u""_s << 0;
    QTest::newRow("ASCII") << u"abc"_s << 3;
    QTest::newRow("kanji") << u"漢字"_s << 2;
    QTest::newRow("pair") << u"\U00020bb7"_s << 2;
    QTest::newRow("NUL counts") << QString(3, QChar(u'\0')) << 3;
    QTest::newRow("long") << QString(1000000, u'x') << 1000000;
}

void SubstringsTest::length()
{
    QFETCH(QString, text);

    QTEST(m_runtime.length(text), "expected");
}

void SubstringsTest::charAt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pos");
    QTest::addColumn<QChar>("expected");

    QTest::newRow("first") << u"AB"_s << 0 << QChar(u'A');
    QTest::newRow("last") << u"AB"_s << 1 << QChar(u'B');
    QTest::newRow("at the end") << u"AB"_s << 2 << QChar(u' ');
    QTest::newRow("past the end") << u"AB"_s << 3 << QChar(u' ');
    QTest::newRow("largest position") << u"AB"_s << most << QChar(u' ');
    QTest::newRow("negative position") << u"AB"_s << -1 << QChar(u'A');
    QTest::newRow("smallest position") << u"AB"_s << least << QChar(u'A');
    QTest::newRow("empty") << u""_s << 0 << QChar(u' ');
    QTest::newRow("null, negative position") << QString() << -1 << QChar(u' ');
    QTest::newRow("low half") << u"\U00020bb7"_s << 1 << QChar(0xdfb7);
    QTest::newRow("NUL") << QString(QChar(u'\0')) << 0 << QChar(u'\0');
}

void SubstringsTest::charAt()
{
    QFETCH(QString, text);
    QFETCH(int, pos);

    QTEST(m_runtime.charAt(text, pos), "expected");
}

void SubstringsTest::charCodeAndText_data()
{
    QTest::addColumn<int>("code");

    for (const int code : {0, 0x41, 0x7f, 0x80, 0xff, 0x100, 0x7fff, 0x8000, 0xd800, 0xdfff, 0xffff})
        QTest::addRow("U+%04X", static_cast<uint>(code)) << code;
}

void SubstringsTest::charCodeAndText()
{
    QFETCH(int, code);

    QCOMPARE(m_runtime.charCode(QChar(code)), code);
    const QString text = m_runtime.charText(QChar(code));
    QCOMPARE(text.size(), 1);
    QCOMPARE(text[0], QChar(code));
}

void SubstringsTest::fromChars_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("expected");

    const QString nul = u'a' + QString(QChar(u'\0')) + u'b';
    QTest::newRow("all") << u"abc"_s << 3 << u"abc"_s;
    QTest::newRow("some") << u"abc"_s << 2 << u"ab"_s;
    QTest::newRow("one") << u"abc"_s << 1 << u"a"_s;
    QTest::newRow("zero") << u"abc"_s << 0 << u""_s;
    QTest::newRow("negative count is not up to the NUL") << u"abc"_s << -1 << u""_s;
    QTest::newRow("smallest count") << u"abc"_s << least << u""_s;
    QTest::newRow("NUL counts") << nul << 3 << nul;
    QTest::newRow("lone surrogate") << QString(QChar(0xd800)) << 1 << QString(QChar(0xd800));
}

void SubstringsTest::fromChars()
{
    QFETCH(QString, text);
    QFETCH(int, count);

    QTEST(m_runtime.fromChars(text.constData(), count), "expected");
    QCOMPARE(m_runtime.fromChars(nullptr, qMin(count, 0)), u""_s);
}

void SubstringsTest::fromUtf8AndToUtf8_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("back");

    const auto row = [](const char *name, const QByteArray &bytes, const QString &text) {
        QTest::newRow(name) << bytes << text << bytes;
    };
    row("null", QByteArray(), QString());
    row("empty", "", u""_s);
    row("ASCII", "abc", u"abc"_s);
    row("two bytes", "\xc3\xa4", u"ä"_s);
    row("three bytes", "\xe6\xbc\xa2", u"漢"_s);
    row("four bytes", "\xf0\xa0\xae\xb7", u"\U00020bb7"_s);
    row("NUL inside", QByteArray("a\0b", 3), u'a' + QString(QChar(u'\0')) + u'b');
    QTest::newRow("no UTF-8") << QByteArray("a\xff") << u"a\ufffd"_s << QByteArray("a\xef\xbf\xbd");
}

void SubstringsTest::fromUtf8AndToUtf8()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);

    QCOMPARE(m_runtime.fromUtf8(bytes), text);
    QTEST(m_runtime.toUtf8(text), "back");
}

// Newer versions of Qt leave these out.
void SubstringsTest::toUtf8OfLoneSurrogates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");

    const QString high(QChar(0xd83d)), low(QChar(0xde00));
    QTest::newRow("high half alone") << high << QByteArray("?");
    QTest::newRow("low half alone") << low << QByteArray("?");
    QTest::newRow("high half at the end") << u'a' + high << QByteArray("a?");
    QTest::newRow("high half inside") << u'a' + high + u'b' << QByteArray("a?b");
    QTest::newRow("low half inside") << u'a' + low + u'b' << QByteArray("a?b");
    QTest::newRow("halves swapped") << low + high << QByteArray("?\?");
    QTest::newRow("high half before a pair") << high + high + low << QByteArray("?\xf0\x9f\x98\x80");
    QTest::newRow("low half behind a pair") << high + low + low << QByteArray("\xf0\x9f\x98\x80?");
    QTest::newRow("first of all") << QString(QChar(0xd800)) << QByteArray("?");
    QTest::newRow("last of all") << QString(QChar(0xdfff)) << QByteArray("?");
    QTest::newRow("just before them") << QString(QChar(0xd7ff)) << QByteArray("\xed\x9f\xbf");
    QTest::newRow("just behind them") << QString(QChar(0xe000)) << QByteArray("\xee\x80\x80");
}

void SubstringsTest::toUtf8OfLoneSurrogates()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);

    const QString before(text.constData(), text.size()); // its own characters
    QCOMPARE(m_runtime.toUtf8(text), bytes);
    QCOMPARE(
        m_runtime.toUtf8(QString(40, u'x') + text + u"\u3042"_s), QByteArray(40, 'x') + bytes + "\xe3\x81\x82"
    );
    QCOMPARE(text, before);
}

QTEST_GUILESS_MAIN(SubstringsTest)
#include "tst_substrings.moc"
