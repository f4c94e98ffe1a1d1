#include "CommonUIObject.h"

#include "HostWindow.h"
#include "JournalLine.h"
#include "PageRecord.h"
#include "PluginContext.h"
#include "SettingsPage.h"
#include "StatisticsQuery.h"
#include "StatusPage.h"
#include "WelcomePage.h"
#include "WizardOptionsPage.h"

#include <QApplication>

#include <new>

namespace {

void NoteCreated(JournalLine& line, const QWidget* window, const PluginPageId* page,
                 PageKind kind) {
    line.Arrow();
    if (window == nullptr)
        line.Word("null");
    else
        line.Named("page", page != nullptr ? *page : 0).Word(PageKindName(kind));
    line.Write();
}

} // namespace

std::int32_t CommonUIObject::GetPageCount() {
    JournalLine("GetPageCount").Arrow().Number(PageCount).Write();
    return PageCount;
}

std::int32_t CommonUIObject::GetPageInfo(std::int32_t index, PluginPageRecord* record) {
    const std::int32_t result = record != nullptr ? 0 : E_FAIL;
    if (record != nullptr)
        PageRecord::Fill(index, *record);
    JournalLine("GetPageInfo").Number(index).Write();
    return result;
}

std::int32_t CommonUIObject::DestroyPage(PluginPageId page) {
    const bool destroyed = m_context.Pages().Destroy(page);
    JournalLine("DestroyPage").Number(page).Write();
    return destroyed ? 0 : E_FAIL;
}

QWidget* CommonUIObject::CreateListPage(PluginPageId* page, QWidget* parent, std::int32_t lists,
                                        PluginPageRecord* record, std::int32_t focus,
                                        std::int32_t editable) {
    const std::optional<PageRecord::Content> content = PageRecord::Read(record);
    JournalLine line("CreateListPage");
    if (content)
        line.Named("record", content->index);
    else
        line.Named("record", "unknown");
    line.Number(lists).Number(focus).Number(editable);
    QWidget* window = nullptr;
    PageKind kind = PageKind::None;
    // The list page is the Address list; any other record is not a list.
    if (content && content->kind == PageKind::AddressList && page != nullptr) {
        kind = content->kind;
        const AddressListPage::Options options{lists, focus, editable != 0};
        window = Keep(Make(kind, parent, options), parent, page, true);
    }
    NoteCreated(line, window, page, kind);
    return window;
}

QWidget* CommonUIObject::CreatePage(QWidget* parent, PluginPageRecord* record, PluginPageId* page,
                                    std::int32_t show) {
    const std::optional<PageRecord::Content> content = PageRecord::Read(record);
    JournalLine line("CreatePage");
    if (content)
        line.Named("record", content->index);
    else
        line.Named("record", "unknown");
    line.Named("show", show);
    QWidget* window = nullptr;
    PageKind kind = PageKind::None;
    if (content && content->kind != PageKind::None && page != nullptr) {
        kind = content->kind;
        // Made through CreatePage, the Address list takes the host's usual values.
        window = Keep(Make(kind, parent, AddressListPage::Options{}), parent, page, show != 0);
    }
    NoteCreated(line, window, page, kind);
    return window;
}

PluginPage* CommonUIObject::Make(PageKind kind, QWidget* parent,
                                 const AddressListPage::Options& list) {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        return nullptr;
    // The main window's pages find the main window as their parent; the wizard's pages reach
    // the one that those found.
    if (IsMainWindowPage(kind) && parent != nullptr)
        m_context.mainWindow = parent;
    const PluginPageId id = m_context.Pages().NextId();
    try {
        switch (kind) {
        case PageKind::Status: {
            RpcObject& rpc = m_context.Rpc();
            return new StatusPage(
                id, HostWindow(parent), [&rpc] { return StatisticsQuery::Ask(rpc); }, parent);
        }
        case PageKind::AddressList:
            return new AddressListPage(id, list, parent);
        case PageKind::Settings:
            return new SettingsPage(id, HostWindow(parent), parent);
        case PageKind::Welcome:
            return new WelcomePage(id, parent);
        case PageKind::WizardOptions:
            return new WizardOptionsPage(id, HostWindow(m_context.mainWindow.data()), parent);
        case PageKind::None:
            break;
        }
    } catch (const std::bad_alloc&) {
        // A page that cannot be made is a page that is not there; the host copes.
    }
    return nullptr;
}

QWidget* CommonUIObject::Keep(PluginPage* made, QWidget* parent, PluginPageId* page, bool show) {
    if (made == nullptr)
        return nullptr;
    if (IsMainWindowPage(made->Kind())) {
        if (parent != nullptr)
            made->Place(m_context.metrics, parent->width(), parent->height());
    } else {
        made->resize(WizardPageWidth, WizardPageHeight);
    }
    made->setVisible(show);
    m_context.Pages().Add(made);
    *page = made->Id();
    return made;
}
