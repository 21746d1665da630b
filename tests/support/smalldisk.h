// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A folder on another file system than the folder given; null where the machine has none.
///
/// Needs no rights: most systems keep shared memory and temporary files apart.
std::unique_ptr<QTemporaryDir> folderElsewhere(const QString &folder);

/// A file system of 64 KiB, as long as the object lives. Only the superuser may mount one.
class SmallDisk
{
public:
    SmallDisk();
    ~SmallDisk();
    Q_DISABLE_COPY_MOVE(SmallDisk)

    static constexpr int size = 65536;

    /// Whether there is one.
    [[nodiscard]] bool isMounted() const
    {
        return m_mounted;
    }

    [[nodiscard]] QString filePath(const QString &name) const
    {
        return m_folder.filePath(name);
    }

private:
    QTemporaryDir m_folder;
    bool m_mounted{false};
};

/// A file system to which `a` and `A` are one name, as long as the object lives. There is none where the
/// programs or the rights are missing that it takes to mount one.
class CaselessDisk
{
public:
    CaselessDisk();
    ~CaselessDisk();
    Q_DISABLE_COPY_MOVE(CaselessDisk)

    /// Whether there is one.
    [[nodiscard]] bool isMounted() const
    {
        return m_mounted;
    }

    /// Its folder.
    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("mounted"));
    }

    /// Ends it, and gives the names in it, sorted, as they are spelled on the disk. While it is there it
    /// spells them its own way.
    [[nodiscard]] QStringList unmountedNames();

private:
    void unmount();

    QTemporaryDir m_folder;
    bool m_mounted{false};
};
