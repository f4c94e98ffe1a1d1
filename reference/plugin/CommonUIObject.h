#pragma once
// IQGCommonUI: the page records and the pages. Thirteen records, of which five describe a
// page (0 Address list, 8 Settings, 9 Status, 11 and 12 the wizard's); a page is made from
// its record, gets the next page id, and is kept in the registry until it is destroyed.

#include "AddressListPage.h"
#include "PageKind.h"

#include "mainwindow/PluginContract.h"

class PluginContext;
class PluginPage;

class CommonUIObject final : public IQGCommonUI {
public:
    static constexpr std::int32_t PageCount = PluginPageIndex::RecordCount;
    // The wizard's pages are laid out for this size; the wizard keeps it or sets its own.
    static constexpr int WizardPageWidth = 385;
    static constexpr int WizardPageHeight = 320;

    explicit CommonUIObject(PluginContext& context) : m_context(context) {}

    std::int32_t GetPageCount() override;
    std::int32_t GetPageInfo(std::int32_t index, PluginPageRecord* record) override;
    std::int32_t DestroyPage(PluginPageId page) override;
    QWidget* CreateListPage(PluginPageId* page, QWidget* parent, std::int32_t lists,
                            PluginPageRecord* record, std::int32_t focus,
                            std::int32_t editable) override;
    QWidget* CreatePage(QWidget* parent, PluginPageRecord* record, PluginPageId* page,
                        std::int32_t show) override;

private:
    // Makes the page that `kind` names, or null; the Address list page takes `list`.
    PluginPage* Make(PageKind kind, QWidget* parent, const AddressListPage::Options& list);
    // Places, shows or hides, registers; the id goes to `page`.
    QWidget* Keep(PluginPage* made, QWidget* parent, PluginPageId* page, bool show);

    PluginContext& m_context;
};
