// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>

#include <QTest>

using namespace Qt::StringLiterals;

class PathRulesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isExplicitPathAndResolvePath_data();
    void isExplicitPathAndResolvePath();
    void resolvePathReadsTheFields();
    void isExplicitPathTakesThePlatformsSeparator();
    void isExplicitPathWithoutSeparator();
    void resolvePathTakesTheMessage();
    void extensionOf_data();
    void extensionOf();

private:
    std::unique_ptr<AppRuntime> m_runtime;
};

void PathRulesTest::init()
{
    m_runtime = std::make_unique<AppRuntime>(u"TEST"_s);
    m_runtime->checkMessage = u"old"_s;
    m_runtime->lastError = u"error"_s;
    m_runtime->convertOk = true;
}

// Written with the separator |, for which each of the platforms' own is put.
void PathRulesTest::isExplicitPathAndResolvePath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("explicitly");

    const auto row = [](const char *title, const QString &path, bool explicitly) {
        QTest::newRow(title) << path << explicitly;
    };
    row("empty", u""_s, false);
    row("null", QString(), false);
    row("one letter", u"A"_s, false);
    row("file name", u"A.TXT"_s, false);
    row("file in a directory", u"SUB|A.TXT"_s, false);
    row("trailing separator", u"A|"_s, false);
    row("other platform's separator", u"!x"_s, false);
    row("dot and the other separator", u".!x"_s, false);
    row("dots and the other separator", u"..!x"_s, false);

    row("drive alone", u"C:"_s, true);
    row("drive and path", u"D:|DATA"_s, true);
    row("drive and file", u"X:A.TXT"_s, true);
    row("any character before the colon", u"1:x"_s, true);
    row("separator before the colon", u"|:"_s, true);
    row("blank before the colon", u" :x"_s, true);
    row("two colons", u"::"_s, true);
    row("kanji before the colon", u"\u6f22:x"_s, true);
    row("colon alone", u":"_s, false);
    row("colon first", u":x"_s, false);
    row("colon third", u"CC:x"_s, false);
    row("full-width colon", u"C\uff1ax"_s, false);
    row("surrogate pair before the colon", u"\U0002000b:x"_s, false);

    row("separator alone", u"|"_s, true);
    row("separator first", u"|A.TXT"_s, true);
    row("two separators", u"||host"_s, true);
    row("blank before the separator", u" |A"_s, false);

    row("dot", u"."_s, false);
    row("dot and separator", u".|"_s, true);
    row("file here", u".|A.TXT"_s, true);
    row("hidden file", u".profile"_s, false);
    row("hidden directory", u".d|A"_s, false);
    row("blank after the dot", u". |A"_s, false);

    row("two dots", u".."_s, false);
    row("two dots and separator", u"..|"_s, true);
    row("file above", u"..|A.TXT"_s, true);
    row("two dots and a name", u"..A"_s, false);
    row("two dots further on", u"A|..|B"_s, false);
    row("three dots", u"..."_s, false);
    row("three dots and separator", u"...|A"_s, false);
}

void PathRulesTest::isExplicitPathAndResolvePath()
{
    QFETCH(QString, path);
    QFETCH(bool, explicitly);

    for (const auto &[separator, other] : {std::pair{u'\\', u'/'}, std::pair{u'/', u'\\'}}) {
        const QString name = QString(path).replace(u'|', separator).replace(u'!', other);
        m_runtime->homeDirectory = u"H:"_s;
        m_runtime->pathSeparator = separator;
        m_runtime->checkMessage = u"old"_s;
        QCOMPARE(std::as_const(*m_runtime).isExplicitPath(name), explicitly);
        QCOMPARE(m_runtime->checkMessage, u"old"_s);

        const QString directory = u"H:|Z|TMP|"_s.replace(u'|', separator);
        QCOMPARE(m_runtime->resolvePath(name), explicitly ? name : directory + name);
        QCOMPARE(m_runtime->checkMessage, explicitly ? u"old"_s : u"\"TEST\" not in('ZCLOK')"_s);
        QCOMPARE(m_runtime->lastError, u"error"_s);
        QVERIFY(m_runtime->convertOk);
    }
}

void PathRulesTest::resolvePathReadsTheFields()
{
    m_runtime->homeDirectory = u"C:"_s;
    m_runtime->pathSeparator = u"\\"_s;
    m_runtime->subdirTag = u"S01"_s;
    m_runtime->realMode2 = u"DEMO"_s;
    m_runtime->programName = u"ZCLOK"_s;
    QCOMPARE(m_runtime->resolvePath(u"A.TXT"_s), u"C:\\Z\\Z.S01\\TMP_DEMO\\A.TXT"_s);
    QCOMPARE(m_runtime->resolvePath(u""_s), u"C:\\Z\\Z.S01\\TMP_DEMO\\"_s);
    QCOMPARE(m_runtime->checkMessage, u"old"_s);

    // The separator is a text: nothing counts on its one character.
    m_runtime->pathSeparator = u"<>"_s;
    QVERIFY(m_runtime->isExplicitPath(u"<>x"_s));
    QVERIFY(m_runtime->isExplicitPath(u".<>x"_s));
    QVERIFY(m_runtime->isExplicitPath(u"..<>"_s));
    QVERIFY(!m_runtime->isExplicitPath(u"<x"_s));
    QVERIFY(!m_runtime->isExplicitPath(u".<"_s));
}

void PathRulesTest::isExplicitPathTakesThePlatformsSeparator()
{
    QCOMPARE(m_runtime->isExplicitPath(u"\\x"_s), BuiltWith::windowsRules());
    QCOMPARE(m_runtime->isExplicitPath(u"/x"_s), !BuiltWith::windowsRules());
}

// Every path begins with nothing.
void PathRulesTest::isExplicitPathWithoutSeparator()
{
    m_runtime->pathSeparator = u""_s;
    for (const QString &path : {QString(), u""_s, u"A.TXT"_s}) {
        QVERIFY(m_runtime->isExplicitPath(path));
        QCOMPARE(m_runtime->resolvePath(path), path);
    }
}

void PathRulesTest::resolvePathTakesTheMessage()
{
    const QString folder = m_runtime->tempPath(m_runtime->pathSeparator);
    m_runtime->checkMessage = u"A.TXT"_s;
    QCOMPARE(m_runtime->resolvePath(m_runtime->checkMessage), folder + u"A.TXT"_s);
}

void PathRulesTest::extensionOf_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extension");

    QTest::newRow("blank behind") << u"DATA.CSV "_s << u"CSV"_s;
    QTest::newRow("blank before") << u"DATA. CSV"_s << u"CSV"_s;
    QTest::newRow("blank within") << u"DATA. C V \t"_s << u"C V"_s;
    QTest::newRow("ideographic spaces") << u"DATA.\u3000CSV\u3000"_s << u"CSV"_s;
    QTest::newRow("no-break space") << u"DATA.\u00a0CSV"_s << u"CSV"_s;
    QTest::newRow("no dot") << u"README"_s << u"README"_s;
    QTest::newRow("no dot, blanks") << u" READ ME "_s << u"READ ME"_s;
    QTest::newRow("dot last") << u"A."_s << u""_s;
    QTest::newRow("dot and blanks last") << u"A. \t"_s << u""_s;
    QTest::newRow("dot alone") << u"."_s << u""_s;
    QTest::newRow("two dots") << u".."_s << u""_s;
    QTest::newRow("dot first") << u".profile"_s << u"profile"_s;
    QTest::newRow("last dot counts") << u"A.TAR.GZ"_s << u"GZ"_s;
    QTest::newRow("case stays") << u"a.Csv"_s << u"Csv"_s;
    QTest::newRow("dot of a directory") << u"A.B/C"_s << u"B/C"_s;
    QTest::newRow("dot of a directory, other separator") << u"A.B\\C"_s << u"B\\C"_s;
    QTest::newRow("full-width dot is none") << u"A\uff0eCSV"_s << u"A\uff0eCSV"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("null") << QString() << u""_s;
    QTest::newRow("blanks") << u" \t "_s << u""_s;
    QTest::newRow("kanji") << u"\u6f22.\u5b57"_s << u"\u5b57"_s;
    QTest::newRow("surrogates") << u"a.\U0002000b"_s << u"\U0002000b"_s;
    QTest::newRow("NUL is no white space") << QString(u"a.b\0"_s) << QString(u"b\0"_s);
    QTest::newRow("long") << QString(100000, u'.') + u"x"_s << u"x"_s;
}

void PathRulesTest::extensionOf()
{
    QFETCH(QString, name);
    QFETCH(QString, extension);

    QCOMPARE(std::as_const(*m_runtime).extensionOf(name), extension);
    QCOMPARE(m_runtime->checkMessage, u"old"_s);
    QCOMPARE(m_runtime->lastError, u"error"_s);
    QVERIFY(m_runtime->convertOk);
}

QTEST_GUILESS_MAIN(PathRulesTest)
#include "tst_pathrules.moc"
