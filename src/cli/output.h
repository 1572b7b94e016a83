#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

/// What a command tells. Results go to standard output; messages go to standard error.

/// Keeps standard output for results: what the core and its commands print there goes to standard
/// error from now on, where it is asked for, and nowhere otherwise.
void keepOutputForResults();

/// Sends the last results on their way. Gives `status`, or 1 where not all of them got out.
int closeResults(int status);

/// Writes `text`, a line, to standard output. Nothing with `--json`, where the document is all.
void printResult(const QString& text);

/// As `printResult` for what only tells that something was done; nothing with `--quiet`.
void printDone(const QString& text);

void printDocument(const QJsonObject& document);

/// Rows under their headings. On a terminal the columns are aligned; elsewhere they are separated
/// by tabs, without headings.
void printTable(const QStringList& headings, const QList<QStringList>& rows);

/// Names with their values, one to a line. Pairs without a value are left out.
void printFacts(const QList<std::pair<QString, QString>>& facts);

/// A message: "quiver: TEXT".
void tell(const QString& text);

/// As `tell`, for what nobody needs to know with `--quiet`.
void remark(const QString& text);

/// Tells that the command line was wrong. Gives the exit status for that.
int misuse(const QString& text);

/// Something was done to `subject`, or was not, for `reason`. Both are remembered for `finish`.
void succeed(const QString& subject, const QString& text);
void fail(const QString& subject, const QString& reason);

/// True where something was not done.
bool hasFailed();

/// Ends a command that did something: with `--json` prints the document that tells what was done.
/// Gives the exit status.
int finish();

/// Puts text into a document. Where it is not all UTF-8, the exact bytes stand beside it, in
/// base64, under the key with "_base64" behind it.
void put(QJsonObject& object, const QString& key, const QString& text);

/// Standard error is a terminal, and nothing asks it to be silent.
bool showsProgress();

/// As the parts of a sentence are listed: "a, b and c".
QString listed(const QStringList& texts);

/// "1 application", "2 applications"
QString counted(int count, const QString& noun);

/// "812 bytes", "4.0 MB"
QString sizeWords(qint64 bytes);
