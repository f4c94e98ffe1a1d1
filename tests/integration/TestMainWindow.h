#pragma once
// A main window for the plug-in's pages: the parent of the pages, the host of the page
// set-up (IPageHost), and the answers to the pages' set and get requests through the
// program's own InfoValues over settings held here. Everything the pages ask of it is
// written down in order ("set 258 45", "get 5", "notify", "language 1036" ...).

#include "mainwindow/HostInfoSink.h"
#include "mainwindow/IInfoValueHost.h"
#include "mainwindow/IPageHost.h"
#include "mainwindow/InfoValues.h"
#include "mainwindow/PrivateMessages.h"
#include "toolkit/PrivateMessageEvent.h"

#include <QEvent>
#include <QWidget>

#include <map>
#include <string>
#include <vector>

class TestMainWindow : public QWidget, public IPageHost, public IInfoValueHost {
public:
    TestMainWindow() : m_values(*this) {
        setObjectName("mainWindow");
        resize(782, 449);
    }

    // IPageHost
    QWidget* PageParent() override { return this; }
    IInfoSink* InfoSink() override { return &sink; }
    stdstr ConfigPath() override { return texts[Text::ConfigPath]; }
    stdstr LanguageSetting() override { return texts[Text::Language]; }
    void SetPageField(PageField, QWidget*) override {}
    void AddPage(int, QWidget*) override {}
    void SelectPage(int) override {}
    void MapButtonToPage(int buttonId, PluginPageId page) override { pages[buttonId] = page; }

    // IInfoValueHost
    void SetFlagByte(int, std::uint8_t) override {}
    std::int32_t UpdateAction() override { return 0; }
    void SetUpdateAction(std::int32_t) override {}
    std::int32_t GetNumber(Number setting) override { return numbers[setting]; }
    void SetNumber(Number setting, std::int32_t value) override { numbers[setting] = value; }
    const stdstr& GetText(Text setting) override { return texts[setting]; }
    void SetText(Text setting, const stdstr& value) override {
        texts[setting] = value;
        log.push_back("text " + std::string(value.begin(), value.end()));
    }
    bool SetFilterState(std::int32_t value) override {
        log.push_back("filter " + std::to_string(value));
        numbers[Number::FilterOn] = value == 1 ? 0 : 1;
        return true;
    }
    void RunFreshUpdate(std::int32_t) override {}
    void NotifyService() override { log.push_back("notify"); }
    void Command(int id) override { log.push_back("command " + std::to_string(id)); }
    bool ReadFileVersion(const stdstr&, std::array<std::uint32_t, 4>&) override { return false; }

    HostInfoSink sink;
    std::map<Number, std::int32_t> numbers{{Number::FilterOn, 1},
                                           {Number::AutoUpgrade, 1},
                                           {Number::UpgradePeriod, 5},
                                           {Number::HistoryDays, 30}};
    std::map<Text, stdstr> texts{{Text::ConfigPath, u"/var/lib/velloran/quillgate"},
                                 {Text::Language, u"1031"}};
    std::map<int, PluginPageId> pages;
    std::vector<std::string> log;

protected:
    bool event(QEvent* event) override {
        const int message = static_cast<int>(event->type());
        if (!PrivateMessageEvent::IsPrivateMessage(message))
            return QWidget::event(event);
        auto* privateMessage = static_cast<PrivateMessageEvent*>(event);
        const auto code = static_cast<std::int32_t>(privateMessage->wParam());
        switch (message) {
        case WM_QG_SET_INFO:
            log.push_back("set " + std::to_string(code) + " " +
                          (code == 259 || code == 260 ? std::string("text")
                                                      : std::to_string(privateMessage->lParam())));
            privateMessage->SetResult(m_values.SetInfoValue(code, privateMessage->lParam()));
            return true;
        case WM_QG_GET_INFO:
            log.push_back("get " + std::to_string(code));
            privateMessage->SetResult(m_values.GetInfoValue(code, privateMessage->lParam()));
            return true;
        case WM_QG_LANGUAGE:
            log.push_back("language " + std::to_string(privateMessage->wParam()));
            return true;
        default:
            log.push_back("message " + std::to_string(message));
            return true;
        }
    }

private:
    InfoValues m_values;
};
