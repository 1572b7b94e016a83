#include "RES_ICON_Reader.h"

#include "SvgPicture.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPixmapCache>
#include <QSvgRenderer>

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
    if (!QFileInfo::exists(picture))
        return QPixmap();
    QSvgRenderer renderer(picture);
    const qreal ratio = qGuiApp->devicePixelRatio();
    icon = QPixmap::fromImage(drawSvg(renderer, qRound(pixels * ratio)));
    icon.setDevicePixelRatio(ratio);
    QPixmapCache::insert(key, icon);
    return icon;
}
