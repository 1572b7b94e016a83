#pragma once

#include <QString>

#include <functional>

class QObject;

/// Gets what was printed by an application, or its shell, that could not be started.
using LaunchFailure = std::function<void(const QString& words)>;

/// Runs `command`, an application's, in the environment that the program was given, and gives the
/// result of its shell as `system` does. What it prints to standard error goes where the program's
/// own goes. Where the shell or what it leaves running ends within a second with 126 or 127, the
/// words until then, the last 500 characters of them, are given to `tell` from the event loop,
/// unless `receiver` is gone by then.
int launch(const QString& command, QObject* receiver, const LaunchFailure& tell);
