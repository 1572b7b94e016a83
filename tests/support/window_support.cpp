#include "window_support.h"

#include "MenuRow.h"
#include "PhoneRoot.h"
#include "SoftKeyBar.h"
#include "ZApplication.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "ZSoftKey.h"
#include "database.h"
#include "language.h"
#include "paths.h"
#include "settings.h"

#include <QImage>
#include <QKeyEvent>
#include <QPaintEngine>
#include <QTest>
#include <QWindow>

namespace {

class TextEngine : public QPaintEngine {
public:
    explicit TextEngine(QList<DrawnText>& texts) : QPaintEngine(AllFeatures), m_texts(texts) {}

    bool begin(QPaintDevice*) override { return true; }

    bool end() override { return true; }

    Type type() const override { return User; }

    void updateState(const QPaintEngineState& state) override {
        if (state.state() & DirtyTransform)
            m_transform = state.transform();
    }

    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        constexpr QChar zeroWidthSpace(0x200B);
        if (item.text().remove(zeroWidthSpace).trimmed().isEmpty())
            return;
        const QRectF ink = QFontMetricsF(item.font()).tightBoundingRect(item.text());
        m_texts.append({item.text(), m_transform.mapRect(ink.translated(at))});
    }

    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

    void drawPath(const QPainterPath&) override {}

    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}

private:
    QList<DrawnText>& m_texts;
    QTransform m_transform;
};

/// A paper on which only texts are kept.
class TextPaper : public QImage {
public:
    TextPaper(const QSize& size, QList<DrawnText>& texts)
        : QImage(size, QImage::Format_RGB32), m_engine(texts) {}

    QPaintEngine* paintEngine() const override { return &m_engine; }

private:
    mutable TextEngine m_engine;
};

void mouse(QTest::MouseAction action, const QWidget& widget, const QPoint& place) {
    QTest::mouseEvent(action, ZScreen::instance().windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      widget.mapTo(&ZScreen::instance(), place));
}

void send(QEvent::Type type, int key, bool isRepeat) {
    QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeat);
    QCoreApplication::sendEvent(ZScreen::instance().windowHandle(), &event);
}

} // namespace

Ui::Ui() {
    for (const QString& folder : {Path::phoneApps, Path::phoneSkins, Path::systemFolder})
        phone.makeFolder(folder.toUtf8());
    phone.makeFile("/etc/mtab", "/dev/root / cramfs ro 0 0\n");
    static bool translates = false;
    if (!std::exchange(translates, true))
        installTranslator();
    QObject::connect(&m_watch, &QTimer::timeout, [this] { sendForgottenAway(); });
    m_watch.start(100);
}

Ui::~Ui() {
    window.reset();
    ZScreen::discard();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// A dialog that no test answers would hold the whole run up.
void Ui::sendForgottenAway() {
    constexpr int patience = 150; // times that it is seen
    ZPopup* popup = ZPopup::active();
    m_timesSeen = popup && popup == m_seen ? m_timesSeen + 1 : 0;
    if (m_timesSeen > patience) {
        ADD_FAILURE() << "nobody answers: " << qPrintable(popup->title());
        popup->done(0);
    }
    m_seen = popup;
}

void Ui::insertCard() const {
    for (const QString& folder : {Path::cardApps, Path::cardSkins, Path::extSkins})
        phone.makeFolder(folder.toUtf8());
    phone.makeFile("/etc/mtab", "/dev/mmca1 /mmc/mmca1 vfat rw 0 0\n");
}

void Ui::addApp(int location, const QByteArray& folder, const QByteArray& author,
                const QByteArray& icon) const {
    phone.makeFile(appsFolder(location).toUtf8() + '/' + folder + '/' + folder + ".cfg",
                   "Name = " + folder + "\nAuthor = " + author + "\nIcon = " + icon + '\n');
}

void Ui::open(const QByteArray& language) {
    phone.makeFile(Path::platformSettings.toUtf8(),
                   "[SYS_SYSTEM_SET]\nLanguageType = " + language + '\n');
    AppName = "quiver";
    ArchiverPath = SEVEN_ZIP;
    prepareStorage();
    if (!AppDb)
        openAppDb();
    ASSERT_TRUE(selectLanguageFile(QUIVER_SOURCE_DIR "/languages"));
    window = std::make_unique<zBaseGUI>();
    static_cast<ZApplication*>(qApp)->setMainWidget(window.get());
    ASSERT_TRUE(enterFolder("/"));
}

void Ui::openFilled(const QByteArray& language) {
    ASSERT_NO_FATAL_FAILURE(open(language));
    waitForFirstFill();
}

void Ui::waitForFirstFill() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return files().count() > 0; }, 20000));
    QCoreApplication::processEvents();
}

QStringList Ui::softKeys() {
    const SoftKeyBar* bar = ZOptionsMenu::active()
                                ? ZOptionsMenu::active()->findChild<SoftKeyBar*>()
                                : window->getSoftKey();
    return {bar->leftText(), bar->rightText()};
}

QStringList Ui::names(const ZListBox& list) {
    QStringList texts;
    for (int row = 0; row < list.count(); ++row)
        texts.append(list.item(row)->subItemText(list.textColumn()));
    return texts;
}

void pressAll(const QList<int>& keys) {
    for (const int key : keys)
        press(key);
}

void chooseInMenu(const QList<int>& ids) {
    press(Qt::Key_F1);
    for (const int id : ids)
        press(id == 9 ? Qt::Key_0 : Qt::Key_1 + id);
}

void repeat(int key, int times) {
    for (int i = 0; i < times; ++i)
        send(QEvent::KeyPress, key, true);
}

void hold(int key, int repeats) {
    send(QEvent::KeyPress, key, false);
    repeat(key, repeats);
    send(QEvent::KeyRelease, key, false);
}

void touch(const QWidget& widget, const QPoint& place) {
    mouse(QTest::MouseClick, widget, place);
}

void touchTwice(const QWidget& widget, const QPoint& place) {
    mouse(QTest::MouseDClick, widget, place);
}

void pressMouse(const QWidget& widget, const QPoint& place) {
    mouse(QTest::MousePress, widget, place);
}

void releaseMouse(const QWidget& widget, const QPoint& place) {
    mouse(QTest::MouseRelease, widget, place);
}

QPoint middleOf(const ZListBox& list, int row) {
    return list.visualRect(list.model()->index(row, 0)).center();
}

void touchRow(const ZListBox& list, int row) {
    touch(*list.viewport(), middleOf(list, row));
}

MenuRow* rowOf(const ZOptionsMenu& menu, int id) {
    for (MenuRow* row : menu.findChildren<MenuRow*>()) {
        if (row->id() == id)
            return row;
    }
    return nullptr;
}

QList<DrawnText> drawnTexts(QWidget& widget) {
    QList<DrawnText> texts;
    TextPaper paper(widget.size(), texts);
    widget.render(&paper, QPoint(), QRegion(), QWidget::RenderFlags());
    return texts;
}
