// SPDX-License-Identifier: MIT
#include <runtime/core/console.h>

#include <cstdio>

#include <io.h>

void appruntime_internal::writeConsole(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

bool appruntime_internal::readConsole(char &byte)
{
    return _read(0, &byte, 1) == 1;
}
