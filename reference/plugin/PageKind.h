#pragma once
// The pages that the plug-in makes, by the index of the page record that the host hands back
// for each: the three pages of the main window and the two of the first-run wizard. The other
// record indices describe nothing that this plug-in shows.

#include "mainwindow/PluginContract.h"

#include <cstdint>
#include <string_view>

enum class PageKind : std::int32_t {
    None = 0,
    AddressList = 1,
    Settings = 2,
    Status = 3,
    Welcome = 4,
    WizardOptions = 5,
};

inline PageKind PageKindOfIndex(std::int32_t index) {
    switch (index) {
    case PluginPageIndex::AddressList:
        return PageKind::AddressList;
    case PluginPageIndex::Settings:
        return PageKind::Settings;
    case PluginPageIndex::Status:
        return PageKind::Status;
    case PluginPageIndex::WizardFirst:
        return PageKind::Welcome;
    case PluginPageIndex::WizardSecond:
        return PageKind::WizardOptions;
    default:
        return PageKind::None;
    }
}

// The word by which the journal names a page.
inline std::string_view PageKindName(PageKind kind) {
    switch (kind) {
    case PageKind::AddressList:
        return "AddressList";
    case PageKind::Settings:
        return "Settings";
    case PageKind::Status:
        return "Status";
    case PageKind::Welcome:
        return "Welcome";
    case PageKind::WizardOptions:
        return "WizardOptions";
    case PageKind::None:
        break;
    }
    return "None";
}

// Pages that live in the main window's page area, as opposed to the wizard's.
inline bool IsMainWindowPage(PageKind kind) {
    return kind == PageKind::AddressList || kind == PageKind::Settings || kind == PageKind::Status;
}
