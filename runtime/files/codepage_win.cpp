// SPDX-License-Identifier: MIT
#include <runtime/files/codepage.h>

#include <qt_windows.h>

using namespace appruntime_internal;

qsizetype appruntime_internal::mendCodePage(char *bytes, qsizetype size)
{
    constexpr unsigned char lowestSecond = 0x40; // in Japanese, Chinese and Korean code pages
    for (qsizetype i = 0; i < size; ++i) {
        if (IsDBCSLeadByte(static_cast<BYTE>(bytes[i])) == 0)
            continue;
        if (i + 1 == size)
            return 1;
        if (static_cast<unsigned char>(bytes[i + 1]) < lowestSecond)
            bytes[i] = '?';
        else
            ++i;
    }
    return 0;
}
