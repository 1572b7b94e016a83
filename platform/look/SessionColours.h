#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

class QDBusPendingCallWatcher;

/// Chooses the colours, and chooses anew when the desktop's session changes its mind. The phone's
/// own setting "ColorScheme" (dark or light) decides, else what the session prefers, else whether
/// Qt's palette is a dark one.
class SessionColours : public QObject {
    Q_OBJECT

public:
    /// Asks the session, where there is one, for a fifth of a second at most; an answer that comes
    /// later counts then. To be made while the palette is still the desktop's.
    SessionColours();
    ~SessionColours() override;

private slots:
    void changed(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void ask();
    void take(const QDBusPendingCallWatcher& answer);
    void choose(uint preference) const;

    bool m_isPaletteDark;
    QDBusConnection m_session;
};
