// SPDX-License-Identifier: MIT
// A program that behaves as its first argument says; further arguments are a number or nothing. Its process
// number goes into the file that HELPER_OUTPUT names, so that a test can see whether it still lives.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#ifdef _WIN32
#include <process.h>
#else
#include <sys/types.h>
#include <unistd.h>
#endif

namespace
{

void note(const std::string &text)
{
    const char *name = std::getenv("HELPER_OUTPUT");
    if (name == nullptr)
        return;
    if (std::FILE *file = std::fopen(name, "wb")) {
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
}

// Longer than anybody waits, and yet no burden for good on a machine where nobody ended it.
constexpr std::chrono::minutes longTime(2);

void sleepLong()
{
    std::this_thread::sleep_for(longTime);
}

/// Prints on one or both outputs: `bytes` on each, or for that long when it is 0.
void flood(bool out, bool err, std::size_t bytes)
{
    const std::string block(65536, 'x');
    const auto end = std::chrono::steady_clock::now() + longTime;
    std::size_t written = 0;
    while (bytes == 0 ? std::chrono::steady_clock::now() < end : written < bytes) {
        if (out)
            std::fwrite(block.data(), 1, block.size(), stdout);
        if (err)
            std::fwrite(block.data(), 1, block.size(), stderr);
        written += block.size();
    }
}

} // namespace

int main(int argc, char **argv)
{
    const std::string verb = argc > 1 ? argv[1] : "";
    const int number = argc > 2 ? std::atoi(argv[2]) : 0;
    note(std::to_string(getpid()));

    if (verb == "exit")
        return number;
    if (verb == "crash")
        std::abort();
    if (verb == "sleep")
        sleepLong();
    if (verb == "nap") {
        std::this_thread::sleep_for(std::chrono::milliseconds(number));
        note("rested");
    }
    if (verb == "flood")
        flood(true, true, static_cast<std::size_t>(number));
    if (verb == "flood-error")
        flood(false, true, static_cast<std::size_t>(number));
#ifndef _WIN32
    if (verb == "ignore") { // every signal that can be ignored
        for (int signal = 1; signal < 32; ++signal)
            std::signal(signal, SIG_IGN);
        sleepLong();
    }
    if (verb == "stop")
        raise(SIGSTOP);
    if (verb == "close") { // both outputs, and goes on
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
        sleepLong();
    }
    if (verb == "leave" || verb == "leave-flood") { // a process of its own, with the pipes, and ends
        const pid_t child = fork();
        if (child == 0) {
            if (verb == "leave")
                sleepLong();
            else
                flood(true, true, 0);
            return 0;
        }
        note(std::to_string(child));
    }
#endif
    return 0;
}
