#pragma once

#include <QObject>
#include <QString>

/// On a bare framebuffer no display server says whose program is seen and gets the keys. The
/// programs settle it among themselves: the one that was started last has the screen, and who had
/// it before gets it back when that one ends, however it ends. Each stands for itself by a locked
/// file in a folder that all of them watch.
class ScreenTurn : public QObject {
    Q_OBJECT

public:
    /// Takes the screen; `isLowest` for the home screen, over which all others lie even where it
    /// starts after them. Where the folder cannot be used, the program has the screen for good.
    explicit ScreenTurn(bool isLowest, QObject* parent);
    ~ScreenTurn() override;

    bool isOurs() const { return m_isOurs; }

signals:
    void changed(bool isOurs);

private:
    bool enter(bool isLowest);
    void watch();
    void look();
    bool isCovered() const;

    QByteArray m_name;
    int m_place = -1; ///< the locked file
    int m_watch = -1;
    bool m_isOurs = true;
};
