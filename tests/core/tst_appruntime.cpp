// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
#include <support/localtext.h>

#include <QTest>

#include <climits>

using namespace Qt::StringLiterals;

class AppRuntimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction_data();
    void construction();
    void constructionWithoutArguments_data();
    void constructionWithoutArguments();
    void constructionFromNameAlone();
    void elementAt_data();
    void elementAt();
    void isSameChar_data();
    void isSameChar();
    void charToText_data();
    void charToText();
    void errorWord();
};

void AppRuntimeTest::construction_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("program alone") << QByteArrayList{"prog"} << u"prog"_s << QStringList();
    QTest::newRow("two arguments") << QByteArrayList{"prog", "a", "b"} << u"prog"_s
                                   << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("empty path") << QByteArrayList{"", "a"} << u""_s << QStringList{u"a"_s};
    QTest::newRow("empty arguments stay")
        << QByteArrayList{"p", "", "a", ""} << u"p"_s << QStringList{u""_s, u"a"_s, u""_s};
    QTest::newRow("options of Qt stay")
        << QByteArrayList{"p", "-style", "x", "-platform", "y", "-qmljsdebugger=port:1"} << u"p"_s
        << QStringList{u"-style"_s, u"x"_s, u"-platform"_s, u"y"_s, u"-qmljsdebugger=port:1"_s};
    QTest::newRow("kanji") << QByteArrayList{u"漢/字"_s.toLocal8Bit(), u"ｶﾅ😀"_s.toLocal8Bit()}
                           << throughLocal8Bit(u"漢/字"_s) << QStringList{throughLocal8Bit(u"ｶﾅ😀"_s)};
    QTest::newRow("blanks and line breaks")
        << QByteArrayList{"p", "a b", "c\nd"} << u"p"_s << QStringList{u"a b"_s, u"c\nd"_s};
#ifndef Q_OS_WIN
    QTest::newRow("bytes that are no text") << QByteArrayList{
        "p",
        "a\xff"
        "b"} << u"p"_s << QStringList{u"a\ufffdb"_s};
#endif
}

void AppRuntimeTest::construction()
{
    QFETCH(QByteArrayList, words);
    QFETCH(QString, path);
    QFETCH(QStringList, arguments);

    QList<char *> argv;
    for (QByteArray &word : words)
        argv.append(word.data());
    argv.append(nullptr);
    const AppRuntime runtime(u"TEST"_s, static_cast<int>(words.size()), argv.data());
    QCOMPARE(runtime.programName, u"TEST"_s);
    QCOMPARE(runtime.programPath, path);
    QCOMPARE(*runtime.arguments, arguments);
    QCOMPARE(runtime.lastError, QString());
}

void AppRuntimeTest::constructionWithoutArguments_data()
{
    QTest::addColumn<bool>("vector");
    QTest::newRow("a vector that ends at once") << true;
    QTest::newRow("no vector at all") << false;
}

void AppRuntimeTest::constructionWithoutArguments()
{
    QFETCH(bool, vector);

    char *ended[] = {nullptr};
    const AppRuntime runtime(u"TEST"_s, 0, vector ? ended : nullptr);
    QCOMPARE(runtime.programPath, QString());
    QCOMPARE(runtime.programDirectory, QString());
    QCOMPARE(runtime.checkMessage, QString());
    QVERIFY(runtime.arguments->isEmpty());
    QVERIFY(runtime.scanCursor != nullptr);
}

void AppRuntimeTest::constructionFromNameAlone()
{
    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.programName, u"TEST"_s);
    QCOMPARE(runtime.platformChar, BuiltWith::platformChar());
    QCOMPARE(runtime.programPath, QString());
    QVERIFY(runtime.version != nullptr);
    QVERIFY(!runtime.scanCursor && !runtime.scanSource && !runtime.scanDelimiter);
}

void AppRuntimeTest::elementAt_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("element");

    const QStringList list = {u"a"_s, u"b"_s, u"c"_s};
    QTest::newRow("first") << list << 0 << u"a"_s;
    QTest::newRow("last") << list << 2 << u"c"_s;
    QTest::newRow("at the count") << list << 3 << u""_s;
    QTest::newRow("negative") << list << -1 << u""_s;
    QTest::newRow("largest") << list << INT_MAX << u""_s;
    QTest::newRow("smallest") << list << INT_MIN << u""_s;
    QTest::newRow("empty list") << QStringList() << 0 << u""_s;
}

void AppRuntimeTest::elementAt()
{
    QFETCH(QStringList, list);
    QFETCH(int, index);
    QFETCH(QString, element);

    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.elementAt(list, index), element);
    QCOMPARE(runtime.count(list), static_cast<int>(list.size()));
}

void AppRuntimeTest::isSameChar_data()
{
    QTest::addColumn<QChar>("a");
    QTest::addColumn<QChar>("b");
    QTest::addColumn<bool>("same");

    QTest::newRow("same") << QChar(u'W') << QChar(u'W') << true;
    QTest::newRow("case counts") << QChar(u'W') << QChar(u'w') << false;
    QTest::newRow("width counts") << QChar(u'W') << QChar(u'Ｗ') << false;
    QTest::newRow("same low byte") << QChar(0x0157) << QChar(u'W') << false;
    QTest::newRow("surrogates") << QChar(0xd800) << QChar(0xd800) << true;
    QTest::newRow("NUL and blank") << QChar(u'\0') << QChar(u' ') << false;
}

void AppRuntimeTest::isSameChar()
{
    QFETCH(QChar, a);
    QFETCH(QChar, b);
    const AppRuntime runtime(u"TEST"_s);
    QTEST(runtime.isSameChar(a, b), "same");
}

void AppRuntimeTest::charToText_data()
{
    QTest::addColumn<QChar>("character");
    for (const char16_t unit : {u'A', u'漢', u'\0', char16_t(0xd800), char16_t(0xdc00), char16_t(0xffff)})
        QTest::addRow("U+%04X", uint(unit)) << QChar(unit);
}

void AppRuntimeTest::charToText()
{
    QFETCH(QChar, character);
    const AppRuntime runtime(u"TEST"_s);
    const QString text = runtime.charToText(character);
    QCOMPARE(text.size(), 1);
    QCOMPARE(text.at(0), character);
}

void AppRuntimeTest::errorWord()
{
    QCOMPARE(AppRuntime(u"TEST"_s).errorWord(), u"error"_s);
}

QTEST_GUILESS_MAIN(AppRuntimeTest)
#include "tst_appruntime.moc"
