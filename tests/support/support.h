#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <tuple>

#include <sys/types.h>

class QWidget;
class ZPopup;

/// GoogleTest finds these and prints texts readably.
void PrintTo(const QByteArray& bytes, std::ostream* stream);
void PrintTo(const QString& text, std::ostream* stream);

/// Rows of input and expectation: for (const auto& [input, expected] : Rows<A, B>{...})
template<typename... Columns>
using Rows = std::initializer_list<std::tuple<Columns...>>;

void writeFile(const QByteArray& path, const QByteArray& content);
QByteArray readFile(const QByteArray& path);
bool exists(const QByteArray& path);
mode_t modeOf(const QByteArray& path);

/// Every source file below src/ and platform/, one behind the other.
QByteArray allSources();

/// A phone in a temporary folder: QUIVER_ROOT names it. At the beginning and at the end all
/// program-wide settings have their first values.
class Phone {
public:
    Phone();
    ~Phone();
    Phone(const Phone&) = delete;
    Phone& operator=(const Phone&) = delete;

    /// The machine's path of a phone path.
    QByteArray host(const QByteArray& path = QByteArray()) const { return m_root + path; }

    /// A folder with its parents, and a file with its parents.
    void makeFolder(const QByteArray& path) const;
    void makeFile(const QByteArray& path, const QByteArray& content) const;

private:
    QByteArray m_root;
};

/// Takes the rights of the superuser away while it lives.
class Unprivileged {
public:
    Unprivileged();
    ~Unprivileged();

private:
    bool m_wasSuperuser;
};

/// What `action`, and the commands that it runs, write to standard output.
QByteArray outputOf(const std::function<void()>& action);

/// Answers the dialogs that come up while it lives, each with the next step. A dialog too many is
/// sent away and fails the test; so does one too few.
class Dialogs {
public:
    using Step = std::function<void(ZPopup&)>;

    explicit Dialogs(const QList<Step>& steps);
    ~Dialogs();

private:
    void answer();

    QList<Step> m_steps;
    QTimer m_timer;
};

/// A key as it comes from the keyboard, to whatever has the focus.
void press(int key);
void touch(const QWidget& widget);

/// The step that presses `key`.
Dialogs::Step pressing(int key);

/// The text of a dialog, as it was given.
QString messageOf(const ZPopup& popup);
