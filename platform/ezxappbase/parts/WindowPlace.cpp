#include "WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QWidget>

namespace {

constexpr const char* placeKey = "window/place";
constexpr const char* maximizedKey = "window/maximized";

} // namespace

bool isOnDesktop() {
    const QString platform = QGuiApplication::platformName();
    return platform == u"xcb" || platform.startsWith(u"wayland");
}

QString placeFile(const QString& program) {
    if (!isOnDesktop() || !qEnvironmentVariableIsEmpty("QUIVER_PLACE"))
        return QString();
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/' + program +
           "/window.conf";
}

void restorePlace(QWidget& window, const QString& file) {
    const QSettings kept(file, QSettings::IniFormat);
    const QRect place = kept.value(placeKey).toRect();
    if (!place.isValid())
        return;
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    const QSize room = (screen ? screen : window.screen())->availableSize();
    const QSize size = place.size().boundedTo(room);
    if (screen)
        window.setGeometry(QRect(place.topLeft(), size));
    else
        window.resize(size);
    if (kept.value(maximizedKey).toBool())
        window.setWindowState(Qt::WindowMaximized);
}

void keepPlace(const QWidget& window, const QString& file) {
    QSettings kept(file, QSettings::IniFormat);
    kept.setValue(placeKey, window.normalGeometry());
    kept.setValue(maximizedKey, window.isMaximized());
}
