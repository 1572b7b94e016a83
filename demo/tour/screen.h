#pragma once

#include <QImage>
#include <QSet>
#include <QString>
#include <QStringList>

class ZListBox;

/// What there is to read on the screen: an open dialog, else an open menu, else the list in front.
/// A line begins with marks where it is more than text: ">" highlighted, "-" disabled, "[x]" and
/// "[ ]" a tick box, "(o)" and "( )" the answers of which one is chosen, "|" a text to be edited.
/// The texts of a row are joined by " / "; "*" at its end is the star.
struct Screen {
    QString title; ///< the dialog's; else the window's, with the label of the tab in front
    QStringList lines;
    QString left; ///< the soft keys
    QString right;

    bool operator==(const Screen&) const = default;
    QString text() const;
};

Screen readScreen();

/// The list of the tab in front.
ZListBox& listInFront();

QImage pictureOfScreen();

/// Colours in a part of the picture, which is given in logical pixels.
QSet<QRgb> coloursOf(const QImage& picture, const QRect& part);

/// What the picture lacks of the texts that are in front; nothing where it shows all of them.
QString unpainted(const QImage& picture);
