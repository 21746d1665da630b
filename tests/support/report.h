// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// What the arguments helper wrote down about how it was started.
struct Report {
    QStringList arguments;
    QString directory;
    QString standardInput; ///< "open" or "ended".
    QStringList environment;
    bool started{false};
};

/// Reads the report at `fileName`. Where the file is missing, `started` is false.
Report readReport(const QString &fileName);
