#pragma once

#include <QPushButton>

class ZOptionsMenu;

/// One entry of an options menu: the number that chooses it, its text, and at the right end a tick
/// box or the mark of a submenu.
class MenuRow : public QPushButton {
    Q_OBJECT

public:
    MenuRow(const QString& text, int id, QWidget* parent);

    int id() const { return m_id; }

    ZOptionsMenu* submenu() const { return m_submenu; }

    void setSubmenu(ZOptionsMenu* submenu) { m_submenu = submenu; }

    void setNumber(int number) { m_number = number; }

    void setHighlighted(bool highlighted);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void chosen();

protected:
    // The menu toggles a check entry when it is chosen, by key or by touch.
    void nextCheckState() override {}

    void paintEvent(QPaintEvent* event) override;

private:
    int markRoom() const;

    int m_id;
    int m_number = 0;
    bool m_highlighted = false;
    ZOptionsMenu* m_submenu = nullptr;
};
