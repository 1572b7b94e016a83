// The frame of every sample program: a title bar, the program's own widget and the two soft keys,
// at the size of the phone's screen.
#pragma once

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>

namespace phone {

using namespace Qt::StringLiterals;

class Window : public QWidget {
public:
    // Takes ownership of the content. The right soft key always leaves the program.
    Window(const QString& title, const QColor& accent, QWidget* content,
           const QString& exitText = u"Exit"_s)
        : left_(new QPushButton), right_(new QPushButton(exitText)) {
        setWindowTitle(title);
        QFont screenFont;
        screenFont.setPixelSize(13);
        setFont(screenFont);

        auto* caption = new QLabel(title);
        caption->setFixedHeight(24);
        const QString bar =
            u"background: %1; color: white; border: none; padding: 0 8px; "_s.arg(accent.name());
        caption->setStyleSheet(bar + u"font-weight: bold;"_s);
        auto* softKeys = new QHBoxLayout;
        softKeys->setSpacing(0);
        for (QPushButton* key : {left_, right_}) {
            const QString side = key == left_ ? u"left"_s : u"right"_s;
            key->setStyleSheet(
                u"QPushButton {%1 text-align: %2;} QPushButton:pressed {color: %3;}"_s.arg(
                    bar, side, accent.lighter(180).name()));
            key->setFixedHeight(26);
            key->setFocusPolicy(Qt::NoFocus);
            softKeys->addWidget(key, 1);
        }

        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->addWidget(caption);
        column->addWidget(content, 1);
        column->addLayout(softKeys);
        content->setFocus();

        connect(right_, &QPushButton::clicked, this, &QWidget::close);
        new QShortcut(Qt::Key_F1, this, [this] { left_->click(); });
        new QShortcut(Qt::Key_F2, this, [this] { close(); });
        new QShortcut(Qt::Key_Escape, this, [this] { close(); });
    }

    void setLeftKey(const QString& text, std::function<void()> action) {
        left_->setText(text);
        connect(left_, &QPushButton::clicked, this, std::move(action));
    }

    // Without a window system the program owns the whole screen; with one it keeps the size of
    // the phone's. It asks for the keyboard itself, since there may be no window manager to give
    // it.
    void present() {
        const QString platform = QGuiApplication::platformName();
        if (platform == u"linuxfb"_s || platform == u"eglfs"_s) {
            showFullScreen();
        } else {
            setFixedSize(240, 320);
            show();
        }
        activateWindow();
    }

private:
    QPushButton* left_;
    QPushButton* right_;
};

} // namespace phone
