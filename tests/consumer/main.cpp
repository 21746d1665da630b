// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    int qtArgc = 1;
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(QStringLiteral("CONSUMER"), argc, argv);
    const QStringList &words = *runtime.arguments;

    if (!runtime.checkIn(words.first(), words.last())) {
        runtime.writeTrace(
            runtime.programName + QLatin1Char(' ') + runtime.versionLabel + QLatin1Char(' ')
            + QString::number(runtime.count(words)) + QLatin1Char(' ') + runtime.checkMessage
        );
    }
    return 0;
}
