// A list of 200 rows and nothing else, for comparing: what every Qt program costs on the phone.
#include <QApplication>
#include <QListWidget>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QListWidget list;
    for (int row = 0; row < 200; ++row)
        list.addItem(QString("Application %1").arg(row));
    list.showFullScreen();
    return QApplication::exec();
}
