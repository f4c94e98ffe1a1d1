// The loader against real libraries built for the purpose: every failure text and result,
// whether the library stays in the process, the factories' order and the handlers' binding.

#include "mainwindow/PluginLoader.h"

#include "FakeLocalizer.h"
#include "MainWindowTestApp.h"
#include "RecordingMessageBoxes.h"
#include "TestPluginLibrary.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/TraceLevels.h"
#include "mainwindow/PluginCallbacks.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <string>
#include <vector>

// Keeps the foundation's exception in this program for the test library that throws it:
// the library takes the constructor from the program, which exports its symbols. External
// linkage, so that the reference is always emitted.
Corvane::BaseException MakeExceptionForTestPlugins();
Corvane::BaseException MakeExceptionForTestPlugins() {
    return Corvane::BaseException(u"PluginLoaderTest", 0, u"");
}

namespace {

std::u16string U16(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

// Seven handlers that can be told apart, one per message id.
template <int N>
std::int32_t Handler(const std::uint8_t*, std::uint32_t, std::uint8_t**, std::int32_t*) {
    return N;
}

PluginCallbacks TestCallbacks() {
    PluginCallbacks callbacks;
    callbacks.trayAnimation = &Handler<256>;
    callbacks.failedToLoadLsp = &Handler<260>;
    callbacks.id261 = &Handler<261>;
    callbacks.lspError = &Handler<263>;
    callbacks.reinstallLsp = &Handler<264>;
    callbacks.exitProgram = &Handler<265>;
    callbacks.configChange = &Handler<258>;
    return callbacks;
}

std::u16string PointerText(const void* pointer) {
    char text[32];
    std::snprintf(text, sizeof text, "%016" PRIXPTR, reinterpret_cast<std::uintptr_t>(pointer));
    return U16(text);
}

class PluginLoaderTest : public ::testing::Test {
protected:
    void SetUp() override {
        MainWindowTestApp();
        TestPlugins::ResetPluginGlobals();
        TraceRecorder::Instance().Clear();
    }
    void TearDown() override { TestPlugins::ResetPluginGlobals(); }

    bool Load(const std::string& library) {
        PluginLoader loader(m_boxes, TestCallbacks(), library);
        return loader.LoadPlugin();
    }

    RecordingMessageBoxes m_boxes;
};

TEST_F(PluginLoaderTest, AbsentLibraryShowsTheLoadDllKeyWithTheDebugNameAndTheSystemWords) {
    const std::string missing = std::string(QG_TEST_PLUGIN_DIR) + "/libQGPlugin_absent.so";

    EXPECT_FALSE(Load(missing));

    ASSERT_EQ(m_boxes.boxes.size(), 1u);
    EXPECT_EQ(m_boxes.boxes[0].owner, nullptr);
    EXPECT_EQ(m_boxes.boxes[0].text,
              u"LoadDll##libQGPlugin_d.so##" + U16(missing) +
                  u": cannot open shared object file: No such file or directory");
    EXPECT_EQ(m_boxes.boxes[0].caption, u"");
    EXPECT_EQ(m_boxes.boxes[0].type, IMessageBoxes::MB_OK);
    EXPECT_EQ(m_hPluginModule, nullptr);
    EXPECT_EQ(m_pStandAlone, nullptr);
    EXPECT_EQ(m_pRPCExt, nullptr);
}

class MissingExportTest : public PluginLoaderTest,
                          public ::testing::WithParamInterface<const char*> {};

TEST_P(MissingExportTest, NamesTheMissingFactoryAndLeavesTheLibraryLoaded) {
    const std::string factory = GetParam();
    const std::string path = TestPlugins::PathOf("missing_" + factory);

    EXPECT_FALSE(Load(path));

    ASSERT_EQ(m_boxes.boxes.size(), 1u);
    EXPECT_EQ(m_boxes.boxes[0].owner, nullptr);
    EXPECT_EQ(m_boxes.boxes[0].text, u"LoadFunc##" + U16(factory) + u"##libQGPlugin_d.so##" +
                                         U16(path) + u": undefined symbol: " + U16(factory));
    EXPECT_EQ(m_boxes.boxes[0].caption, u"");
    EXPECT_EQ(m_boxes.boxes[0].type, IMessageBoxes::MB_OK);
    EXPECT_TRUE(TestPlugins::IsLoaded(path));
    EXPECT_NE(m_hPluginModule, nullptr);

    // No factory was called.
    const TestPlugins::Library library(path);
    ASSERT_TRUE(library.IsOpen());
    EXPECT_TRUE(library.Journal().empty());
    EXPECT_EQ(m_pStandAlone, nullptr);
    EXPECT_EQ(m_pPlugin, nullptr);
    EXPECT_EQ(m_pCommonUI, nullptr);
    EXPECT_EQ(m_pQGInfo, nullptr);
    EXPECT_EQ(m_pRPCExt, nullptr);
}

INSTANTIATE_TEST_SUITE_P(EachFactory, MissingExportTest,
                         ::testing::Values("CreateQGInstance", "CreateQGInstanceStandAlone",
                                           "CreateCIInstance", "CreateQGInfo",
                                           "CreateRPCInstance"));

TEST_F(PluginLoaderTest, OfTwoMissingExportsTheFirstInLookUpOrderIsNamed) {
    // CreateQGInstance is looked up before CreateCIInstance.
    const std::string first = TestPlugins::PathOf("missing_CIInstance_and_QGInstance");
    EXPECT_FALSE(Load(first));
    // CreateQGInstanceStandAlone is looked up second, CreateRPCInstance last.
    TestPlugins::ResetPluginGlobals();
    const std::string second = TestPlugins::PathOf("missing_RPCInstance_and_StandAlone");
    EXPECT_FALSE(Load(second));

    ASSERT_EQ(m_boxes.boxes.size(), 2u);
    EXPECT_EQ(m_boxes.boxes[0].text, u"LoadFunc##CreateQGInstance##libQGPlugin_d.so##" +
                                         U16(first) + u": undefined symbol: CreateQGInstance");
    EXPECT_EQ(m_boxes.boxes[1].text, u"LoadFunc##CreateQGInstanceStandAlone##libQGPlugin_d.so##" +
                                         U16(second) +
                                         u": undefined symbol: CreateQGInstanceStandAlone");
}

TEST_F(PluginLoaderTest, FactoryAnsweringNullShowsString253TracesThePointersAndFreesTheLibrary) {
    const FakeLocalizer localizer(
        {{u"QGSA_253", u"Failed to initialize Quillgate GUI, please find detail infomation in "
                       u"log file."},
         {u"QGSA_129", u"Quillgate"}});
    const std::string path = TestPlugins::PathOf("null_CreateRPCInstance");

    EXPECT_FALSE(Load(path));

    ASSERT_EQ(m_boxes.boxes.size(), 1u);
    EXPECT_EQ(m_boxes.boxes[0].owner, nullptr);
    EXPECT_EQ(m_boxes.boxes[0].text,
              u"Failed to initialize Quillgate GUI, please find detail infomation in log file.");
    EXPECT_EQ(m_boxes.boxes[0].caption, u"Quillgate");
    EXPECT_EQ(m_boxes.boxes[0].type, IMessageBoxes::MB_OK);
    ASSERT_NE(m_pStandAlone, nullptr);
    ASSERT_NE(m_pPlugin, nullptr);
    ASSERT_NE(m_pCommonUI, nullptr);
    ASSERT_NE(m_pQGInfo, nullptr);
    EXPECT_EQ(m_pRPCExt, nullptr);
    const std::u16string expected =
        u"m_pStandAlone: 0x" + PointerText(m_pStandAlone) + u", m_pPlugin: 0x" +
        PointerText(m_pPlugin) + u", m_pCommonUI: 0x" + PointerText(m_pCommonUI) +
        u", m_pQGInfo: 0x" + PointerText(m_pQGInfo) + u", m_pRPCExt: 0x0000000000000000";
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR, expected), 1u);
    EXPECT_EQ(m_hPluginModule, nullptr);
    EXPECT_FALSE(TestPlugins::IsLoaded(path));
}

TEST_F(PluginLoaderTest, FirstFactoryAnsweringNullStillCallsTheOthersAndFails) {
    const std::string path = TestPlugins::PathOf("null_CreateQGInstanceStandAlone");
    // The test's own reference keeps the library for its journal after the loader frees it.
    const TestPlugins::Library library(path);
    library.Reset();

    EXPECT_FALSE(Load(path));

    EXPECT_EQ(library.Journal(),
              (std::vector<std::string>{"CreateQGInstanceStandAlone", "CreateQGInstance",
                                        "CreateCIInstance", "CreateQGInfo", "CreateRPCInstance"}));
    EXPECT_EQ(m_pStandAlone, nullptr);
    EXPECT_NE(m_pRPCExt, nullptr);
    ASSERT_EQ(m_boxes.boxes.size(), 1u);
    EXPECT_EQ(m_hPluginModule, nullptr);
    EXPECT_EQ(TraceRecorder::Instance()
                  .StartingWith(TRACE_ERROR, u"m_pStandAlone: 0x0000000000000000, m_pPlugin: 0x")
                  .size(),
              1u);
}

TEST_F(PluginLoaderTest, CompleteLibraryGivesFiveObjectsInFactoryOrderAndBindsTheHandlers) {
    const std::string path = TestPlugins::PathOf("complete");
    const TestPlugins::Library library(path);
    library.Reset();

    EXPECT_TRUE(Load(path));

    EXPECT_TRUE(m_boxes.boxes.empty());
    EXPECT_NE(m_pStandAlone, nullptr);
    EXPECT_NE(m_pPlugin, nullptr);
    EXPECT_NE(m_pCommonUI, nullptr);
    EXPECT_NE(m_pQGInfo, nullptr);
    EXPECT_NE(m_pRPCExt, nullptr);
    EXPECT_NE(m_hPluginModule, nullptr);
    EXPECT_EQ(library.Journal(),
              (std::vector<std::string>{
                  "CreateQGInstanceStandAlone", "CreateQGInstance", "CreateCIInstance",
                  "CreateQGInfo", "CreateRPCInstance", "RegisterHandler 256", "RegisterHandler 260",
                  "RegisterHandler 261", "RegisterHandler 263", "RegisterHandler 264",
                  "RegisterHandler 265", "RegisterHandler 258"}));
    EXPECT_EQ(library.Handler(256), &Handler<256>);
    EXPECT_EQ(library.Handler(258), &Handler<258>);
    EXPECT_EQ(library.Handler(260), &Handler<260>);
    EXPECT_EQ(library.Handler(261), &Handler<261>);
    EXPECT_EQ(library.Handler(263), &Handler<263>);
    EXPECT_EQ(library.Handler(264), &Handler<264>);
    EXPECT_EQ(library.Handler(265), &Handler<265>);
}

TEST_F(PluginLoaderTest, FoundationExceptionFromAFactoryIsTracedAndCountsAsSuccess) {
    const std::string path = TestPlugins::PathOf("throw_corvane");
    const TestPlugins::Library library(path);
    library.Reset();

    EXPECT_TRUE(Load(path));

    EXPECT_TRUE(m_boxes.boxes.empty());
    EXPECT_EQ(
        TraceRecorder::Instance().Count(
            TRACE_ERROR, u"CMainDlg::LoadPlugin(): Exception (the test plug-in refuses to start)"),
        1u);
    // The objects made before the throw stay; the rest are missing and nothing is bound.
    EXPECT_NE(m_pStandAlone, nullptr);
    EXPECT_NE(m_pPlugin, nullptr);
    EXPECT_EQ(m_pCommonUI, nullptr);
    EXPECT_EQ(m_pQGInfo, nullptr);
    EXPECT_EQ(m_pRPCExt, nullptr);
    EXPECT_EQ(library.Journal(),
              (std::vector<std::string>{"CreateQGInstanceStandAlone", "CreateQGInstance",
                                        "CreateCIInstance"}));
    EXPECT_NE(m_hPluginModule, nullptr);
}

TEST_F(PluginLoaderTest, AnyOtherExceptionFromAFactoryIsTracedAsUnhandledAndFails) {
    const std::string path = TestPlugins::PathOf("throw_other");

    EXPECT_FALSE(Load(path));

    EXPECT_TRUE(m_boxes.boxes.empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              u"CMainDlg::LoadPlugin(): Unhandled exception"),
              1u);
    EXPECT_TRUE(TestPlugins::IsLoaded(path));
}

TEST_F(PluginLoaderTest, BareNameIsFoundThroughTheProgramsRunPath) {
    EXPECT_STREQ(PluginLoader::LibraryName, "libQGPlugin.so");
    PluginLoader loader(m_boxes, TestCallbacks());

    EXPECT_TRUE(loader.LoadPlugin());

    EXPECT_TRUE(m_boxes.boxes.empty());
    EXPECT_TRUE(TestPlugins::IsLoaded(TestPlugins::RunPathLibrary()));
}

TEST_F(PluginLoaderTest, FreePluginUnloadsTheLibraryAndLeavesThePointers) {
    const std::string path = TestPlugins::PathOf("complete");
    ASSERT_TRUE(Load(path));
    IQGPlugin* plugin = m_pPlugin;

    PluginLoader::FreePlugin();

    EXPECT_EQ(m_hPluginModule, nullptr);
    EXPECT_FALSE(TestPlugins::IsLoaded(path));
    EXPECT_EQ(m_pPlugin, plugin);
    // A second call has nothing to free.
    PluginLoader::FreePlugin();
    EXPECT_EQ(m_hPluginModule, nullptr);
}

} // namespace
