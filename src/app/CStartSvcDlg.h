#pragma once
// The service start dialog (true) and stop dialog (false): the same dialog with string 256
// and "-Start", or string 260 and "-Stop". See StartSvcDlgBase.

#include "app/StartSvcDlgBase.h"
#include "resource.h"

template <bool bStart>
class CStartSvcDlg : public StartSvcDlgBase {
public:
    static constexpr std::uint32_t TextStringId =
        bStart ? IDS_SERVICE_STARTING : IDS_SERVICE_STOPPING;
    static constexpr const char16_t* Word =
        bStart ? StartServiceWorker::StartWord : StartServiceWorker::StopWord;

    explicit CStartSvcDlg(Setup setup) : StartSvcDlgBase(bStart, TextStringId, std::move(setup)) {}
};
