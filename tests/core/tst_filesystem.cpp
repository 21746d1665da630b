// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
#include <support/comestrue.h>
#include <support/processes.h>
#include <support/refusedcall.h>
#include <support/smalldisk.h>

#include <QTest>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <functional>
#include <optional>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/inotify.h>
#include <sys/syscall.h>
#endif

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

/// What is there under the name; asks only for names Qt takes without a message.
QFileInfo entry(const QString &name)
{
    return name.contains(QChar(u'\0')) ? QFileInfo() : QFileInfo(name);
}

#ifdef Q_OS_UNIX
/// renameFile() by a user whose rights count: the superuser's do not, who becomes another one. Nothing where
/// he cannot.
std::optional<bool> renameAsPlainUser(AppRuntime &runtime, const QString &from, const QString &to)
{
    const bool superuser = geteuid() == 0;
    if (superuser && seteuid(65534) != 0)
        return std::nullopt;
    const bool renamed = runtime.renameFile(from, to);
    if (superuser && seteuid(0) != 0)
        qFatal("The rights of the superuser are lost");
    return renamed;
}
#endif

#ifdef SYS_fchown32
constexpr int changeOwner = SYS_fchown32; // what a 32-bit system calls
#elif defined Q_OS_LINUX
constexpr int changeOwner = SYS_fchown;
#endif

#ifdef Q_OS_LINUX
/// renameFile() in a program to which the system refuses calls: each three numbers are a call, its error and
/// its argument that counts, or -1. Gives the exit code, 0 when it worked; -1 when the program does not end;
/// nothing where the system refuses no calls.
std::optional<int> renameWithRefusedCalls(const QList<int> &calls, const QString &from, const QString &to)
{
    constexpr int notRefused = 77;
    QProcess process;
    process.setChildProcessModifier([&calls] {
        for (qsizetype i = 0; i < calls.size(); i += 3) {
            if (!refuseCall(calls[i], calls[i + 1], calls[i + 2]))
                _exit(notRefused);
        }
    });
    process.start(BuiltWith::helper(u"console"_s), {u"rename"_s, from, to});
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return -1;
    return process.exitCode() == notRefused ? std::nullopt : std::optional(process.exitCode());
}
#endif

#ifdef __GLIBC__
/// What this program does in a call of the system that the runtime makes. All calls below are answered here.
struct {
    std::function<void(int)> beforeFlush; ///< Called with the descriptor.
    std::function<void(int)> beforeWrite; ///< The same.
    size_t mostWritten{SIZE_MAX};         ///< Bytes that one call takes.
    bool interrupted{false};              ///< Whether every second read and write is.
    int closeFails{-1};                   ///< The descriptor whose close() reports an error.
    int renameError{0};                   ///< That of renameat2().
    int renames{0};                       ///< How often renameat2() was called.
    bool unlinkAnswerLost{false};         ///< Whether unlink() removes a name and reports an error.
} systemCalls;

bool isInterrupted()
{
    static bool turn = false;
    turn = systemCalls.interrupted && !turn;
    if (turn)
        errno = EINTR;
    return turn;
}
#endif

} // namespace

#ifdef __GLIBC__
extern "C" {
int answerFlush(int descriptor) __asm__("fsync");
ssize_t answerRead(int descriptor, void *bytes, size_t size) __asm__("read");
ssize_t answerWrite(int descriptor, const void *bytes, size_t size) __asm__("write");
int answerClose(int descriptor) __asm__("close");
int answerUnlink(const char *name) __asm__("unlink");
int answerRename(int fromFolder, const char *from, int toFolder, const char *to, unsigned int flags) __asm__(
    "renameat2"
);
}

int answerFlush(int descriptor)
{
    if (systemCalls.beforeFlush)
        systemCalls.beforeFlush(descriptor);
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

ssize_t answerRead(int descriptor, void *bytes, size_t size)
{
    return isInterrupted() ? -1 : syscall(SYS_read, descriptor, bytes, size);
}

ssize_t answerWrite(int descriptor, const void *bytes, size_t size)
{
    if (systemCalls.beforeWrite)
        systemCalls.beforeWrite(descriptor);
    return isInterrupted() ? -1 : syscall(SYS_write, descriptor, bytes, qMin(size, systemCalls.mostWritten));
}

int answerClose(int descriptor)
{
    const auto result = static_cast<int>(syscall(SYS_close, descriptor));
    if (descriptor != systemCalls.closeFails)
        return result;
    systemCalls.closeFails = -1;
    errno = EIO;
    return -1;
}

int answerRename(int fromFolder, const char *from, int toFolder, const char *to, unsigned int flags)
{
    ++systemCalls.renames;
    if (systemCalls.renameError == 0)
        return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
    errno = systemCalls.renameError;
    return -1;
}

int answerUnlink(const char *name)
{
    const auto result = static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, name, 0));
    if (!systemCalls.unlinkAnswerLost)
        return result;
    errno = EIO;
    return -1;
}
#endif

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
    void renameFileOfLinksAndPipes();
    void renameFileInCaseAlone();
    void renameFileThroughAFolderOfTwoNames();
    void renameFileWhereCaseIsNoDifference();
    void renameFileWithLostAnswer_data();
    void renameFileWithLostAnswer();
    void renameFileAcrossFileSystems_data();
    void renameFileAcrossFileSystems();
    void renameFileAcrossKeepsModeAndTime();
    void renameFileAcrossKeepsOwnerAndRights();
    void renameFileAcrossIsPrivateMeanwhile();
    void renameFileAcrossFlushesFileAndFolder();
    void renameFileAcrossInSmallPieces();
    void renameFileAcrossOfAChangingFile_data();
    void renameFileAcrossOfAChangingFile();
    void renameFileAcrossNeedsAFile();
    void renameFileAcrossOntoALink();
    void renameFileAcrossToFullDisk();
    void renameFileAcrossToFileTooLarge();
    void renameFileAcrossOfUnknownSize();
    void renameFileAcrossOfEndlessFile();
    void renameFileAcrossOpensNoPipe();
    void renameFileAcrossWithoutRights_data();
    void renameFileAcrossWithoutRights();
    void renameFileAcrossUnclosable();
    void renameFileByLinkUnremovable();
    void renameFileWithRefusedCall_data();
    void renameFileWithRefusedCall();
    void makeDirectoryAndDeleteFileKeepTheError();
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
    // What Qt complains of ends up on a program's standard error.
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void FileSystemTest::cleanup()
{
#ifdef __GLIBC__
    systemCalls = {};
#endif
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
    QTest::addColumn<QString>("from"); // below the test's directory, except an empty name
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
    QTest::newRow("onto itself") << u"file"_s << u"file"_s << false;
    QTest::newRow("directory onto itself") << u"dir"_s << u"dir"_s << false;
    QTest::newRow("directory onto an existing file") << u"dir"_s << u"file"_s << false;
    QTest::newRow("directory into itself") << u"dir"_s << u"dir/new"_s << false;
    QTest::newRow("below a file") << u"dir"_s << u"file/new"_s << false;
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

/// The names of one file or pipe, or of none.
void FileSystemTest::renameFileOfLinksAndPipes()
{
#ifdef Q_OS_UNIX
    const auto renamed = [this](const QString &from, const QString &to) {
        return m_runtime->renameFile(m_directory->filePath(from), m_directory->filePath(to));
    };
    // Two links to one file: rename() of the system would do nothing and call it done.
    QCOMPARE(link("file", "second"), 0);
    QVERIFY(!renamed(u"file"_s, u"second"_s));
    QCOMPARE(m_runtime->lastError, u"rename file error("_s + m_directory->filePath(u"file"_s) + u')');
    QVERIFY(QFileInfo::exists(u"file"_s) && QFileInfo::exists(u"second"_s));
    QCOMPARE(link("file", "FILE"), 0);
    QVERIFY(!renamed(u"file"_s, u"FILE"_s));
    QVERIFY(QFileInfo::exists(u"file"_s));

    // A link to nothing is there, and is a name like any other.
    QCOMPARE(symlink("nothing", "dangling"), 0);
    QVERIFY(!renamed(u"file"_s, u"dangling"_s));
    QVERIFY(QFileInfo(u"dangling"_s).isSymLink() && !QFileInfo::exists(u"nothing"_s));
    QVERIFY(renamed(u"dangling"_s, u"link"_s));
    QVERIFY(QFileInfo(u"link"_s).isSymLink());

    QCOMPARE(mkfifo("pipe", 0600), 0);
    QVERIFY(renamed(u"pipe"_s, u"tube"_s));
    QVERIFY(QFileInfo::exists(u"tube"_s) && !QFileInfo::exists(u"pipe"_s));
#else
    QSKIP("Links and pipes of this kind are of other systems");
#endif
}

void FileSystemTest::renameFileInCaseAlone()
{
    const QString from = m_directory->filePath(u"file"_s), to = m_directory->filePath(u"FILE"_s);
    QVERIFY(m_runtime->renameFile(from, to));
    const QStringList names = QDir().entryList(QDir::Files);
#ifdef Q_OS_WIN
    if (names == QStringList{u"file"_s})
        QSKIP("Wine keeps the first spelling of a name.");
#endif
    QCOMPARE(names, QStringList{u"FILE"_s});
}

/// The system says that the new name is there, because it is the old one. Only case may make them differ.
void FileSystemTest::renameFileThroughAFolderOfTwoNames()
{
#ifdef Q_OS_LINUX
    const auto renamed = [this](const QString &from, const QString &to) {
        return m_runtime->renameFile(m_directory->filePath(from), m_directory->filePath(to));
    };
    if (symlink("dir", "DIR") != 0)
        QSKIP("To this file system the two names are one");
    QCOMPARE(symlink("dir", "other"), 0);
    QVERIFY(QDir().mkdir(u"dir/sub"_s));
    QVERIFY(renamed(u"dir/inner"_s, u"DIR/inner"_s));
    QVERIFY(renamed(u"DIR/sub"_s, u"dir/sub"_s));
    QVERIFY(!renamed(u"dir/inner"_s, u"other/inner"_s));
    QVERIFY(!renamed(u"dir/sub"_s, u"other/sub"_s));
    QCOMPARE(link("dir/inner", "dir/second"), 0);
    QVERIFY(!renamed(u"dir/inner"_s, u"DIR/inner"_s));
    QVERIFY(makeFile(u"FILE"_s, "other"));
#ifdef __GLIBC__
    systemCalls = {};
#endif
    QVERIFY(!renamed(u"file"_s, u"FILE"_s));
#ifdef __GLIBC__
    QCOMPARE(systemCalls.renames, 1); // the file was never under a third name
#endif

    QCOMPARE(fileBytes(u"file"_s), QByteArray("x"));
    QCOMPARE(fileBytes(u"FILE"_s), QByteArray("other"));
    QCOMPARE(fileBytes(u"dir/inner"_s), QByteArray("inner"));
    QCOMPARE(
        QDir(u"dir"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        (QStringList{u"inner"_s, u"second"_s, u"sub"_s})
    );
#else
    QSKIP("On other systems the two names may be one");
#endif
}

/// Linux says that a rename of `file` to `FILE` is done there, and does nothing.
void FileSystemTest::renameFileWhereCaseIsNoDifference()
{
    CaselessDisk disk;
    if (!disk.isMounted())
        QSKIP("Such a file system cannot be mounted here");
    const QDir folder(disk.path());
    QVERIFY(makeFile(folder.filePath(u"file"_s), "bytes"));
    QVERIFY(folder.mkdir(u"dir"_s));
    QVERIFY(makeFile(folder.filePath(u"other"_s)));
    const auto renamed = [&](const QString &from, const QString &to) {
        return m_runtime->renameFile(folder.filePath(from), folder.filePath(to));
    };
    QVERIFY(renamed(u"file"_s, u"FILE"_s));
    QVERIFY(renamed(u"dir"_s, u"Dir"_s));
    QVERIFY(renamed(u"Dir/"_s, u"DIR/"_s));
    QVERIFY(!renamed(u"FILE"_s, u"OTHER"_s));
    QVERIFY(!renamed(u"FILE"_s, u"FILE"_s));
    QCOMPARE(fileBytes(folder.filePath(u"FILE"_s)), QByteArray("bytes"));
    const QStringList expected{u"DIR"_s, u"FILE"_s, u"other"_s};
    QVERIFY(comesTrue([&] { return disk.unmountedNames() == expected; })); // it writes for a while longer
}

void FileSystemTest::renameFileWithLostAnswer_data()
{
    QTest::addColumn<bool>("across");

    QTest::newRow("on one file system") << false;
    QTest::newRow("across file systems") << true;
}

/// A server has removed the old name, and says that it could not. The new name is the only one then.
void FileSystemTest::renameFileWithLostAnswer()
{
#ifdef __GLIBC__
    QFETCH(bool, across);

    const auto elsewhere = folderElsewhere(m_directory->path());
    if (across && !elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s);
    const QString to = across ? elsewhere->filePath(u"new"_s) : m_directory->filePath(u"new"_s);
    systemCalls.renameError = across ? 0 : ENOSYS;
    systemCalls.unlinkAnswerLost = true;
    const bool renamed = m_runtime->renameFile(from, to);
    systemCalls = {};
    QVERIFY(renamed);
    QCOMPARE(fileBytes(to), QByteArray("x"));
    QVERIFY(!QFileInfo::exists(from));
#else
    QSKIP("Only here a call of the system can be replaced");
#endif
}

void FileSystemTest::renameFileAcrossFileSystems_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a byte") << QByteArray("x");
    QTest::newRow("one short of a block") << QByteArray(65535, 'x');
    QTest::newRow("a block") << QByteArray(65536, 'x');
    QTest::newRow("one more") << QByteArray(65537, 'x');
    QTest::newRow("many") << QByteArray("0123456789\0"_ba.repeated(100'000));
}

void FileSystemTest::renameFileAcrossFileSystems()
{
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    QFETCH(QByteArray, bytes);

    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"漢字"_s);
    QVERIFY(makeFile(from, bytes));
    const int descriptors = openDescriptors();
    QVERIFY(m_runtime->renameFile(from, to));
    QCOMPARE(m_runtime->lastError, u"old"_s);
    QVERIFY(!QFileInfo::exists(from));
    QCOMPARE(fileBytes(to), bytes);
    QCOMPARE(openDescriptors(), descriptors);

    // Back, onto a file that is there: both stay.
    QVERIFY(makeFile(from, "there"));
    QVERIFY(!m_runtime->renameFile(to, from));
    QCOMPARE(m_runtime->lastError, u"rename file error("_s + to + u')');
    QCOMPARE(fileBytes(from), QByteArray("there"));
    QCOMPARE(fileBytes(to), bytes);
    QCOMPARE(openDescriptors(), descriptors);
}

void FileSystemTest::renameFileAcrossKeepsModeAndTime()
{
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(1'000'000'000'000), readTime = time.addDays(1);
    {
        QFile file(from);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        QVERIFY(file.setFileTime(readTime, QFileDevice::FileAccessTime));
    }
    const QFile::Permissions mode = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(from, mode));
#ifdef Q_OS_WIN
    // A file for reading only is not removed: the name stays, and the copy is none.
    QVERIFY(!m_runtime->renameFile(from, to));
    QVERIFY(!QFileInfo::exists(to));
    QVERIFY(QFile::setPermissions(from, mode | QFile::WriteOwner));
    QVERIFY(m_runtime->renameFile(from, to));
#else
    const QFile::Permissions before = QFile::permissions(from);
    QVERIFY(m_runtime->renameFile(from, to));
    QCOMPARE(QFile::permissions(to), before);
    QCOMPARE(QFileInfo(to).lastRead(), readTime);
#endif
    QCOMPARE(QFileInfo(to).lastModified(), time);
}

void FileSystemTest::renameFileAcrossKeepsOwnerAndRights()
{
#ifdef Q_OS_LINUX
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    const QByteArray target = QFile::encodeName(to);
    if (chown("file", 12, 34) != 0 || chmod("file", 06755) != 0)
        QSKIP("Only the superuser may give a file away");
    QVERIFY(m_runtime->renameFile(from, to));
    struct stat moved {
    };
    QCOMPARE(stat(target.constData(), &moved), 0);
    QCOMPARE(moved.st_uid, 12U);
    QCOMPARE(moved.st_gid, 34U);
    QCOMPARE(moved.st_mode & 07777, 06755U);

    // Nobody gets a program that runs with the rights of whoever moved it.
    const QString further = m_directory->filePath(u"further"_s);
    const auto exitCode = renameWithRefusedCalls({changeOwner, EPERM, -1}, to, further);
    if (!exitCode)
        QSKIP("The system cannot refuse calls");
    QCOMPARE(*exitCode, 0);
    QCOMPARE(stat("further", &moved), 0);
    QCOMPARE(moved.st_uid, geteuid());
    QCOMPARE(moved.st_mode & 07777, 0755U);
#else
    QSKIP("Rights of this kind are of other systems");
#endif
}

/// Nobody else reads half a file, or one that is private.
void FileSystemTest::renameFileAcrossIsPrivateMeanwhile()
{
#ifdef __GLIBC__
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    QCOMPARE(chmod("file", 0666), 0);
    QList<uint> modes;
    systemCalls.beforeWrite = [&modes](int descriptor) {
        struct stat file {
        };
        if (fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode))
            modes += file.st_mode & 0777;
    };
    QVERIFY(m_runtime->renameFile(m_directory->filePath(u"file"_s), elsewhere->filePath(u"new"_s)));
    systemCalls = {};
    QCOMPARE(modes, QList<uint>{0600});
#else
    QSKIP("The test cannot look on here");
#endif
}

/// Before the old name goes. A power cut leaves at least one of the two.
void FileSystemTest::renameFileAcrossFlushesFileAndFolder()
{
#ifdef __GLIBC__
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    QStringList flushed;
    systemCalls.beforeFlush = [&](int descriptor) {
        flushed += QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(descriptor));
        flushed += QFileInfo::exists(from) && fileBytes(to) == "x" ? u"both there"_s : u"not both there"_s;
    };
    QVERIFY(m_runtime->renameFile(from, to));
    systemCalls = {};
    const QString folder = QFileInfo(elsewhere->path()).canonicalFilePath();
    QCOMPARE(flushed, (QStringList{folder + u"/new"_s, u"both there"_s, folder, u"both there"_s}));
#else
    QSKIP("The test cannot look on here");
#endif
}

void FileSystemTest::renameFileAcrossInSmallPieces()
{
#ifdef __GLIBC__
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QByteArray bytes = "0123456789\0"_ba.repeated(10'000);
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    QVERIFY(makeFile(from, bytes));
    systemCalls.interrupted = true;
    systemCalls.mostWritten = 1000;
    const bool renamed = m_runtime->renameFile(from, to);
    systemCalls = {};
    QVERIFY(renamed);
    QCOMPARE(fileBytes(to), bytes);
#else
    QSKIP("The test cannot step in here");
#endif
}

void FileSystemTest::renameFileAcrossOfAChangingFile_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<int>("flush"); // of the copy (0) or its folder (1)

    for (const int flush : {0, 1}) {
        const char *during = flush == 0 ? "before the copy is whole" : "behind that";
        for (const char *change : {"grows", "shrinks", "second", "nanosecond", "other", "gone", "link"})
            QTest::addRow("%s, %s", change, during) << QString::fromLatin1(change) << flush;
    }
}

/// What another program does to the source meanwhile counts: it stays as it is, and no copy is left.
void FileSystemTest::renameFileAcrossOfAChangingFile()
{
#ifdef __GLIBC__
    QFETCH(QString, change);
    QFETCH(int, flush);

    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    QVERIFY(makeFile(from, "123"));
    const timespec time{1'000'000'000, 5}, nextSecond{1'000'000'001, 5}, nextNanosecond{1'000'000'000, 6};
    const auto setTime = [](const timespec &modified) {
        const timespec both[2] = {modified, modified};
        utimensat(AT_FDCWD, "file", both, 0);
    };
    setTime(time);

    // Each is the only difference.
    const auto changeSource = [&] {
        if (change == u"grows") {
            makeFile(from, "1234");
            setTime(time);
        } else if (change == u"shrinks") {
            makeFile(from, "12");
            setTime(time);
        } else if (change == u"second") {
            setTime(nextSecond);
        } else if (change == u"nanosecond") {
            setTime(nextNanosecond);
        } else if (change == u"other") {
            rename("file", "old");
            makeFile(from, "456");
            setTime(time);
        } else if (change == u"link") {
            rename("file", "old");
            QCOMPARE(symlink("old", "file"), 0);
        } else {
            rename("file", "old");
        }
    };
    int flushes = 0;
    systemCalls.beforeFlush = [&](int) {
        if (flushes++ == flush)
            changeSource();
    };
    const bool renamed = m_runtime->renameFile(from, to);
    systemCalls = {};

    QVERIFY(!renamed);
    QCOMPARE(m_runtime->lastError, u"rename file error("_s + from + u')');
    QVERIFY(!QFileInfo::exists(to));
    QCOMPARE(QFileInfo::exists(from), change != u"gone");
    if (change == u"other")
        QCOMPARE(fileBytes(from), QByteArray("456"));
    if (QFileInfo::exists(u"old"_s))
        QCOMPARE(fileBytes(u"old"_s), QByteArray("123"));
#else
    QSKIP("The test cannot step in here");
#endif
}

/// Directories, links and pipes stay where they are.
void FileSystemTest::renameFileAcrossNeedsAFile()
{
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    QStringList names{u"dir"_s, u"missing"_s};
#ifdef Q_OS_UNIX
    QCOMPARE(symlink("file", "link"), 0);
    QCOMPARE(symlink("nothing", "dangling"), 0);
    QCOMPARE(mkfifo("pipe", 0600), 0); // with nobody at its other end
    names += {u"link"_s, u"dangling"_s, u"pipe"_s};
#endif
    for (const QString &name : std::as_const(names)) {
        const QString from = m_directory->filePath(name), to = elsewhere->filePath(u"new"_s);
        m_runtime->lastError = u"old"_s;
        QVERIFY(!m_runtime->renameFile(from, to));
        QCOMPARE(m_runtime->lastError, u"rename file error("_s + from + u')');
        QVERIFY(name == u"missing" || QFileInfo(from).isSymLink() || QFileInfo::exists(from));
        QVERIFY(!QFileInfo::exists(to));
    }
    QVERIFY(!m_runtime->renameFile(m_directory->filePath(u"file"_s), elsewhere->filePath(u"missing/new"_s)));
    QCOMPARE(fileBytes(u"file"_s), QByteArray("x"));
    QCOMPARE(fileBytes(u"dir/inner"_s), QByteArray("inner"));
}

void FileSystemTest::renameFileAcrossOntoALink()
{
#ifdef Q_OS_UNIX
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    const QString end = elsewhere->filePath(u"end"_s);
    QCOMPARE(symlink(QFile::encodeName(end).constData(), QFile::encodeName(to).constData()), 0);
    QVERIFY(!m_runtime->renameFile(from, to));
    QVERIFY(!QFileInfo::exists(end));
    QVERIFY(QFileInfo(to).isSymLink());
    QCOMPARE(fileBytes(from), QByteArray("x"));
#else
    QSKIP("Links of this kind are of other systems");
#endif
}

void FileSystemTest::renameFileAcrossToFullDisk()
{
    const SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("Only the superuser can mount a file system to fill up");
    const QByteArray bytes(SmallDisk::size + 1, 'x');
    QVERIFY(makeFile(u"file"_s, bytes));
    const QString from = m_directory->filePath(u"file"_s), to = disk.filePath(u"new"_s);
    QVERIFY(!m_runtime->renameFile(from, to));
    QCOMPARE(m_runtime->lastError, u"rename file error("_s + from + u')');
    QCOMPARE(fileBytes(from), bytes);
    QVERIFY(!QFileInfo::exists(to));

    // With room nothing is in the way of the next try.
    QVERIFY(makeFile(u"file"_s, "y"));
    QVERIFY(m_runtime->renameFile(from, to));
    QCOMPARE(fileBytes(to), QByteArray("y"));
}

/// The same end without rights: the system refuses the second half of the copy.
void FileSystemTest::renameFileAcrossToFileTooLarge()
{
#ifdef Q_OS_UNIX
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QByteArray bytes(100'000, 'x');
    QVERIFY(makeFile(u"file"_s, bytes));
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);

    rlimit limit{}, less{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
    less = limit;
    less.rlim_cur = 70'000;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &less), 0);
    const bool renamed = m_runtime->renameFile(from, to);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, handler);

    QVERIFY(!renamed);
    QCOMPARE(fileBytes(from), bytes);
    QVERIFY(!QFileInfo::exists(to));
#else
    QSKIP("Limits of this kind are of other systems");
#endif
}

/// A file that gives more than its size, or an error for its bytes, is not moved.
void FileSystemTest::renameFileAcrossOfUnknownSize()
{
#ifdef Q_OS_LINUX
    for (const QString &from : {u"/proc/self/limits"_s, u"/proc/self/mem"_s, u"/sys/class/net/lo/mtu"_s}) {
        const QString to = m_directory->filePath(u"new"_s);
        QVERIFY(!m_runtime->renameFile(from, to));
        QCOMPARE(m_runtime->lastError, u"rename file error("_s + from + u')');
        QVERIFY(!QFileInfo::exists(to));
    }
#else
    QSKIP("This system has no files that are made while they are read");
#endif
}

/// Of a file that gives more than its size nothing is written.
void FileSystemTest::renameFileAcrossOfEndlessFile()
{
#ifdef Q_OS_LINUX
    const QString from = u"/proc/self/pagemap"_s, to = m_directory->filePath(u"new"_s);
    rlimit limit{}, none{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
    none.rlim_max = limit.rlim_max;
    static volatile std::sig_atomic_t written = 0;
    const auto handler = std::signal(SIGXFSZ, [](int) { written = 1; });
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &none), 0);
    const bool renamed = m_runtime->renameFile(from, to);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, handler);
    QVERIFY(!renamed);
    QVERIFY(!QFileInfo::exists(to));
    QCOMPARE(static_cast<int>(written), 0);
#else
    QSKIP("This system has no such file");
#endif
}

/// Whoever waits for a reader of the pipe would take us for one.
void FileSystemTest::renameFileAcrossOpensNoPipe()
{
#ifdef Q_OS_LINUX
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    QCOMPARE(mkfifo("pipe", 0600), 0);
    const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    QVERIFY(inotify_add_watch(watch, "pipe", IN_OPEN) >= 0);
    QVERIFY(!m_runtime->renameFile(m_directory->filePath(u"pipe"_s), elsewhere->filePath(u"new"_s)));
    char event[1024];
    const auto opened = read(watch, event, sizeof event);
    close(watch);
    QCOMPARE(opened, -1);
#else
    QSKIP("Only here the system tells what is opened");
#endif
}

void FileSystemTest::renameFileAcrossWithoutRights_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("fileMode");
    QTest::addColumn<int>("folderMode");
    QTest::addColumn<int>("targetMode");

    QTest::newRow("unreadable") << u"file"_s << 0 << 0777 << 0777;
    QTest::newRow("unremovable, so the copy goes") << u"dir/inner"_s << 0644 << 0555 << 0777;
    QTest::newRow("no right to make the copy") << u"file"_s << 0644 << 0777 << 0555;
}

void FileSystemTest::renameFileAcrossWithoutRights()
{
#ifdef Q_OS_UNIX
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    QFETCH(QString, from);
    QFETCH(int, fileMode);
    QFETCH(int, folderMode);
    QFETCH(int, targetMode);

    const auto setMode = [](const QString &name, int mode) {
        return chmod(QFile::encodeName(name).constData(), static_cast<mode_t>(mode)) == 0;
    };
    const QString source = m_directory->filePath(from), to = elsewhere->filePath(u"new"_s);
    const QString folder = QFileInfo(source).path();
    const QByteArray bytes = fileBytes(source);
    QVERIFY(setMode(m_directory->path(), 0755));
    QVERIFY(
        setMode(source, fileMode) && setMode(folder, folderMode) && setMode(elsewhere->path(), targetMode)
    );
    const std::optional<bool> renamed = renameAsPlainUser(*m_runtime, source, to);
    QVERIFY(setMode(folder, 0755) && setMode(source, 0644));
    if (!renamed)
        QSKIP("The superuser cannot become anybody else here");
    QVERIFY(!*renamed);
    QCOMPARE(m_runtime->lastError, u"rename file error("_s + source + u')');
    QCOMPARE(fileBytes(source), bytes);
    QVERIFY(!QFileInfo::exists(to));
#else
    QSKIP("Modes of this kind are of other systems");
#endif
}

/// A file system over a network may write when a file is closed.
void FileSystemTest::renameFileAcrossUnclosable()
{
#ifdef __GLIBC__
    const auto elsewhere = folderElsewhere(m_directory->path());
    if (!elsewhere)
        QSKIP("There is one file system only");
    const QString from = m_directory->filePath(u"file"_s), to = elsewhere->filePath(u"new"_s);
    systemCalls.beforeFlush = [](int descriptor) {
        systemCalls.closeFails = descriptor;
    };
    const bool renamed = m_runtime->renameFile(from, to);
    systemCalls = {};
    QVERIFY(!renamed);
    QCOMPARE(fileBytes(from), QByteArray("x"));
    QVERIFY(!QFileInfo::exists(to));
#else
    QSKIP("The test cannot step in here");
#endif
}

/// The same within one file system, where the system cannot rename without the danger to replace a file.
void FileSystemTest::renameFileByLinkUnremovable()
{
#ifdef __GLIBC__
    if (geteuid() == 0 && chown("dir/inner", 65534, 65534) != 0)
        QSKIP("The superuser cannot give a file away here");
    QCOMPARE(chmod("dir", 0555), 0);
    QCOMPARE(chmod(QFile::encodeName(m_directory->path()).constData(), 0777), 0);
    systemCalls.renameError = ENOSYS;
    const std::optional<bool> renamed = renameAsPlainUser(
        *m_runtime, m_directory->filePath(u"dir/inner"_s), m_directory->filePath(u"new"_s)
    );
    systemCalls = {};
    QCOMPARE(chmod("dir", 0755), 0);
    if (!renamed)
        QSKIP("The superuser cannot become anybody else here");
    QVERIFY(!*renamed);
    QCOMPARE(fileBytes(u"dir/inner"_s), QByteArray("inner"));
    QVERIFY(!QFileInfo::exists(u"new"_s));
#else
    QSKIP("The test cannot step in here");
#endif
}

void FileSystemTest::renameFileWithRefusedCall_data()
{
#ifdef Q_OS_LINUX
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<bool>("across");
    QTest::addColumn<QList<int>>("calls"); // number, error, and the argument that must not be 0
    QTest::addColumn<bool>("renamed");

    QByteArray prefix;
    const auto row = [&prefix](
                         const char *name,
                         const QString &from,
                         const QString &to,
                         bool across,
                         const QList<int> &calls,
                         bool renamed
                     ) {
        QTest::newRow((prefix + name).constData()) << from << to << across << calls << renamed;
    };
    const QString file = u"file"_s, dir = u"dir"_s, fresh = u"new"_s;
    for (const int error : {ENOSYS, EINVAL}) {
        prefix = error == ENOSYS ? "old kernel: " : "old file system: ";
        const QList<int> oldSystem{SYS_renameat2, error, 4};
        row("file", file, fresh, false, oldSystem, true);
        row("directory", dir, fresh, false, oldSystem, true);
        row("missing", u"missing"_s, fresh, false, oldSystem, false);
        row("onto a file", file, u"dir/inner"_s, false, oldSystem, false);
        row("onto a directory", file, dir, false, oldSystem, false);
        row("directory onto a file", dir, file, false, oldSystem, false);
        row("directory into itself", dir, u"dir/new"_s, false, oldSystem, false);
        row("directory into a missing one", dir, u"missing/new"_s, false, oldSystem, false);
        row("directory below a file", dir, u"file/new"_s, false, oldSystem, false);
        row("file across", file, fresh, true, oldSystem, true);
        row("directory across", dir, fresh, true, oldSystem, false);
        const QByteArray system = prefix;
        for (const int refusal : {EPERM, EOPNOTSUPP, ENOSYS, EMLINK}) {
            prefix = system + "no links, error " + QByteArray::number(refusal) + ": ";
            const QList<int> noLinks = oldSystem + QList<int>{SYS_linkat, refusal, -1};
            row("file", file, fresh, false, noLinks, true);
            row("onto a file", file, u"dir/inner"_s, false, noLinks, false);
        }
        prefix = system;
        row("link fails", file, fresh, false, oldSystem + QList<int>{SYS_linkat, EIO, -1}, false);
    }
    prefix.clear();
    row("rename fails", file, fresh, false, {SYS_renameat2, EIO, 4}, false);
#ifndef __SANITIZE_ADDRESS__ // the sanitizer looks at memory by writing it to a pipe
    row("disk full", file, fresh, true, {SYS_write, ENOSPC, -1}, false);
#endif
    row("flush fails", file, fresh, true, {SYS_fsync, EIO, -1}, false);
    row("mode fails", file, fresh, true, {SYS_fchmod, EIO, -1}, false);
    row("owner unknown", file, fresh, true, {changeOwner, EPERM, -1}, true);
    row("time fails", file, fresh, true, {SYS_utimensat, EIO, -1}, false);
    for (const int refusal : {EPERM, EOPNOTSUPP, ENOSYS}) {
        prefix = "error " + QByteArray::number(refusal) + ": ";
        row("mode unknown", file, fresh, true, {SYS_fchmod, refusal, -1}, true);
        row("time unknown", file, fresh, true, {SYS_utimensat, refusal, -1}, true);
    }
#endif
}

/// What the system refuses is not there for a program that is started so.
void FileSystemTest::renameFileWithRefusedCall()
{
#ifdef Q_OS_LINUX
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(bool, across);
    QFETCH(QList<int>, calls);
    QFETCH(bool, renamed);

    const auto elsewhere = folderElsewhere(m_directory->path());
    if (across && !elsewhere)
        QSKIP("There is one file system only");
    const QString source = m_directory->filePath(from);
    const QString target = across ? elsewhere->filePath(to) : m_directory->filePath(to);
    const bool there = QFileInfo::exists(target);

    const auto exitCode = renameWithRefusedCalls(calls, source, target);
    if (!exitCode)
        QSKIP("The system cannot refuse calls");
    QCOMPARE(*exitCode, renamed ? 0 : 1);
    QCOMPARE(QFileInfo::exists(source), from != u"missing" && !renamed);
    QCOMPARE(QFileInfo::exists(target), there || renamed);
    if (there || !renamed)
        QCOMPARE(fileBytes(u"dir/inner"_s), QByteArray("inner"));
#else
    QSKIP("Only here calls can be refused");
#endif
}

void FileSystemTest::makeDirectoryAndDeleteFileKeepTheError()
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
