#pragma once

#include <QPointer>
#include <QWidget>

/// Whether `event` is a key, a touch or a click.
bool isInput(const QEvent& event);

/// The phone's one screen: a window of the phone's shape on a desktop, the whole display where the
/// program has it for itself. The main widget and everything laid over it (popups, menus) are its
/// children and fill it, the last one on top.
class ZScreen : public QWidget {
    Q_OBJECT

public:
    /// The screen, made on first use; the application object discards it at its end.
    static ZScreen& instance();
    static void discard();

    ~ZScreen() override;

    QWidget* mainWidget() const { return m_main; }

    /// On a desktop: takes the place and size that the window of `program` had at the end of its
    /// last run, and keeps those that it has at its end. Not where QUIVER_PLACE says the place.
    void rememberPlace(const QString& program);

    void setMainWidget(QWidget* widget);

    /// Puts the screen on the display, if it is not there yet.
    void present();

    /// Waits, for a third of a second at most, until the display has shown the screen: work that
    /// keeps the event loop waiting may begin then. Keys and touches wait as well.
    void waitUntilPainted();

    /// True while something lies over the main widget.
    bool isCovered() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    ZScreen();
    QWidget* topWidget() const;

    /// The phone has one screen. It is not in the application object, as a popup may need it where
    /// the program has none.
    static ZScreen* s_instance;
    bool m_painted = false;
    QPointer<QWidget> m_main;
    QString m_placeFile; ///< empty where nothing is kept
};
