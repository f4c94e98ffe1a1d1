#include "foundation/AccountInfo.h"

#include "foundation/AccountLookup.h"
#include "foundation/ErrorKeys.h"

#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr gid_t Sudo = 27;
constexpr gid_t Wheel = 10;
constexpr gid_t Admin = 110;
constexpr gid_t Users = 100;
constexpr gid_t Staff = 50;

// An account database as a test describes it.
class FakeAccounts : public AccountLookup {
public:
    uid_t uid = 1000;
    int userError = 0; // non-zero: the user's entry cannot be read
    gid_t primary = Users;
    std::vector<gid_t> supplementary;
    bool firstListSucceeds = false;
    bool secondListFails = false;
    std::map<std::string, gid_t> groups{{"sudo", Sudo}, {"wheel", Wheel}, {"admin", Admin}};
    int groupError = 0;
    bool hostNameFails = false;

    uid_t effectiveUser() const override { return uid; }

    std::optional<User> userEntry(uid_t, int& error) const override {
        if (userError != 0) {
            error = userError;
            return std::nullopt;
        }
        return User{"alice", primary};
    }

    int groupList(const User& user, gid_t* out, int& count) const override {
        std::vector<gid_t> all{user.primaryGroup};
        all.insert(all.end(), supplementary.begin(), supplementary.end());
        const bool first = !m_askedOnce;
        m_askedOnce = true;
        if (first && firstListSucceeds) {
            count = 0;
            return 0;
        }
        if (!first && secondListFails)
            return -1;
        const int total = static_cast<int>(all.size());
        if (count < total) {
            count = total;
            return -1;
        }
        std::copy(all.begin(), all.end(), out);
        count = total;
        return total;
    }

    std::optional<gid_t> groupId(const std::string& name, int& error) const override {
        error = groupError;
        if (groupError != 0)
            return std::nullopt;
        const auto found = groups.find(name);
        return found == groups.end() ? std::nullopt : std::optional<gid_t>(found->second);
    }

    bool hostName(std::string& name, int& error) const override {
        if (hostNameFails) {
            error = ENAMETOOLONG;
            return false;
        }
        name = "filter-desk";
        return true;
    }

private:
    mutable bool m_askedOnce = false;
};

const std::u16string StartLine = u"AccountInfo::determineAdmin(): Start";
const std::u16string EndLine = u"AccountInfo::determineAdmin(): End";
const std::u16string AdminLine =
    u"AccountInfo::determineAdmin(): User belongs to administrators group";

struct Outcome {
    bool answer;
    std::vector<TraceRecorder::Line> lines;
};

Outcome Ask(const FakeAccounts& accounts) {
    TraceRecorder::Instance().Clear();
    AccountInfo info(std::make_shared<FakeAccounts>(accounts));
    const bool answer = info.isAdministrator();
    return {answer, TraceRecorder::Instance().Lines()};
}

std::vector<std::u16string> Texts(const Outcome& outcome, std::uint32_t level) {
    std::vector<std::u16string> texts;
    const std::u16string label(TraceLabel(level));
    for (const auto& line : outcome.lines) {
        if (line.label == label)
            texts.push_back(line.text);
    }
    return texts;
}

// Start first and End last, once each: every exit closes the function's trace.
void ExpectFramed(const Outcome& outcome) {
    ASSERT_GE(outcome.lines.size(), 2u);
    EXPECT_EQ(outcome.lines.front().text, StartLine);
    EXPECT_EQ(outcome.lines.back().text, EndLine);
    EXPECT_EQ(Texts(outcome, TRACE_FUNC), (std::vector<std::u16string>{StartLine, EndLine}));
}

TEST(AccountInfo, TheSuperuserIsAnAdministrator) {
    FakeAccounts accounts;
    accounts.uid = 0;
    accounts.userError = ENOENT; // not even asked
    const Outcome outcome = Ask(accounts);
    EXPECT_TRUE(outcome.answer);
    ExpectFramed(outcome);
    EXPECT_EQ(Texts(outcome, TRACE_DEBUG), std::vector<std::u16string>{AdminLine});
}

TEST(AccountInfo, AMemberOfSudoWheelOrAdminIsAnAdministrator) {
    for (const gid_t group : {Sudo, Wheel, Admin}) {
        FakeAccounts accounts;
        accounts.supplementary = {Staff, group};
        const Outcome outcome = Ask(accounts);
        EXPECT_TRUE(outcome.answer) << group;
        ExpectFramed(outcome);
        EXPECT_EQ(Texts(outcome, TRACE_DEBUG), std::vector<std::u16string>{AdminLine});
        EXPECT_TRUE(Texts(outcome, TRACE_ERROR).empty());
    }
}

TEST(AccountInfo, APrimaryAdministratorsGroupCountsToo) {
    FakeAccounts accounts;
    accounts.primary = Wheel;
    EXPECT_TRUE(Ask(accounts).answer);
}

TEST(AccountInfo, MembershipOnlyInTheGroupDatabaseStillMakesAnAdministrator) {
    // The group list comes from the database, not from the groups that this process
    // carries: a membership that the login session does not hold yet still counts.
    FakeAccounts accounts;
    accounts.primary = Users;
    accounts.supplementary = {Sudo};
    EXPECT_TRUE(Ask(accounts).answer);
}

TEST(AccountInfo, AUserWithoutAnAdministratorsGroupIsNoneAndNothingIsAnError) {
    FakeAccounts accounts;
    accounts.supplementary = {Staff, 1234};
    const Outcome outcome = Ask(accounts);
    EXPECT_FALSE(outcome.answer);
    ExpectFramed(outcome);
    EXPECT_TRUE(Texts(outcome, TRACE_ERROR).empty());
    EXPECT_TRUE(Texts(outcome, TRACE_DEBUG).empty());
}

TEST(AccountInfo, AMachineWithoutTheGroupsHasNoAdministratorButTheSuperuser) {
    FakeAccounts accounts;
    accounts.groups.clear();
    accounts.supplementary = {Sudo, Wheel, Admin};
    const Outcome outcome = Ask(accounts);
    EXPECT_FALSE(outcome.answer);
    EXPECT_TRUE(Texts(outcome, TRACE_ERROR).empty());
}

TEST(AccountInfo, AUserWithoutAnEntryIsNoAdministrator) {
    FakeAccounts accounts;
    accounts.userError = ENOENT;
    accounts.supplementary = {Sudo};
    const Outcome outcome = Ask(accounts);
    EXPECT_FALSE(outcome.answer);
    ExpectFramed(outcome);
    EXPECT_EQ(Texts(outcome, TRACE_ERROR),
              std::vector<std::u16string>{
                  u"AccountInfo::determineAdmin(): OpenProcessToken failed, error (" +
                  GetOSErrorText(ENOENT) + u")"});
}

TEST(AccountInfo, AGroupListThatNeedsNoRoomIsAFailure) {
    FakeAccounts accounts;
    accounts.firstListSucceeds = true;
    accounts.supplementary = {Sudo};
    const Outcome outcome = Ask(accounts);
    EXPECT_FALSE(outcome.answer);
    ExpectFramed(outcome);
    EXPECT_EQ(Texts(outcome, TRACE_ERROR),
              std::vector<std::u16string>{
                  u"AccountInfo::determineAdmin(): GetTokenInformation did not fail"});
}

TEST(AccountInfo, AGroupListThatChangesBetweenTheTwoQuestionsIsAFailure) {
    FakeAccounts accounts;
    accounts.secondListFails = true;
    accounts.supplementary = {Sudo};
    const Outcome outcome = Ask(accounts);
    EXPECT_FALSE(outcome.answer);
    ExpectFramed(outcome);
    EXPECT_EQ(Texts(outcome, TRACE_ERROR),
              std::vector<std::u16string>{
                  u"AccountInfo::determineAdmin(): GetTokenInformation failed, error (" +
                  GetOSErrorText(ERANGE) + u")"});
}

TEST(AccountInfo, AGroupDatabaseThatFailsIsAFailure) {
    FakeAccounts accounts;
    accounts.groupError = EIO;
    accounts.supplementary = {Sudo};
    const Outcome outcome = Ask(accounts);
    EXPECT_FALSE(outcome.answer);
    ExpectFramed(outcome);
    EXPECT_EQ(Texts(outcome, TRACE_ERROR),
              std::vector<std::u16string>{
                  u"AccountInfo::determineAdmin(): AllocateAndInitializeSid failed, error (" +
                  GetOSErrorText(EIO) + u")"});
}

TEST(AccountInfo, AFailingNameLookupLeavesTheAnswerAlone) {
    for (const bool administrator : {true, false}) {
        FakeAccounts accounts;
        accounts.supplementary = administrator ? std::vector<gid_t>{Sudo} : std::vector<gid_t>{};
        FakeAccounts nameless = accounts;
        nameless.hostNameFails = true;
        AccountInfo named(std::make_shared<FakeAccounts>(accounts));
        AccountInfo unnamed(std::make_shared<FakeAccounts>(nameless));
        EXPECT_EQ(named.computerName(), u"filter-desk");
        EXPECT_EQ(unnamed.computerName(), u"");
        EXPECT_EQ(named.isAdministrator(), administrator);
        EXPECT_EQ(unnamed.isAdministrator(), administrator);
    }
}

TEST(AccountInfo, TheSystemsAccountsAreAskedByDefault) {
    // Whoever runs the tests: the superuser is an administrator, and any answer comes with
    // the function's trace and without an error.
    TraceRecorder::Instance().Clear();
    AccountInfo info;
    const bool answer = info.isAdministrator();
    if (::geteuid() == 0) {
        EXPECT_TRUE(answer);
    }
    EXPECT_TRUE(TraceRecorder::Instance().At(TRACE_ERROR).empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_FUNC, StartLine), 1u);
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_FUNC, EndLine), 1u);
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, AdminLine), answer ? 1u : 0u);
}

} // namespace
