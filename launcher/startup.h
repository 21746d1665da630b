// SPDX-License-Identifier: MIT
#pragma once

#ifdef LAUNCHER_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

/// Makes the exit code and the standard error independent of what the launcher is started with. To be called
/// first.
void keepQuiet();

/// The application object, which lives for as long as the caller keeps it. Qt sees a program's name alone:
/// options like -platform are for the target.
Application makeApplication();

// What each system does in its own way: startup_unix.cpp and startup_win.cpp.

/// Prepares signals and standard streams, as a part of keepQuiet().
void prepareSystem();

/// An environment variable that has this value while the application object is made.
struct Setting {
    const char *name;
    const char *value;
};
extern const Setting applicationSetting;

/// From now on a signal that asks the launcher to end goes on to the program that is waited for. Before this
/// call, and when no program is waited for, such a signal ends the launcher at once.
void passSignalsOn();

/// Ends the launcher by the first signal that was passed on; returns when there was none.
void endBySignal();
