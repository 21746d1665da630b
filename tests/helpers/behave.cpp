// SPDX-License-Identifier: MIT
// A program that behaves as its first argument says; further arguments are a number or nothing. Its process
// number goes into the file that HELPER_OUTPUT names, so that a test can see whether it still lives.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#ifdef _WIN32
#include <windows.h>

#include <process.h>
#else
#include <ctime>
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

#ifndef _WIN32

/// Those with which a process is asked to end, from now on kept until somebody waits for them.
sigset_t heldSignals()
{
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT})
        sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, nullptr);
    return held;
}

/// Notes the numbers of that many signals, as they come, and of one more if it comes at once.
void noteSignals(const sigset_t &held, int count)
{
    std::string numbers;
    for (int i = 0; i <= count; ++i) {
        const timespec longest{i < count ? 120 : 0, i < count ? 0 : 300'000'000};
        const int signal = sigtimedwait(&held, nullptr, &longest);
        if (signal < 0)
            return;
        numbers += std::to_string(signal) + " ";
        note("signals " + numbers);
    }
}

#endif

} // namespace

int main(int argc, char **argv)
{
    const std::string verb = argc > 1 ? argv[1] : "";
    const int number = argc > 2 ? std::atoi(argv[2]) : 0;
#ifndef _WIN32
    sigset_t held{};
    if (verb.starts_with("signals"))
        held = heldSignals();
    if (verb == "signals-apart") // in a group of its own, as the job of a shell
        setpgid(0, 0);
    if (verb.starts_with("superuser") && setuid(0) != 0) // as a set-uid program
        return 1;
#endif
    note(std::to_string(getpid()));

    if (verb == "exit")
        return number;
    if (verb == "crash")
        std::abort();
    if (verb == "sleep" || verb == "superuser")
        sleepLong();
    if (verb == "nap") { // until the noted number is taken away
        const char *report = std::getenv("HELPER_OUTPUT");
        const auto end = std::chrono::steady_clock::now() + longTime;
        while (report && std::filesystem::exists(report) && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        note("rested");
    }
    if (verb == "flood")
        flood(true, true, static_cast<std::size_t>(number));
    if (verb == "flood-error")
        flood(false, true, static_cast<std::size_t>(number));
#ifdef _WIN32
    if (verb == "leave") {
        const std::intptr_t child = _spawnl(_P_NOWAIT, argv[0], argv[0], "sleep", nullptr);
        note(std::to_string(GetProcessId(reinterpret_cast<HANDLE>(child))));
    }
#else
    if (verb.starts_with("signals"))
        noteSignals(held, number);
    if (verb == "superuser-flood")
        flood(true, true, 0);
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
