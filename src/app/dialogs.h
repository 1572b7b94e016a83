#pragma once

#include <QPixmap>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class ZPopup;

/// The dialogs of the program, each shown and answered within the call.

/// Where `iconName` is not empty, that icon of the platform stands in the title bar.

/// A yes/no question; true only for yes.
bool askYesNo(const QString& title, const QString& text, const QString& iconName = QString());

/// A notice to be acknowledged.
void showNotice(const QString& title, const QString& text, const QString& iconName = QString());

struct Choice {
    QString text;
    QString iconName;
};

/// A list of which one entry is chosen: its index, or none when the user cancels.
std::optional<int> chooseOne(const QString& title, const QString& text,
                             const QList<Choice>& choices, const QString& iconName = QString());

/// The notice shown while a long operation runs, hidden to begin with. `exec` puts it on the screen
/// until it has been painted, `show` keeps it there, `hide` takes it away.
std::unique_ptr<ZPopup> makePleaseWait();
