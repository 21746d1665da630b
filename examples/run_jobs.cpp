// SPDX-License-Identifier: MIT
//
// Runs the programs of a list, one after the other, until one of them leaves its work undone.
//
//     run_jobs jobs.csv
//
// A line of the file is a title, a program, its arguments and the file that the program makes.
#include "column.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"JOBS"_s, argc, argv);
    if (runtime.count(*runtime.arguments) != 1) {
        runtime.writeTrace(u"run_jobs JOBS"_s);
        return 2;
    }

    TextReadChannel jobs(&runtime);
    if (!jobs.openRead(runtime.arguments->first(), u"UTF-8"_s)) {
        runtime.writeTrace(runtime.lastError);
        return 1;
    }
    QStringList job;
    while (jobs.readLine() == 0) {
        runtime.splitRecord(job, jobs.line, u"CSV"_s);
        if (runtime.count(job) != 4) {
            runtime.writeTrace(u"not a job: "_s + jobs.line);
            return 1;
        }
        const QString title = column(runtime, job[0], 20);
        // A file from the last time would look like the work of this time.
        if (!runtime.deleteFile(job[3])
            || runtime.runProgram(job[1], job[2], QString(), /*wait=*/true) != 0) {
            runtime.writeTrace(title + runtime.lastError);
            return 1;
        }
        // The result says nothing of how the program ended, but its file does.
        if (!QFileInfo::exists(job[3])) {
            runtime.writeTrace(title + u"made no "_s + job[3]);
            return 1;
        }
        runtime.writeTrace(title + u"done"_s);
    }
    return 0;
}
