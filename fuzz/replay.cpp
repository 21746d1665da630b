// SPDX-License-Identifier: MIT
// Runs a target without an engine: replay RUNS [FILE|FOLDER...], first the files, then RUNS inputs of its
// own. These are the same every time: a test that fails once fails always.
#include <fuzz/input.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <random>
#include <span>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

/// An input of few different bytes: among all 256 a quote hardly ever meets another. The distributions of the
/// standard library are not used, because their results differ from one library to the next.
Bytes someInput(std::mt19937 &random)
{
    constexpr std::size_t longest = 160, mostLetters = 10;

    Bytes letters(1 + random() % mostLetters);
    for (std::uint8_t &letter : letters) {
        const bool ascii = random() % 4 != 0;
        letter = static_cast<std::uint8_t>(ascii ? random() % 128 : random() % 256);
    }
    Bytes input(random() % (longest + 1));
    for (std::uint8_t &byte : input)
        byte = random() % 8 != 0 ? letters[random() % letters.size()] : static_cast<std::uint8_t>(random());
    return input;
}

bool holds(const Bytes &input, const char *origin, int number)
{
    try {
        LLVMFuzzerTestOneInput(input.data(), input.size());
        return true;
    } catch (const std::exception &) { // printed already
        const QByteArray bytes(
            reinterpret_cast<const char *>(input.data()), static_cast<qsizetype>(input.size())
        );
        std::fprintf(stderr, "in %s %d: %s\n", origin, number, bytes.toHex().constData());
        return false;
    }
}

/// The files named, and those in the folders named.
QStringList filesOf(std::span<char *> names)
{
    QStringList files;
    for (const char *name : names) {
        const QString path = QString::fromLocal8Bit(name);
        if (!QFileInfo(path).isDir()) {
            files += path;
            continue;
        }
        const QDir folder(path);
        for (const QString &file : folder.entryList(QDir::Files))
            files += folder.filePath(file);
    }
    return files;
}

} // namespace

int main(int argc, char **argv)
{
    const std::span<char *> arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: %s RUNS [FILE|FOLDER...]\n", argv[0]);
        return EXIT_FAILURE;
    }

    int number = 0;
    for (const QString &name : filesOf(arguments.subspan(2))) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(name));
            return EXIT_FAILURE;
        }
        const QByteArray bytes = file.readAll();
        if (!holds(Bytes(bytes.begin(), bytes.end()), "file", ++number))
            return EXIT_FAILURE;
    }

    const int runs = std::atoi(arguments[1]);
    std::mt19937 random(20240131);
    for (int run = 1; run <= runs; ++run) {
        if (!holds(someInput(random), "run", run))
            return EXIT_FAILURE;
    }
    std::printf("%d files, %d runs\n", number, runs);
    return EXIT_SUCCESS;
}
