#pragma once

#include <QString>
#include <QUuid>

class ZConfig;

/// One application that the phone's application manager knows.
class AM_AppObject {
public:
    /// The application of the group `group`, named by a UUID, in one of the manager's files.
    AM_AppObject(const ZConfig& file, const QString& group);

    QUuid uuid() const { return m_uuid; }

    QString name() const { return m_name; }

    int type() const { return m_type; }

    QString icon() const { return m_icon; }

    QString attribute() const { return m_attribute; }

    QString bigIcon() const { return m_bigIcon; }

    /// The folder of its program (a phone path), and the command that starts it there.
    QString directory() const { return m_directory; }

    QString exec() const { return m_exec; }

    QString vendor() const { return m_vendor; }

private:
    QUuid m_uuid;
    QString m_name;
    int m_type;
    QString m_icon;
    QString m_attribute;
    QString m_bigIcon;
    QString m_directory;
    QString m_exec;
    QString m_vendor;
};
