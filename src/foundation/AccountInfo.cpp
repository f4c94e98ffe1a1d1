#include "foundation/AccountInfo.h"

#include "foundation/AccountLookup.h"
#include "foundation/ErrorKeys.h"
#include "foundation/SystemAccountLookup.h"
#include "foundation/SystemInfo.h"
#include "foundation/Trace.h"
#include "foundation/TraceLevels.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>
#include <vector>

namespace {

// The groups through which the desktops of the common distributions grant administration.
constexpr std::array<const char*, 3> AdministratorGroups{"sudo", "wheel", "admin"};

constexpr const char16_t* AdminLine =
    u"AccountInfo::determineAdmin(): User belongs to administrators group";

} // namespace

AccountInfo::AccountInfo() : AccountInfo(std::make_shared<SystemAccountLookup>()) {}

AccountInfo::AccountInfo(std::shared_ptr<const AccountLookup> lookup)
    : m_lookup(std::move(lookup)) {
    std::string name;
    int error = 0;
    // Linux needs no socket library set up before asking, so one attempt is all there is;
    // a name that cannot be read stays empty.
    if (m_lookup->hostName(name, error))
        m_computerName = stdstr::toTString(name);
}

AccountInfo::~AccountInfo() = default;

bool AccountInfo::isAdministrator() {
    SystemInfo info;
    if (info.isWin9x())
        return true;
    return determineAdmin();
}

bool AccountInfo::determineAdmin() {
    TraceMsg(TRACE_FUNC, u"AccountInfo::determineAdmin(): Start");
    const auto end = [](bool answer) {
        TraceMsg(TRACE_FUNC, u"AccountInfo::determineAdmin(): End");
        return answer;
    };

    const uid_t uid = m_lookup->effectiveUser();
    // The superuser holds every right whatever its groups.
    if (uid == 0) {
        TraceMsg(TRACE_DEBUG, AdminLine);
        return end(true);
    }

    // The user's entry stands where the process token stood: who this process acts as.
    int error = 0;
    const auto user = m_lookup->userEntry(uid, error);
    if (!user) {
        TraceFmt(TRACE_ERROR, u"AccountInfo::determineAdmin(): OpenProcessToken failed, error (%s)",
                 GetOSErrorText(error));
        return end(false);
    }

    // Asked first without room, to learn the number of groups; every user has at least
    // the primary group, so this is expected to fail.
    int count = 0;
    gid_t none = 0;
    if (m_lookup->groupList(*user, &none, count) >= 0) {
        TraceMsg(TRACE_ERROR, u"AccountInfo::determineAdmin(): GetTokenInformation did not fail");
        return end(false);
    }
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(count, 0)));
    int filled = count;
    errno = 0;
    if (m_lookup->groupList(*user, groups.data(), filled) < 0 || filled < 0) {
        // The list grew between the two questions, or the database failed.
        TraceFmt(TRACE_ERROR,
                 u"AccountInfo::determineAdmin(): GetTokenInformation failed, error (%s)",
                 GetOSErrorText(errno != 0 ? errno : ERANGE));
        return end(false);
    }
    groups.resize(std::min(groups.size(), static_cast<std::size_t>(filled)));

    // The administrators' group ids stand where the administrators' SID stood.
    std::vector<gid_t> administrators;
    for (const char* name : AdministratorGroups) {
        int lookupError = 0;
        const auto gid = m_lookup->groupId(name, lookupError);
        if (lookupError != 0) {
            TraceFmt(TRACE_ERROR,
                     u"AccountInfo::determineAdmin(): AllocateAndInitializeSid failed, error (%s)",
                     GetOSErrorText(lookupError));
            return end(false);
        }
        if (gid)
            administrators.push_back(*gid);
    }

    // Membership in the group database counts, not only the groups that this process
    // carries: a user added to "sudo" since logging in is an administrator already, as
    // the token's deny-only entries counted too.
    for (const gid_t gid : groups) {
        if (std::find(administrators.begin(), administrators.end(), gid) != administrators.end()) {
            TraceMsg(TRACE_DEBUG, AdminLine);
            return end(true);
        }
    }
    return end(false);
}
