#pragma once
// What the user sees for the three messages by which the service reports a failed component
// (ids 260, 263 and 264): the reason in a box, or the reinstall. The main window does this
// when it exists and the inbound pump does it itself, without an owner, when it does not;
// both then end the program with 1059, which is their business, not this class's.

#include "messaging/InboundDialogs.h"

#include <cstdint>

class IMessage;
class LspReinstaller;

class ComponentFailureResponder {
public:
    ComponentFailureResponder(InboundDialogs& dialogs, LspReinstaller& reinstaller);

    // Whether a message of `id` is one of the three.
    static bool IsComponentFailure(std::uint32_t id);

    // Tells the user about `msg` and answers true, or answers false for any other id and
    // does nothing. The boxes of 260 and 263 are owned by `owner`; the reinstall's own
    // dialogs choose theirs.
    bool Respond(const IMessage& msg, InboundDialogs::Owner owner);

private:
    InboundDialogs& m_dialogs;
    LspReinstaller& m_reinstaller;
};
