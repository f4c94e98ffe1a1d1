#pragma once
// Runs the real start or stop dialog (CStartSvcDlg) modally, owned by the active window, as
// supervision asks for it.

#include "app/IServiceDialogRunner.h"
#include "app/StartSvcDlgBase.h"

class StartSvcDlgRunner : public IServiceDialogRunner {
public:
    explicit StartSvcDlgRunner(StartSvcDlgBase::Setup setup);

    int RunServiceDialog(bool start) override;

private:
    StartSvcDlgBase::Setup m_setup;
};
