// SPDX-License-Identifier: MIT
#include <support/smalldisk.h>

#include <QFile>

#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif

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
