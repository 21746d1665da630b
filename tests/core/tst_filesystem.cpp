// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>

#include <QTest>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace
{

bool makeFile(const QString &name, const QByteArray &bytes = "x")
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray fileBytes(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

/// What is there under the name; asks only for names the toolkit takes without a message.
QFileInfo entry(const QString &name)
{
    return name.contains(QChar(u'\0')) ? QFileInfo() : QFileInfo(name);
}

} // namespace

class FileSystemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void makeDirectory_data();
    void makeDirectory();
    void deleteFile_data();
    void deleteFile();
    void renameFile_data();
    void renameFile();
    void renameFileFromTheRoot();
    void successKeepsTheError();
    void logicalDrives();
    void lineEnd();
    void currentPath();
    void setCurrentPath_data();
    void setCurrentPath();
    void currentDateTime();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<AppRuntime> m_runtime;
    QString m_before;
};

/// Every case runs in a directory of its own, the current one, that holds: a file, a directory, a file in it.
void FileSystemTest::init()
{
    m_runtime = std::make_unique<AppRuntime>(u"TEST"_s);
    m_runtime->lastError = u"old"_s;
    m_runtime->checkMessage = u"old"_s;
    m_directory = std::make_unique<QTemporaryDir>();
    m_before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_directory->path()));
    QVERIFY(makeFile(u"file"_s));
    QVERIFY(QDir().mkdir(u"dir"_s));
    QVERIFY(makeFile(u"dir/inner"_s, "inner"));
    // What the toolkit complains of ends up on a program's standard error.
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void FileSystemTest::cleanup()
{
    QVERIFY(QDir::setCurrent(m_before));
    QCOMPARE(m_runtime->checkMessage, u"old"_s);
}

void FileSystemTest::makeDirectory_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("made");

    QTest::newRow("new") << u"new"_s << true;
    QTest::newRow("new, slash behind") << u"new/"_s << true;
    QTest::newRow("Japanese") << u"漢字 ｶﾅ"_s << true;
    QTest::newRow("blank in front") << u" new"_s << true;
    QTest::newRow("existing") << u"dir"_s << true;
    QTest::newRow("existing file") << u"file"_s << true;
    QTest::newRow("in an existing one") << u"dir/new"_s << true;
    QTest::newRow("the current one") << u"."_s << true;
    QTest::newRow("missing parent") << u"a/b"_s << false;
    QTest::newRow("below a file") << u"file/b"_s << false;
    QTest::newRow("no name") << u""_s << false;
    QTest::newRow("null name") << QString() << false;
    QTest::newRow("NUL in the name") << QString(u"new\0x"_s) << false;
}

void FileSystemTest::makeDirectory()
{
    QFETCH(QString, path);
    QFETCH(bool, made);

    const bool file = entry(path).isFile();
    QCOMPARE(m_runtime->makeDirectory(path), made);
    QCOMPARE(m_runtime->lastError, made ? u"old"_s : u"make dir error("_s + path + u')');
    QCOMPARE(entry(path).isDir(), made && !file);
    QVERIFY(!QFileInfo::exists(u"a"_s));
    QCOMPARE(fileBytes(u"dir/inner"_s), QByteArray("inner"));
}

void FileSystemTest::deleteFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("deleted");

    QTest::newRow("file") << u"file"_s << true;
    QTest::newRow("file in a directory") << u"dir/inner"_s << true;
    QTest::newRow("missing") << u"missing"_s << true;
    QTest::newRow("missing directory") << u"missing/x"_s << true;
    QTest::newRow("no name") << u""_s << true;
    QTest::newRow("NUL in the name") << QString(u"file\0x"_s) << true;
    QTest::newRow("directory with a file") << u"dir"_s << false;
    QTest::newRow("empty directory") << u"empty"_s << false;
    QTest::newRow("the current one") << u"."_s << false;
}

void FileSystemTest::deleteFile()
{
    QFETCH(QString, path);
    QFETCH(bool, deleted);

    QVERIFY(QDir().mkdir(u"empty"_s));
    QCOMPARE(m_runtime->deleteFile(path), deleted);
    QCOMPARE(m_runtime->lastError, deleted ? u"old"_s : u"delete file error("_s + path + u')');
    QCOMPARE(entry(path).exists(), !deleted);
    QVERIFY(QFileInfo(u"dir"_s).isDir() && QFileInfo(u"empty"_s).isDir());
}

void FileSystemTest::renameFile_data()
{
    QTest::addColumn<QString>("from"); // below the test's directory, but for an empty name
    QTest::addColumn<QString>("to");
    QTest::addColumn<bool>("renamed");

    QTest::newRow("file") << u"file"_s << u"new"_s << true;
    QTest::newRow("into a directory") << u"file"_s << u"dir/new"_s << true;
    QTest::newRow("directory") << u"dir"_s << u"new"_s << true;
    QTest::newRow("Japanese") << u"file"_s << u"漢字 ｶﾅ"_s << true;
    QTest::newRow("missing") << u"missing"_s << u"new"_s << false;
    QTest::newRow("onto an existing file") << u"file"_s << u"dir/inner"_s << false;
    QTest::newRow("onto an existing directory") << u"file"_s << u"dir"_s << false;
    QTest::newRow("into a missing directory") << u"file"_s << u"missing/new"_s << false;
    QTest::newRow("from no name") << u""_s << u"new"_s << false;
    QTest::newRow("to no name") << u"file"_s << u""_s << false;
    QTest::newRow("from a name with a NUL") << QString(u"file\0x"_s) << u"new"_s << false;
    QTest::newRow("to a name with a NUL") << u"file"_s << QString(u"new\0x"_s) << false;
}

void FileSystemTest::renameFile()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(bool, renamed);

    const auto absolute = [&](const QString &name) {
        return name.isEmpty() ? name : m_directory->filePath(name);
    };
    const bool there = entry(from).exists();
    QCOMPARE(m_runtime->renameFile(absolute(from), absolute(to)), renamed);
    QCOMPARE(m_runtime->lastError, renamed ? u"old"_s : u"rename file error("_s + absolute(from) + u')');
    QCOMPARE(entry(from).exists(), there && !renamed);
    if (renamed)
        QVERIFY(QFileInfo::exists(to));
    else
        QCOMPARE(fileBytes(u"dir/inner"_s), QByteArray("inner"));
}

void FileSystemTest::renameFileFromTheRoot()
{
#ifdef Q_OS_WIN
    const QString root = u"\\"_s;
#else
    const QString root = u"/"_s;
#endif
    m_runtime->pathSeparator = root;
    // A relative name means the root, although the current directory has a file of that name.
    QVERIFY(!m_runtime->renameFile(u"file"_s, u"new"_s));
    QCOMPARE(m_runtime->lastError, u"rename file error(file)"_s);
    QVERIFY(QFileInfo::exists(u"file"_s));

    const QString below = QDir(root).relativeFilePath(m_directory->path());
    QVERIFY(m_runtime->renameFile(below + u"/file"_s, below + u"/new"_s));
    QVERIFY(QFileInfo::exists(u"new"_s));

    // The separator is the directory's name, whatever it is.
    m_runtime->pathSeparator = u"dir"_s;
    QVERIFY(m_runtime->renameFile(u"inner"_s, u"outer"_s));
    QCOMPARE(fileBytes(u"dir/outer"_s), QByteArray("inner"));
}

void FileSystemTest::successKeepsTheError()
{
    QVERIFY(!m_runtime->makeDirectory(u"a/b"_s));
    QVERIFY(m_runtime->deleteFile(u"file"_s));
    QVERIFY(m_runtime->makeDirectory(u"dir"_s));
    QCOMPARE(m_runtime->lastError, u"make dir error(a/b)"_s);
    QVERIFY(!m_runtime->deleteFile(u"dir"_s));
    QCOMPARE(m_runtime->lastError, u"delete file error(dir)"_s);
}

void FileSystemTest::logicalDrives()
{
#ifdef Q_OS_WIN
    QString letters;
    const QFileInfoList drives = QDir::drives();
    for (const QFileInfo &drive : drives)
        letters += drive.absoluteFilePath().at(0);
    QVERIFY(!letters.isEmpty());
    QCOMPARE(m_runtime->logicalDrives(), letters);
#else
    QCOMPARE(m_runtime->logicalDrives(), QString());
#endif
}

void FileSystemTest::lineEnd()
{
    QCOMPARE(m_runtime->lineEnd(), u"\r\n"_s);
}

void FileSystemTest::currentPath()
{
    QCOMPARE(m_runtime->currentPath(), QDir::currentPath());
    QVERIFY(QDir::setCurrent(u"dir"_s));
    QVERIFY(m_runtime->currentPath().endsWith(u"/dir"_s));
}

void FileSystemTest::setCurrentPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("result");

    QTest::newRow("relative") << u"dir"_s << 0;
    QTest::newRow("the same") << u"."_s << 0;
    QTest::newRow("missing") << u"missing"_s << 5;
    QTest::newRow("file") << u"file"_s << 5;
    QTest::newRow("no name") << u""_s << 5;
    QTest::newRow("NUL in the name") << QString(u"dir\0x"_s) << 5;
}

void FileSystemTest::setCurrentPath()
{
    QFETCH(QString, path);
    QFETCH(int, result);

    const QString expected = result == 0 ? QDir(path).canonicalPath() : QDir::currentPath();
    QCOMPARE(m_runtime->setCurrentPath(path), result);
    QCOMPARE(QDir::currentPath(), expected);
    QCOMPARE(m_runtime->lastError, u"old"_s);
}

void FileSystemTest::currentDateTime()
{
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime moment = m_runtime->currentDateTime();
    QCOMPARE(moment.timeSpec(), Qt::LocalTime);
    QVERIFY(before <= moment && moment <= QDateTime::currentDateTime());
}

QTEST_GUILESS_MAIN(FileSystemTest)
#include "tst_filesystem.moc"
