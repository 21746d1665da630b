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

/// Reads the report at `fileName`; a missing file gives one that says it was not started.
Report readReport(const QString &fileName);
