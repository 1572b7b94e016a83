#include "RES_ICON_Reader.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>

static void initIcons() {
    Q_INIT_RESOURCE(icons);
}

QPixmap RES_ICON_Reader::getIcon(const QString& name, int size) const {
    initIcons();
    const QString picture = ":/icons/" + QFileInfo(name).completeBaseName() + ".svg";
    if (!QFile::exists(picture))
        return QPixmap();
    const int pixels = scaled(size);
    return QIcon(picture).pixmap(QSize(pixels, pixels), qGuiApp->devicePixelRatio());
}
