#include "RES_ICON_Reader.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmapCache>

static void initIcons() {
    Q_INIT_RESOURCE(icons);
}

QPixmap RES_ICON_Reader::getIcon(const QString& name, int size) const {
    initIcons();
    const int pixels = scaled(size);
    const QString key = QString("%1 %2").arg(name).arg(pixels);
    QPixmap icon;
    if (QPixmapCache::find(key, &icon))
        return icon;
    const QString picture = ":/icons/" + QFileInfo(name).completeBaseName() + ".svg";
    if (!QFile::exists(picture))
        return QPixmap();
    icon = QIcon(picture).pixmap(QSize(pixels, pixels), qGuiApp->devicePixelRatio());
    QPixmapCache::insert(key, icon);
    return icon;
}
