// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>

#include <QTest>

using namespace Qt::StringLiterals;

class TemporaryNamesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void familyDirectoryAndOthersOfAFreshObject();
    void tempPathFor_data();
    void tempPathFor();
    void tempPathTakesTheMessage();
    void familyDirectoryAndSubdirPath_data();
    void familyDirectoryAndSubdirPath();

private:
    std::unique_ptr<AppRuntime> m_runtime;
};

void TemporaryNamesTest::init()
{
    m_runtime = std::make_unique<AppRuntime>(u"TEST"_s);
    m_runtime->checkMessage = u"old"_s;
    m_runtime->lastError = u"error"_s;
    m_runtime->convertOk = true;
}

// The names of a fresh object, whose separator and home directory the platform has chosen.
void TemporaryNamesTest::familyDirectoryAndOthersOfAFreshObject()
{
    const bool windows = BuiltWith::windowsRules();
    const QString home = windows ? m_runtime->environmentValue(u"SystemDrive"_s) : u"/home"_s;
    QCOMPARE(m_runtime->familyDirectory(), home + (windows ? u"\\Z"_s : u"/Z"_s));
    QCOMPARE(m_runtime->subdirPath(), home + (windows ? u"\\Z\\Z."_s : u"/Z/Z."_s));
    QCOMPARE(m_runtime->checkMessage, u"old"_s);
    QCOMPARE(m_runtime->tempPath(u""_s), home + (windows ? u"\\Z\\TMP"_s : u"/Z/TMP"_s));
    QCOMPARE(m_runtime->checkMessage, u"\"TEST\" not in('ZCLOK')"_s);
    QCOMPARE(
        m_runtime->tempPathFor(u"x"_s, u"ZCLOK"_s),
        home + (windows ? u"\\Z\\Z.\\TMP_REALx"_s : u"/Z/Z./TMP_REALx"_s)
    );
    QCOMPARE(m_runtime->lastError, u"error"_s);
}

void TemporaryNamesTest::tempPathFor_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("name"); // with home C:, separator \, tag S01 and mode REAL
    QTest::addColumn<QString>("message");

    const auto row = [](const char *title,
                        const QString &fileName,
                        const QString &program,
                        const QString &name,
                        const QString &message) {
        QTest::newRow(title) << fileName << program << name << message;
    };
    const auto miss = [](const QString &program) {
        return u'"' + program + u"\" not in('ZCLOK')"_s;
    };
    row("ordinary program", u"\\A.TXT"_s, u"ZBASE"_s, u"C:\\Z\\TMP\\A.TXT"_s, miss(u"ZBASE"_s));
    row("time program", u"\\A.TXT"_s, u"ZCLOK"_s, u"C:\\Z\\Z.S01\\TMP_REAL\\A.TXT"_s, u"old"_s);
    row("case counts", u"\\X"_s, u"zclok"_s, u"C:\\Z\\TMP\\X"_s, miss(u"zclok"_s));
    row("blank counts", u"\\X"_s, u"ZCLOK "_s, u"C:\\Z\\TMP\\X"_s, miss(u"ZCLOK "_s));
    row("beginning is not enough", u"\\X"_s, u"ZCLO"_s, u"C:\\Z\\TMP\\X"_s, miss(u"ZCLO"_s));
    row("no program", u"\\X"_s, u""_s, u"C:\\Z\\TMP\\X"_s, miss(u""_s));
    row("null program", u"\\X"_s, QString(), u"C:\\Z\\TMP\\X"_s, miss(u""_s));
    row("no name", u""_s, u"ZBASE"_s, u"C:\\Z\\TMP"_s, miss(u"ZBASE"_s));
    row("null name", QString(), u"ZBASE"_s, u"C:\\Z\\TMP"_s, miss(u"ZBASE"_s));
    row("no name, time program", u""_s, u"ZCLOK"_s, u"C:\\Z\\Z.S01\\TMP_REAL"_s, u"old"_s);
    row("separator alone", u"\\"_s, u"ZBASE"_s, u"C:\\Z\\TMP\\"_s, miss(u"ZBASE"_s));
    row("separator alone, time program", u"\\"_s, u"ZCLOK"_s, u"C:\\Z\\Z.S01\\TMP_REAL\\"_s, u"old"_s);
    row("no separator is put in", u"A.TXT"_s, u"ZBASE"_s, u"C:\\Z\\TMPA.TXT"_s, miss(u"ZBASE"_s));
    row("no separator is converted", u"/A/../B"_s, u"ZBASE"_s, u"C:\\Z\\TMP/A/../B"_s, miss(u"ZBASE"_s));
    row("kanji", u"\\\u6f22 "_s, u"ZBASE"_s, u"C:\\Z\\TMP\\\u6f22 "_s, miss(u"ZBASE"_s));
    row("per cent signs are plain", u"%1%2"_s, u"ZBASE"_s, u"C:\\Z\\TMP%1%2"_s, miss(u"ZBASE"_s));
}

void TemporaryNamesTest::tempPathFor()
{
    QFETCH(QString, fileName);
    QFETCH(QString, program);
    QFETCH(QString, name);
    QFETCH(QString, message);

    m_runtime->homeDirectory = u"C:"_s;
    m_runtime->pathSeparator = u"\\"_s;
    m_runtime->subdirTag = u"S01"_s;
    m_runtime->realMode1 = u"OTHER"_s; // not read
    m_runtime->programName = u"MINE"_s;
    QCOMPARE(m_runtime->tempPathFor(fileName, program), name);
    QCOMPARE(m_runtime->checkMessage, message);

    m_runtime->checkMessage = u"old"_s;
    m_runtime->programName = program;
    QCOMPARE(m_runtime->tempPath(fileName), name);
    QCOMPARE(m_runtime->checkMessage, message);
    QCOMPARE(m_runtime->lastError, u"error"_s);
    QVERIFY(m_runtime->convertOk);
    QCOMPARE(m_runtime->programName, program);
}

void TemporaryNamesTest::tempPathTakesTheMessage()
{
    const QString folder = m_runtime->tempPath(u""_s);
    m_runtime->checkMessage = u"/A.TXT"_s;
    QCOMPARE(m_runtime->tempPath(m_runtime->checkMessage), folder + u"/A.TXT"_s);
    m_runtime->checkMessage = u"ZCLOK"_s;
    QCOMPARE(
        m_runtime->tempPathFor(m_runtime->checkMessage, m_runtime->checkMessage),
        m_runtime->tempPathFor(u"ZCLOK"_s, u"ZCLOK"_s)
    );
}

void TemporaryNamesTest::familyDirectoryAndSubdirPath_data()
{
    QTest::addColumn<QString>("home");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("subdir");
    QTest::addColumn<QString>("clock");
    QTest::addColumn<QString>("ordinary");

    QTest::newRow("other home, tag and mode")
        << u"/srv"_s << u"/"_s << u"S02"_s << u"DEMO"_s << u"/srv/Z"_s << u"/srv/Z/Z.S02"_s
        << u"/srv/Z/Z.S02/TMP_DEMO/F"_s << u"/srv/Z/TMP/F"_s;
    QTest::newRow("empty tag") << u"C:"_s << u"\\"_s << u""_s << u"REAL"_s << u"C:\\Z"_s << u"C:\\Z\\Z."_s
                               << u"C:\\Z\\Z.\\TMP_REAL/F"_s << u"C:\\Z\\TMP/F"_s;
    QTest::newRow("empty mode") << u"C:"_s << u"\\"_s << u"T"_s << u""_s << u"C:\\Z"_s << u"C:\\Z\\Z.T"_s
                                << u"C:\\Z\\Z.T\\TMP_/F"_s << u"C:\\Z\\TMP/F"_s;
    QTest::newRow("empty home") << u""_s << u"/"_s << u"T"_s << u"R"_s << u"/Z"_s << u"/Z/Z.T"_s
                                << u"/Z/Z.T/TMP_R/F"_s << u"/Z/TMP/F"_s;
    QTest::newRow("everything empty") << QString() << QString() << QString() << QString() << u"Z"_s
                                      << u"ZZ."_s << u"ZZ.TMP_/F"_s << u"ZTMP/F"_s;
    QTest::newRow("long separator") << u"h"_s << u"::"_s << u"T"_s << u"R"_s << u"h::Z"_s << u"h::Z::Z.T"_s
                                    << u"h::Z::Z.T::TMP_R/F"_s << u"h::Z::TMP/F"_s;
}

void TemporaryNamesTest::familyDirectoryAndSubdirPath()
{
    QFETCH(QString, home);
    QFETCH(QString, separator);
    QFETCH(QString, tag);
    QFETCH(QString, mode);
    QFETCH(QString, family);
    QFETCH(QString, subdir);
    QFETCH(QString, clock);
    QFETCH(QString, ordinary);

    m_runtime->homeDirectory = home;
    m_runtime->pathSeparator = separator;
    m_runtime->subdirTag = tag;
    m_runtime->realMode2 = mode;
    const AppRuntime &runtime = *m_runtime;
    QCOMPARE(runtime.familyDirectory(), family);
    QCOMPARE(runtime.subdirPath(), subdir);
    QCOMPARE(runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime->tempPathFor(u"/F"_s, u"ZCLOK"_s), clock);
    QCOMPARE(m_runtime->tempPathFor(u"/F"_s, u"ZGRAPH"_s), ordinary);
    QCOMPARE(m_runtime->lastError, u"error"_s);

    // The time program's directory does not depend on who asks.
    m_runtime->programName = u"ZCLOK"_s;
    QCOMPARE(runtime.subdirPath(), subdir);
    QCOMPARE(m_runtime->tempPath(u"/F"_s), clock);
}

QTEST_GUILESS_MAIN(TemporaryNamesTest)
#include "tst_temporarynames.moc"
