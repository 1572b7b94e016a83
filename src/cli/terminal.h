#pragma once

#include <QString>

/// How a command speaks with its user while it works. The questions and notices of the core
/// (app/dialogs.h) are answered here, too.

/// From now on the command's work can be cancelled by Ctrl-C, and is shown on a terminal.
void startWork();

/// True after Ctrl-C: nothing more is to be begun.
bool isInterrupted();

/// Whether to go on: yes with `--yes`, else what the terminal answers. A no, or that there is no
/// terminal, counts as a failure of the command.
bool confirm(const QString& question, const QString& details);

/// There is somebody to ask.
bool canAsk();

/// What the core has told of a failure since this was called last; empty where it has not.
QString takeFailure();
