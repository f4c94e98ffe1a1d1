#include "foundation/ServiceManager.h"

#include "foundation/ErrorKeys.h"
#include "foundation/ServiceBackend.h"

#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace {

// Answers every question with one prepared answer and notes what it was asked.
class ScriptedBackend : public ServiceBackend {
public:
    struct Question {
        std::string machine;
        std::string service;
        bool withStatus;
    };

    explicit ScriptedBackend(Answer answer) : m_answer(answer) {}

    Answer ask(const std::string& machine, const std::string& service, bool withStatus) override {
        questions.push_back({machine, service, withStatus});
        return m_answer;
    }

    std::vector<Question> questions;

private:
    Answer m_answer;
};

struct Asked {
    bool exists;
    bool started;
    bool stopped;
    std::vector<std::u16string> errors;
};

Asked AskAll(const ServiceBackend::Answer& answer, const stdstr& name = u"VelloranQuillgateSvc") {
    TraceRecorder::Instance().Clear();
    ServiceManager manager(stdstr(), std::make_shared<ScriptedBackend>(answer));
    Asked asked{manager.ServiceExists(name),
                manager.ServiceHasStarted(name),
                manager.ServiceHasStopped(name),
                {}};
    asked.errors = TraceRecorder::Instance().At(TRACE_ERROR);
    return asked;
}

ServiceBackend::Answer Running() {
    ServiceBackend::Answer answer;
    answer.state = ServiceBackend::State::Running;
    return answer;
}

ServiceBackend::Answer InState(ServiceBackend::State state) {
    ServiceBackend::Answer answer;
    answer.state = state;
    return answer;
}

TEST(ServiceManager, ARunningServiceExistsHasStartedAndHasNotStopped) {
    const Asked asked = AskAll(Running());
    EXPECT_TRUE(asked.exists);
    EXPECT_TRUE(asked.started);
    EXPECT_FALSE(asked.stopped);
    EXPECT_TRUE(asked.errors.empty());
}

TEST(ServiceManager, AStoppedServiceExistsHasStoppedAndHasNotStarted) {
    const Asked asked = AskAll(InState(ServiceBackend::State::Stopped));
    EXPECT_TRUE(asked.exists);
    EXPECT_FALSE(asked.started);
    EXPECT_TRUE(asked.stopped);
    EXPECT_TRUE(asked.errors.empty());
}

TEST(ServiceManager, APendingServiceIsNeitherStartedNorStopped) {
    const Asked asked = AskAll(InState(ServiceBackend::State::Pending));
    EXPECT_TRUE(asked.exists);
    EXPECT_FALSE(asked.started);
    EXPECT_FALSE(asked.stopped);
    EXPECT_TRUE(asked.errors.empty());
}

TEST(ServiceManager, AServiceThatDoesNotExistIsNotStartedButStoppedWithOneLineEach) {
    const Asked asked =
        AskAll(ServiceBackend::Answer::failure(ServiceBackend::Step::Service, ENOENT));
    EXPECT_FALSE(asked.exists);
    EXPECT_FALSE(asked.started);
    EXPECT_TRUE(asked.stopped);
    const stdstr error = GetOSErrorText(ENOENT);
    EXPECT_EQ(
        asked.errors,
        (std::vector<std::u16string>{
            u"ServiceManager::ServiceExists(VelloranQuillgateSvc): OpenService failed, error (" +
                error + u")",
            u"ServiceManager::ServiceHasStarted(VelloranQuillgateSvc): OpenService failed, "
            u"error (" +
                error + u")",
            u"ServiceManager::ServiceHasStopped(VelloranQuillgateSvc): OpenService failed, "
            u"error (" +
                error + u")"}));
}

TEST(ServiceManager, AUserWithoutTheRightToConnectIsAnsweredAsForAMissingService) {
    const Asked asked =
        AskAll(ServiceBackend::Answer::failure(ServiceBackend::Step::Manager, EACCES));
    EXPECT_FALSE(asked.exists);
    EXPECT_FALSE(asked.started);
    EXPECT_TRUE(asked.stopped);
    const stdstr error = GetOSErrorText(EACCES);
    EXPECT_EQ(
        asked.errors,
        (std::vector<std::u16string>{
            u"ServiceManager::ServiceExists(VelloranQuillgateSvc): OpenServiceManager failed, "
            u"error (" +
                error + u")",
            u"ServiceManager::ServiceHasStarted(VelloranQuillgateSvc): OpenServiceManager "
            u"failed, error (" +
                error + u")",
            u"ServiceManager::ServiceHasStopped(VelloranQuillgateSvc): OpenServiceManager "
            u"failed, error (" +
                error + u")"}));
}

TEST(ServiceManager, AStatusThatCannotBeReadKeepsTheDefaults) {
    TraceRecorder::Instance().Clear();
    ServiceManager manager(stdstr(),
                           std::make_shared<ScriptedBackend>(
                               ServiceBackend::Answer::failure(ServiceBackend::Step::Status, EIO)));
    EXPECT_FALSE(manager.ServiceHasStarted(u"svc"));
    EXPECT_TRUE(manager.ServiceHasStopped(u"svc"));
    const stdstr error = GetOSErrorText(EIO);
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_ERROR),
              (std::vector<std::u16string>{
                  u"ServiceManager::ServiceHasStarted(svc): QueryServiceStatus failed, error (" +
                      error + u")",
                  u"ServiceManager::ServiceHasStopped(svc): QueryServiceStatus failed, error (" +
                      error + u")"}));
}

TEST(ServiceManager, ExistenceReadsNoStatusAndTheStateQuestionsDo) {
    auto backend = std::make_shared<ScriptedBackend>(Running());
    ServiceManager manager(u"filter-host", backend);
    manager.ServiceExists(u"VelloranQuillgateSvc");
    manager.ServiceHasStarted(u"VelloranQuillgateSvc");
    manager.ServiceHasStopped(u"VelloranQuillgateSvc");
    ASSERT_EQ(backend->questions.size(), 3u);
    EXPECT_FALSE(backend->questions[0].withStatus);
    EXPECT_TRUE(backend->questions[1].withStatus);
    EXPECT_TRUE(backend->questions[2].withStatus);
    for (const auto& question : backend->questions) {
        EXPECT_EQ(question.machine, "filter-host");
        EXPECT_EQ(question.service, "VelloranQuillgateSvc");
    }
}

TEST(ServiceManager, NamesTravelAsUtf8AndAreTracedAsGiven) {
    auto backend = std::make_shared<ScriptedBackend>(
        ServiceBackend::Answer::failure(ServiceBackend::Step::Service, ENOENT));
    TraceRecorder::Instance().Clear();
    ServiceManager manager(stdstr(), backend);
    EXPECT_FALSE(manager.ServiceExists(u"Dienst-\u00fc"));
    ASSERT_EQ(backend->questions.size(), 1u);
    EXPECT_EQ(backend->questions[0].service, "Dienst-\xc3\xbc");
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_ERROR),
              std::vector<std::u16string>{u"ServiceManager::ServiceExists(Dienst-\u00fc): "
                                          u"OpenService failed, error (" +
                                          GetOSErrorText(ENOENT) + u")"});
}

} // namespace
