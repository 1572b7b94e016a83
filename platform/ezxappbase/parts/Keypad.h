#pragma once

#include <QString>

/// What the keys of a keypad stand for: a key once for the first character, twice for the second.

/// The small letters of the digit key `digit`, those of the phone's language among them, and the
/// digit itself at the end.
QString lettersOf(int digit);

/// The digit of a key (Qt::Key_0 to Qt::Key_9); -1 for any other.
int digitOf(int key);
