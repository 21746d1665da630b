// SPDX-License-Identifier: MIT
// Writes what it was started with into the file that HELPER_OUTPUT names, so that a test sees it although a
// waited-for program's output is dropped. Everything ends in a NUL: the number of arguments, each argument,
// the current directory, "open" or "ended" for a standard input that waits or is at its end, and then the
// environment. The file appears under its name only when it is complete.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#ifndef _WIN32
#include <poll.h>
#include <unistd.h>
#endif

namespace
{

const char *standardInputState()
{
#ifndef _WIN32
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (poll(&input, 1, 100) == 0)
        return "open";
    char byte = 0;
    return read(STDIN_FILENO, &byte, 1) == 1 ? "open" : "ended";
#else
    return "open";
#endif
}

} // namespace

int main(int argc, char **argv)
{
    const char *name = std::getenv("HELPER_OUTPUT");
    if (name == nullptr)
        return 1;
    std::string report = std::to_string(argc - 1);
    report += '\0';
    for (int i = 1; i < argc; ++i)
        report.append(argv[i]) += '\0';
    report.append(std::filesystem::current_path().string()) += '\0';
    report.append(standardInputState()) += '\0';
#ifndef _WIN32
    for (char **entry = environ; *entry != nullptr; ++entry)
        report.append(*entry) += '\0';
#endif

    const std::string unfinished = std::string(name) + ".part";
    std::FILE *file = std::fopen(unfinished.c_str(), "wb");
    if (file == nullptr)
        return 1;
    std::fwrite(report.data(), 1, report.size(), file);
    std::fclose(file);
    std::filesystem::rename(unfinished, name);
    return 0;
}
