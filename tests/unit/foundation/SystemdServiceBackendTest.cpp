#include "foundation/SystemdServiceBackend.h"

#include "foundation/ErrorKeys.h"
#include "foundation/ServiceManager.h"

#include "FakeSystemd.h"
#include "PrivateDbusDaemon.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace {

const stdstr Service = u"VelloranQuillgateSvc";

// A private bus with the stand-in systemd on it, and a ServiceManager that asks it.
class SystemdServiceBackendTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(daemon.address().empty()) << "dbus-daemon did not start";
        ASSERT_TRUE(systemd.ready()) << "the stand-in systemd could not take its name";
        TraceRecorder::Instance().Clear();
    }

    ServiceManager manager() {
        return ServiceManager(stdstr(), std::make_shared<SystemdServiceBackend>(daemon.address()));
    }

    static std::vector<std::u16string> errors() {
        return TraceRecorder::Instance().At(TRACE_ERROR);
    }

    TestSupport::SandboxRoot sandbox;
    PrivateDbusDaemon daemon{sandbox.path()};
    FakeSystemd systemd{daemon.address()};
};

std::u16string Line(const char16_t* enquiry, const char16_t* step, int error) {
    return stringFmt(u"ServiceManager::%s(%s): %s failed, error (%s)", enquiry, Service, step,
                     GetOSErrorText(error));
}

struct Expected {
    bool exists;
    bool started;
    bool stopped;
};

TEST_F(SystemdServiceBackendTest, EveryLoadAndActiveStateGivesItsThreeAnswers) {
    const std::vector<std::string> loadStates{"loaded", "masked", "error", "bad-setting",
                                              "not-found"};
    const std::vector<std::string> activeStates{"active",     "inactive",     "failed",
                                                "activating", "deactivating", "reloading"};
    for (const std::string& load : loadStates) {
        for (const std::string& active : activeStates) {
            SCOPED_TRACE(load + " / " + active);
            systemd.setUnit("VelloranQuillgateSvc.service", {load, active, false, false});
            TraceRecorder::Instance().Clear();
            ServiceManager asked = manager();
            const Expected answers{asked.ServiceExists(Service), asked.ServiceHasStarted(Service),
                                   asked.ServiceHasStopped(Service)};
            if (load == "not-found") {
                EXPECT_FALSE(answers.exists);
                EXPECT_FALSE(answers.started);
                EXPECT_TRUE(answers.stopped);
                EXPECT_EQ(errors(), (std::vector<std::u16string>{
                                        Line(u"ServiceExists", u"OpenService", ENOENT),
                                        Line(u"ServiceHasStarted", u"OpenService", ENOENT),
                                        Line(u"ServiceHasStopped", u"OpenService", ENOENT)}));
                continue;
            }
            EXPECT_TRUE(answers.exists);
            EXPECT_EQ(answers.started, active == "active");
            EXPECT_EQ(answers.stopped, active == "inactive" || active == "failed");
            EXPECT_TRUE(errors().empty());
        }
    }
}

TEST_F(SystemdServiceBackendTest, APendingServiceIsNeitherStartedNorStopped) {
    for (const char* pending : {"activating", "deactivating", "reloading"}) {
        systemd.setUnit("VelloranQuillgateSvc.service", {"loaded", pending, false, false});
        EXPECT_FALSE(manager().ServiceHasStarted(Service)) << pending;
        EXPECT_FALSE(manager().ServiceHasStopped(Service)) << pending;
    }
    EXPECT_TRUE(errors().empty());
}

TEST_F(SystemdServiceBackendTest, TheUnitIsLoadedByTheServiceNameWithItsSuffix) {
    systemd.setUnit("VelloranQuillgateSvc.service", {"loaded", "active", false, false});
    EXPECT_TRUE(manager().ServiceHasStarted(Service));
    EXPECT_EQ(systemd.loadedNames(), std::vector<std::string>{"VelloranQuillgateSvc.service"});
}

TEST_F(SystemdServiceBackendTest, AServiceSystemdDoesNotKnowDoesNotExistAndTracesOneLineEach) {
    // The stand-in answers LoadUnit for any name, with "not-found" for those it has no unit of.
    ServiceManager asked = manager();
    EXPECT_FALSE(asked.ServiceExists(Service));
    EXPECT_EQ(errors().size(), 1u);
    EXPECT_FALSE(asked.ServiceHasStarted(Service));
    EXPECT_EQ(errors().size(), 2u);
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    EXPECT_EQ(errors(),
              (std::vector<std::u16string>{Line(u"ServiceExists", u"OpenService", ENOENT),
                                           Line(u"ServiceHasStarted", u"OpenService", ENOENT),
                                           Line(u"ServiceHasStopped", u"OpenService", ENOENT)}));
}

TEST_F(SystemdServiceBackendTest, AUserWhoMayNotAskIsAnsweredAsForAMissingService) {
    systemd.setUnit("VelloranQuillgateSvc.service", {"loaded", "active", false, false});
    systemd.denyLoadUnit(true);
    ServiceManager asked = manager();
    EXPECT_FALSE(asked.ServiceExists(Service));
    EXPECT_FALSE(asked.ServiceHasStarted(Service));
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    EXPECT_EQ(errors(),
              (std::vector<std::u16string>{Line(u"ServiceExists", u"OpenService", EACCES),
                                           Line(u"ServiceHasStarted", u"OpenService", EACCES),
                                           Line(u"ServiceHasStopped", u"OpenService", EACCES)}));
}

TEST_F(SystemdServiceBackendTest, ALoadStateThatCannotBeReadFailsToOpenTheService) {
    systemd.setUnit("VelloranQuillgateSvc.service", {"loaded", "active", true, false});
    ServiceManager asked = manager();
    EXPECT_FALSE(asked.ServiceExists(Service));
    EXPECT_FALSE(asked.ServiceHasStarted(Service));
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    EXPECT_EQ(errors(),
              (std::vector<std::u16string>{Line(u"ServiceExists", u"OpenService", EACCES),
                                           Line(u"ServiceHasStarted", u"OpenService", EACCES),
                                           Line(u"ServiceHasStopped", u"OpenService", EACCES)}));
}

TEST_F(SystemdServiceBackendTest, AnActiveStateThatCannotBeReadIsAFailedStatusQuery) {
    systemd.setUnit("VelloranQuillgateSvc.service", {"loaded", "active", false, true});
    ServiceManager asked = manager();
    EXPECT_TRUE(asked.ServiceExists(Service));
    EXPECT_TRUE(errors().empty());
    EXPECT_FALSE(asked.ServiceHasStarted(Service));
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    EXPECT_EQ(errors(), (std::vector<std::u16string>{
                            Line(u"ServiceHasStarted", u"QueryServiceStatus", EACCES),
                            Line(u"ServiceHasStopped", u"QueryServiceStatus", EACCES)}));
}

TEST_F(SystemdServiceBackendTest, ABusThatCannotBeReachedFailsToOpenTheManager) {
    ServiceManager asked(stdstr(), std::make_shared<SystemdServiceBackend>(
                                       "unix:path=" + sandbox.file("no-bus-here")));
    EXPECT_FALSE(asked.ServiceExists(Service));
    EXPECT_FALSE(asked.ServiceHasStarted(Service));
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    EXPECT_EQ(errors(), (std::vector<std::u16string>{
                            Line(u"ServiceExists", u"OpenServiceManager", ENOENT),
                            Line(u"ServiceHasStarted", u"OpenServiceManager", ENOENT),
                            Line(u"ServiceHasStopped", u"OpenServiceManager", ENOENT)}));
}

TEST(SystemdServiceBackend, ABusWithoutSystemdOnItFailsToOpenTheService) {
    TestSupport::SandboxRoot sandbox;
    PrivateDbusDaemon daemon(sandbox.path());
    ASSERT_FALSE(daemon.address().empty());
    TraceRecorder::Instance().Clear();
    ServiceManager asked(stdstr(), std::make_shared<SystemdServiceBackend>(daemon.address()));
    EXPECT_FALSE(asked.ServiceExists(Service));
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    const auto lines = TraceRecorder::Instance().At(TRACE_ERROR);
    ASSERT_EQ(lines.size(), 2u);
    const std::u16string start = u"ServiceManager::ServiceExists(VelloranQuillgateSvc): "
                                 u"OpenService failed, error (";
    EXPECT_EQ(lines[0].substr(0, start.size()), start) << stdstr::fromTString(lines[0]);
}

} // namespace
