#include "foundation/ServiceBackendChoice.h"

#include "foundation/ServiceBackend.h"
#include "foundation/ServiceManager.h"

#include "FakeSystemd.h"
#include "PrivateDbusDaemon.h"
#include "support/RunInChild.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using Kind = ServiceBackendChoice::Kind;

ServiceBackendChoice::Facts Facts(bool sandbox, bool address, bool booted, bool bus) {
    ServiceBackendChoice::Facts facts;
    facts.sandboxRoot = sandbox;
    facts.busAddressGiven = address;
    facts.systemdBooted = booted;
    facts.systemBusOpens = bus;
    return facts;
}

TEST(ServiceBackendChoice, ARunningSystemdWithItsBusIsAsked) {
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(false, false, true, true)), Kind::Systemd);
}

TEST(ServiceBackendChoice, WithoutSystemdOrItsBusTheFilesAreRead) {
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(false, false, false, true)), Kind::Files);
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(false, false, true, false)), Kind::Files);
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(false, false, false, false)), Kind::Files);
}

TEST(ServiceBackendChoice, ASandboxRootAlwaysReadsTheFiles) {
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(true, false, true, true)), Kind::Files);
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(true, true, true, true)), Kind::Files);
}

TEST(ServiceBackendChoice, AGivenBusAddressIsWhereSystemdIsAsked) {
    EXPECT_EQ(ServiceBackendChoice::decide(Facts(false, true, false, false)), Kind::Systemd);
}

// The choice is made once per process, so each case has a process of its own.
TEST(ServiceBackendChoice, InASandboxTheProcessReadsTheFilesAndSaysSoOnce) {
    EXPECT_EQ(
        TestSupport::RunInChild([] {
            TestSupport::SandboxRoot sandbox;
            TraceRecorder::Instance().Clear();
            ServiceManager first;
            ServiceManager second;
            if (first.ServiceExists(u"VelloranQuillgateSvc"))
                return 1;
            sandbox.writeFile("etc/systemd/system/VelloranQuillgateSvc.service", "[Unit]\n");
            if (!second.ServiceExists(u"VelloranQuillgateSvc"))
                return 2;
            const std::u16string line =
                u"ServiceManager: service states come from the unit files in (" +
                stdstr::toTString(sandbox.file("etc/systemd/system")) +
                u") and the pid files in (" + stdstr::toTString(sandbox.file("run")) + u")";
            if (TraceRecorder::Instance().Count(TRACE_INFO, line) != 1)
                return 3;
            return TraceRecorder::Instance().StartingWith(TRACE_INFO, u"ServiceManager:").size() ==
                           1
                       ? 0
                       : 4;
        }),
        0);
}

TEST(ServiceBackendChoice, AGivenBusAddressOutsideASandboxAsksSystemdThere) {
    EXPECT_EQ(
        TestSupport::RunInChild([] {
            TestSupport::SandboxRoot sandbox;
            PrivateDbusDaemon daemon(sandbox.path());
            FakeSystemd systemd(daemon.address());
            if (daemon.address().empty() || !systemd.ready())
                return 1;
            systemd.setUnit("VelloranQuillgateSvc.service", {"loaded", "active", false, false});
            ::unsetenv("QUILLGATE_ROOT");
            ::setenv(ServiceBackendChoice::BusAddressVariable, daemon.address().c_str(), 1);
            TraceRecorder::Instance().Clear();
            if (!ServiceManager().ServiceHasStarted(u"VelloranQuillgateSvc"))
                return 2;
            const std::u16string line =
                u"ServiceManager: service states come from systemd on the bus (" +
                stdstr::toTString(daemon.address()) + u")";
            if (TraceRecorder::Instance().Count(TRACE_INFO, line) != 1)
                return 3;
            // Chosen once: a sandbox root set afterwards changes nothing.
            ::setenv("QUILLGATE_ROOT", sandbox.path().c_str(), 1);
            if (!ServiceManager().ServiceHasStarted(u"VelloranQuillgateSvc"))
                return 4;
            return systemd.loadedNames().size() == 2 ? 0 : 5;
        }),
        0);
}

} // namespace
