#pragma once
// Runs the start or stop dialog modally and answers its result: the exit code of the
// service's executable, 0 when the dialog could not start its worker, -1 when the worker did
// not end in time. Tests script the results; the running program shows CStartSvcDlg.

class IServiceDialogRunner {
public:
    virtual int RunServiceDialog(bool start) = 0;

    virtual ~IServiceDialogRunner() = default;

protected:
    IServiceDialogRunner() = default;
    IServiceDialogRunner(const IServiceDialogRunner&) = default;
    IServiceDialogRunner& operator=(const IServiceDialogRunner&) = default;
};
