// SPDX-License-Identifier: MIT
#include <runtime/core/movefile.h>

#include <QByteArray>
#include <QDir>
#include <QFileInfo>

#include <memory>
#include <string>

#include <qt_windows.h>

namespace
{

struct HandleCloser {
    void operator()(HANDLE handle) const
    {
        CloseHandle(handle);
    }
};
using Handle = std::unique_ptr<void, HandleCloser>;

Handle openFile(const std::wstring &name, DWORD access, DWORD sharing, DWORD disposition, DWORD flags)
{
    const HANDLE handle = CreateFileW(name.c_str(), access, sharing, nullptr, disposition, flags, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// The name as the system takes it: absolute, and marked as long where it is longer than names were once.
std::wstring systemName(const QString &name)
{
    QString full = QDir::toNativeSeparators(QFileInfo(name).absoluteFilePath());
    if (full.size() >= 248) {
        if (full.startsWith(QStringLiteral("\\\\")))
            full = QStringLiteral("\\\\?\\UNC") + full.mid(1);
        else
            full.prepend(QStringLiteral("\\\\?\\"));
    }
    return full.toStdWString();
}

/// Copies the bytes of a file. False also when there are more or fewer than its size says.
bool copyBytes(HANDLE from, HANDLE to)
{
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(from, &size))
        return false;
    QByteArray block(65536, Qt::Uninitialized);
    LONGLONG copied = 0;
    for (;;) {
        DWORD count = 0, written = 0;
        if (!ReadFile(from, block.data(), static_cast<DWORD>(block.size()), &count, nullptr))
            return false;
        if (count == 0)
            return copied == size.QuadPart;
        if (!WriteFile(to, block.constData(), count, &written, nullptr) || written != count)
            return false;
        copied += count;
    }
}

/// Copies an open file to a new one and puts it on the disk.
bool copyTo(HANDLE from, const BY_HANDLE_FILE_INFORMATION &source, const std::wstring &to)
{
    Handle target = openFile(to, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
    if (!target)
        return false;
    bool copied = copyBytes(from, target.get())
        && SetFileTime(
                      target.get(), &source.ftCreationTime, &source.ftLastAccessTime, &source.ftLastWriteTime
        )
        && FlushFileBuffers(target.get());
    target.reset();
    copied = copied && SetFileAttributesW(to.c_str(), source.dwFileAttributes);
    if (!copied)
        DeleteFileW(to.c_str());
    return copied;
}

/// Moves a file to another volume. Nobody can write to it or rename it before it is gone.
bool moveAcross(const std::wstring &from, const std::wstring &to)
{
    const Handle file
        = openFile(from, GENERIC_READ | DELETE, FILE_SHARE_READ, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT);
    BY_HANDLE_FILE_INFORMATION source{};
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK
        || !GetFileInformationByHandle(file.get(), &source))
        return false;
    // Neither a link nor a directory is moved.
    if ((source.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) != 0)
        return false;
    if (!copyTo(file.get(), source, to))
        return false;
    FILE_DISPOSITION_INFO gone{TRUE}; // when it is closed
    if (SetFileInformationByHandle(file.get(), FileDispositionInfo, &gone, sizeof gone))
        return true;
    SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL); // a file for reading only is not deleted
    DeleteFileW(to.c_str());
    return false;
}

} // namespace

bool appruntime_internal::moveFile(const QString &from, const QString &to)
{
    const std::wstring source = systemName(from);
    const std::wstring target = systemName(to);
    if (source == target)
        return false; // the system would call it done
    // Neither replaces nor copies. A name that differs in its case alone is a new one.
    if (MoveFileExW(source.c_str(), target.c_str(), 0))
        return true;
    return GetLastError() == ERROR_NOT_SAME_DEVICE && moveAcross(source, target);
}
