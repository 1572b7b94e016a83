#pragma once

#include <QString>

/// Marks the phone as one that this program changes, until `unlockPhone` or the end of its run,
/// however that ends; commands do not inherit the mark. Where another program has it, waits for
/// `patience` ms at most; false where it still has it then. A phone that cannot be marked is taken
/// for a free one.
bool lockPhone(int patience);
void unlockPhone();

/// Marks the phone as one that has a window, for the rest of the run. False where it has one.
bool claimWindow();

/// The phone has a window, of this program or another one.
bool hasWindow();

/// The program that has the phone, as "NAME, process NUMBER"; empty where that cannot be told.
QString phoneHolder();
