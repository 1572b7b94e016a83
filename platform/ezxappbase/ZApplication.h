#pragma once

#include <QApplication>

#include <memory>

class ScreenTurn;
class SessionColours;

/// The application object of a program on the phone. It gives the process a UTF-8 locale (for the
/// commands that it runs, too) and the phone's font, style and colours, and takes the screen's
/// scale from the environment variable QUIVER_SCALE.
class ZApplication : public QApplication {
    Q_OBJECT

public:
    enum Type { Tty, GuiClient, GuiServer };

    /// `argv` must outlive the object; of its arguments none is taken, not even one that Qt knows.
    /// Without any display the program runs on an invisible one, so that a console listing works
    /// over a plain ssh line. On a bare framebuffer a GuiServer lies below all other programs. The
    /// environment is afterwards as it was, but for the locale.
    ZApplication(int& argc, char** argv, int type);
    ~ZApplication() override;

    /// False when there is no display that a user could see: dialogs then ask on the terminal.
    static bool hasDisplay();

    /// Puts `widget` on the screen, where it takes all the room; the screen owns it from then on.
    void setMainWidget(QWidget* widget);

protected:
    bool event(QEvent* event) override;

    /// On a bare framebuffer the keys are for the program that is seen. The phone's end key closes
    /// what lies on top, at last the program, as closing a window does.
    bool notify(QObject* receiver, QEvent* event) override;

private:
    void takeTurns(bool isServer);

    ScreenTurn* m_turn = nullptr; ///< where no display server decides
    std::unique_ptr<SessionColours> m_colours;
};
