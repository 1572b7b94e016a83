#include "ops_support.h"

#include "Bytes.h"
#include "ZListBox.h"
#include "ZPopup.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "paths.h"

#include <sys/stat.h>

Ops::Ops() {
    menuChanged = false;
    insertCard();
    phone.makeFile(Path::installedDb.toUtf8(), "# the phone's own\n[11111111-2222-3333-4444-"
                                               "555555555555]\nName = Calculator\nType = 5\n");
    phone.makeFile(Path::userMenuTree.toUtf8(), "[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]\n"
                                                "Items = 11111111-2222-3333-4444-555555555555;\n");
}

void Ops::addGame(int location, const QByteArray& folder) const {
    const QByteArray path = appsFolder(location).toUtf8() + '/' + folder;
    phone.makeFile(path + '/' + folder + ".cfg",
                   "Name = " + folder +
                       "\nAuthor = Ann & Co\nVersion = 1.0\nExec = run.sh\n"
                       "Icon = icon.png\nComment = A game\n");
    phone.makeFile(path + "/run.sh", "#!/bin/sh\n: > \"${0%/*}/started\"\n");
    chmod(phone.host(path + "/run.sh").constData(), 0755);
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

void Ops::check(const QList<int>& rows) {
    window->mainOptM_MultiSelect();
    for (const int row : rows)
        apps().item(row)->setChecked(true);
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

namespace {

Dialogs::Step answering(int key, const QByteArray& titleKey, const QString& text) {
    return [=](ZPopup& popup) {
        EXPECT_EQ(popup.title(), tr(titleKey.constData()));
        EXPECT_EQ(messageOf(popup), text);
        press(key);
    };
}

} // namespace

Dialogs::Step yes(const QByteArray& titleKey, const QString& text) {
    return answering(Qt::Key_F1, titleKey, text);
}

Dialogs::Step no(const QByteArray& titleKey, const QString& text) {
    return answering(Qt::Key_F2, titleKey, text);
}

Dialogs::Step okNotice() {
    return yes("POP_OK_TITLE", tr("POP_OK_TEXT"));
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
    phone.makeFile("/fake/" + name, "#!/bin/sh\n" + script + '\n');
    chmod(phone.host("/fake/" + name).constData(), 0755);
    qputenv("PATH", phone.host("/fake:") + m_path);
}

FakeCommand::~FakeCommand() {
    qputenv("PATH", m_path);
}
