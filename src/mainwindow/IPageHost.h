#pragma once
// What the page set-up needs of the main window: the parent of the pages, the sink that
// the plug-in gets, two settings, and the places where a created page is kept (its field,
// the page stack, the map from section button to page id).

#include "foundation/stdstr.h"
#include "mainwindow/PluginContract.h"

class QWidget;

class IPageHost {
public:
    // The window fields that hold the three pages of the main window.
    enum class PageField { Status, AddressList, Settings };

    // The main window: parent of every page.
    virtual QWidget* PageParent() = 0;
    virtual IInfoSink* InfoSink() = 0;
    // The setting ConfigPath.
    virtual stdstr ConfigPath() = 0;
    // The setting Language: a decimal language id as text.
    virtual stdstr LanguageSetting() = 0;

    // Stores the page's window, null included, in its field.
    virtual void SetPageField(PageField field, QWidget* page) = 0;
    // Adds the page's window to the page stack under `index`.
    virtual void AddPage(int index, QWidget* page) = 0;
    // Shows the page of `index` in the page stack.
    virtual void SelectPage(int index) = 0;
    // Remembers that section button `buttonId` shows the plug-in's page `page`.
    virtual void MapButtonToPage(int buttonId, PluginPageId page) = 0;

    virtual ~IPageHost() = default;

protected:
    IPageHost() = default;
    IPageHost(const IPageHost&) = default;
    IPageHost& operator=(const IPageHost&) = default;
};
