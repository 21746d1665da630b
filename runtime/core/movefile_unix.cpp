// SPDX-License-Identifier: MIT
#include <runtime/core/movefile.h>

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

#ifdef Q_OS_DARWIN
timespec changeTime(const struct stat &file)
{
    return file.st_mtimespec;
}

timespec accessTime(const struct stat &file)
{
    return file.st_atimespec;
}
#else
timespec changeTime(const struct stat &file)
{
    return file.st_mtim;
}

timespec accessTime(const struct stat &file)
{
    return file.st_atim;
}
#endif

bool isSameFile(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool hasChanged(const struct stat &before, const struct stat &after)
{
    const timespec was = changeTime(before);
    const timespec is = changeTime(after);
    return !isSameFile(before, after) || before.st_size != after.st_size || was.tv_sec != is.tv_sec
        || was.tv_nsec != is.tv_nsec;
}

/// Renames after a look at the new name, where the system cannot do both in one step. What another program
/// puts there in between may be replaced.
int renameAfterCheck(const char *from, const char *to)
{
    struct stat there {
    };
    if (lstat(to, &there) == 0)
        return EEXIST;
    if (errno != ENOENT)
        return errno;
    return std::rename(from, to) == 0 ? 0 : errno;
}

/// Removes the old name of a file that has the new one already; where that fails, the new one goes again.
///
/// A server may remove a name and its answer be lost. The new name goes only while the old one is seen.
bool removeOrRestore(const char *from, const char *to)
{
    struct stat there {
    };
    if (unlink(from) == 0 || lstat(from, &there) != 0)
        return true;
    unlink(to);
    return false;
}

/// Renames within one file system by a second link, which the system never puts over an existing name.
int renameByLink(const char *from, const char *to)
{
    struct stat source {
    };
    if (lstat(from, &source) != 0)
        return errno;
    if (S_ISDIR(source.st_mode))
        return renameAfterCheck(from, to); // a directory has one name
    if (linkat(AT_FDCWD, from, AT_FDCWD, to, 0) != 0) {
        const bool withoutLinks = errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS || errno == EMLINK;
        return withoutLinks ? renameAfterCheck(from, to) : errno;
    }
    return removeOrRestore(from, to) ? 0 : EIO;
}

/// Renames within one file system. Returns 0 or the system's error, EEXIST for a new name that is there.
int renameHere(const char *from, const char *to)
{
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS) // what a file system or kernel says that does not know the flag
        return errno;
#endif
    return renameByLink(from, to);
}

/// Whether both names are one name of one file, on a file system to which `a` and `A` are the same. Two links
/// to one file are not: rename() would leave both.
bool isOneName(const char *from, const char *to)
{
    struct stat one {
    }, other{};
    return lstat(from, &one) == 0 && lstat(to, &other) == 0 && isSameFile(one, other)
        && (S_ISDIR(one.st_mode) || one.st_nlink == 1);
}

/// Changes the case of a name. Where `a` and `A` are the same, Linux says that this is done and does nothing:
/// the file needs another name in between.
bool renameInCase(QByteArray from, const char *to)
{
    while (from.endsWith('/'))
        from.chop(1);
    const QByteArray between = from + '.' + QByteArray::number(getpid());
    if (renameHere(from.constData(), between.constData()) != 0)
        return false;
    if (renameHere(between.constData(), to) == 0)
        return true;
    renameHere(between.constData(), from.constData());
    return false;
}

/// Writes all of `size` bytes.
bool writeAll(int file, const char *bytes, size_t size)
{
    while (size > 0) {
        const ssize_t written = write(file, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

/// Copies the bytes of a file. False also when there are more or fewer than its size says.
bool copyBytes(int from, int to, off_t size)
{
    QByteArray block(65536, Qt::Uninitialized);
    off_t copied = 0;
    for (;;) {
        const ssize_t count = read(from, block.data(), static_cast<size_t>(block.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0 && copied == size;
        copied += count;
        if (copied > size || !writeAll(to, block.constData(), static_cast<size_t>(count)))
            return false;
    }
}

/// Whether a call about the owner, mode or time of a file worked, or the file system just has none to set, as
/// that of a memory card.
bool isSetOrUnknown(int result)
{
    return result == 0 || errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS;
}

/// Gives the copy what belongs to the source beside its bytes. Only the superuser may give a file away; to
/// another user it must not run with the rights of its owner.
bool copyProperties(const struct stat &source, int to)
{
    mode_t mode = source.st_mode & 07777;
    if (fchown(to, source.st_uid, source.st_gid) != 0)
        mode &= 0777;
    const timespec times[2] = {accessTime(source), changeTime(source)};
    return isSetOrUnknown(fchmod(to, mode)) && isSetOrUnknown(futimens(to, times));
}

/// Puts the name of a new file on the disk, as fsync() of the file puts its bytes there.
void flushDirectoryOf(const QByteArray &name)
{
    const qsizetype slash = name.lastIndexOf('/');
    const QByteArray directory = slash < 0 ? QByteArray(".") : name.left(slash + 1);
    const int descriptor = open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor); // not every file system can; the file is whole in any case
    close(descriptor);
}

/// Copies an open file to a new one that only this user can read until it is whole, and puts it on the disk.
bool copyTo(int from, const struct stat &source, const char *to)
{
    const int target = open(to, O_WRONLY | O_CREAT | O_EXCL | O_NOCTTY | O_CLOEXEC, 0600);
    if (target < 0)
        return false;
    bool copied
        = copyBytes(from, target, source.st_size) && copyProperties(source, target) && fsync(target) == 0;
    copied = close(target) == 0 && copied; // a file system over a network may say here that its disk is full
    if (!copied)
        unlink(to);
    return copied;
}

/// Moves a file to another file system.
bool moveAcross(const char *from, const char *to)
{
    // Neither a link nor a pipe or device is moved. They are not opened either: whoever writes to a pipe
    // would take us for its reader.
    struct stat source {
    };
    if (lstat(from, &source) != 0 || !S_ISREG(source.st_mode))
        return false;
    // Not waiting, should a pipe have taken the name meanwhile. It would be found out as another file.
    const int file = open(from, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool copied = copyTo(file, source, to);
    close(file);
    if (!copied)
        return false;
    flushDirectoryOf(to);
    // The file may have changed meanwhile, or another one taken its name. It stays.
    struct stat now {
    };
    if (lstat(from, &now) == 0 && !hasChanged(source, now))
        return removeOrRestore(from, to);
    unlink(to);
    return false;
}

} // namespace

bool appruntime_internal::moveFile(const QString &from, const QString &to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    const int error = renameHere(source.constData(), target.constData());
    if (error == EXDEV)
        return moveAcross(source.constData(), target.constData());
    if (error == EEXIST && from != to && from.compare(to, Qt::CaseInsensitive) == 0
        && isOneName(source.constData(), target.constData()))
        return renameInCase(source, target.constData());
    return error == 0;
}
