#pragma once

#include "RES_ICON_Reader.h"
#include "ZKbMainWidget.h"
#include "phonemenu.h"

class ZListBox;

/// The phone's home screen: the main menu, one folder at a time. What it shows goes to standard
/// output as well, so that a script can see it.
class HomeScreen : public ZKbMainWidget {
    Q_OBJECT

public:
    HomeScreen();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void back();
    void chooseCurrent();

private:
    /// A folder on the way to the one that is shown, and the row that is highlighted in it.
    struct Level {
        QString folder;
        int row = 0;
    };

    void showFolder();
    void choose(int row);
    void launch(const AM_AppObject& app);
    QPixmap icon(const QString& wanted, const QString& otherwise, int size) const;

    PhoneMenu m_menu;
    RES_ICON_Reader m_icons;
    ZListBox* m_list;
    ZSoftKey* m_softKey;
    QList<MenuEntry> m_entries;
    QList<Level> m_levels;
};
