// SPDX-License-Identifier: MIT
#include <runtime/core/console.h>

#include <cerrno>
#include <cstdio>

#include <poll.h>
#include <unistd.h>

namespace
{

/// Whether a call that gave `result` is to be made again: a signal came in between, or the pipe or terminal
/// is in non-blocking mode and was not ready. Then it is ready now, or has nobody at its other end.
bool again(ssize_t result, int descriptor, short event)
{
    if (result >= 0)
        return false;
    if (errno == EINTR)
        return true;
    if (errno != EAGAIN && errno != EWOULDBLOCK)
        return false;
    pollfd waiting{descriptor, event, 0};
    return poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

/// Waits until the descriptor takes a block.
void waitForRoom(int descriptor)
{
    pollfd waiting{descriptor, POLLOUT, 0};
    while (poll(&waiting, 1, -1) < 0 && errno == EINTR) { }
}

} // namespace

void appruntime_internal::writeConsole(const QByteArray &bytes)
{
    // A C stream forgets what a full pipe in non-blocking mode does not take, or a signal interrupts. What it
    // holds of the program's own output goes first, once there is room for it.
    const int descriptor = fileno(stdout);
    if (descriptor < 0) { // a stream that the program has put there
        std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
        std::fflush(stdout);
        return;
    }
    waitForRoom(descriptor);
    std::fflush(stdout);
    const char *next = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = write(descriptor, next, static_cast<size_t>(left));
        if (again(written, descriptor, POLLOUT))
            continue;
        if (written <= 0)
            return;
        next += written;
        left -= written;
    }
}

bool appruntime_internal::readConsole(char &byte)
{
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, &byte, 1);
        if (!again(count, STDIN_FILENO, POLLIN))
            return count == 1;
    }
}
