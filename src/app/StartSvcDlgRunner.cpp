#include "app/StartSvcDlgRunner.h"

#include "app/CStartSvcDlg.h"

#include <QApplication>

StartSvcDlgRunner::StartSvcDlgRunner(StartSvcDlgBase::Setup setup) : m_setup(std::move(setup)) {}

int StartSvcDlgRunner::RunServiceDialog(bool start) {
    QWidget* owner = QApplication::activeWindow();
    if (start) {
        CStartSvcDlg<true> dialog(m_setup);
        return dialog.DoModal(owner, 0);
    }
    CStartSvcDlg<false> dialog(m_setup);
    return dialog.DoModal(owner, 0);
}
