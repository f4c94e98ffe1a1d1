#include "PluginObject.h"

#include "JournalLine.h"
#include "PluginContext.h"
#include "PluginPage.h"

#include <QApplication>

namespace {

QString TextOf(const char16_t* text) {
    return text == nullptr ? QString() : QString::fromUtf16(text);
}

} // namespace

std::int32_t PluginObject::InitGUI(const char16_t* language) {
    const bool widgets = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
    const std::int32_t result = widgets ? 0 : E_FAIL;
    if (widgets) {
        m_context.language = TextOf(language);
        m_context.guiStarted = true;
    }
    JournalLine("InitGUI").Text(language).Arrow().Number(result).Write();
    return result;
}

std::int32_t PluginObject::TermGUI() {
    m_context.Pages().DestroyAll();
    m_context.guiStarted = false;
    JournalLine("TermGUI").Write();
    return 0;
}

std::int32_t PluginObject::SetPageMetrics(std::int32_t style, std::int32_t left, std::int32_t gap,
                                          std::int32_t top, std::int32_t bottom) {
    m_context.metrics = PageMetrics(style, left, gap, top, bottom);
    JournalLine("SetPageMetrics")
        .Number(style)
        .Number(left)
        .Number(gap)
        .Number(top)
        .Number(bottom)
        .Write();
    return 0;
}

std::int32_t PluginObject::ResizePage(PluginPageId page, std::int32_t width, std::int32_t height) {
    PluginPage* found = m_context.Pages().Find(page);
    if (found != nullptr)
        found->Place(m_context.metrics, width, height);
    JournalLine("ResizePage").Number(page).Number(width).Number(height).Write();
    return found != nullptr ? 0 : E_FAIL;
}

std::int32_t PluginObject::ShowPage(PluginPageId page, std::int32_t flag) {
    PluginPage* found = m_context.Pages().Find(page);
    if (found != nullptr) {
        if (flag != 0)
            found->Activate();
        else
            found->hide();
    }
    JournalLine("ShowPage").Number(page).Number(flag).Write();
    return found != nullptr ? 0 : E_FAIL;
}

std::int32_t PluginObject::Enabled(std::int32_t* enabled) {
    JournalLine line("Enabled");
    line.Number(enabled == nullptr ? -1 : *enabled);
    // The plug-in is never switched off.
    if (enabled != nullptr)
        *enabled = 1;
    const std::int32_t result = enabled != nullptr ? 0 : E_FAIL;
    line.Arrow().Number(result).Write();
    return result;
}

std::int32_t PluginObject::SetLanguage(const char16_t* language) {
    m_context.language = TextOf(language);
    m_context.Pages().ForEach([&](PluginPage& page) { page.LanguageChanged(m_context.language); });
    JournalLine("SetLanguage").Text(language).Write();
    return 0;
}
