// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

using namespace Qt::StringLiterals;

class EncodingNamesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void normaliseEncodingName_data();
    void normaliseEncodingName();
    void normaliseEncodingNameTakesTheMessage_data();
    void normaliseEncodingNameTakesTheMessage();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void EncodingNamesTest::normaliseEncodingName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("canonical");
    QTest::addColumn<QString>("message"); // "old" where the call leaves it alone

    const auto row
        = [](const char *title, const QString &name, const QString &canonical, const QString &message) {
              QTest::newRow(title) << name << canonical << message;
          };
    const auto notSlash = [](const QString &name) {
        return u'"' + name + u"\" not in('/')"_s;
    };
    const auto notUtf8 = [](const QString &upper) {
        return u'"' + upper + u"\" not in('UTF8','UTF-8','UTF_8','')"_s;
    };
    const auto notEuc = [](const QString &upper) {
        return u'"' + upper + u"\" not in('EUCJP','EUC-JP','EUC_JP')"_s;
    };
    const auto notSjis = [](const QString &upper) {
        return u'"' + upper + u"\" not in('SJIS','SHIFT-JIS','SHIFT_JIS')"_s;
    };

    row("slash", u"/"_s, u"Shift-JIS"_s, u"old"_s);

    for (const QString &name : {u"UTF8"_s, u"UTF-8"_s, u"UTF_8"_s, u"utf8"_s, u"uTf-8"_s, u"utf_8"_s})
        row(qPrintable(name), name, u"UTF-8"_s, notSlash(name));
    row("empty", u""_s, u"UTF-8"_s, notSlash(u""_s));
    row("null", QString(), u"UTF-8"_s, notSlash(u""_s));

    for (const QString &name : {u"EUCJP"_s, u"EUC-JP"_s, u"EUC_JP"_s, u"eucjp"_s, u"Euc-Jp"_s, u"euc_jp"_s})
        row(qPrintable(name), name, u"EUC-JP"_s, notUtf8(name.toUpper()));

    for (const QString &name :
         {u"SJIS"_s,
          u"SHIFT-JIS"_s,
          u"SHIFT_JIS"_s,
          u"sjis"_s,
          u"Shift_JIS"_s,
          u"Shift-JIS"_s,
          u"shift-jis"_s})
        row(qPrintable(name), name, u"Shift-JIS"_s, notEuc(name.toUpper()));
    row("long s has a capital S", u"\u017fjis"_s, u"Shift-JIS"_s, notEuc(u"SJIS"_s));

    for (const QString &name :
         {u"latin1"_s,
          u"//"_s,
          u" / "_s,
          u"\uff0f"_s,
          u" "_s,
          u" UTF-8"_s,
          u"UTF-8 "_s,
          u"UTF 8"_s,
          u"UTF-16"_s,
          u"UTF--8"_s,
          u"utf"_s,
          u"EUC"_s,
          u"EUC JP"_s,
          u"euc-jp,U"_s,
          u"SHIFTJIS"_s,
          u"shift jis"_s,
          u"CP932"_s,
          u"\uff35\uff34\uff26\uff18"_s})
        row(qPrintable(u'"' + name + u"\" is no name"_s), name, name, notSjis(name.toUpper()));
    row("sharp s is upper-cased in the message", u"\u00df"_s, u"\u00df"_s, notSjis(u"SS"_s));
    row("lone surrogate", QString(QChar(0xd800)), QString(QChar(0xd800)), notSjis(QString(QChar(0xd800))));
    row("name with a NUL", QString(u"UTF8\0"_s), QString(u"UTF8\0"_s), notSjis(QString(u"UTF8\0"_s)));
}

void EncodingNamesTest::normaliseEncodingName()
{
    QFETCH(QString, name);
    QFETCH(QString, canonical);
    QFETCH(QString, message);

    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
    QCOMPARE(m_runtime.normaliseEncodingName(name), canonical);
    QCOMPARE(m_runtime.checkMessage, message);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void EncodingNamesTest::normaliseEncodingNameTakesTheMessage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("canonical");

    QTest::newRow("UTF-8") << u"utf8"_s << u"UTF-8"_s;
    QTest::newRow("EUC-JP") << u"eucjp"_s << u"EUC-JP"_s;
    QTest::newRow("Shift-JIS") << u"sjis"_s << u"Shift-JIS"_s;
    QTest::newRow("unknown") << u"latin1"_s << u"latin1"_s;
}

void EncodingNamesTest::normaliseEncodingNameTakesTheMessage()
{
    QFETCH(QString, name);
    QTEST(m_runtime.normaliseEncodingName(m_runtime.checkMessage = name), "canonical");
}

QTEST_GUILESS_MAIN(EncodingNamesTest)
#include "tst_encodingnames.moc"
