// The page set-up against the complete test plug-in: the order of the calls that the
// plug-in sees (from its journal), what the main window keeps, and the trace lines.

#include "mainwindow/InitPluginPages.h"

#include "MainWindowTestApp.h"
#include "RecordingMessageBoxes.h"
#include "TestPluginLibrary.h"
#include "foundation/TraceLevels.h"
#include "mainwindow/HostInfoSink.h"
#include "mainwindow/IPageHost.h"
#include "mainwindow/PluginCallbacks.h"
#include "mainwindow/PluginLoader.h"
#include "support/TraceRecorder.h"

#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// The main window's sink, counting the plug-in's questions.
class CountingSink : public HostInfoSink {
public:
    std::uint32_t Reserved2() override {
        ++referenceQueries;
        return HostInfoSink::Reserved2();
    }
    int referenceQueries = 0;
};

// A main window stand-in that writes down what it is asked to keep.
class RecordingPageHost : public IPageHost {
public:
    RecordingPageHost() { window.setObjectName("mainWindow"); }

    QWidget* PageParent() override { return &window; }
    IInfoSink* InfoSink() override { return &sink; }
    stdstr ConfigPath() override { return configPath; }
    stdstr LanguageSetting() override { return language; }

    void SetPageField(PageField field, QWidget* page) override {
        calls.push_back("field " + FieldName(field) + " " + Name(page));
    }
    void AddPage(int index, QWidget* page) override {
        calls.push_back("add " + std::to_string(index) + " " + Name(page));
    }
    void SelectPage(int index) override { calls.push_back("select " + std::to_string(index)); }
    void MapButtonToPage(int buttonId, PluginPageId page) override {
        calls.push_back("map " + std::to_string(buttonId) + " " + std::to_string(page));
    }

    QWidget window;
    CountingSink sink;
    stdstr configPath = u"/var/lib/velloran/quillgate";
    stdstr language = u"1031";
    std::vector<std::string> calls;

private:
    static std::string Name(const QWidget* page) {
        return page == nullptr ? "null" : page->objectName().toStdString();
    }
    static std::string FieldName(PageField field) {
        switch (field) {
        case PageField::Status:
            return "Status";
        case PageField::AddressList:
            return "AddressList";
        case PageField::Settings:
            return "Settings";
        }
        return "?";
    }
};

std::vector<std::string> PageInfoCalls(int count) {
    std::vector<std::string> calls;
    for (int i = 0; i < count; ++i)
        calls.push_back("GetPageInfo " + std::to_string(i));
    return calls;
}

std::vector<std::string> Joined(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> all;
    for (const auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

class InitPluginPagesTest : public ::testing::Test {
protected:
    void SetUp() override {
        TestPlugins::ResetPluginGlobals();
        ASSERT_TRUE(m_library.IsOpen());
        RecordingMessageBoxes boxes;
        PluginLoader loader(boxes, PluginCallbacks(), TestPlugins::PathOf("complete"));
        ASSERT_TRUE(loader.LoadPlugin());
        // Only the page set-up's calls from here on.
        m_library.Reset();
        TraceRecorder::Instance().Clear();
    }
    void TearDown() override {
        // The pages belong to the main window: they go before the library that made them.
        for (QWidget* page : m_host.window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            delete page;
        TestPlugins::ResetPluginGlobals();
    }

    // First, so that the application exists before the host's window.
    QApplication& m_app = MainWindowTestApp();
    TestPlugins::Library m_library{TestPlugins::PathOf("complete")};
    RecordingPageHost m_host;
};

TEST_F(InitPluginPagesTest, CallsThePluginInTheContractsOrder) {
    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(m_library.Journal(),
              Joined({{"SetInfoSink ref=1", "GetPageCount"},
                      PageInfoCalls(13),
                      {"SetConfigPath /var/lib/velloran/quillgate 27", "InitGUI German",
                       "SetLanguage German", "Enabled 0", "SetPageMetrics 0 143 2 65 18",
                       "CreatePage record=9 parent=mainWindow show=1",
                       "CreateListPage record=0 parent=mainWindow 2 0 1",
                       "CreatePage record=8 parent=mainWindow show=1"}}));
}

TEST_F(InitPluginPagesTest, KeepsEachCreatedPageInItsFieldStackSlotAndButtonMap) {
    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(m_host.calls, (std::vector<std::string>{
                                "field Status page9", "add 0 page9", "select 0", "map 1000 109",
                                "field AddressList page0", "add 1 page0", "map 1001 100",
                                "field Settings page8", "add 2 page8", "map 1003 108"}));
    auto& trace = TraceRecorder::Instance();
    EXPECT_EQ(
        trace.Count(TRACE_DEBUG, u"CMainDlg::InitPluginPages(): Status page created successfully."),
        1u);
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CMainDlg::InitPluginPages(): Address list page created successfully."),
              1u);
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CMainDlg::InitPluginPages(): Settings page created successfully."),
              1u);
}

TEST_F(InitPluginPagesTest, TheSinkHandedOverIsTheMainWindows) {
    // The test plug-in asks the sink it gets for its reference value once.
    EXPECT_TRUE(InitPluginPages(m_host));
    EXPECT_EQ(m_host.sink.referenceQueries, 1);
}

TEST_F(InitPluginPagesTest, PageCountBelowTenStillCreatesPagesFromRecordsNineAndEight) {
    m_library.Set("PageCount", 5);

    EXPECT_TRUE(InitPluginPages(m_host));

    const auto journal = m_library.Journal();
    EXPECT_EQ(std::vector<std::string>(journal.begin() + 2, journal.begin() + 7), PageInfoCalls(5));
    EXPECT_EQ(std::vector<std::string>(journal.end() - 3, journal.end()),
              (std::vector<std::string>{"CreatePage record=unfilled parent=mainWindow show=1",
                                        "CreateListPage record=0 parent=mainWindow 2 0 1",
                                        "CreatePage record=unfilled parent=mainWindow show=1"}));
}

TEST_F(InitPluginPagesTest, PageCountAboveThirteenAsksForEveryRecordWithoutOverrunning) {
    m_library.Set("PageCount", 16);

    EXPECT_TRUE(InitPluginPages(m_host));

    const auto journal = m_library.Journal();
    EXPECT_EQ(std::vector<std::string>(journal.begin() + 2, journal.begin() + 18),
              PageInfoCalls(16));
    EXPECT_EQ(journal.back(), "CreatePage record=8 parent=mainWindow show=1");
}

TEST_F(InitPluginPagesTest, NegativeInitGuiTracesClosingDownAndCreatesNoPages) {
    m_library.Set("InitGUI", -1);

    EXPECT_FALSE(InitPluginPages(m_host));

    EXPECT_EQ(m_library.Journal().back(), "InitGUI German");
    EXPECT_TRUE(m_host.calls.empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR,
                  u"CMainDlg::InitPluginPages(): m_pPlugin->InitGUI() failed!  Closing down GUI."),
              1u);
}

TEST_F(InitPluginPagesTest, PositiveInitGuiCountsAsSuccess) {
    m_library.Set("InitGUI", 7);
    EXPECT_TRUE(InitPluginPages(m_host));
    EXPECT_EQ(m_host.calls.size(), 10u);
}

TEST_F(InitPluginPagesTest, EnabledAnsweringExactlyEFailIsTracedAndTheSetUpGoesOn) {
    m_library.Set("Enabled", E_FAIL);

    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"CMainDlg::InitPluginPages() m_pPlugin()->Enabled() failed."),
              1u);
    EXPECT_EQ(m_host.calls.size(), 10u);
}

TEST_F(InitPluginPagesTest, EnabledAnsweringAnotherFailureIsNotTraced) {
    m_library.Set("Enabled", static_cast<int>(0x80004001u));

    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"CMainDlg::InitPluginPages() m_pPlugin()->Enabled() failed."),
              0u);
}

TEST_F(InitPluginPagesTest, FailedStatusPageIsTracedWithZeroAndLeftOut) {
    m_library.Set("NullPage9", 1);

    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(m_host.calls,
              (std::vector<std::string>{"field Status null", "field AddressList page0",
                                        "add 1 page0", "select 1", "map 1001 100",
                                        "field Settings page8", "add 2 page8", "map 1003 108"}));
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"CMainDlg::InitPluginPages(): m_pPlugin->CreatePage (0) failed"),
              1u);
}

TEST_F(InitPluginPagesTest, FailedAddressListPageIsTracedWithOne) {
    m_library.Set("NullPage0", 1);

    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(m_host.calls,
              (std::vector<std::string>{"field Status page9", "add 0 page9", "select 0",
                                        "map 1000 109", "field AddressList null",
                                        "field Settings page8", "add 2 page8", "map 1003 108"}));
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"CMainDlg::InitPluginPages(): m_pPlugin->CreatePage (1) failed"),
              1u);
}

TEST_F(InitPluginPagesTest, FailedSettingsPageIsTracedWithTwo) {
    m_library.Set("NullPage8", 1);

    EXPECT_TRUE(InitPluginPages(m_host));

    EXPECT_EQ(m_host.calls.back(), "field Settings null");
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"CMainDlg::InitPluginPages(): m_pPlugin->CreatePage (2) failed"),
              1u);
}

TEST_F(InitPluginPagesTest, LanguageSettingIsReadAsANumberAndNamed) {
    m_host.language = u" 1036 and more";
    EXPECT_TRUE(InitPluginPages(m_host));
    const auto journal = m_library.Journal();
    EXPECT_NE(std::find(journal.begin(), journal.end(), "InitGUI French"), journal.end());
    EXPECT_NE(std::find(journal.begin(), journal.end(), "SetLanguage French"), journal.end());
}

TEST_F(InitPluginPagesTest, UnknownOrEmptyLanguageSettingGivesUsEnglish) {
    m_host.language = u"";
    EXPECT_TRUE(InitPluginPages(m_host));
    const auto journal = m_library.Journal();
    EXPECT_NE(std::find(journal.begin(), journal.end(), "InitGUI English (US)"), journal.end());
}

TEST(LanguageIdFromSetting, ReadsAsWtoiDoes) {
    EXPECT_EQ(LanguageIdFromSetting(u"1031"), 1031);
    EXPECT_EQ(LanguageIdFromSetting(u"  \t2052x"), 2052);
    EXPECT_EQ(LanguageIdFromSetting(u"+1040"), 1040);
    EXPECT_EQ(LanguageIdFromSetting(u"-5"), -5);
    EXPECT_EQ(LanguageIdFromSetting(u"German"), 0);
    EXPECT_EQ(LanguageIdFromSetting(u""), 0);
    EXPECT_EQ(LanguageIdFromSetting(u"99999999999"), 2147483647);
    EXPECT_EQ(LanguageIdFromSetting(u"-99999999999"), -2147483647 - 1);
}

} // namespace
