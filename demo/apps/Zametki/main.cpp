// Заметки: a small note pad. The notes live in one text file beside the program, a form feed
// between two of them.
#include "Look.h"
#include "ZApplication.h"
#include "ZMessageDlg.h"
#include "oneview.h"

#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

class Notebook : public QWidget {
public:
    Notebook() {
        setFocusProxy(&page_);
        page_.setPlaceholderText(u"Новая заметка…"_s);
        page_.setFrameShape(QFrame::NoFrame);
        page_.document()->setDocumentMargin(2 * Measure::grid);
        counter_.setAlignment(Qt::AlignCenter);
        setStyleSheet(pagerStyle());

        auto* pager = new QHBoxLayout;
        pager->setSpacing(0);
        pager->addWidget(pagerButton(Qt::LeftArrow, -1, Qt::Key_PageUp));
        pager->addWidget(&counter_, 1);
        pager->addWidget(pagerButton(Qt::RightArrow, 1, Qt::Key_PageDown));
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->addLayout(pager);
        column->addWidget(&page_, 1);

        if (QFile file(path()); file.open(QIODevice::ReadOnly))
            notes_ = QString::fromUtf8(file.readAll()).split(u'\f');
        open(0);
    }

    ~Notebook() override { store(); }

    void add() {
        storeOrTell();
        notes_.append(QString());
        open(notes_.size() - 1);
    }

protected:
    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::PaletteChange && styleSheet() != pagerStyle())
            setStyleSheet(pagerStyle());
        QWidget::changeEvent(event);
    }

private:
    static QString pagerStyle() {
        return u"QLabel, QToolButton {background: %1; color: %2; border: none;}"_s.arg(
            colours().header.name(), colours().secondaryText.name());
    }

    static QString path() { return QApplication::applicationDirPath() + u"/notes.txt"_s; }

    QToolButton* pagerButton(Qt::ArrowType arrow, int direction, Qt::Key key) {
        auto* button = new QToolButton;
        button->setArrowType(arrow);
        button->setFixedSize(40, scaled(Measure::headerRow));
        button->setFocusPolicy(Qt::NoFocus);
        button->setShortcut(key);
        connect(button, &QToolButton::clicked, this, [this, direction] {
            storeOrTell();
            open((current_ + direction + notes_.size()) % notes_.size());
        });
        return button;
    }

    void open(qsizetype note) {
        current_ = note;
        page_.setPlainText(notes_[note]);
        page_.moveCursor(QTextCursor::End);
        counter_.setText(u"%1 из %2"_s.arg(note + 1).arg(notes_.size()));
    }

    // Empty notes are not worth a line in the file.
    bool store() {
        notes_[current_] = page_.toPlainText();
        QStringList written = notes_;
        written.removeAll(QString());
        QSaveFile file(path());
        return file.open(QIODevice::WriteOnly) && file.write(written.join(u'\f').toUtf8()) >= 0 &&
               file.commit();
    }

    void storeOrTell() {
        if (!store())
            ZMessageDlg(u"Заметки"_s, u"Не сохранено"_s, ZMessageDlg::Notice).exec();
    }

    QStringList notes_{QString()};
    qsizetype current_ = 0;
    QLabel counter_;
    QPlainTextEdit page_;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* notebook = new Notebook;
    auto* window = new OneView(u"Заметки"_s, notebook, u"Выход"_s);
    window->setLeftKey(u"Новая"_s, [notebook] { notebook->add(); });
    return window->run();
}
