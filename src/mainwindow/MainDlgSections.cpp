#include "mainwindow/MainDlgSections.h"

#include "mainwindow/MainDlgLayout.h"

MainDlgSections::Section MainDlgSections::SectionFor(int controlId) {
    switch (controlId) {
    case MainDlgLayout::StatusButton:
        return {Action::ShowPage, 0};
    case MainDlgLayout::AddressListButton:
        return {Action::ShowPage, 1};
    case MainDlgLayout::SettingsButton:
        return {Action::ShowPage, 2};
    case MainDlgLayout::AboutButton:
        return {Action::About, -1};
    case MainDlgLayout::HiddenButton:
        return {Action::SelectOnly, -1};
    case MainDlgLayout::UpdateButton:
        return {Action::RunUpdate, -1};
    default:
        return {Action::Nothing, -1};
    }
}

MainDlgSections::Hint MainDlgSections::HintFor(int controlId) {
    switch (controlId) {
    case MainDlgLayout::StatusButton:
        return {HintAction::Show, 145};
    case MainDlgLayout::AddressListButton:
        return {HintAction::Show, 146};
    case MainDlgLayout::SettingsButton:
        return {HintAction::Show, 147};
    case MainDlgLayout::AboutButton:
        return {HintAction::Hide, 0};
    default:
        return {HintAction::Leave, 0};
    }
}
