#pragma once
// A group of bitmap buttons of which one at a time stays down, like the main window's
// navigation. The buttons belong to their dialog; a button that is destroyed simply drops
// out of the group.

#include <QPointer>

#include <vector>

class CDibButtonCtrl;

class CDibRadioButtonCtrl {
public:
    CDibRadioButtonCtrl() = default;
    CDibRadioButtonCtrl(const CDibRadioButtonCtrl&) = delete;
    CDibRadioButtonCtrl& operator=(const CDibRadioButtonCtrl&) = delete;
    virtual ~CDibRadioButtonCtrl();

    // Appends the button and latches it, so that it ignores input while it is selected.
    // Null is ignored.
    void AddButton(CDibButtonCtrl* button);
    // Checks the button and unchecks the others, in the order they were added. The walk
    // stops at a button that is already checked, so the buttons after it are left alone.
    void SelectButton(CDibButtonCtrl* button);

    std::size_t Count() const { return m_buttons.size(); }

private:
    std::vector<QPointer<CDibButtonCtrl>> m_buttons;
};
