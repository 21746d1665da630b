// SPDX-License-Identifier: MIT
// Stands in for the system's host name command. HELPER_HOSTNAME says what it does: "hang" (and write the
// process number into the file HELPER_HOSTNAME_OUTPUT), "flood" (print without end and without a line end),
// "error" (print on standard error only, and fail), "megabyte", "pieces", or else the very text to print.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

int main()
{
    const char *setting = std::getenv("HELPER_HOSTNAME");
    const std::string text = setting == nullptr ? "" : setting;
    if (text == "hang") {
        const char *name = std::getenv("HELPER_HOSTNAME_OUTPUT");
        if (std::FILE *file = name == nullptr ? nullptr : std::fopen(name, "wb")) {
            std::fputs(std::to_string(getpid()).c_str(), file);
            std::fclose(file);
        }
        std::this_thread::sleep_for(std::chrono::minutes(5));
    } else if (text == "flood") {
        const std::string block(65536, 'x');
        while (std::fwrite(block.data(), 1, block.size(), stdout) == block.size()) { }
    } else if (text == "megabyte") {
        std::fputs((std::string(1'000'000, 'x') + ".domain\nsecond line\n").c_str(), stdout);
    } else if (text == "pieces") {
        for (const char *piece : {"al", "pha", "\n", "be", "ta\n"}) {
            std::fputs(piece, stdout);
            std::fflush(stdout);
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    } else if (text == "error") {
        std::fputs("no-name\n", stderr);
        return 1;
    } else {
        std::fwrite(text.data(), 1, text.size(), stdout);
    }
    return 0;
}
