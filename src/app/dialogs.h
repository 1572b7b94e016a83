#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

/// How the program speaks with its user. It calls these functions; the window and the terminal, or
/// whoever else carries it, define them. A dialog is shown and answered within the call.

/// Where `iconName` is not empty, that icon of the platform stands in the title bar.

/// A yes/no question; true only for yes.
bool askYesNo(const QString& title, const QString& text, const QString& iconName = QString());

/// What a question is about.
struct Details {
    QByteArray icon; ///< the file of a picture; empty for none
    QString heading;
    QString subheading;
    QList<std::pair<QString, QString>> facts; ///< each with its name
};

/// As `askYesNo`, with the details shown under the text.
bool askAbout(const QString& title, const QString& text, const Details& details,
              const QString& iconName);

/// A notice to be acknowledged.
void showNotice(const QString& title, const QString& text, const QString& iconName = QString());

/// A notice of a failure. Where `text` is what a command printed, it opens at the line that tells
/// the error.
void showFailure(const QString& title, const QString& text);

struct Choice {
    QString text;
    QString iconName;
    QString secondText = {};
};

/// A list of which one entry is chosen: its index, or none when the user cancels.
std::optional<int> chooseOne(const QString& title, const QString& text,
                             const QList<Choice>& choices, const QString& iconName = QString());

/// A line of text of at most `bytes` of UTF-8, preset with `preset` and all of it selected: what
/// was typed, or none when the user cancels.
std::optional<QString> askText(const QString& title, const QString& text, const QString& preset,
                               int bytes);

/// Shows that work goes on, under the title `title`, until `hideWorking`.
void showWorking(const QString& title);
void hideWorking();
