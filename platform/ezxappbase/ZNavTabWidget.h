#pragma once

#include <QWidget>

class QPixmap;
class QStackedWidget;
class QTabBar;

/// Pages of which one is shown, below a bar of tabs that share the width. Left and Right go from
/// tab to tab.
class ZNavTabWidget : public QWidget {
    Q_OBJECT

public:
    /// `skinClass` is the phone's own.
    ZNavTabWidget(QWidget* parent, int skinClass);

    void addTab(QWidget* page, const QPixmap& icon, const QString& label);
    int currentPageIndex() const;
    void setCurrentPage(int index);

    /// Whether a key that is held stops at the next tab (as it does to begin with) or goes on.
    void stopNextWhenKeyRepeat(bool stop);

signals:
    /// Another tab, labelled `label`, came to the front.
    void selected(const QString& label);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showPage(int index);

    QTabBar* m_bar;
    QStackedWidget* m_pages;
    bool m_stopOnRepeat = true;
};
