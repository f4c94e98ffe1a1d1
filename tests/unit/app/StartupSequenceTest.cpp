#include "app/StartupSequence.h"

#include "app/IStartupSteps.h"
#include "foundation/CorvaneBaseException.h"

#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Records each step by name; a step can be told to fail or to throw.
class FakeStartupSteps : public IStartupSteps {
public:
    bool StartMessageThread() override { return Step("StartMessageThread"), threadStarts; }
    void RequestLowFragmentationHeap() override { Step("RequestLowFragmentationHeap"); }
    bool ReadModuleFileName(stdstr& path) override {
        Step("ReadModuleFileName");
        path = exePath;
        return exePathReadable;
    }
    void DiscoverLanguages() override { Step("DiscoverLanguages"); }
    stdstr LanguageSettingText() override { return Step("LanguageSettingText"), language; }
    void SelectLanguage(const stdstr& name) override {
        Step("SelectLanguage");
        selected = name;
    }
    void InstallTranslator() override { Step("InstallTranslator"); }
    std::int32_t InitModule() override { return Step("InitModule"), moduleResult; }
    void LoadGUIResources() override { Step("LoadGUIResources"); }
    bool EnsureServiceRunning() override { return Step("EnsureServiceRunning"), serviceRuns; }
    stdstr AppDataFolder() override { return Step("AppDataFolder"), appData; }
    void LoadSettings() override { Step("LoadSettings"); }
    bool CheckSingleInstance() override { return Step("CheckSingleInstance"), firstCopy; }
    void LoadDrives() override { Step("LoadDrives"); }
    void ShowErrorBox(const stdstr& text) override { boxes.push_back(text); }

    std::vector<std::string> steps;
    std::vector<stdstr> boxes;
    std::map<std::string, std::function<void()>> throwAt;

    bool threadStarts = true;
    stdstr exePath = u"/usr/lib/quillgate/quillgate";
    bool exePathReadable = true;
    stdstr language = u"1033";
    stdstr selected;
    std::int32_t moduleResult = 0;
    bool serviceRuns = true;
    stdstr appData;
    bool firstCopy = true;

private:
    void Step(const std::string& name) {
        steps.push_back(name);
        if (auto it = throwAt.find(name); it != throwAt.end())
            it->second();
    }
};

class StartupSequenceTest : public ::testing::Test {
protected:
    void SetUp() override {
        TraceRecorder::Instance().Clear();
        steps.appData = stdstr::toTString(sandbox.file("home/.config"));
    }

    std::vector<std::u16string> Traced(std::uint32_t level) {
        return TraceRecorder::Instance().At(level);
    }

    TestSupport::SandboxRoot sandbox;
    FakeStartupSteps steps;
    StartupSequence sequence{steps};
};

const std::vector<std::string> AllSteps = {
    "StartMessageThread",  "RequestLowFragmentationHeap",
    "ReadModuleFileName",  "DiscoverLanguages",
    "LanguageSettingText", "SelectLanguage",
    "InstallTranslator",   "InitModule",
    "LoadGUIResources",    "EnsureServiceRunning",
    "AppDataFolder",       "LoadSettings",
    "CheckSingleInstance", "LoadDrives",
};

TEST_F(StartupSequenceTest, AllStepsRunInOrderWithTheirTraces) {
    EXPECT_EQ(sequence.Init(), 0);

    EXPECT_EQ(steps.steps, AllSteps);
    EXPECT_EQ(Traced(TRACE_DEBUG), (std::vector<std::u16string>{
                                       u"Init - start",
                                       u"Quillgate exe full path = /usr/lib/quillgate/quillgate",
                                       u"Quillgate exe folder = /usr/lib/quillgate",
                                       u"Load language files.",
                                       u"Load GUI Resources",
                                       u"Load Registry and other configs",
                                       u"Getting list of drives",
                                       u"Init - ended",
                                   }));
    const stdstr folder = steps.appData + u"/Quillgate";
    EXPECT_EQ(Traced(TRACE_INFO),
              (std::vector<std::u16string>{u"Quillgate Configuration folder = " + folder}));
    EXPECT_TRUE(steps.boxes.empty());
}

TEST_F(StartupSequenceTest, ThePathsAreKept) {
    ASSERT_EQ(sequence.Init(), 0);

    EXPECT_EQ(sequence.GetPaths().exePath, u"/usr/lib/quillgate/quillgate");
    EXPECT_EQ(sequence.GetPaths().exeFolder, u"/usr/lib/quillgate");
    EXPECT_EQ(sequence.GetPaths().configFolder, steps.appData + u"/Quillgate");
}

TEST_F(StartupSequenceTest, APathWithoutASlashHasAnEmptyFolder) {
    steps.exePath = u"quillgate";

    ASSERT_EQ(sequence.Init(), 0);

    EXPECT_EQ(sequence.GetPaths().exeFolder, u"");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Quillgate exe folder = "), 1u);
}

TEST_F(StartupSequenceTest, TheLanguageSettingSelectsItsName) {
    steps.language = u"1036";
    ASSERT_EQ(sequence.Init(), 0);
    EXPECT_EQ(steps.selected, u"French");
}

TEST_F(StartupSequenceTest, ALanguageThatIsNotANumberSelectsTheDefault) {
    steps.language = u"Deutsch";
    ASSERT_EQ(sequence.Init(), 0);
    EXPECT_EQ(steps.selected, u"English (US)");
}

TEST_F(StartupSequenceTest, TheResultOfTheMessageThreadIsNotLookedAt) {
    steps.threadStarts = false;
    EXPECT_EQ(sequence.Init(), 0);
    EXPECT_EQ(steps.steps, AllSteps);
}

TEST_F(StartupSequenceTest, AnUnreadableProgramPathIsShownAndFails) {
    steps.exePathReadable = false;

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_EQ(steps.steps,
              (std::vector<std::string>{"StartMessageThread", "RequestLowFragmentationHeap",
                                        "ReadModuleFileName"}));
    const std::u16string message =
        u"Quillgate failed to initialize. Please make sure Quillgate is properly installed";
    EXPECT_EQ(steps.boxes, (std::vector<stdstr>{message}));
    EXPECT_EQ(Traced(TRACE_ERROR), (std::vector<std::u16string>{message}));
    // The clause goes on to the last trace.
    EXPECT_EQ(Traced(TRACE_DEBUG).back(), u"Init - ended");
}

TEST_F(StartupSequenceTest, AFailedModuleInitIsShownAndFails) {
    steps.moduleResult = -5;

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_EQ(steps.steps.back(), "InitModule");
    EXPECT_EQ(steps.boxes.size(), 1u);
    EXPECT_EQ(Traced(TRACE_DEBUG).back(), u"Init - ended");
}

TEST_F(StartupSequenceTest, APositiveModuleResultIsTheResultOfInit) {
    steps.moduleResult = 1;
    EXPECT_EQ(sequence.Init(), 1);
    EXPECT_EQ(steps.steps, AllSteps);
}

TEST_F(StartupSequenceTest, AServiceThatDoesNotRunEndsTheStartQuietly) {
    steps.serviceRuns = false;

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_EQ(steps.steps.back(), "EnsureServiceRunning");
    EXPECT_TRUE(steps.boxes.empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Init - ended"), 0u);
}

TEST_F(StartupSequenceTest, TheConfigFolderIsMadeOneLevelDeep) {
    const std::string folder = sandbox.file("home/.config/Quillgate");
    ASSERT_FALSE(fs::exists(folder));

    ASSERT_EQ(sequence.Init(), 0);

    EXPECT_TRUE(fs::is_directory(folder));
}

TEST_F(StartupSequenceTest, AnExistingConfigFolderIsKept) {
    sandbox.writeFile("home/.config/Quillgate/keep.txt", "x");

    ASSERT_EQ(sequence.Init(), 0);

    EXPECT_EQ(TestSupport::SandboxRoot::readFile(sandbox.file("home/.config/Quillgate/keep.txt")),
              "x");
}

TEST_F(StartupSequenceTest, AConfigFolderThatCannotBeMadeFailsWithoutAMessage) {
    // A file where the parent folder should be: no user, root included, can make it.
    sandbox.writeFile("home/blocked", "not a folder");
    steps.appData = stdstr::toTString(sandbox.file("home/blocked"));

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_EQ(steps.steps.back(), "AppDataFolder");
    EXPECT_TRUE(steps.boxes.empty());
    EXPECT_TRUE(Traced(TRACE_ERROR).empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Init - ended"), 0u);
}

TEST_F(StartupSequenceTest, AMissingParentOfTheConfigFolderIsNotMade) {
    steps.appData = stdstr::toTString(sandbox.file("home/absent"));

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_FALSE(fs::exists(sandbox.file("home/absent")));
}

TEST_F(StartupSequenceTest, ASecondCopyFailsBeforeTheDrives) {
    steps.firstCopy = false;

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_EQ(steps.steps.back(), "CheckSingleInstance");
    EXPECT_TRUE(steps.boxes.empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Init - ended"), 0u);
}

TEST_F(StartupSequenceTest, TheFoundationsExceptionFromAnyStepIsShownAndFails) {
    steps.throwAt["LoadSettings"] = [] {
        throw Corvane::BaseException(u"RegStore", 12, u"Store broken", 5);
    };

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    EXPECT_EQ(steps.steps.back(), "LoadSettings");
    EXPECT_EQ(steps.boxes, (std::vector<stdstr>{u"Store broken"}));
    EXPECT_EQ(Traced(TRACE_ERROR), (std::vector<std::u16string>{u"Store broken"}));
    EXPECT_EQ(Traced(TRACE_DEBUG).back(), u"Init - ended");
}

TEST_F(StartupSequenceTest, ThePercentSignOfAnExceptionsMessageIsTakenAsAConversion) {
    steps.throwAt["LoadDrives"] = [] {
        throw Corvane::BaseException(u"Drives", 1, u"disk 100%d full", 5);
    };

    EXPECT_EQ(sequence.Init(), StartupSequence::E_FAIL);

    // The box shows the message as it is; the trace line does not.
    EXPECT_EQ(steps.boxes, (std::vector<stdstr>{u"disk 100%d full"}));
    const auto errors = Traced(TRACE_ERROR);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_NE(errors[0], u"disk 100%d full");
}

TEST_F(StartupSequenceTest, AnyOtherExceptionIsShownAsUnhandledAndThrownOn) {
    steps.throwAt["CheckSingleInstance"] = [] { throw std::runtime_error("boom"); };

    EXPECT_THROW(sequence.Init(), std::runtime_error);

    EXPECT_EQ(steps.boxes, (std::vector<stdstr>{u"Unhandled exception"}));
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Init - ended"), 0u);
}

TEST(StartupSequenceFolders, TheFolderIsWhatStandsBeforeTheLastSlash) {
    EXPECT_EQ(StartupSequence::FolderOf(u"/a/b/c"), u"/a/b");
    EXPECT_EQ(StartupSequence::FolderOf(u"/c"), u"");
    EXPECT_EQ(StartupSequence::FolderOf(u"c"), u"");
    EXPECT_EQ(StartupSequence::FolderOf(u"/a/b/"), u"/a/b");
}

} // namespace
