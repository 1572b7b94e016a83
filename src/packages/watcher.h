#pragma once

#include <QtGlobal>

/// The most that is told of a command that could not be started, in bytes: 500 characters of UTF-8.
/// It goes through a pipe in one piece.
constexpr size_t longestWords = 2000;

/// Starts `command` with the shell, in the environment that the program was given, and a process
/// beside it that hands its standard error on to the program's own for as long as someone writes
/// there, whatever becomes of the program. Gives a descriptor to read from: the shell's wait
/// status, an `int`, when it has ended; then, where the command could not be started, the last of
/// its words; then the end, after a second or soon after the shell's end. Negative where nothing
/// was started.
int startWatched(const char* command);
