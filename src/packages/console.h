#pragma once

/// The console front end: does what the command line asks for. Non-zero when that was something of
/// its own, and the program is to end; 0 when the window is to be opened.
int checkParameters(int count, char** arguments);
