// SPDX-License-Identifier: MIT
#include "startup.h"

#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    keepQuiet();
    const Application application = makeApplication();

    static AppRuntime *runtime = nullptr; // lives until the process ends
    runtime = new AppRuntime(u"ZBASE"_s, argc, argv);
    const QStringList &words = *runtime->arguments;

    const QString program = runtime->elementAt(words, 0);
    QString argumentText;
    // Every argument is followed by a blank, the last one too: the target gets an empty last argument.
    for (int i = 1; i < runtime->count(words); ++i)
        argumentText += runtime->elementAt(words, i) + u' ';

    const bool windowsRules = runtime->isSameChar(runtime->platformChar, u'W');
    runtime->writeTrace(
        "===( ZBASE"_L1 + runtime->charToText(runtime->platformChar)
        + runtime->charToText(runtime->programKindChar) + (windowsRules ? ".EXE"_L1 : ""_L1) + " )==="_L1
    );
    runtime->writeTrace(program + u' ' + argumentText);

    passSignalsOn();
    if (runtime->runProgram(program, argumentText, QString(), /*wait=*/true) != 0)
        runtime->writeTrace(runtime->lastError);
    endBySignal();
    return 0;
}
