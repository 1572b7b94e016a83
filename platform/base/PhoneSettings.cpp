#include "PhoneSettings.h"

#include "PhoneRoot.h"
#include "ZConfig.h"

QString phoneSetting(const QString& key, const QString& fallback) {
    return ZConfig(hostPath(phoneSettingsFile), true).readEntry("SYS_SYSTEM_SET", key, fallback);
}

bool hasKeypad() {
    return phoneSetting("Keypad", "0") == u"1";
}
