#include "mainwindow/InitPluginPages.h"

#include "foundation/Trace.h"
#include "localisation/LanguageTable.h"
#include "mainwindow/IPageHost.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"

#include <array>
#include <limits>

namespace {

// The section buttons whose pages the plug-in supplies.
constexpr int StatusButton = 1000;
constexpr int AddressListButton = 1001;
constexpr int SettingsButton = 1003;

// Page metrics and list page arguments as the plug-in expects them; their meaning is the
// plug-in's.
constexpr std::array<std::int32_t, 5> PageMetrics = {0, 143, 2, 65, 18};
constexpr std::int32_t ListPageSecond = 2;
constexpr std::int32_t ListPageFourth = 0;
constexpr std::int32_t ListPageFifth = 1;
constexpr std::int32_t ShowOnCreate = 1;

struct PageStep {
    IPageHost::PageField field;
    int stackIndex;
    int button;
    const char16_t* createdTrace;
};

// Keeps a created page as the section of `step`, or traces its failure with `failureNumber`.
// Only the first page kept is selected: the window comes up on the Status page with the
// Status button checked, so that clicking that button re-selects it without a switch, and the
// Status page is the one that gets the page-init and page-show messages right after.
void KeepPage(IPageHost& host, const PageStep& step, QWidget* page, PluginPageId id,
              int failureNumber, bool& selected) {
    host.SetPageField(step.field, page);
    if (page == nullptr) {
        TraceFmt(TRACE_ERROR, u"CMainDlg::InitPluginPages(): m_pPlugin->CreatePage (%d) failed",
                 failureNumber);
        return;
    }
    TraceMsg(TRACE_DEBUG, step.createdTrace);
    host.AddPage(step.stackIndex, page);
    if (!selected) {
        host.SelectPage(step.stackIndex);
        selected = true;
    }
    host.MapButtonToPage(step.button, id);
}

} // namespace

std::int32_t LanguageIdFromSetting(const stdstr& setting) {
    std::size_t i = 0;
    while (i < setting.size() &&
           (setting[i] == u' ' || (setting[i] >= u'\t' && setting[i] <= u'\r')))
        ++i;
    bool negative = false;
    if (i < setting.size() && (setting[i] == u'+' || setting[i] == u'-')) {
        negative = setting[i] == u'-';
        ++i;
    }
    // Kept in 64 bits and clamped, so a long run of digits cannot overflow.
    std::int64_t value = 0;
    for (; i < setting.size() && setting[i] >= u'0' && setting[i] <= u'9'; ++i) {
        value = value * 10 + (setting[i] - u'0');
        if (value > std::numeric_limits<std::int32_t>::max())
            value = static_cast<std::int64_t>(std::numeric_limits<std::int32_t>::max()) + 1;
    }
    if (negative)
        value = -value;
    if (value > std::numeric_limits<std::int32_t>::max())
        return std::numeric_limits<std::int32_t>::max();
    if (value < std::numeric_limits<std::int32_t>::min())
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

bool InitPluginPages(IPageHost& host) {
    m_pStandAlone->SetInfoSink(host.InfoSink());

    // The records that the plug-in fills, zeroed so that one it does not fill (a count
    // below 10) holds no leftovers. A count above the 13 records is not refused: the
    // plug-in is still asked for every index, and the records beyond land in a scratch
    // block that nothing reads.
    std::array<PluginPageRecord, PluginPageIndex::RecordCount> records{};
    PluginPageRecord overflow{};
    const std::int32_t count = m_pCommonUI->GetPageCount();
    for (std::int32_t i = 0; i < count; ++i) {
        PluginPageRecord* record =
            i < PluginPageIndex::RecordCount ? &records[static_cast<std::size_t>(i)] : &overflow;
        m_pCommonUI->GetPageInfo(i, record);
    }

    const stdstr configPath = host.ConfigPath();
    m_pQGInfo->SetConfigPath(configPath.c_str(), static_cast<std::int32_t>(configPath.size()));

    const std::int32_t languageId = LanguageIdFromSetting(host.LanguageSetting());
    const stdstr languageName = LanguageTable::NameFromId(static_cast<std::uint32_t>(languageId));

    if (m_pPlugin->InitGUI(languageName.c_str()) < 0) {
        // The words say more than happens: nothing closes, the window just has no pages.
        TraceMsg(TRACE_ERROR,
                 u"CMainDlg::InitPluginPages(): m_pPlugin->InitGUI() failed!  Closing down GUI.");
        return false;
    }
    m_pPlugin->SetLanguage(languageName.c_str());

    std::int32_t enabled = 0;
    if (m_pPlugin->Enabled(&enabled) == E_FAIL)
        TraceMsg(TRACE_ERROR, u"CMainDlg::InitPluginPages() m_pPlugin()->Enabled() failed.");

    m_pPlugin->SetPageMetrics(PageMetrics[0], PageMetrics[1], PageMetrics[2], PageMetrics[3],
                              PageMetrics[4]);

    QWidget* parent = host.PageParent();
    bool selected = false;

    PluginPageId statusId = 0;
    QWidget* status =
        m_pCommonUI->CreatePage(parent, &records[PluginPageIndex::Status], &statusId, ShowOnCreate);
    KeepPage(host,
             {IPageHost::PageField::Status, 0, StatusButton,
              u"CMainDlg::InitPluginPages(): Status page created successfully."},
             status, statusId, 0, selected);

    PluginPageId listId = 0;
    QWidget* list = m_pCommonUI->CreateListPage(&listId, parent, ListPageSecond,
                                                &records[PluginPageIndex::AddressList],
                                                ListPageFourth, ListPageFifth);
    KeepPage(host,
             {IPageHost::PageField::AddressList, 1, AddressListButton,
              u"CMainDlg::InitPluginPages(): Address list page created successfully."},
             list, listId, 1, selected);

    PluginPageId settingsId = 0;
    QWidget* settings = m_pCommonUI->CreatePage(parent, &records[PluginPageIndex::Settings],
                                                &settingsId, ShowOnCreate);
    KeepPage(host,
             {IPageHost::PageField::Settings, 2, SettingsButton,
              u"CMainDlg::InitPluginPages(): Settings page created successfully."},
             settings, settingsId, 2, selected);
    return true;
}
