// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>

#include <QTest>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class VersionInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void writeVersionFileOfArguments_data();
    void writeVersionFileOfArguments();
    void writeVersionFileContent_data();
    void writeVersionFileContent();
    void writeVersionFileReadsTheFields();
    void writeVersionFileReplacesTheFile();
    void writeVersionFileIntoMissingDirectory();
    void cleanupTestCase();

private:
    /// Names of the files that there are, without their directory.
    [[nodiscard]] QStringList written() const;
    [[nodiscard]] QByteArray contentOf(const QString &name) const;

    QString m_start = QDir::currentPath();
    QString m_directory; ///< Of the version files, with a separator behind.
    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<AppRuntime> m_runtime;
};

void VersionInfoTest::initTestCase()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void VersionInfoTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    QVERIFY(m_root->isValid());
    m_runtime = std::make_unique<AppRuntime>(u"TEST"_s);
    m_runtime->checkMessage = u"old"_s;
    m_runtime->lastError = u"error"_s;
    m_runtime->convertOk = true;

    // The name is joined with the platform's separator. Where that is a backslash and the system takes it for
    // a letter like any other, the whole of it is one name in the current directory.
    QVERIFY(QDir(m_root->path()).mkpath(u"home/Z/TMP"_s));
    QVERIFY(QDir::setCurrent(m_root->path()));
    m_runtime->homeDirectory = u"home"_s;
    m_directory = u"home|Z|TMP|"_s.replace(u'|', m_runtime->pathSeparator);
}

QStringList VersionInfoTest::written() const
{
    QStringList names;
    for (const QString &directory : {u"."_s, u"home/Z/TMP"_s})
        names += QDir(directory).entryList(QDir::Files);
    for (QString &name : names)
        name.remove(u"home\\Z\\TMP\\"_s);
    return names;
}

QByteArray VersionInfoTest::contentOf(const QString &name) const
{
    QFile file(m_directory + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable"_ba;
}

void VersionInfoTest::writeVersionFileOfArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("recognised");
    QTest::addColumn<QString>("message");

    const QString done = u"\"Shift-JIS\" not in('UTF-8')"_s;
    const auto miss = [](const QString &word) {
        return u'"' + word + u"\" not in('VERSION')"_s;
    };
    const QString v = u"VERSION"_s;
    QTest::newRow("none") << QStringList{} << 0 << u"old"_s;
    QTest::newRow("one") << QStringList{v} << 0 << u"old"_s;
    QTest::newRow("one of another kind") << QStringList{u"x"_s} << 0 << u"old"_s;
    QTest::newRow("two") << QStringList{v, v} << 1 << done;
    QTest::newRow("three") << QStringList{v, v, v} << 0 << u"old"_s;
    QTest::newRow("two and an empty one") << QStringList{v, v, u""_s} << 0 << u"old"_s;
    QTest::newRow("case does not count") << QStringList{u"version"_s, u"Version"_s} << 1 << done;
    QTest::newRow("only the first") << QStringList{v, u"help"_s} << 0 << miss(u"HELP"_s);
    QTest::newRow("only the second") << QStringList{u"help"_s, v} << 0 << miss(u"HELP"_s);
    QTest::newRow("neither") << QStringList{u"one"_s, u"two"_s} << 0 << miss(u"ONE"_s);
    QTest::newRow("blank behind") << QStringList{v, u"version "_s} << 0 << miss(u"VERSION "_s);
    QTest::newRow("blank before") << QStringList{u" version"_s, v} << 0 << miss(u" VERSION"_s);
    QTest::newRow("empty first") << QStringList{u""_s, v} << 0 << miss(u""_s);
    QTest::newRow("empty second") << QStringList{v, u""_s} << 0 << miss(u""_s);
    QTest::newRow("dashes") << QStringList{u"--version"_s, v} << 0 << miss(u"--VERSION"_s);
    QTest::newRow("full width") << QStringList{v, u"\uff56ersion"_s} << 0 << miss(u"\uff36ERSION"_s);
}

void VersionInfoTest::writeVersionFileOfArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, recognised);
    QFETCH(QString, message);

    QCOMPARE(m_runtime->version->writeVersionFile(arguments), recognised);
    QCOMPARE(m_runtime->checkMessage, message);
    QCOMPARE(m_runtime->lastError, u"error"_s);
    QVERIFY(m_runtime->convertOk);
    QCOMPARE(written(), recognised ? QStringList{u"VERSION_TEST.TXT"_s} : QStringList());
}

void VersionInfoTest::writeVersionFileContent_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("ordinary program") << u"ZBASE"_s << "37\t000800004"_ba;
    QTest::newRow("chart program") << u"ZGRAPH"_s << "2"_ba;
    QTest::newRow("print program") << u"ZLISTR"_s << "14"_ba;
    QTest::newRow("chart program in lower case") << u"zgraph"_s << "37\t000800004"_ba;
    QTest::newRow("print program and a blank") << u"ZLISTR "_s << "37\t000800004"_ba;
    QTest::newRow("time program has no place of its own") << u"ZCLOK"_s << "37\t000800004"_ba;
    QTest::newRow("no name") << u""_s << "37\t000800004"_ba;
}

void VersionInfoTest::writeVersionFileContent()
{
    QFETCH(QString, program);
    QFETCH(QByteArray, line);

    m_runtime->programName = program;
    QCOMPARE(m_runtime->version->writeVersionFile({u"version"_s, u"VERSION"_s}), 1);
    const QString name = u"VERSION_"_s + program + u".TXT"_s;
    QCOMPARE(written(), QStringList{name});
    QCOMPARE(contentOf(name), line + (BuiltWith::windowsRules() ? "\r\n" : "\n"));
    QCOMPARE(m_runtime->checkMessage, u"\"Shift-JIS\" not in('UTF-8')"_s);
    QCOMPARE(m_runtime->lastError, u"error"_s);
}

// The fields of the record and of the runtime are read at the call, the line end by the letter included.
void VersionInfoTest::writeVersionFileReadsTheFields()
{
    VersionInfo &version = *m_runtime->version;
    version.versionText = u"\u6f22"_s;
    version.versionNumber = -1;
    version.chartVersion = 1234567;
    version.printVersion = 0;
    m_runtime->platformChar = BuiltWith::windowsRules() ? u'U' : u'W';
    m_runtime->homeDirectory = m_root->path();
    m_runtime->pathSeparator = u"/"_s;
    QVERIFY(QDir(m_root->path()).mkpath(u"Z/TMP"_s));
    m_directory = m_root->path() + u"/Z/TMP/"_s;
    const QByteArray end = BuiltWith::windowsRules() ? "\n"_ba : "\r\n"_ba;
    const QStringList request = {u"version"_s, u"version"_s};

    QCOMPARE(version.writeVersionFile(request), 1);
    QCOMPARE(contentOf(u"VERSION_TEST.TXT"_s), "-1\t" + u"\u6f22"_s.toLocal8Bit() + end);
    m_runtime->programName = u"ZGRAPH"_s;
    QCOMPARE(version.writeVersionFile(request), 1);
    QCOMPARE(contentOf(u"VERSION_ZGRAPH.TXT"_s), "1234567" + end);
    m_runtime->programName = u"ZLISTR"_s;
    QCOMPARE(version.writeVersionFile(request), 1);
    QCOMPARE(contentOf(u"VERSION_ZLISTR.TXT"_s), "0" + end);
    QCOMPARE(m_runtime->lastError, u"error"_s);
}

void VersionInfoTest::writeVersionFileReplacesTheFile()
{
    QFile file(m_directory + u"VERSION_TEST.TXT"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1000, 'x'));
    file.close();
    const QStringList request = {u"version"_s, u"version"_s};
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(m_runtime->version->writeVersionFile(request), 1);
        QCOMPARE(
            contentOf(u"VERSION_TEST.TXT"_s), "37\t000800004"_ba + (BuiltWith::windowsRules() ? "\r\n" : "\n")
        );
    }
}

void VersionInfoTest::writeVersionFileIntoMissingDirectory()
{
    m_runtime->pathSeparator = u"/"_s;
    m_runtime->homeDirectory = u"elsewhere"_s;
    QCOMPARE(m_runtime->version->writeVersionFile({u"version"_s, u"version"_s}), 1);
    QCOMPARE(m_runtime->lastError, u"Open Write error"_s);
    QCOMPARE(m_runtime->checkMessage, u"\"OT\" not in('ADD')"_s);
    QCOMPARE(written(), QStringList());
    QVERIFY(!QDir(u"elsewhere"_s).exists());

    // A request that is none leaves the failure where it is.
    m_runtime->lastError = u"error"_s;
    QCOMPARE(m_runtime->version->writeVersionFile({u"version"_s, u"help"_s}), 0);
    QCOMPARE(m_runtime->lastError, u"error"_s);
}

void VersionInfoTest::cleanupTestCase()
{
    QDir::setCurrent(m_start);
}

QTEST_GUILESS_MAIN(VersionInfoTest)
#include "tst_versioninfo.moc"
