#pragma once

#include "agreement.h"
#include "window_support.h"

struct ZPK_App;

/// A phone with a card, with applications of its own in its menu, and Quiver's window on it.
class Ops : public Ui {
protected:
    Ops();

    /// An application as a package leaves it. Its program makes the file "started" in its folder.
    void addGame(int location, const QByteArray& folder) const;

    /// What lies in that application's folder on the phone or on the card: four entries at first.
    Snapshot filesOf(const QByteArray& folder, int location) const;

    /// The record of the application in `folder`; null where there is none.
    static ZPK_App* appIn(const QByteArray& folder);

    /// Highlights its row and chooses `ids` in the options menu, while `steps` answer.
    void choose(const QByteArray& folder, const QList<int>& ids, const QList<Dialogs::Step>& steps);

    /// All that is known of the applications agrees, now and after a new discovery.
    void expectAgreement();
};

/// Steps of `Dialogs`: a confirmation with that text, answered with yes or no; the notices of a
/// success, a failure and a long operation.
Dialogs::Step yes(const QString& text);
Dialogs::Step no(const QString& text);
Dialogs::Step okNotice();
Dialogs::Step errorNotice(const QString& part);
Dialogs::Step pleaseWait();

/// A script that stands before the system's command of that name while it lives.
class FakeCommand {
public:
    FakeCommand(const Phone& phone, const QByteArray& name, const QByteArray& script);
    ~FakeCommand();

private:
    QByteArray m_path;
};
