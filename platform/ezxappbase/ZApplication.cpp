#include "ZApplication.h"

#include "Look.h"
#include "PhoneStyle.h"
#include "ZScreen.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFontDatabase>

#include <clocale>

#include <langinfo.h>

namespace {

bool displayFound = true;

void setUtf8Locale() {
    setlocale(LC_ALL, "");
    if (qstrcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

void setScale() {
    bool isNumber = false;
    const double scale = qEnvironmentVariable("QUIVER_SCALE").toDouble(&isNumber);
    if (isNumber && scale >= 0.5 && scale <= 8)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
}

/// Qt ends the program when it finds no display; naming the invisible one last prevents that.
void choosePlatform() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    displayFound = false;
    QByteArray platforms = "offscreen";
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        platforms.prepend("xcb;");
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        platforms.prepend("wayland;");
    qputenv("QT_QPA_PLATFORM", platforms);
}

int& prepared(int& argc) {
    setUtf8Locale();
    setScale();
    choosePlatform();
    return argc;
}

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget && className == u"ZPopup")
        return new QAccessibleWidget(widget, QAccessible::Dialog);
    if (widget && className == u"ZOptionsMenu")
        return new QAccessibleWidget(widget, QAccessible::PopupMenu);
    return nullptr;
}

} // namespace

ZApplication::ZApplication(int& argc, char** argv, int) : QApplication(prepared(argc), argv) {
    displayFound = displayFound || platformName() != u"offscreen";
    QAccessible::installFactory(makeAccessible);
    QFont font;
    if (QFontDatabase::hasFamily("Noto Sans"))
        font.setFamily("Noto Sans");
    font.setPixelSize(scaled(Measure::dialogFont));
    setFont(font);
    colours(); // chosen while the palette is still the desktop's
    setStyle(new PhoneStyle);
}

ZApplication::~ZApplication() {
    ZScreen::discard();
}

/// Qt would first ask the screen to close, and for the screen that is a press of the right soft
/// key, which may be what has asked for the end.
bool ZApplication::event(QEvent* event) {
    return event->type() == QEvent::Quit ? QCoreApplication::event(event)
                                         : QApplication::event(event);
}

bool ZApplication::hasDisplay() {
    return displayFound;
}

void ZApplication::setMainWidget(QWidget* widget) {
    ZScreen::instance().setMainWidget(widget);
    ZScreen::instance().present();
    widget->setFocus();
}
