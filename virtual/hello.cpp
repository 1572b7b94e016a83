// A list of 200 rows and nothing else, for comparing: what every Qt program costs on the phone.
#include <QApplication>
#include <QListWidget>
#include <QVBoxLayout>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    auto* list = new QListWidget;
    (new QVBoxLayout(&window))->addWidget(list);
    for (int row = 0; row < 200; ++row)
        list->addItem(QString("Application %1").arg(row));
    window.showFullScreen();
    return QApplication::exec();
}
