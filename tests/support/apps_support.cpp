#include "apps_support.h"

#include "Bytes.h"
#include "ZListBox.h"
#include "ZPopup.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "paths.h"

#include <sys/stat.h>

namespace {

void makeScript(const Phone& phone, const QByteArray& path, const QByteArray& script) {
    phone.makeFile(path, "#!/bin/sh\n" + script + '\n');
    chmod(phone.host(path).constData(), 0755);
}

Dialogs::Step answering(int key, const QString& title, const QString& text) {
    return [=](ZPopup& popup) {
        EXPECT_EQ(popup.title(), title);
        EXPECT_EQ(messageOf(popup), text);
        press(key);
    };
}

} // namespace

Ops::Ops() {
    menuChanged = false;
    insertCard();
    const QByteArray calculator = "11111111-2222-3333-4444-555555555555";
    phone.makeFile(Path::installedDb.toUtf8(), '[' + calculator + "]\nName = Calculator\n");
    phone.makeFile(Path::userMenuTree.toUtf8(),
                   "[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]\nItems = " + calculator + ";\n");
}

void Ops::addGame(int location, const QByteArray& folder) const {
    const QByteArray path = appsFolder(location).toUtf8() + '/' + folder;
    phone.makeFile(path + '/' + folder + ".cfg",
                   "Name = " + folder + "\nAuthor = Ann & Co\nExec = run.sh\nIcon = icon.png\n");
    makeScript(phone, path + "/run.sh", ": > \"${0%/*}/started\"");
    phone.makeFile(path + "/levels/1", "level " + folder);
}

Snapshot Ops::filesOf(const QByteArray& folder, int location) const {
    return snapshot(phone.host(appsFolder(location).toUtf8() + '/' + folder));
}

ZPK_App* Ops::appIn(const QByteArray& folder) {
    for (const auto& [key, app] : AppMap) {
        if (app->path.endsWith('/' + fromBytes(folder)))
            return app.get();
    }
    return nullptr;
}

void Ops::choose(const QByteArray& folder, const QList<int>& ids,
                 const QList<Dialogs::Step>& steps) {
    int row = 0;
    while (row < apps().count() && window->getApp(row) != appIn(folder))
        ++row;
    ASSERT_LT(row, apps().count()) << "not in the list: " << folder.constData();
    apps().setCurrentItem(row);
    const Dialogs dialogs(steps);
    chooseInMenu(ids);
}

void Ops::expectAgreement() {
    for (const char* when : {"at once", "after a discovery"}) {
        EXPECT_EQ(disagreements() + leftovers(), QStringList()) << when;
        QStringList visible;
        for (int row = 0; window->getApp(row); ++row)
            visible.append(window->getApp(row)->name);
        EXPECT_EQ(names(apps()), visible) << when;
        window->refreshList(true);
    }
}

Dialogs::Step yes(const QString& text) {
    return answering(Qt::Key_F1, tr("POP_CONFIRM_TITLE"), text);
}

Dialogs::Step no(const QString& text) {
    return answering(Qt::Key_F2, tr("POP_CONFIRM_TITLE"), text);
}

Dialogs::Step okNotice() {
    return answering(Qt::Key_F1, tr("POP_OK_TITLE"), tr("POP_OK_TEXT"));
}

Dialogs::Step errorNotice(const QString& part) {
    return [part](ZPopup& popup) {
        EXPECT_EQ(popup.title(), tr("POP_ERROR_TITLE"));
        EXPECT_TRUE(messageOf(popup).contains(part)) << qPrintable(messageOf(popup));
        press(Qt::Key_F1);
    };
}

Dialogs::Step pleaseWait() {
    return [](ZPopup& popup) {
        EXPECT_EQ(messageOf(popup), tr("POP_PLEASEWAIT"));
        popup.done(0);
    };
}

FakeCommand::FakeCommand(const Phone& phone, const QByteArray& name, const QByteArray& script)
    : m_path(qgetenv("PATH")) {
    makeScript(phone, "/fake/" + name, script);
    qputenv("PATH", phone.host("/fake:") + m_path);
}

FakeCommand::~FakeCommand() {
    qputenv("PATH", m_path);
}
