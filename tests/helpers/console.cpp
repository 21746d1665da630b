// SPDX-License-Identifier: MIT
// A program of the family on its console, one member a run:
//   trace TEXT          writeTrace
//   units HEX...        writeTrace of the text of these UTF-16 code units
//   tagged LEVEL TEXT   writeTraceTagged
//   between TEXT        prints through the C stream before and after a trace line
//   twice TEXT          a trace line before and after what is printed through the C stream
//   last TEXT           writeTrace, and an end that leaves no stream the time to write
//   run PROGRAM TEXT    runProgram, waited for
//   rename FROM TO      renameFile; exits with 0 when it worked, else with 1
//   stream TEXT         writeTrace while stdout is a stream in memory, whose bytes are printed in brackets
//   lines COUNT         readConsoleLine COUNT times, each line printed in brackets, then what is left of the
//   input
// Behind the word "interrupted" the same, while a signal comes in every millisecond.
#include <runtime/core/appruntime.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <csignal>
#include <sys/time.h>
#include <unistd.h>
#endif

namespace
{

/// What is left on the descriptor itself, not in somebody's buffer.
void printRest()
{
    char block[4096];
    for (;;) {
        const auto count = read(0, block, sizeof block);
        if (count <= 0)
            return;
        std::fwrite(block, 1, static_cast<std::size_t>(count), stdout);
    }
}

#ifndef _WIN32
/// Sends this process a signal every millisecond. The call that it interrupts is not made again.
void interruptEverything()
{
    struct sigaction action = {};
    action.sa_handler = [](int) {
    };
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &often, nullptr);
}
#endif

} // namespace

int main(int argc, char **argv)
{
#ifdef _WIN32
    _setmode(0, _O_BINARY);
    _setmode(1, _O_BINARY);
#endif
    int qtArgc = 1;
    char *qtArgv[] = {argv[0], nullptr};
    const QCoreApplication application(qtArgc, qtArgv);
    AppRuntime runtime(QStringLiteral("CONSOLE"));
#ifndef _WIN32
    if (argc > 1 && std::strcmp(argv[1], "interrupted") == 0) {
        interruptEverything();
        --argc;
        ++argv;
    }
#endif
    const char *verb = argc > 1 ? argv[1] : "";
    const char *word = argc > 2 ? argv[2] : "";
    const QString text = QString::fromLocal8Bit(argv[argc - 1]);

    if (std::strcmp(verb, "trace") == 0) {
        runtime.writeTrace(text);
    } else if (std::strcmp(verb, "units") == 0) {
        QString units;
        for (int i = 2; i < argc; ++i)
            units += QChar(static_cast<ushort>(std::strtoul(argv[i], nullptr, 16)));
        runtime.writeTrace(units);
    } else if (std::strcmp(verb, "tagged") == 0) {
        runtime.writeTraceTagged(std::atoi(word), text);
    } else if (std::strcmp(verb, "between") == 0) {
        std::fputs("before ", stdout);
        runtime.writeTrace(text);
        std::fputs("after\n", stdout);
    } else if (std::strcmp(verb, "twice") == 0) {
        std::fputs("before ", stdout);
        runtime.writeTrace(text);
        std::fputs("between ", stdout);
        runtime.writeTrace(text);
    } else if (std::strcmp(verb, "last") == 0) {
        runtime.writeTrace(text);
        std::_Exit(0);
    } else if (std::strcmp(verb, "run") == 0) {
        runtime.runProgram(QString::fromLocal8Bit(word), text, QString(), true);
    } else if (std::strcmp(verb, "rename") == 0) {
        return runtime.renameFile(QString::fromLocal8Bit(word), text) ? 0 : 1;
#ifdef __GLIBC__
    } else if (std::strcmp(verb, "stream") == 0) {
        char *bytes = nullptr;
        std::size_t size = 0;
        std::FILE *const console = stdout;
        std::FILE *const memory = open_memstream(&bytes, &size);
        stdout = memory;
        runtime.writeTrace(text);
        stdout = console;
        std::printf("[%.*s]", static_cast<int>(size), bytes);
        std::fclose(memory);
        std::free(bytes);
#endif
    } else if (std::strcmp(verb, "lines") == 0) {
        for (int i = std::atoi(word); i > 0; --i) {
            const QByteArray line = runtime.readConsoleLine().toUtf8();
            std::putchar('[');
            std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
            std::putchar(']');
        }
        printRest();
    }
    return 0;
}
