#pragma once

#include <QStringList>

/// Dialogs on the terminal, for a program that has no display. Questions are written to standard
/// error, since standard output belongs to the program; answers are read from standard input.

/// `text` with the control characters replaced, apart from line ends and tabs: names and what
/// commands print are foreign, and a terminal would obey them.
QString printable(QString text);

/// True for yes. The end of the input means no; any other answer is asked again.
bool askOnTerminal(const QString& title, const QString& text);

/// The chosen item, counted from 0; -1 where the input ends or an empty line cancels.
int chooseOnTerminal(const QString& title, const QString& text, const QStringList& items);

void tellOnTerminal(const QString& title, const QString& text);
