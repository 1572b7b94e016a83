#include "SessionColours.h"

#include "Look.h"
#include "PhoneSettings.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QTimer>

namespace {

constexpr const char* connectionName = "colours";
constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* object = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* colorScheme = "color-scheme";

/// What the session prefers, as it is told on its bus.
enum Preference : uint { NoPreference, PrefersDark, PrefersLight };

QString phoneScheme() {
    const QString scheme = phoneSetting("ColorScheme", QString());
    return scheme == u"dark" || scheme == u"light" ? scheme : QString();
}

/// A phone need not have one; Qt itself would go on looking and start one.
bool hasSessionBus() {
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           (!folder.isEmpty() && QFile::exists(folder + "/bus"));
}

QDBusConnection connectToSession() {
    return hasSessionBus() && phoneScheme().isEmpty()
               ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)
               : QDBusConnection(QString());
}

/// The session's answer is wrapped in one variant more than what it announces.
uint preferenceIn(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

SessionColours::SessionColours()
    : m_isPaletteDark(QGuiApplication::palette().color(QPalette::Window).lightness() < 128),
      m_session(connectToSession()) {
    choose(NoPreference);
    if (m_session.isConnected())
        ask();
}

SessionColours::~SessionColours() {
    QDBusConnection::disconnectFromBus(connectionName);
}

void SessionColours::ask() {
    constexpr int patience = 200;      // ms
    qRegisterMetaType<QDBusVariant>(); // before that, Qt finds no slot for such a signal
    m_session.connect(service, object, interface, "SettingChanged", this,
                      SLOT(changed(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(service, object, interface, "Read");
    question << appearance << colorScheme;
    auto* answer = new QDBusPendingCallWatcher(m_session.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] { take(*answer); });
    QEventLoop loop;
    connect(answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void SessionColours::take(const QDBusPendingCallWatcher& answer) {
    const QDBusPendingReply<QDBusVariant> reply = answer;
    if (reply.isValid())
        choose(preferenceIn(reply.value().variant()));
}

void SessionColours::changed(const QString& space, const QString& key, const QDBusVariant& value) {
    if (space == appearance && key == colorScheme)
        choose(preferenceIn(value.variant()));
}

void SessionColours::choose(uint preference) const {
    const QString scheme = phoneScheme();
    if (!scheme.isEmpty())
        useColours(scheme == u"dark");
    else if (preference == PrefersDark || preference == PrefersLight)
        useColours(preference == PrefersDark);
    else
        useColours(m_isPaletteDark);
}
