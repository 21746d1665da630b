// SPDX-License-Identifier: MIT
#include <support/smalldisk.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace
{

/// Whether two folders are on two file systems.
bool areApart(const QString &one, const QString &other)
{
#ifdef Q_OS_UNIX
    struct stat first {
    }, second{};
    return stat(QFile::encodeName(one).constData(), &first) == 0
        && stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev != second.st_dev;
#else
    return QFileInfo(one).absoluteFilePath().at(0) != QFileInfo(other).absoluteFilePath().at(0);
#endif
}

#ifdef Q_OS_LINUX
/// Runs a program; false where it is missing or fails.
bool works(QProcess &process, const QString &program, const QStringList &arguments)
{
    process.start(program, arguments);
    return process.waitForFinished(60'000) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
}
#endif

} // namespace

std::unique_ptr<QTemporaryDir> folderElsewhere(const QString &folder)
{
    QStringList roots{QDir::tempPath(), u"/dev/shm"_s, u"/var/tmp"_s, u"/run"_s, QDir::homePath()};
#ifdef Q_OS_WIN
    roots += {u"C:/"_s, u"D:/"_s, u"Z:/tmp"_s};
#endif
    for (const QString &root : std::as_const(roots)) {
        auto found = std::make_unique<QTemporaryDir>(root + u"/test-XXXXXX"_s);
        if (found->isValid() && areApart(found->path(), folder))
            return found;
    }
    return nullptr;
}

SmallDisk::SmallDisk()
{
#ifdef Q_OS_LINUX
    const QByteArray folder = QFile::encodeName(m_folder.path());
    m_mounted = mount("none", folder.constData(), "tmpfs", 0, "size=64k") == 0;
#endif
}

SmallDisk::~SmallDisk()
{
#ifdef Q_OS_LINUX
    if (m_mounted)
        umount2(QFile::encodeName(m_folder.path()).constData(), MNT_DETACH);
#endif
}

CaselessDisk::CaselessDisk()
{
#ifdef Q_OS_LINUX
    const QString image = m_folder.filePath(u"image"_s);
    QFile file(image);
    QProcess process;
    m_mounted = file.open(QIODevice::WriteOnly) && file.resize(4'000'000)
        && QDir(m_folder.path()).mkdir(u"mounted"_s) && works(process, u"mkntfs"_s, {u"-F"_s, u"-Q"_s, image})
        && works(process, u"lowntfs-3g"_s, {u"-o"_s, u"ignore_case"_s, image, path()});
#endif
}

CaselessDisk::~CaselessDisk()
{
    unmount();
}

void CaselessDisk::unmount()
{
#ifdef Q_OS_LINUX
    if (m_mounted)
        umount2(QFile::encodeName(path()).constData(), 0);
    m_mounted = false;
#endif
}

QStringList CaselessDisk::unmountedNames()
{
    unmount();
    QStringList names;
#ifdef Q_OS_LINUX
    QProcess process;
    if (works(process, u"ntfsls"_s, {u"-f"_s, m_folder.filePath(u"image"_s)}))
        names = QString::fromLocal8Bit(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    names.sort();
#endif
    return names;
}
