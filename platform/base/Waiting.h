#pragma once

#include <QtGlobal>

#include <functional>

class QObject;

/// From now on the program has a screen, which goes on while it waits for work. `takesInput` tells
/// whether there is something on it then that keys and touches are for; otherwise they wait.
void setWaitingScreen(bool (*takesInput)());

/// Runs `work`, which blocks, beside the event loop and gives its result: meanwhile the screen is
/// painted and moves. A program without a screen just runs `work`.
int runBeside(const std::function<int()>& work);

/// Starts `work` on another thread and returns; `then` is called on this one when it has ended,
/// unless `receiver` is gone by then. The program waits for it at its end.
void startBeside(const std::function<void()>& work, QObject* receiver,
                 const std::function<void()>& then);

/// True while work of `runBeside` runs.
bool isWorking();

/// Work that the user may cancel, while the object lives. One inside another changes nothing: the
/// outer one holds.
class WorkCancel {
public:
    enum When {
        AtOnce,   ///< its running command is ended
        AfterPart ///< whoever does the work looks at `isRequested` between its parts
    };

    explicit WorkCancel(When when);
    ~WorkCancel();
    Q_DISABLE_COPY_MOVE(WorkCancel)

    bool isRequested() const { return m_isRequested; }

    /// True where the running command is to be ended.
    bool endsCommands() const { return m_isRequested && m_when == AtOnce; }

    void request() { m_isRequested = true; }

    /// From here on the work cannot be cancelled any more. True where it has been.
    bool end();

private:
    When m_when;
    bool m_isRequested = false;
    bool m_isOuter;
};

/// True while work runs that can be cancelled, and was not.
bool canCancelWork();

/// Cancels the work, where it can be.
void cancelWork();

/// True from `cancelWork` until the work has seen to it.
bool isCancellingWork();

/// How much the commands of the work are going to read or write. While the object lives, the work's
/// progress is told by it; a later object takes the place of an earlier one.
class WorkGoal {
public:
    enum Direction { Reads, Writes };

    WorkGoal(Direction direction, qint64 bytes);
    ~WorkGoal();
    Q_DISABLE_COPY_MOVE(WorkGoal)

    Direction direction() const { return m_direction; }

    qint64 bytes() const { return m_bytes; }

private:
    Direction m_direction;
    qint64 m_bytes;
};

/// Which part of how many equal ones the work has come to, counted from 1. It holds while the
/// object lives.
class WorkPart {
public:
    WorkPart(int number, int total);
    ~WorkPart();
    Q_DISABLE_COPY_MOVE(WorkPart)

    int number() const { return m_number; }

    int total() const { return m_total; }

private:
    int m_number;
    int m_total;
};

struct WorkProgress {
    double fraction = -1; ///< from 0 to 1; negative where it cannot be told
    int number = 0;
    int total = 0; ///< parts; 0 where the work has none
};

/// How far the work is. What its commands have read or written so far is asked of the system
/// (/proc/PID/io), so the commands need not know.
WorkProgress workProgress();
