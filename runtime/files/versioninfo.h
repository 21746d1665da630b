// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/core/appruntime_export.h>

#include <QString>
#include <QStringList>

class AppRuntime;

/// The version record of a program: the family's version and the numbers of its sibling programs.
///
/// AppRuntime creates one for itself and owns it.
struct APPRUNTIME_EXPORT VersionInfo {
    /// Answers the version request of a command line, the two words `version version` in any case, with a
    /// file of one line, `VERSION_PROGRAM.TXT` in the directory TMP below AppRuntime::familyDirectory(),
    /// which must exist. A file that is there is replaced.
    ///
    /// The line is `chartVersion` for the program `ZGRAPH`, `printVersion` for `ZLISTR`, and for every other
    /// `versionNumber`, a tab and `versionText`; in the local 8-bit encoding with the platform's line end.
    /// Returns 1, also when the file could not be written; or 0, with no file, for other arguments.
    ///
    /// Leaves the runtime's checkMessage set, but when the number of arguments is not two. A file that cannot
    /// be made shows in lastError alone, which is set to `Open Write error`.
    int writeVersionFile(const QStringList &arguments);

    QString versionText{QStringLiteral("000800004")}; ///< Nine digits: major 4, minor 2, patch 3.
    qint32 versionNumber{37};                         ///< Build number; first part of `versionLabel`.
    qint32 printVersion{14};                          ///< Number that the print program reports.
    qint32 chartVersion{2};                           ///< Number that the chart program reports.
    AppRuntime *runtime{nullptr};                     ///< The owner; not owned.
};
