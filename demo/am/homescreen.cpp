#include "homescreen.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "PictureFile.h"
#include "ZListBox.h"
#include "ZMessageDlg.h"
#include "ZSoftKey.h"

#include <QKeyEvent>
#include <QProcess>
#include <QVBoxLayout>

#include <cstdio>

namespace {

constexpr int listSkin = 40;
const QString folderPicture = "fm_folder_thb.bmp";
const QString unknownPicture = "yes_no_pop.bmp";

void say(const QString& text) {
    printf("am: %s\n", toBytes(text).constData());
    fflush(stdout);
}

/// The program of `app` and its arguments.
QStringList commandOf(const AM_AppObject& app) {
    QStringList command = QProcess::splitCommand(app.exec());
    if (!command.isEmpty() && !app.directory().isEmpty())
        command.first().prepend(app.directory() + '/');
    return command;
}

} // namespace

HomeScreen::HomeScreen()
    : ZKbMainWidget(nullptr, nullptr, 0), m_list(new ZListBox("%I%M", this, listSkin)),
      m_softKey(new ZSoftKey("CST_2A", this, this)), m_levels{{PhoneMenu::root}} {
    m_list->setEmptyNotice(m_icons.getIcon(folderPicture, Measure::noticeIcon),
                           "This folder is empty", "Nothing has been put here yet.", 0);
    getVBoxLayout()->addWidget(m_list);
    m_softKey->setClickedSlot([this] { back(); });
    setSoftKey(m_softKey);
    setFocusProxy(m_list);
    connect(m_softKey, &ZSoftKey::leftChosen, this, &HomeScreen::chooseCurrent);
    connect(m_list, &ZListBox::selected, this, &HomeScreen::choose);
    showFolder();
}

QPixmap HomeScreen::icon(const QString& wanted, const QString& otherwise, int size) const {
    const QPixmap picture = wanted.startsWith('/') ? loadPicture(hostPath(wanted), scaled(size))
                                                   : m_icons.getIcon(wanted, size);
    return picture.isNull() ? m_icons.getIcon(otherwise, size) : picture;
}

void HomeScreen::showFolder() {
    const QString folder = m_levels.last().folder;
    const QString name = m_menu.folderName(folder);
    setMainWidgetTitle(name);
    setWindowTitle("Phone"); // whatever is open in it
    setTitleIcon(icon(m_menu.folderIcon(folder), folderPicture, Measure::titleIcon));
    m_list->setAccessibleName(name);
    m_list->clear();
    m_entries = m_menu.entries(folder);
    for (const MenuEntry& entry : std::as_const(m_entries)) {
        auto* item = new ZListBoxItem(m_list);
        const QString otherwise = entry.app ? unknownPicture : folderPicture;
        item->setPixmap(m_list->iconColumn(), icon(entry.icon, otherwise, Measure::rowIcon));
        item->appendSubItem(m_list->textColumn(), {entry.name});
        if (!entry.detail.isEmpty())
            item->appendSubItem(m_list->textColumn(), {QString(), entry.detail});
        m_list->insertItem(item, -1);
        say(name + " > " + entry.name);
    }
    if (m_entries.isEmpty())
        say(name + " > (empty)");
    m_list->setCurrentItem(m_levels.last().row);
    m_softKey->setText(ZSoftKey::Left, m_entries.isEmpty() ? QString() : "Open");
    m_softKey->setText(ZSoftKey::Right, m_levels.size() > 1 ? "Back" : QString());
}

void HomeScreen::choose(int row) {
    const MenuEntry& entry = m_entries.at(row);
    if (entry.app)
        return launch(*entry.app);
    m_levels.last().row = row;
    m_levels.append({entry.folder});
    showFolder();
}

void HomeScreen::chooseCurrent() {
    if (m_list->currentItem() >= 0)
        choose(m_list->currentItem());
}

void HomeScreen::back() {
    if (m_levels.size() == 1)
        return;
    m_levels.removeLast();
    showFolder();
}

void HomeScreen::launch(const AM_AppObject& app) {
    const QStringList command = commandOf(app);
    if (!command.isEmpty() && QProcess::startDetached(hostPath(command.first()), command.mid(1)))
        return;
    say(app.name() + " cannot be started");
    ZMessageDlg notice(app.name(), "This application cannot be started.", ZMessageDlg::Notice);
    notice.setTitleIcon(m_icons.getIcon("error_pop.bmp", Measure::titleIcon));
    notice.exec();
}

void HomeScreen::keyPressEvent(QKeyEvent* event) {
    if (event->isAutoRepeat())
        return;
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Backspace:
        return back();
    default:
        ZKbMainWidget::keyPressEvent(event);
    }
}
