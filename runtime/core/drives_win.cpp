// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <array>
#include <cwchar>

#include <qt_windows.h>

QString AppRuntime::logicalDrives() const
{
    std::array<wchar_t, 256> names{}; // "C:\", "D:\", ..., each ended by a zero, the last by two
    if (GetLogicalDriveStringsW(static_cast<DWORD>(names.size()), names.data()) == 0)
        return {};

    QString letters;
    for (const wchar_t *name = names.data(); *name != 0; name += std::wcslen(name) + 1)
        letters += QChar(*name);
    return letters;
}
