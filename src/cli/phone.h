#pragma once

#include <QString>
#include <QStringList>

/// The phone that a command looks after.

/// Takes the phone whose root is the folder `root` or, where that is empty, QUIVER_ROOT names; else
/// the machine itself, where it is a phone; else the user's own phone, which is made where there is
/// none. False, told, where that is not possible.
bool choosePhone(const QString& root);

/// Brings the session's menu in line with the folder of the phone's that Quiver has there. Only the
/// user's own phone stands in it: true, and nothing done, where another one was chosen. False,
/// told, where something could not be written.
bool showInSession();

/// The phone that was chosen is the user's own.
bool isOwnPhone();

/// Reads the phone's settings and opens its database, so that it can be looked at beside whoever is
/// at work on it.
void readPhone();

/// Takes the phone for this command alone and makes it ready to be changed, apart from a database
/// that cannot be used. False, told, where another program has the phone.
bool takePhone();

/// Hands `arguments` to the phone's own program, which takes the place of this one or, where it
/// cannot, is waited for. Gives its exit status.
int startPhoneProgram(const QStringList& arguments);
