// Waiting for, starting and stopping the filter service at start-up and exit.

#include "app/ServiceSupervisor.h"

#include "EnglishTexts.h"
#include "RecordingBoxes.h"
#include "ScriptedService.h"
#include "localisation/QGEntString.h"
#include "resource.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using State = ScriptedService::State;
using namespace std::chrono_literals;

const stdstr NotFoundText = u"Failed to find Velloran Quillgate Service, please ensure you have "
                            u"installed Quillgate successfully.";
const stdstr StartFailedText = u"Failed to start Velloran Quillgate service, unable to run "
                               u"Quillgate, please contace your administrator.";
const stdstr StopFailedText =
    u"The Velloran Quillgate service has failed to stop. Please contact your administrator.";

class ServiceSupervisorTest : public ::testing::Test {
protected:
    void SetUp() override { trace.Clear(); }

    ServiceSupervisor Make(bool showMainWindow) {
        return ServiceSupervisor(
            service.Factory(), boxes, dialogs, [showMainWindow] { return showMainWindow; },
            clock.Sleep(), EnglishText);
    }

    void ExpectOneBox(const stdstr& text) {
        const auto shown = boxes.Boxes();
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].text, text);
        EXPECT_EQ(shown[0].caption, u"Quillgate");
        EXPECT_EQ(shown[0].type, 0u);
        EXPECT_EQ(shown[0].owner, nullptr);
    }

    std::size_t Count(std::uint32_t level, const char16_t* text) {
        return trace.Count(level, text);
    }

    ScriptedService service;
    ScriptedDialogs dialogs;
    RecordingClock clock;
    RecordingBoxes boxes;
    TraceRecorder& trace = TraceRecorder::Instance();
};

} // namespace

TEST_F(ServiceSupervisorTest, AMissingServiceAtStartShowsString254AndFails) {
    service.state = State::Missing;
    EXPECT_FALSE(Make(true).EnsureServiceRunning());
    ExpectOneBox(NotFoundText);
    EXPECT_TRUE(dialogs.runs.empty());
}

TEST_F(ServiceSupervisorTest, TheServiceIsAskedForByItsName) {
    service.state = State::Running;
    Make(true).EnsureServiceRunning();
    ASSERT_FALSE(service.names.empty());
    for (const stdstr& name : service.names)
        EXPECT_EQ(name, u"VelloranQuillgateSvc");
}

TEST_F(ServiceSupervisorTest, ARunningServiceNeedsNothing) {
    service.state = State::Running;
    EXPECT_TRUE(Make(false).EnsureServiceRunning());
    EXPECT_TRUE(dialogs.runs.empty());
    EXPECT_TRUE(clock.waits.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, AServiceStillStartingAtANormalStartIsGoodEnough) {
    service.state = State::Starting;
    EXPECT_TRUE(Make(true).EnsureServiceRunning());
    EXPECT_TRUE(dialogs.runs.empty());
    EXPECT_TRUE(clock.waits.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, AServiceStillStoppingIsGoodEnoughToo) {
    service.state = State::Stopping;
    EXPECT_TRUE(Make(false).EnsureServiceRunning());
    EXPECT_TRUE(dialogs.runs.empty());
}

TEST_F(ServiceSupervisorTest, ANormalStartWithTheServiceStoppedRunsTheStartDialogAtOnce) {
    dialogs.onRun = [this](bool) { service.state = State::Running; };
    EXPECT_TRUE(Make(true).EnsureServiceRunning());
    EXPECT_EQ(dialogs.runs, std::vector<bool>{true});
    EXPECT_TRUE(clock.waits.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, ADialogResultOfZeroIsBelievedWithoutAnotherLook) {
    dialogs.result = 0; // the service stays stopped
    const int startedBefore = service.startedCalls;
    EXPECT_TRUE(Make(true).EnsureServiceRunning());
    EXPECT_EQ(service.startedCalls, startedBefore);
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, AFailedStartWithTheServiceNotRunningShowsString255) {
    dialogs.result = 1;
    EXPECT_FALSE(Make(true).EnsureServiceRunning());
    ExpectOneBox(StartFailedText);
}

TEST_F(ServiceSupervisorTest, AFailedStartWithTheServiceRunningAfterAllIsGood) {
    dialogs.result = 1;
    dialogs.onRun = [this](bool) { service.state = State::Running; };
    EXPECT_TRUE(Make(true).EnsureServiceRunning());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, AFailedStartWithTheServiceStillStartingShowsString255) {
    // Only a running service counts after the dialog.
    dialogs.result = -1;
    dialogs.onRun = [this](bool) { service.state = State::Starting; };
    EXPECT_FALSE(Make(true).EnsureServiceRunning());
    ExpectOneBox(StartFailedText);
}

TEST_F(ServiceSupervisorTest, ASilentStartWaitsForTheServiceToComeUpByItself) {
    clock.onWait = [this](std::size_t waits) {
        if (waits == 40)
            service.state = State::Running;
    };
    EXPECT_TRUE(Make(false).EnsureServiceRunning());
    EXPECT_EQ(clock.waits.size(), 40u);
    EXPECT_TRUE(std::all_of(clock.waits.begin(), clock.waits.end(),
                            [](auto wait) { return wait == 1000ms; }));
    EXPECT_EQ(Count(TRACE_INFO, u"Wait Service to start"), 39u);
    EXPECT_TRUE(dialogs.runs.empty());
}

TEST_F(ServiceSupervisorTest, ASilentStartShowsNoWindowFor91SecondsAndThenTheStartDialog) {
    std::size_t waitsBeforeDialog = 0;
    dialogs.onRun = [&](bool) {
        waitsBeforeDialog = clock.waits.size();
        service.state = State::Running;
    };
    EXPECT_TRUE(Make(false).EnsureServiceRunning());
    EXPECT_EQ(waitsBeforeDialog, 91u);
    EXPECT_EQ(clock.waits.size(), 91u);
    EXPECT_EQ(Count(TRACE_INFO, u"Wait Service to start"), 91u);
    EXPECT_EQ(Count(TRACE_INFO, u"Wait service to start1"), 0u);
    EXPECT_EQ(dialogs.runs, std::vector<bool>{true});
}

TEST_F(ServiceSupervisorTest, ASilentStartWaits31MoreTimesForAServiceOnItsWay) {
    clock.onWait = [this](std::size_t waits) {
        if (waits == 1)
            service.state = State::Starting;
        if (waits == 100)
            service.state = State::Running;
    };
    EXPECT_TRUE(Make(false).EnsureServiceRunning());
    EXPECT_EQ(clock.waits.size(), 100u);
    EXPECT_EQ(Count(TRACE_INFO, u"Wait Service to start"), 91u);
    EXPECT_EQ(Count(TRACE_INFO, u"Wait service to start1"), 8u);
    EXPECT_TRUE(dialogs.runs.empty());
}

TEST_F(ServiceSupervisorTest, ASilentStartGivesUpAfter122WaitsWithATraceOnly) {
    clock.onWait = [this](std::size_t) { service.state = State::Starting; };
    EXPECT_FALSE(Make(false).EnsureServiceRunning());
    EXPECT_EQ(clock.waits.size(), 122u);
    EXPECT_EQ(Count(TRACE_INFO, u"Wait Service to start"), 91u);
    EXPECT_EQ(Count(TRACE_INFO, u"Wait service to start1"), 31u);
    EXPECT_EQ(Count(TRACE_ERROR, u"Quillgate is not started after 120 seconds"), 1u);
    EXPECT_TRUE(dialogs.runs.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, ASilentStartRunsTheDialogWhenTheServiceStoppedDuringTheSecondWaits) {
    clock.onWait = [this](std::size_t waits) {
        service.state = waits < 122 ? State::Starting : State::Stopped;
    };
    dialogs.result = 1;
    EXPECT_FALSE(Make(false).EnsureServiceRunning());
    EXPECT_EQ(clock.waits.size(), 122u);
    EXPECT_EQ(dialogs.runs, std::vector<bool>{true});
    EXPECT_EQ(Count(TRACE_ERROR, u"Quillgate is not started after 120 seconds"), 0u);
    ExpectOneBox(StartFailedText);
}

TEST_F(ServiceSupervisorTest, OneServiceManagerServesEachCall) {
    service.state = State::Running;
    ServiceSupervisor supervisor = Make(true);
    supervisor.EnsureServiceRunning();
    EXPECT_EQ(service.managersMade, 1);
    supervisor.StopFilterService();
    EXPECT_EQ(service.managersMade, 2);
}

TEST_F(ServiceSupervisorTest, StoppingAMissingServiceShowsString254) {
    service.state = State::Missing;
    EXPECT_FALSE(Make(true).StopFilterService());
    ExpectOneBox(NotFoundText);
    EXPECT_TRUE(dialogs.runs.empty());
}

TEST_F(ServiceSupervisorTest, ExitWhileTheServiceIsAlreadyStoppedShowsNoDialog) {
    service.state = State::Stopped;
    EXPECT_TRUE(Make(true).StopFilterService());
    EXPECT_TRUE(dialogs.runs.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, ExitWhileTheServiceIsStillStartingShowsNoDialog) {
    service.state = State::Starting;
    EXPECT_TRUE(Make(true).StopFilterService());
    EXPECT_TRUE(dialogs.runs.empty());
}

TEST_F(ServiceSupervisorTest, ExitStopsARunningServiceWithTheStopDialog) {
    service.state = State::Running;
    dialogs.onRun = [this](bool) { service.state = State::Stopped; };
    EXPECT_TRUE(Make(true).StopFilterService());
    EXPECT_EQ(dialogs.runs, std::vector<bool>{false});
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisorTest, AFailedStopShowsString259) {
    service.state = State::Running;
    dialogs.result = 1;
    EXPECT_FALSE(Make(true).StopFilterService());
    ExpectOneBox(StopFailedText);
}

TEST_F(ServiceSupervisorTest, ByDefaultTheTextsAreTheTranslatedStrings) {
    service.state = State::Missing;
    ServiceSupervisor supervisor(
        service.Factory(), boxes, dialogs, [] { return true; }, clock.Sleep());
    supervisor.EnsureServiceRunning();
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, QGEntString(IDS_SERVICE_NOT_FOUND).GetString());
    EXPECT_EQ(shown[0].caption, QGEntString(IDS_PRODUCT_NAME).GetString());
}
