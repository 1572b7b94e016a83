#include "ZScreen.h"

#include "Look.h"
#include "Waiting.h"
#include "WindowPlace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <cstdio>

namespace {

const QSize smallest(176, 200);

bool hasDisplayForItself() {
    static const QStringList platforms = {"linuxfb", "eglfs", "vnc"};
    return platforms.contains(QGuiApplication::platformName());
}

void pressKey(QWidget* receiver, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &press);
}

} // namespace

bool isInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
        return true;
    default:
        return false;
    }
}

ZScreen* ZScreen::s_instance = nullptr;

ZScreen& ZScreen::instance() {
    if (!s_instance)
        s_instance = new ZScreen;
    return *s_instance;
}

void ZScreen::discard() {
    delete s_instance;
    s_instance = nullptr;
}

ZScreen::ZScreen() {
    const QSize room = screen()->availableSize();
    const bool isCramped = isOnDesktop() && room.boundedTo(Measure::screen) != Measure::screen;
    // On a desktop nothing forces a window that is smaller than the phone's screen, unless it has
    // no room for one: there it may still take some for a frame.
    setMinimumSize(isOnDesktop() && !isCramped ? Measure::screen : smallest);
    resize(isCramped ? room : Measure::screen);
    if (isCramped)
        setWindowState(Qt::WindowMaximized);
    setFocusPolicy(Qt::StrongFocus);
    int x = 0;
    int y = 0;
    if (sscanf(qgetenv("QUIVER_PLACE").constData(), "%d,%d", &x, &y) == 2)
        move(x, y);
    setWindowTitle(QGuiApplication::applicationDisplayName());
}

ZScreen::~ZScreen() {
    if (!m_placeFile.isEmpty() && isVisible())
        keepPlace(*this, m_placeFile);
}

void ZScreen::rememberPlace(const QString& program) {
    m_placeFile = placeFile(program);
    if (!m_placeFile.isEmpty())
        restorePlace(*this, m_placeFile);
}

void ZScreen::setMainWidget(QWidget* widget) {
    m_main = widget;
    setWindowTitle(widget->windowTitle());
    setWindowIcon(widget->windowIcon());
    connect(widget, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
    widget->setParent(this);
    widget->setGeometry(rect());
    widget->lower();
    widget->show();
}

void ZScreen::present() {
    if (isVisible())
        return;
    hasDisplayForItself() ? showFullScreen() : show();
    activateWindow();
}

void ZScreen::waitUntilPainted() {
    constexpr int longestWait = 333;
    QElapsedTimer waited;
    waited.start();
    while (isVisible() && !m_painted && waited.elapsed() < longestWait)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, longestWait);
}

QWidget* ZScreen::topWidget() const {
    const QObjectList& widgets = children();
    for (auto child = widgets.rbegin(); child != widgets.rend(); ++child) {
        auto* widget = qobject_cast<QWidget*>(*child);
        if (widget && widget->isVisible())
            return widget;
    }
    return nullptr;
}

bool ZScreen::isCovered() const {
    const QWidget* top = topWidget();
    return top && top != m_main;
}

/// Closing the window closes what lies on top of the screen. Only where nothing does, and no work
/// is going on, is it the main widget's right soft key. Work that cannot be cancelled goes on.
void ZScreen::closeEvent(QCloseEvent* event) {
    event->ignore();
    QTimer::singleShot(0, this, [this] {
        QWidget* top = isWorking() && !canCancelWork() ? nullptr : topWidget();
        if (top)
            pressKey(top, top == m_main ? Qt::Key_F2 : Qt::Key_Escape);
    });
}

/// The list in front keeps the keys; there is nothing else to step to.
bool ZScreen::focusNextPrevChild(bool) {
    return false;
}

void ZScreen::paintEvent(QPaintEvent*) {
    m_painted = true;
    QPainter(this).fillRect(rect(), colours().surface);
}

void ZScreen::resizeEvent(QResizeEvent*) {
    for (QObject* child : children()) {
        if (auto* widget = qobject_cast<QWidget*>(child))
            widget->setGeometry(rect());
    }
}
