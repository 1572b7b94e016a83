#include "ZApplication.h"

#include "Look.h"
#include "PhoneFonts.h"
#include "PhoneSettings.h"
#include "PhoneStyle.h"
#include "ScreenTurn.h"
#include "SessionColours.h"
#include "Waiting.h"
#include "ZScreen.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QDir>
#include <QKeyEvent>

#include <clocale>
#include <vector>

#include <langinfo.h>

namespace {

void setUtf8Locale() {
    setlocale(LC_ALL, "");
    if (qstrcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

/// What Qt is told by its environment; programs that are launched get the one that was given.
struct Given {
    const char* name;
    bool isSet = qEnvironmentVariableIsSet(name);
    QByteArray value = qgetenv(name);
};

/// Kept from before Qt's constructor, which needs the change, until after it; no member of the
/// object is there so early.
std::vector<Given> given;

void giveBackEnvironment() {
    for (const Given& variable : given)
        variable.isSet ? void(qputenv(variable.name, variable.value))
                       : void(qunsetenv(variable.name));
}

void setScale() {
    bool isNumber = false;
    const double scale = qEnvironmentVariable("QUIVER_SCALE").toDouble(&isNumber);
    if (isNumber && scale >= 0.5 && scale <= 8)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
}

bool isBareDisplay(const QByteArray& platform) {
    return platform.startsWith("linuxfb") || platform.startsWith("eglfs");
}

/// Qt's platforms on the bare display end the program, or break down later, where there is none.
bool lacksDevice(const QByteArray& platform) {
    return isBareDisplay(platform) &&
           QDir("/dev").entryList({"fb*", "dri"}, QDir::System | QDir::Dirs).isEmpty();
}

/// Qt ends the program when it finds no display; naming the invisible one last prevents that.
void choosePlatform() {
    QByteArray platforms = qgetenv("QT_QPA_PLATFORM");
    if (platforms.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        platforms = "wayland;";
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        platforms += "xcb;";
    if (lacksDevice(platforms))
        platforms.clear();
    if (!platforms.isEmpty() && !platforms.endsWith(';'))
        platforms += ';';
    qputenv("QT_QPA_PLATFORM", platforms + "offscreen");
}

/// Nobody could answer a question in a window that is not seen, unless it is a test that answers.
bool isVisiblePlatform() {
    const QString name = QGuiApplication::platformName();
    return qEnvironmentVariableIsSet("QUIVER_HEADLESS") ||
           (name != u"offscreen" && !name.startsWith(u"minimal"));
}

/// The arguments are the program's own: Qt sees no more of them than the program's name. It keeps
/// the reference to their count for as long as it runs.
int& prepared() {
    static int count = 1;
    given = {Given{"QT_QPA_PLATFORM"}, Given{"QT_SCALE_FACTOR"}};
    setUtf8Locale();
    setScale();
    choosePlatform();
    if (isBareDisplay(qgetenv("QT_QPA_PLATFORM")) && qEnvironmentVariableIsEmpty("FONTCONFIG_FILE"))
        usePhoneFonts();
    return count;
}

/// The red key, or what stands for it where a keyboard plays the keypad.
bool isEndKey(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& press = static_cast<const QKeyEvent&>(event);
    return !press.isAutoRepeat() &&
           (press.key() == Qt::Key_Hangup || (press.key() == Qt::Key_F4 && hasKeypad()));
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

ZApplication::ZApplication(int&, char** argv, int type) : QApplication(prepared(), argv) {
    giveBackEnvironment();
    setWaitingScreen(isVisiblePlatform() ? +[] { return ZScreen::instance().isCovered(); }
                                         : nullptr);
    QAccessible::installFactory(makeAccessible);
    QFont font("Noto Sans"); // without it fontconfig chooses the next best
    font.setPixelSize(scaled(Measure::dialogFont));
    setFont(font);
    if (isVisiblePlatform())
        m_colours = std::make_unique<SessionColours>();
    setStyle(new PhoneStyle);
    if (platformName() == u"linuxfb")
        takeTurns(type == GuiServer);
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

bool ZApplication::notify(QObject* receiver, QEvent* event) {
    if (m_turn && !m_turn->isOurs() && isInput(*event))
        return true;
    if (isEndKey(*event)) {
        ZScreen::instance().close();
        return true;
    }
    return QApplication::notify(receiver, event);
}

void ZApplication::takeTurns(bool isServer) {
    m_turn = new ScreenTurn(isServer, this);
    const auto show = [](bool isOurs) { ZScreen::instance().setUpdatesEnabled(isOurs); };
    connect(m_turn, &ScreenTurn::changed, this, show);
    if (!m_turn->isOurs())
        show(false);
}

bool ZApplication::hasDisplay() {
    return qobject_cast<ZApplication*>(instance()) && isVisiblePlatform();
}

void ZApplication::setMainWidget(QWidget* widget) {
    ZScreen::instance().setMainWidget(widget);
    ZScreen::instance().present();
    widget->setFocus();
}
