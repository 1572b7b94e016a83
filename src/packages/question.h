#pragma once

#include <QList>
#include <QString>

#include <optional>

struct Package;

/// What the user is asked before an installation.

/// A place that packages can go to.
struct Place {
    const char* key; ///< of its name
    const char* iconName;
    QString folder; ///< of the phone
};

/// The texts of a question, by their keys.
struct Question {
    const char* title;
    const char* text;
};

/// Why the package is not to be unpacked into `folder` (of the phone): what is against it, or that
/// it does not fit; empty where nothing is.
QString refusalText(const Package& package, const QString& folder);

/// Whether to install the package, with all that is known of it. One that there is an objection to
/// is refused.
bool askToInstall(const QString& title, const QString& text, const Package& package);

/// Which of the places the package is to go to: its folder; none where the user wants none, where
/// it does not fit or where it is refused there. `other` stands for a place that the list does not
/// have.
std::optional<QString> askPlace(const Question& question, const QList<Place>& places,
                                const Place& other, const Package& package);
