// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class AppRuntime;

/// The version record of a program: the family's version and the numbers of its sibling programs.
///
/// AppRuntime creates one for itself and owns it.
struct VersionInfo {
    QString versionText{QStringLiteral("000800004")}; ///< Nine digits: major 4, minor 2, patch 3.
    qint32 versionNumber{37};                         ///< Build number; first part of `versionLabel`.
    qint32 printVersion{14};                          ///< Number that the print program reports.
    qint32 chartVersion{2};                           ///< Number that the chart program reports.
    AppRuntime *runtime{nullptr};                     ///< The owner; not owned.
};
