#include "StringTable.h"

#include "resource.h"

#include <algorithm>
#include <array>

namespace QGResources {
namespace {

// Wording is kept as shipped, doubled blanks and misspellings included: translators and
// existing language files match these sentences exactly.
constexpr std::array kEnglishStrings{
    // Loaded as it stands, without translation, to find the first copy's window by its
    // title: it must stay equal to the main window's title and so carries no marker.
    StringEntry{IDS_MAIN_WINDOW_TITLE, u"Quillgate"},
    StringEntry{IDS_PRODUCT_NAME, u"*Quillgate"},
    StringEntry{IDS_TOOLTIP_MINIMIZE, u"*Minimize"},
    StringEntry{IDS_TOOLTIP_MAXIMIZE, u"*Maximize"},
    StringEntry{IDS_SECTION_ADDRESS_LIST, u"*Address List"},
    StringEntry{IDS_SECTION_ADVANCED, u"*Advanced"},
    StringEntry{IDS_SECTION_SETTINGS, u"*Settings"},
    StringEntry{IDS_TOOLTIP_HELP, u"*Help and support"},
    StringEntry{IDS_LINK_HELP, u"*Help"},
    StringEntry{IDS_LINK_BRISK_UPDATE, u"*Brisk Update"},
    StringEntry{IDS_SECTION_STATUS, u"*Status"},
    StringEntry{IDS_SECTION_ABOUT, u"*About"},
    StringEntry{IDS_TOOLTIP_RESTORE, u"*Restore"},
    StringEntry{IDS_TOOLTIP_CLOSE, u"*Close"},
    StringEntry{IDS_HINT_STATUS,
                u"*See whether spam filtering is on and how many emails have been examined."},
    StringEntry{IDS_HINT_ADDRESS_LIST,
                u"*Manage the email addresses whose messages are always allowed or blocked."},
    StringEntry{IDS_HINT_SETTINGS, u"*Change how Quillgate filters your email."},
    StringEntry{IDS_ABOUT_TAB_GENERAL, u"*General"},
    StringEntry{IDS_ABOUT_TAB_BRISK_UPDATE, u"*Brisk Update"},
    StringEntry{IDS_ABOUT_TAB_SYSTEM_INFORMATION, u"*System Information"},
    StringEntry{IDS_SYSINFO_HEADING, u"*System Information"},
    StringEntry{IDS_SYSINFO_SUBHEADING, u"*Details"},
    StringEntry{IDS_SYSINFO_COLUMN_ITEM, u"*Item"},
    StringEntry{IDS_SYSINFO_COLUMN_DETAILS, u"*Details"},
    StringEntry{IDS_SYSINFO_OPERATING_SYSTEM, u"*Operating System"},
    StringEntry{IDS_SYSINFO_NUMBER_OF_PROCESSORS, u"*Number of Processors"},
    StringEntry{IDS_SYSINFO_LOGGED_IN_AS, u"*Logged in as"},
    StringEntry{IDS_SYSINFO_TOTAL_PHYSICAL_MEMORY, u"*Total Physical Memory"},
    StringEntry{IDS_SYSINFO_AVAILABLE_PHYSICAL_MEMORY, u"*Available Physical Memory"},
    StringEntry{IDS_SYSINFO_MEMORY_UTILIZATION, u"*Memory Utilization"},
    StringEntry{IDS_SYSINFO_DRIVES, u"*Drives"},
    StringEntry{IDS_SYSINFO_COMPUTER_NAME, u"*Computer Name"},
    StringEntry{IDS_ABOUT_COPYRIGHT, u"*Copyright (C) Velloran. All rights reserved."},
    StringEntry{IDS_ABOUT_LEGAL_NOTICE,
                u"*Warning: this computer program is protected by copyright law and international "
                u"treaties. Unauthorized reproduction or distribution of this program, or any "
                u"portion of it, may result in severe civil and criminal penalties."},
    StringEntry{IDS_ABOUT_BRISK_UPDATE_BUTTON, u"*Brisk Update"},
    StringEntry{IDS_ABOUT_OK, u"*Ok"},
    StringEntry{IDS_DRIVE_REMOVABLE, u"*Removable Drive"},
    StringEntry{IDS_DRIVE_LOCAL, u"*Local Drive"},
    StringEntry{IDS_DRIVE_NETWORK, u"*Network Drive"},
    StringEntry{IDS_DRIVE_DVD_CDRW, u"*DVD/CD-RW Drive"},
    StringEntry{IDS_DRIVE_FLOPPY, u"*Floppy Drive"},
    // Addresses and the help file name are not sentences: no marker. A language file may
    // still replace them.
    StringEntry{IDS_STRING_URL_PRODUCT, u"" QG_HOME_PAGE "/quillgate/"},
    StringEntry{IDS_STRING_URL_HOMEPAGE, u"" QG_HOME_PAGE "/"},
    StringEntry{IDS_STRING_URL_SUPPORT, u"" QG_HOME_PAGE "/quillgate/support/"},
    StringEntry{IDS_STRING_URL_FAQ, u"" QG_HOME_PAGE "/quillgate/faq/"},
    StringEntry{IDS_STRING_URL_DOWNLOAD, u"" QG_HOME_PAGE "/quillgate/download/"},
    StringEntry{IDS_STRING_URL_CONTACT, u"" QG_HOME_PAGE "/contact/"},
    StringEntry{IDS_HELP_FILE_NAME, u"eng-qghelp.html"},
    StringEntry{IDS_CLOSEWARN_TITLE, u"*Quillgate"},
    StringEntry{IDS_CLOSEWARN_DONT_SHOW_AGAIN, u"*Don't show this window again"},
    StringEntry{IDS_CLOSEWARN_RUNNING_IN_BACKGROUND,
                u"*Quillgate is running in the background filtering SPAM emails. If you want to "
                u"make any other configuration changes or to shutdown Quillgate, please use the "
                u"context menu."},
    StringEntry{IDS_CLOSEWARN_CONTEXT_MENU_GROUP, u"*How to access Quillgate's context menu"},
    StringEntry{IDS_CLOSEWARN_IN_SYSTEM_TRAY_HEADING, u"*Quillgate is in the System Tray"},
    StringEntry{IDS_CLOSEWARN_IN_SYSTEM_TRAY, u"*Quillgate is in the System Tray"},
    StringEntry{IDS_CONFIRM_STOP_FILTERING,
                u"*Are you sure you want to stop filtering spam emails?"},
    StringEntry{IDS_SUMMARY_POPUP, u"*Quillgate Summary\r\nSPAM : %ld\r\nExamined : %ld"},
    StringEntry{IDS_WIZARD_TITLE, u"*Welcome to Quillgate"},
    StringEntry{IDS_WIZARD_CONGRATULATIONS,
                u"*Congratulations!\r\n\r\nQuillgate is now configured to filter spam messages."},
    StringEntry{IDS_WIZARD_CONFIRM_CANCEL,
                u"*Are you sure you want to cancel the configuration wizard?"},
    StringEntry{IDS_WIZARD_WARNING_TITLE, u"*Warning from Quillgate"},
    StringEntry{IDS_WIZARD_BACK, u"*Back"},
    StringEntry{IDS_WIZARD_NEXT, u"*Next"},
    StringEntry{IDS_BUTTON_CANCEL, u"*Cancel"},
    StringEntry{IDS_WIZARD_FINISH, u"*Finish"},
    StringEntry{IDS_TRAY_TIP_DISABLED, u"*Disabled"},
    StringEntry{IDS_TRAY_TIP_ACTIVE, u"*Active"},
    StringEntry{IDS_LSP_REINSTALLED_REBOOT,
                u"*An important component of Quillgate has just been reinstalled, please reboot "
                u"the computer for changes to take effect."},
    StringEntry{IDS_LSP_REINSTALL_FAILED,
                u"*Re-installation of the LSP component of Quillgate has failed. Reinstall "
                u"Quillgate to fix the problem."},
    StringEntry{IDS_REBOOT_FAILED, u"*Failed to reboot computer, please reboot manully."},
    StringEntry{IDS_REINSTALL_QUESTION,
                u"*Quillgate has detected that an important component it requires to operate "
                u"has been uninstalled. Do you want Quillgate to automatically reinstall this "
                u"component now?"},
    StringEntry{IDS_LSP_ERROR,
                u"*Failed to start Quillgate because it cannot  load an important component it "
                u"requires to run. Reinstall Quillgate to fix the problem."},
    StringEntry{IDS_LSP_LOAD_FAILED, u"*Quillgate cannot start because it cannot load  %s."},
    StringEntry{IDS_CLOSEWARN_OK, u"*OK"},
    StringEntry{IDS_REINSTALL_ALLOW, u"*Allow"},
    StringEntry{IDS_TRAY_TURN_FILTERING_ON, u"*Turn Filtering On"},
    StringEntry{IDS_TRAY_TURN_FILTERING_OFF, u"*Turn Filtering Off"},
    StringEntry{IDS_TRAY_OPEN_QUILLGATE, u"*Open Quillgate"},
    StringEntry{IDS_TRAY_EXIT, u"*Exit"},
    StringEntry{IDS_HELPMENU_CONTENTS, u"*Contents"},
    StringEntry{IDS_HELPMENU_TECH_SUPPORT, u"*Tech Support"},
    StringEntry{IDS_HELPMENU_HOME_PAGE, u"*Home Page"},
    StringEntry{IDS_HELPMENU_ABOUT, u"*About"},
    StringEntry{IDS_GUI_INIT_FAILED,
                u"*Failed to initialize Quillgate GUI, please find detail infomation in log "
                u"file."},
    StringEntry{IDS_SERVICE_NOT_FOUND,
                u"*Failed to find Velloran Quillgate Service, please ensure you have installed "
                u"Quillgate successfully."},
    StringEntry{IDS_SERVICE_START_FAILED,
                u"*Failed to start Velloran Quillgate service, unable to run Quillgate, please "
                u"contace your administrator."},
    StringEntry{IDS_SERVICE_STARTING,
                u"*The Velloran Quillgate service has not been started.  Please wait while this "
                u"service is automatically started.  This may take a couple of minutes..."},
    StringEntry{IDS_ERROR_CAPTION, u"*Quillgate Error"},
    StringEntry{IDS_RUN_FAILED, u"*Failed to run %s, error %d."},
    StringEntry{IDS_SERVICE_STOP_FAILED,
                u"*The Velloran Quillgate service has failed to stop. Please contact your "
                u"administrator."},
    StringEntry{IDS_SERVICE_STOPPING,
                u"*Please wait while attempting to stop Velloran Quillgate service..."},
};

constexpr bool isStrictlyAscendingById() {
    for (std::size_t i = 1; i < kEnglishStrings.size(); ++i) {
        if (kEnglishStrings[i - 1].id >= kEnglishStrings[i].id) {
            return false;
        }
    }
    return true;
}

// Lookup is a binary search: an entry out of order or twice would make ids vanish.
static_assert(isStrictlyAscendingById(), "string table must be sorted by id, each id once");

} // namespace

std::span<const StringEntry> EnglishStringTable() {
    return kEnglishStrings;
}

const char16_t* FindEnglishString(std::uint32_t id) {
    const auto it = std::lower_bound(
        kEnglishStrings.begin(), kEnglishStrings.end(), id,
        [](const StringEntry& entry, std::uint32_t wanted) { return entry.id < wanted; });
    if (it == kEnglishStrings.end() || it->id != id) {
        return nullptr;
    }
    return it->text;
}

} // namespace QGResources
