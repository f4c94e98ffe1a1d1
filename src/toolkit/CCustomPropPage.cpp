#include "toolkit/CCustomPropPage.h"

#include "toolkit/CCustomTabCtrl.h"

void CCustomPropPage::SetModified(int modified) {
    m_modified = modified;
    if (CCustomTabCtrl* tabCtrl = TabCtrl())
        tabCtrl->SetValue(modified);
}

bool CCustomPropPage::OnApply() {
    ClearModified();
    return true;
}

bool CCustomPropPage::OnReset() {
    ClearModified();
    return true;
}

CCustomTabCtrl* CCustomPropPage::TabCtrl() const {
    return static_cast<CCustomTabCtrl*>(m_pTabCtrl.data());
}

void CCustomPropPage::SetTabCtrl(CCustomTabCtrl* tabCtrl) {
    m_pTabCtrl = tabCtrl;
}
