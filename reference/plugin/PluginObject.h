#pragma once
// IQGPlugin: the start and end of the plug-in's user interface, the page metrics, the
// placing and showing of pages, and the language.

#include "mainwindow/PluginContract.h"

class PluginContext;

class PluginObject final : public IQGPlugin {
public:
    explicit PluginObject(PluginContext& context) : m_context(context) {}

    // E_FAIL without a QApplication: the pages are widgets.
    std::int32_t InitGUI(const char16_t* language) override;
    // Destroys the pages that are left, before the main window goes.
    std::int32_t TermGUI() override;
    std::int32_t SetPageMetrics(std::int32_t style, std::int32_t left, std::int32_t gap,
                                std::int32_t top, std::int32_t bottom) override;
    std::int32_t ResizePage(PluginPageId page, std::int32_t width, std::int32_t height) override;
    std::int32_t ShowPage(PluginPageId page, std::int32_t flag) override;
    std::int32_t Enabled(std::int32_t* enabled) override;
    std::int32_t SetLanguage(const char16_t* language) override;

private:
    PluginContext& m_context;
};
