// SPDX-License-Identifier: MIT
//
// A program that answers when the family asks it for its version, and otherwise does its work.
//
//     version_answer version version
//
// The answer is a file in the directory of the family's work files; FAMILY_HOME moves that to where a trial
// may write.
#include <runtime/core/appruntime.h>

#include <QCoreApplication>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"ORDERS"_s, argc, argv);
    const QString home = runtime.environmentValue(u"FAMILY_HOME"_s);
    if (!home.isEmpty())
        runtime.homeDirectory = home;

    // First thing: whoever asks waits for the file, and nothing of the program's work may happen.
    if (runtime.version->writeVersionFile(*runtime.arguments) != 0) {
        if (runtime.lastError.isEmpty())
            return 0;
        runtime.writeTrace(runtime.lastError);
        return 1;
    }

    runtime.writeTrace(u"ORDERS "_s + runtime.versionLabel + u" at work"_s);
    return 0;
}
