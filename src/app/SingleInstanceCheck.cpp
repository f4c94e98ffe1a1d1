#include "app/SingleInstanceCheck.h"

#include "app/ActivationRequest.h"
#include "app/SharedConstants.h"
#include "foundation/Trace.h"
#include "toolkit/ResourceStore.h"

#include "StringTable.h"

#include <QtGlobal>

SingleInstanceCheck::SingleInstanceCheck(QString socketPath)
    : m_socketPath(std::move(socketPath)) {}

QString SingleInstanceCheck::MainWindowTitle() {
    const char16_t* title = QGResources::FindEnglishString(MainWindowTitleId);
    return title == nullptr ? QString() : QString::fromUtf16(title);
}

bool SingleInstanceCheck::Check(std::unique_ptr<Corvane::Mutex>& mutex) {
    // No prefix: the name is the same in every session of every user.
    const stdstr name = stdstr() + SharedConstants::InstanceName;
    const std::string narrowName = stdstr::fromUNICODE(name, 0);
    mutex = std::make_unique<Corvane::Mutex>(narrowName.c_str());
    // Every user's copy may open it; the result changes nothing here.
    mutex->clearDacl();
    if (mutex->lastError() != Corvane::ErrorAlreadyExists)
        return true;

    ResourceStore::PlaySound(AlreadyRunningSound);
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    if (ActivationRequest::AskFirstCopy(MainWindowTitle(), token, m_socketPath) !=
        ActivationRequest::Answer::Shown)
        TraceMsg(TRACE_DEBUG, NoWindowTrace);
    return false;
}
