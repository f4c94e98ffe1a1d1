// The reference plug-in's pages on the offscreen platform, set up by the program's own
// InitPluginPages and driven as the main window drives them: the order in which the
// plug-in sees the host's calls (from its journal), the Status page's counts and states,
// the Settings page's writes through the set request, the Address list's file, the wizard's
// pages, ResizePage and TermGUI.
#include "PluginSandbox.h"
#include "PluginTestApp.h"
#include "TestMainWindow.h"

#include "mainwindow/InitPluginPages.h"
#include "mainwindow/PluginCallbacks.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <sstream>

namespace {

class PluginPages : public PluginSandbox {
protected:
    void SetUp() override {
        PluginSandbox::SetUp();
        journalPath = sandbox.file("plugin-journal.txt");
        ::setenv("QGPLUGIN_JOURNAL", journalPath.c_str(), 1);
    }
    void TearDown() override {
        // The exit sequence of the program: handlers off, then the plug-in's GUI ends, and
        // only then does the main window go.
        if (m_pPlugin != nullptr)
            m_pPlugin->TermGUI();
        window.reset();
        PluginSandbox::TearDown();
    }

    // Loads the plug-in and runs the page set-up; the three pages' ids are in window->pages.
    void setUpPages() {
        loadPlugin();
        ASSERT_TRUE(InitPluginPages(*window));
        ASSERT_EQ(window->pages.size(), 3u);
    }

    QWidget* page(int button) {
        for (QWidget* child : window->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (child->objectName() == pageName(button))
                return child;
        }
        return nullptr;
    }
    static QString pageName(int button) {
        return button == 1000 ? "Status" : button == 1001 ? "AddressList" : "Settings";
    }
    template <class Widget>
    Widget* part(int button, const char* name) {
        QWidget* owner = page(button);
        return owner == nullptr ? nullptr : owner->findChild<Widget*>(name);
    }

    std::vector<std::string> journal() const {
        std::istringstream text(TestSupport::SandboxRoot::readFile(journalPath));
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }
    // The journal from the first line that begins with `start`.
    std::vector<std::string> journalFrom(const std::string& start) const {
        std::vector<std::string> lines = journal();
        const auto first = std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.rfind(start, 0) == 0;
        });
        return std::vector<std::string>(first, lines.end());
    }

    // Waits for `condition`, letting the page's events run meanwhile.
    static bool settle(const std::function<bool()>& condition) {
        return TestSupport::WaitFor([&] {
            QCoreApplication::processEvents();
            return condition();
        });
    }

    // First, so that the application exists before the main window.
    QApplication& app = PluginTestApp::App();
    std::string journalPath;
    std::unique_ptr<TestMainWindow> window = std::make_unique<TestMainWindow>();
};

std::string Text(const QLabel* label) {
    return label == nullptr ? std::string("(no label)") : label->text().toStdString();
}

} // namespace

TEST_F(PluginPages, ThePluginSeesTheLoadAndThePageSetUpInTheContractsOrder) {
    setUpPages();
    std::vector<std::string> expected = {
        "CreateQGInstanceStandAlone -> object",
        "CreateQGInstance -> object",
        "CreateCIInstance -> object",
        "CreateQGInfo -> object",
        "CreateRPCInstance -> object",
        "RegisterHandler 256",
        "RegisterHandler 260",
        "RegisterHandler 261",
        "RegisterHandler 263",
        "RegisterHandler 264",
        "RegisterHandler 265",
        "RegisterHandler 258",
        "SetInfoSink sink",
        "GetPageCount -> 13",
    };
    for (int i = 0; i < 13; ++i)
        expected.push_back("GetPageInfo " + std::to_string(i));
    const std::vector<std::string> rest = {
        "SetConfigPath \"/var/lib/velloran/quillgate\" 27",
        "InitGUI \"German\" -> 0",
        "SetLanguage \"German\"",
        "Enabled 0 -> 0",
        "SetPageMetrics 0 143 2 65 18",
        "CreatePage record=9 show=1 -> page=1 Status",
        "CreateListPage record=0 2 0 1 -> page=2 AddressList",
        "CreatePage record=8 show=1 -> page=3 Settings",
    };
    expected.insert(expected.end(), rest.begin(), rest.end());
    EXPECT_EQ(journal(), expected);
    EXPECT_EQ(window->pages, (std::map<int, PluginPageId>{{1000, 1}, {1001, 2}, {1003, 3}}));
}

TEST_F(PluginPages, TheExitSequenceDropsTheHandlersInTheirOrderThenEndsTheGui) {
    setUpPages();
    PluginCallbacks::Unregister(*m_pRPCExt);
    m_pPlugin->TermGUI();
    EXPECT_EQ(journalFrom("UnregisterHandler"),
              (std::vector<std::string>{"UnregisterHandler 265", "UnregisterHandler 261",
                                        "UnregisterHandler 260", "UnregisterHandler 263",
                                        "UnregisterHandler 256", "UnregisterHandler 264",
                                        "UnregisterHandler 258", "TermGUI"}));
    // TermGUI took the pages with it, before the main window goes.
    EXPECT_EQ(page(1000), nullptr);
    EXPECT_EQ(page(1001), nullptr);
    EXPECT_EQ(page(1003), nullptr);
}

TEST_F(PluginPages, AStatusPageMessageIsJournalledWithItsParameters) {
    setUpPages();
    PrivateMessageEvent::Send(page(1000), WM_QG_PAGE_INIT);
    PrivateMessageEvent::Post(page(1000), WM_QG_PAGE_SHOW);
    PrivateMessageEvent::Send(page(1000), WM_QG_RPC_STATUS, 1, 0);
    ASSERT_TRUE(settle([&] { return journalFrom("Message").size() == 3; }));
    EXPECT_EQ(journalFrom("Message"),
              (std::vector<std::string>{"Message Status 1030 0 0", "Message Status 1062 1 0",
                                        "Message Status 1031 0 0"}));
}

TEST_F(PluginPages, TheStatusPageShowsTheCountsThatTheServiceGives) {
    start();
    control({"--counts", "spam=7", "examined=40"});
    setUpPages();
    PrivateMessageEvent::Send(page(1000), WM_QG_PAGE_REFRESH);
    auto* spam = part<QLabel>(1000, "spamCount");
    auto* examined = part<QLabel>(1000, "examinedCount");
    auto* share = part<QLabel>(1000, "spamShareText");
    EXPECT_TRUE(settle([&] { return Text(spam) == "7"; })) << Text(spam);
    EXPECT_EQ(Text(examined), "40");
    EXPECT_EQ(Text(share), "17.5 %");
    EXPECT_EQ(Text(part<QLabel>(1000, "serviceState")), "Filter service is running");

    control({"--counts", "spam=9", "examined=1200"});
    PrivateMessageEvent::Post(page(1000), WM_QG_PAGE_REFRESH);
    EXPECT_TRUE(settle([&] { return Text(spam) == "9"; })) << Text(spam);
    EXPECT_EQ(Text(examined), "1,200");
}

TEST_F(PluginPages, TheStatusPageShowsTheServiceGoneAndBackAsTheWindowSendsIt) {
    start();
    setUpPages();
    auto* state = part<QLabel>(1000, "serviceState");
    PrivateMessageEvent::Send(page(1000), WM_QG_RPC_STATUS, 1, 0);
    EXPECT_EQ(Text(state), "Filter service is not reachable");
    EXPECT_FALSE(part<QPushButton>(1000, "filterButton")->isEnabled());
    PrivateMessageEvent::Send(page(1000), WM_QG_RPC_STATUS, 0, 0);
    EXPECT_EQ(Text(state), "Filter service is running");
    EXPECT_TRUE(part<QPushButton>(1000, "filterButton")->isEnabled());
}

TEST_F(PluginPages, WithoutTheServiceTheStatusPageSaysSoByItself) {
    setUpPages();
    PrivateMessageEvent::Send(page(1000), WM_QG_PAGE_REFRESH);
    auto* state = part<QLabel>(1000, "serviceState");
    EXPECT_TRUE(settle([&] { return Text(state) == "Filter service is not reachable"; }))
        << Text(state);
    EXPECT_EQ(Text(part<QLabel>(1000, "spamCount")), "\u2014");
}

TEST_F(PluginPages, TheFilterSwitchGoesThroughTheSetRequestAndShowsTheNewState) {
    setUpPages();
    auto* state = part<QLabel>(1000, "filterState");
    auto* button = part<QPushButton>(1000, "filterButton");
    EXPECT_EQ(Text(state), "Spam filtering is on");
    EXPECT_EQ(button->text().toStdString(), "Turn filtering off");
    window->log.clear();
    button->click();
    // Code 7 with 1 asks and turns filtering off; the page reads the state again.
    EXPECT_EQ(window->log, (std::vector<std::string>{"set 7 1", "filter 1", "get 5"}));
    EXPECT_EQ(Text(state), "Spam filtering is off");
    EXPECT_EQ(button->text().toStdString(), "Turn filtering on");
    window->log.clear();
    button->click();
    EXPECT_EQ(window->log, (std::vector<std::string>{"set 7 0", "filter 0", "get 5"}));
    EXPECT_EQ(Text(state), "Spam filtering is on");
}

TEST_F(PluginPages, SettingsAreReadOnShowAndAppliedThroughTheSetRequest) {
    setUpPages();
    m_pPlugin->ShowPage(window->pages[1003], 1);
    auto* history = part<QSpinBox>(1003, "historyDays");
    auto* period = part<QSpinBox>(1003, "upgradePeriod");
    auto* apply = part<QPushButton>(1003, "apply");
    ASSERT_NE(history, nullptr);
    EXPECT_EQ(history->value(), 30);
    EXPECT_EQ(period->value(), 5);
    EXPECT_FALSE(apply->isEnabled());
    EXPECT_EQ(Text(part<QLabel>(1003, "configPath")),
              "The filter service keeps its data in /var/lib/velloran/quillgate.");

    history->setValue(45);
    EXPECT_TRUE(apply->isEnabled());
    window->log.clear();
    apply->click();
    EXPECT_EQ(window->log, (std::vector<std::string>{"set 256 1", "set 257 5", "set 258 45",
                                                     "set 261 0", "notify", "get 256", "get 257",
                                                     "get 258", "get 260", "get 259"}));
    EXPECT_EQ(window->numbers[IInfoValueHost::Number::HistoryDays], 45);
    EXPECT_FALSE(apply->isEnabled());
    EXPECT_EQ(Text(part<QLabel>(1003, "message")), "Your settings are saved.");
}

TEST_F(PluginPages, ANewLanguageIsSetAsItsIdAndTheWindowIsAskedToChangeIt) {
    setUpPages();
    m_pPlugin->ShowPage(window->pages[1003], 1);
    auto* language = part<QComboBox>(1003, "language");
    ASSERT_NE(language, nullptr);
    EXPECT_EQ(language->currentData().toUInt(), 1031u);
    const int french = language->findData(QVariant::fromValue(std::uint32_t{1036}));
    ASSERT_GE(french, 0);
    language->setCurrentIndex(french);
    window->log.clear();
    part<QPushButton>(1003, "apply")->click();
    ASSERT_TRUE(settle([&] {
        return std::find(window->log.begin(), window->log.end(), "language 1036") !=
               window->log.end();
    }));
    const std::vector<std::string> expected = {
        "set 256 1", "set 257 5", "set 258 30", "set 260 text", "text 1036", "set 261 0", "notify"};
    ASSERT_GE(window->log.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(window->log.begin(), window->log.begin() + 7), expected);
    EXPECT_EQ(window->log.back(), "language 1036");
}

TEST_F(PluginPages, AConfigurationChangeReloadsTheSettingsPage) {
    setUpPages();
    m_pPlugin->ShowPage(window->pages[1003], 1);
    window->numbers[IInfoValueHost::Number::HistoryDays] = 90;
    window->numbers[IInfoValueHost::Number::AutoUpgrade] = 0;
    PrivateMessageEvent::Send(page(1003), WM_QG_CONFIG_CHANGED);
    EXPECT_EQ(part<QSpinBox>(1003, "historyDays")->value(), 90);
    EXPECT_FALSE(part<QCheckBox>(1003, "autoUpgrade")->isChecked());
    EXPECT_FALSE(part<QSpinBox>(1003, "upgradePeriod")->isEnabled());
    EXPECT_FALSE(part<QPushButton>(1003, "apply")->isEnabled());
}

TEST_F(PluginPages, ResizePagePlacesThePageByThePageMetrics) {
    setUpPages();
    EXPECT_EQ(page(1000)->geometry(), QRect(143, 65, 637, 366));
    m_pPlugin->ResizePage(window->pages[1000], 900, 600);
    EXPECT_EQ(page(1000)->geometry(), QRect(143, 65, 755, 517));
    EXPECT_EQ(m_pPlugin->ResizePage(9999, 900, 600), E_FAIL);
    EXPECT_EQ(journalFrom("ResizePage"),
              (std::vector<std::string>{"ResizePage 1 900 600", "ResizePage 9999 900 600"}));
}

TEST_F(PluginPages, AnAddressTypedIntoTheAllowedListGoesToTheUsersFile) {
    setUpPages();
    auto* input = part<QLineEdit>(1001, "allowedInput");
    ASSERT_NE(input, nullptr);
    input->setText("Alice@Example.com");
    part<QPushButton>(1001, "allowedAdd")->click();
    EXPECT_EQ(Text(part<QLabel>(1001, "message")),
              "Added alice@example.com to the allowed senders.");
    EXPECT_EQ(part<QListWidget>(1001, "allowedList")->count(), 1);
    EXPECT_EQ(
        TestSupport::SandboxRoot::readFile(sandbox.file("home/.config/Quillgate/AddressLists.txt")),
        "# Quillgate address lists: one address or @domain per line, under its list.\n"
        "[Allowed]\n"
        "alice@example.com\n"
        "[Blocked]\n");

    part<QLineEdit>(1001, "blockedInput")->setText("alice@example.com");
    part<QPushButton>(1001, "blockedAdd")->click();
    EXPECT_EQ(Text(part<QLabel>(1001, "message")),
              "Moved alice@example.com from the allowed senders to the blocked senders.");
    EXPECT_EQ(part<QListWidget>(1001, "allowedList")->count(), 0);
    EXPECT_EQ(part<QListWidget>(1001, "blockedList")->count(), 1);

    part<QLineEdit>(1001, "blockedInput")->setText("not an address");
    part<QPushButton>(1001, "blockedAdd")->click();
    EXPECT_EQ(Text(part<QLabel>(1001, "message")),
              "\u201Cnot an address\u201D is neither an address nor a domain.");
}

TEST_F(PluginPages, TheWizardsPagesAreMadeHiddenAndGoWithDestroyPage) {
    setUpPages();
    QWidget wizard;
    PluginPageRecord first{};
    PluginPageRecord second{};
    m_pCommonUI->GetPageInfo(PluginPageIndex::WizardFirst, &first);
    m_pCommonUI->GetPageInfo(PluginPageIndex::WizardSecond, &second);
    PluginPageId firstId = 0;
    PluginPageId secondId = 0;
    QPointer<QWidget> firstPage = m_pCommonUI->CreatePage(&wizard, &first, &firstId, 0);
    QPointer<QWidget> secondPage = m_pCommonUI->CreatePage(&wizard, &second, &secondId, 0);
    ASSERT_FALSE(firstPage.isNull());
    ASSERT_FALSE(secondPage.isNull());
    EXPECT_EQ(firstId, 4u);
    EXPECT_EQ(secondId, 5u);
    EXPECT_FALSE(firstPage->isVisibleTo(&wizard));
    EXPECT_EQ(firstPage->size(), QSize(385, 320));
    EXPECT_EQ(firstPage->parentWidget(), &wizard);
    // The second page reaches the main window's settings although its parent is the wizard.
    EXPECT_EQ(secondPage->findChild<QSpinBox*>("historyDays")->value(), 30);
    window->log.clear();
    secondPage->findChild<QSpinBox*>("historyDays")->setValue(60);
    EXPECT_EQ(window->log, std::vector<std::string>{"set 258 60"});

    m_pCommonUI->DestroyPage(firstId);
    m_pCommonUI->DestroyPage(secondId);
    EXPECT_TRUE(firstPage.isNull());
    EXPECT_TRUE(secondPage.isNull());
    EXPECT_EQ(journalFrom("DestroyPage"),
              (std::vector<std::string>{"DestroyPage 4", "DestroyPage 5"}));
}

TEST_F(PluginPages, TheSummaryCountsComeFromTheService) {
    start();
    control({"--counts", "spam=5", "examined=81"});
    setUpPages();
    std::uint32_t spam = 0;
    std::uint32_t examined = 0;
    EXPECT_EQ(m_pQGInfo->GetSpamCount(&spam), 0);
    EXPECT_EQ(m_pQGInfo->GetExaminedCount(&examined), 0);
    EXPECT_EQ(spam, 5u);
    EXPECT_EQ(examined, 81u);
    EXPECT_EQ(journalFrom("GetSpamCount"),
              (std::vector<std::string>{"GetSpamCount -> 5", "GetExaminedCount -> 81"}));
}

TEST_F(PluginPages, WithoutTheServiceTheSummaryCountsFail) {
    setUpPages();
    std::uint32_t spam = 99;
    EXPECT_EQ(m_pQGInfo->GetSpamCount(&spam), E_FAIL);
    EXPECT_EQ(spam, 0u);
}
