#include "toolkit/CDibRadioButtonCtrl.h"

#include "toolkit/CDibButtonCtrl.h"

CDibRadioButtonCtrl::~CDibRadioButtonCtrl() = default;

void CDibRadioButtonCtrl::AddButton(CDibButtonCtrl* button) {
    if (button == nullptr)
        return;
    m_buttons.emplace_back(button);
    button->SetLatched(true);
}

void CDibRadioButtonCtrl::SelectButton(CDibButtonCtrl* button) {
    for (const QPointer<CDibButtonCtrl>& member : m_buttons) {
        if (member.isNull())
            continue;
        if (member.data() == button) {
            if (member->GetCheckState())
                return;
            member->SetCheckState(true);
        } else {
            member->SetCheckState(false);
        }
    }
}
