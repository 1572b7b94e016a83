#include "ZListBox.h"
#include "dialogs.h"
#include "language.h"
#include "zBaseGUI.h"

#include <QApplication>

#include <cstdio>

void zBaseGUI::quit() {
    puts("DEBUG:: SoftKey Quit");
    if (m_multiSelect) {
        mainOptM_MultiSelect();
        return;
    }
    qApp->quit();
}

void zBaseGUI::app_selected(int) {}

void zBaseGUI::mainOptM_Move() {}

void zBaseGUI::mainOptM_Rename() {}

void zBaseGUI::mainOptM_Delete() {}

void zBaseGUI::mainOptMMS_Move() {}

void zBaseGUI::mainOptMMS_Delete() {}

void zBaseGUI::mainOptMMS_SelectAll() {}

void zBaseGUI::mainOptMMS_UnselectAll() {}

void zBaseGUI::mainOptM_Properties() {}

void zBaseGUI::mainOptM_RegisterAppMenu() {}

void zBaseGUI::mainSubOptM_SaveAs_PH() {}

void zBaseGUI::mainSubOptM_SaveAs_SD() {}

void zBaseGUI::mainSubOptM_SaveAs_FM() {}

void zBaseGUI::OptM_About() {}

void zBaseGUI::cmd_Move(ZPK_App*, int) {}

void zBaseGUI::cmd_MultiMove() {}

void zBaseGUI::cmd_Delete(ZPK_App*) {}

void zBaseGUI::cmd_MultiDelete() {}

void zBaseGUI::cmd_SaveAs(ZPK_App*, SAVE_LOCATION) {}
