#pragma once
// A plug-in in the test program itself: the four interfaces that the main window calls,
// writing each call to the same log as the recording host, and pages that write down every
// private message they receive ("page9 got 1030 0"). Installed into the plug-in pointers
// for the life of the object. Page ids are 100 plus the record's index, as in the test
// plug-in library.

#include "RecordingMainWindowHost.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"
#include "toolkit/PrivateMessageEvent.h"

#include <QWidget>

#include <cstring>
#include <set>
#include <string>

class RecordingPage : public QWidget {
public:
    RecordingPage(CallLog& log, int index, QWidget* parent) : QWidget(parent), m_log(log) {
        setObjectName(QString::fromStdString("page" + std::to_string(index)));
    }

protected:
    bool event(QEvent* event) override {
        if (PrivateMessageEvent::IsPrivateMessage(static_cast<int>(event->type()))) {
            const auto* message = static_cast<PrivateMessageEvent*>(event);
            m_log.Add(objectName().toStdString() + " got " + std::to_string(message->Message()) +
                      " " + std::to_string(message->wParam()));
            return true;
        }
        return QWidget::event(event);
    }

private:
    CallLog& m_log;
};

class RecordingPlugin : public IQGStandAlone, public IQGPlugin, public IQGCommonUI, public IQGInfo {
public:
    explicit RecordingPlugin(CallLog& log) : m_log(log) {
        m_pStandAlone = this;
        m_pPlugin = this;
        m_pCommonUI = this;
        m_pQGInfo = this;
    }
    RecordingPlugin(const RecordingPlugin&) = delete;
    RecordingPlugin& operator=(const RecordingPlugin&) = delete;
    ~RecordingPlugin() {
        m_pStandAlone = nullptr;
        m_pPlugin = nullptr;
        m_pCommonUI = nullptr;
        m_pQGInfo = nullptr;
    }

    // Record indices whose page is not made.
    std::set<int> failingPages;

    // IQGStandAlone
    std::int32_t SetInfoSink(IInfoSink* sink) override {
        m_log.Add(std::string("plugin SetInfoSink ") + (sink != nullptr ? "set" : "null"));
        return 0;
    }
    // IQGPlugin
    std::int32_t InitGUI(const char16_t* language) override {
        m_log.Add("plugin InitGUI " + Narrow(language));
        return 0;
    }
    std::int32_t TermGUI() override {
        m_log.Add("plugin TermGUI");
        return 0;
    }
    std::int32_t SetPageMetrics(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                                std::int32_t) override {
        m_log.Add("plugin SetPageMetrics");
        return 0;
    }
    std::int32_t ResizePage(PluginPageId page, std::int32_t width, std::int32_t height) override {
        m_log.Add("plugin ResizePage " + std::to_string(page) + " " + std::to_string(width) + " " +
                  std::to_string(height));
        return 0;
    }
    std::int32_t ShowPage(PluginPageId page, std::int32_t flag) override {
        m_log.Add("plugin ShowPage " + std::to_string(page) + " " + std::to_string(flag));
        return 0;
    }
    std::int32_t Enabled(std::int32_t*) override {
        m_log.Add("plugin Enabled");
        return 0;
    }
    std::int32_t SetLanguage(const char16_t* language) override {
        m_log.Add("plugin SetLanguage " + Narrow(language));
        return 0;
    }
    // IQGCommonUI
    std::int32_t GetPageCount() override {
        m_log.Add("plugin GetPageCount");
        return 13;
    }
    std::int32_t GetPageInfo(std::int32_t index, PluginPageRecord* record) override {
        std::memset(record->bytes, 0, sizeof record->bytes);
        std::memcpy(record->bytes, &index, sizeof index);
        return 0;
    }
    std::int32_t DestroyPage(PluginPageId page) override {
        m_log.Add("plugin DestroyPage " + std::to_string(page));
        return 0;
    }
    QWidget* CreateListPage(PluginPageId* page, QWidget* parent, std::int32_t,
                            PluginPageRecord* record, std::int32_t, std::int32_t) override {
        m_log.Add("plugin CreateListPage");
        return Make(page, parent, record);
    }
    QWidget* CreatePage(QWidget* parent, PluginPageRecord* record, PluginPageId* page,
                        std::int32_t) override {
        m_log.Add("plugin CreatePage");
        return Make(page, parent, record);
    }
    // IQGInfo
    std::int32_t SetConfigPath(const char16_t*, std::int32_t) override {
        m_log.Add("plugin SetConfigPath");
        return 0;
    }
    std::int32_t GetSpamCount(std::uint32_t* count) override {
        *count = 0;
        return 0;
    }
    std::int32_t GetExaminedCount(std::uint32_t* count) override {
        *count = 0;
        return 0;
    }

private:
    static std::string Narrow(const char16_t* text) {
        return text == nullptr ? std::string("(null)") : QString::fromUtf16(text).toStdString();
    }

    QWidget* Make(PluginPageId* page, QWidget* parent, const PluginPageRecord* record) {
        std::int32_t index = 0;
        std::memcpy(&index, record->bytes, sizeof index);
        if (failingPages.count(index) != 0)
            return nullptr;
        *page = static_cast<PluginPageId>(100 + index);
        return new RecordingPage(m_log, index, parent);
    }

    CallLog& m_log;
};
