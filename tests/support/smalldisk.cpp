// SPDX-License-Identifier: MIT
#include <support/smalldisk.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
