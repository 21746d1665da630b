// SPDX-License-Identifier: MIT
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>

/// The examples of one page, made by snippets.py; a null pointer ends them.
extern int (*const examples[])(int, char **);

/// Runs each example in an empty directory of its own.
int main(int argc, char **argv)
{
    for (int i = 0; examples[i]; ++i) {
        std::printf("example %d\n", i + 1);
        std::fflush(stdout);
        const QTemporaryDir directory;
        QDir::setCurrent(directory.path());
        examples[i](argc, argv);
        QDir::setCurrent(QDir::rootPath());
    }
}
