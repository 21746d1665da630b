// SPDX-License-Identifier: MIT
// Writes what it was started with into the file that HELPER_OUTPUT names, so that a test sees it although a
// waited-for program's output is dropped. Everything ends in a NUL: the number of arguments, each argument,
// the current directory, "open" or "ended" for a standard input that waits or is at its end, and then the
// environment; as bytes, on Windows as UTF-8 of the wide texts. The file appears under its name only when it
// is complete.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>
#else
#include <poll.h>
#include <unistd.h>
#endif

namespace
{

#ifdef _WIN32

std::string utf8(const wchar_t *text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back(); // the NUL that is counted
    return bytes;
}

std::vector<std::string> arguments(int, char **)
{
    int count = 0;
    wchar_t **words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i)
        result.push_back(utf8(words[i]));
    return result;
}

std::vector<std::string> environment()
{
    std::vector<std::string> result;
    for (const wchar_t *entry = GetEnvironmentStringsW(); *entry != 0; entry += std::wcslen(entry) + 1)
        result.push_back(utf8(entry));
    return result;
}

std::string currentDirectory()
{
    return utf8(std::filesystem::current_path().c_str());
}

const char *standardInputState()
{
    HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    if (PeekNamedPipe(input, nullptr, 0, nullptr, nullptr, nullptr))
        return "open";
    return "ended";
}

#else

std::vector<std::string> arguments(int argc, char **argv)
{
    return {argv + 1, argv + argc};
}

std::vector<std::string> environment()
{
    std::vector<std::string> result;
    for (char **entry = environ; *entry != nullptr; ++entry)
        result.emplace_back(*entry);
    return result;
}

std::string currentDirectory()
{
    return std::filesystem::current_path().string();
}

const char *standardInputState()
{
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (poll(&input, 1, 100) == 0)
        return "open";
    char byte = 0;
    return read(STDIN_FILENO, &byte, 1) == 1 ? "open" : "ended";
}

#endif

} // namespace

int main(int argc, char **argv)
{
    const char *name = std::getenv("HELPER_OUTPUT");
    if (name == nullptr)
        return 1;
    const std::vector<std::string> words = arguments(argc, argv);
    std::string report = std::to_string(words.size());
    report += '\0';
    for (const std::string &word : words)
        report.append(word) += '\0';
    report.append(currentDirectory()) += '\0';
    report.append(standardInputState()) += '\0';
    for (const std::string &entry : environment())
        report.append(entry) += '\0';

    const std::string unfinished = std::string(name) + ".part";
    std::FILE *file = std::fopen(unfinished.c_str(), "wb");
    if (file == nullptr)
        return 1;
    std::fwrite(report.data(), 1, report.size(), file);
    std::fclose(file);
    std::filesystem::rename(unfinished, name);
    return 0;
}
