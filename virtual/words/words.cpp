// Tells what stands on the screen: a part of Qt's that the emulated phone loads into every program.
// After each change it writes one line of JSON to a line out of the emulator, with the program's
// name and all texts that the top of its screen paints, each with its colour.
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPaintEngine>
#include <QTimer>
#include <QWidget>

#include <map>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr const char* line = "/dev/ttyS0";
constexpr int calm = 30;  // ms without a change
constexpr int again = 20; // ms, where another program uses the line

/// Keeps the texts, and nothing else, by where they stand.
class TextEngine : public QPaintEngine {
public:
    TextEngine() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }

    bool end() override { return true; }

    void updateState(const QPaintEngineState& state) override {
        if (state.state() & DirtyTransform)
            m_transform = state.transform();
        if (state.state() & DirtyPen)
            m_colour = state.pen().color().name();
    }

    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

    void drawPath(const QPainterPath&) override {}

    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}

    void drawTextItem(const QPointF& point, const QTextItem& item) override {
        const QPointF place = m_transform.map(point);
        m_texts[{qRound(place.y()), qRound(place.x())}] = {item.text(), m_colour};
    }

    Type type() const override { return User; }

    QJsonArray texts() const {
        QJsonArray result;
        for (const auto& [place, text] : m_texts)
            result += QJsonArray{text.first, text.second};
        return result;
    }

private:
    QTransform m_transform;
    QString m_colour;
    std::map<std::pair<int, int>, std::pair<QString, QString>> m_texts; ///< by row and column
};

class TextDevice : public QPaintDevice {
public:
    explicit TextDevice(QSize size) : m_size(size) {}

    QPaintEngine* paintEngine() const override { return &m_engine; }

    QJsonArray texts() const { return m_engine.texts(); }

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 96; // dots per inch
        }
    }

private:
    QSize m_size;
    mutable TextEngine m_engine;
};

/// What lies on top in the window.
QWidget* top(QWidget* window) {
    const QObjectList& children = window->children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        auto* widget = qobject_cast<QWidget*>(*child);
        if (widget && widget->isVisible())
            return widget;
    }
    return window;
}

class Words : public QObject {
public:
    Words() {
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, &Words::tell);
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType() && !m_isTelling)
            m_timer.start(calm);
        return false;
    }

private:
    void tell() {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto window = std::find_if(windows.begin(), windows.end(), [](QWidget* widget) {
            return widget->isVisible() && widget->isWindow();
        });
        if (window == windows.end() || !(*window)->updatesEnabled())
            return;
        const int file = open(line, O_WRONLY | O_CLOEXEC | O_NOCTTY);
        if (flock(file, LOCK_EX | LOCK_NB) != 0) {
            close(file);
            return m_timer.start(again);
        }
        m_isTelling = true;
        TextDevice device((*window)->size());
        top(*window)->render(&device);
        m_isTelling = false;
        const QString program = QFileInfo("/proc/self/exe").symLinkTarget();
        const QByteArray text =
            QJsonDocument(QJsonObject{{"program", program}, {"texts", device.texts()}})
                .toJson(QJsonDocument::Compact) +
            '\n';
        for (qsizetype done = 0, part = 1; part > 0 && done < text.size(); done += part)
            part = write(file, text.constData() + done, text.size() - done);
        close(file);
    }

    QTimer m_timer;
    bool m_isTelling = false;
};

class WordsPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "words.json")

public:
    QObject* create(const QString&, const QString&) override { return new Words; }
};

} // namespace

#include "words.moc"
