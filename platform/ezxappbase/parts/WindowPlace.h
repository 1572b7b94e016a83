#pragma once

#include <QString>

class QWidget;

/// The file of the machine's user that keeps where the window of `program` was. Empty where the
/// window has no place of its own choice: without a desktop, or where QUIVER_PLACE says the place.
QString placeFile(const QString& program);

/// Gives `window` the place and size that `file` keeps, as far as the desktop still has room there.
void restorePlace(QWidget& window, const QString& file);

void keepPlace(const QWidget& window, const QString& file);

/// The program shares its display with others, who can make its window larger and smaller.
bool isOnDesktop();
