#include "SessionColours.h"

#include "Look.h"
#include "ZListBox.h"
#include "paths.h"
#include "window_support.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTest>
#include <QThread>

namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";

QVariant told(uint preference) {
    return QVariant::fromValue(QDBusVariant(preference));
}

/// Says that dark is preferred, from a thread of its own, as the program waits for it.
class Portal : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return QString(); }

    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override {
        return question.member() == u"Read" &&
               bus.send(question.createReply(QVariant::fromValue(QDBusVariant(told(1)))));
    }
};

} // namespace

TEST_F(Ui, ColoursFollowTheSessionUnlessThePhoneSaysOtherwise) {
    QProcess daemon;
    daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    ASSERT_TRUE(daemon.waitForReadyRead());
    const QByteArray address = daemon.readLine().trimmed();
    QDBusConnection bus = QDBusConnection::connectToBus(address, "portal");
    QThread thread;
    Portal answers;
    ASSERT_TRUE(bus.registerVirtualObject("/org", &answers, QDBusConnection::SubPath));
    answers.moveToThread(&thread);
    thread.start();
    ASSERT_TRUE(bus.registerService(portal));
    const auto groundAfter = [&](uint preference) {
        QDBusMessage news = QDBusMessage::createSignal(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
        news << "org.freedesktop.appearance"
             << "color-scheme" << told(preference);
        bus.send(news);
        QTest::qWait(100);
        return apps().grab().toImage().pixelColor(5, 5).lightness();
    };

    openFilled();
    EXPECT_GT(groundAfter(1), 128) << "nobody listens yet";
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    {
        const SessionColours session;
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        EXPECT_LT(colours().surface.lightness(), 128) << "as the session says at first";
        EXPECT_GT(groundAfter(2), 128);
        EXPECT_LT(groundAfter(1), 128);
        EXPECT_GT(groundAfter(0), 128) << "the palette's own";
        phone.makeFile(Path::platformSettings.toUtf8(), "[SYS_SYSTEM_SET]\nColorScheme = dark\n");
        EXPECT_LT(groundAfter(2), 128);
        phone.makeFile(Path::platformSettings.toUtf8(), "[SYS_SYSTEM_SET]\nColorScheme = red\n");
        EXPECT_GT(groundAfter(2), 128);
    }
    QDBusConnection::disconnectFromBus("portal");
    thread.quit();
    thread.wait();
    daemon.kill();
    daemon.waitForFinished();
}
