#include "output.h"

#include "Bytes.h"
#include "TerminalDialog.h"
#include "options.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include <fcntl.h>
#include <unistd.h>

namespace {

FILE* results = stdout;
QJsonArray outcomes;
bool anyFailed = false;

bool isColoured() {
    return isatty(fileno(results)) && qEnvironmentVariableIsEmpty("NO_COLOR");
}

QString bold(const QString& text) {
    return isColoured() ? "\033[1m" + text + "\033[0m" : text;
}

void write(const QByteArray& bytes) {
    fwrite(bytes.constData(), 1, bytes.size(), results);
}

/// A cell of a table: what would end it early stands for itself no more.
QString cell(QString text) {
    return printable(text.replace('\n', ' ').replace('\t', ' '));
}

/// Columns of a terminal that `text` takes.
int widthOf(const QString& text) {
    static const bool knowsCharacters = setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
    int width = 0;
    for (const char32_t c : text.toUcs4())
        width += knowsCharacters ? qMax(wcwidth(wchar_t(c)), 0) : 1;
    return width;
}

QString aligned(const QStringList& row, const QList<int>& widths) {
    QString line;
    for (qsizetype i = 0; i < row.size(); ++i) {
        line += row.at(i);
        if (i + 1 < row.size())
            line += QString(widths.at(i) - widthOf(row.at(i)) + 2, ' ');
    }
    return line;
}

void printAligned(const QStringList& headings, const QList<QStringList>& rows) {
    QList<int> widths(headings.size());
    for (const QStringList& row : QList<QStringList>{headings} + rows) {
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths.at(i), widthOf(row.at(i)));
    }
    write(toBytes(bold(aligned(headings, widths)) + '\n'));
    for (const QStringList& row : rows)
        write(toBytes(aligned(row, widths) + '\n'));
}

QJsonObject outcome(const QString& subject, bool isDone) {
    QJsonObject object;
    put(object, "subject", subject);
    object["done"] = isDone;
    return object;
}

} // namespace

void keepOutputForResults() {
    results = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1), "w");
    const int other = Option::verbose ? fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0)
                                      : open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (!results || other < 0)
        exit(1);
    dup2(other, STDOUT_FILENO);
    close(other);
}

int closeResults(int status) {
    if (fflush(results) == 0 && !ferror(results))
        return status;
    tell("not all could be written to the standard output");
    return 1;
}

void printResult(const QString& text) {
    if (!Option::json)
        write(toBytes(printable(text) + '\n'));
}

void printDone(const QString& text) {
    if (!Option::quiet)
        printResult(text);
}

void printDocument(const QJsonObject& document) {
    write(QJsonDocument(document).toJson());
}

void printTable(const QStringList& headings, const QList<QStringList>& rows) {
    QList<QStringList> cells;
    for (const QStringList& row : rows) {
        QStringList& line = cells.emplaceBack();
        for (const QString& text : row)
            line.append(cell(text));
    }
    if (isatty(fileno(results)))
        return printAligned(headings, cells);
    for (const QStringList& row : cells)
        write(toBytes(row.join('\t') + '\n'));
}

void printFacts(const QList<std::pair<QString, QString>>& facts) {
    int width = 0;
    for (const auto& [name, value] : facts)
        width = qMax(width, int(name.size()));
    for (const auto& [name, value] : facts) {
        if (!value.isEmpty())
            write(toBytes(bold(name + ':') + QString(width - name.size() + 1, ' ') + cell(value) +
                          '\n'));
    }
}

void tell(const QString& text) {
    fflush(results);
    fputs(toBytes(QString("quiver: %1\n").arg(printable(text))).constData(), stderr);
}

void remark(const QString& text) {
    if (!Option::quiet)
        tell(text);
}

int misuse(const QString& text) {
    tell(text);
    return 2;
}

void succeed(const QString& subject, const QString& text) {
    outcomes.append(outcome(subject, true));
    printDone(text);
}

void fail(const QString& subject, const QString& reason) {
    QJsonObject object = outcome(subject, false);
    put(object, "reason", reason);
    outcomes.append(object);
    anyFailed = true;
    tell(subject.isEmpty() ? reason : subject + ": " + reason);
}

bool hasFailed() {
    return anyFailed;
}

int finish() {
    if (Option::json)
        printDocument({{"results", outcomes}});
    return anyFailed ? 1 : 0;
}

void put(QJsonObject& object, const QString& key, const QString& text) {
    if (text.isValidUtf16()) {
        object[key] = text;
        return;
    }
    object[key] = QString::fromUtf8(toBytes(text));
    object[key + "_base64"] = QString::fromLatin1(toBytes(text).toBase64());
}

bool showsProgress() {
    return isatty(STDERR_FILENO) && !Option::quiet;
}

QString listed(const QStringList& texts) {
    if (texts.size() < 2)
        return texts.join(QString());
    return texts.mid(0, texts.size() - 1).join(", ") + " and " + texts.last();
}

QString counted(int count, const QString& noun) {
    return QString("%1 %2%3").arg(QString::number(count), noun, count == 1 ? "" : "s");
}

QString sizeWords(qint64 bytes) {
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}
