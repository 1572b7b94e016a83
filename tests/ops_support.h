#pragma once

#include "ops_agreement.h"
#include "ui_support.h"

struct ZPK_App;

/// A phone with a card, with applications of its own in its menu, and Quiver's window on it.
class Ops : public Ui {
protected:
    Ops();

    /// An application with everything that a package brings; its program leaves the file
    /// "started" in its folder.
    void addGame(int location, const QByteArray& folder) const;

    /// What lies in the folder of the application, which may be on the phone or on the card.
    Snapshot filesOf(const QByteArray& folder, int location) const;

    /// The record of the application in `folder`; null where there is none.
    static ZPK_App* appIn(const QByteArray& folder);

    /// Highlights its row and chooses `ids` in the options menu, while `steps` answer.
    void choose(const QByteArray& folder, const QList<int>& ids, const QList<Dialogs::Step>& steps);

    /// Enters the multi-select mode and checks the rows of that number.
    void check(const QList<int>& rows);

    /// Everything that is known of the applications agrees, now and after a new discovery.
    void expectAgreement();
};

/// Steps of `Dialogs`: a dialog of that title key and text, answered with yes or an
/// acknowledgement, or with no; the notice of a long operation.
Dialogs::Step yes(const QByteArray& titleKey, const QString& text);
Dialogs::Step no(const QByteArray& titleKey, const QString& text);
Dialogs::Step okNotice();
Dialogs::Step errorNotice(const QString& part);
Dialogs::Step pleaseWait();

/// Stands before the system's command of that name while it lives.
class FakeCommand {
public:
    FakeCommand(const Phone& phone, const QByteArray& name, const QByteArray& script);
    ~FakeCommand();

private:
    QByteArray m_path;
};
