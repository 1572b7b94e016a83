#pragma once

#include <QString>

/// The settings of the phone's system, as the phone knows their file; programs only read it.
constexpr const char* phoneSettingsFile = "/ezx_user/download/appwrite/setup/ezx_system.cfg";

/// The value of `key`, or `fallback` where the phone has none.
QString phoneSetting(const QString& key, const QString& fallback);

/// Letters are typed on a keypad of digits: the setting "Keypad" is 1.
bool hasKeypad();
