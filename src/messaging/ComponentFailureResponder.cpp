#include "messaging/ComponentFailureResponder.h"

#include "localisation/QGEntString.h"
#include "messaging/IMessage.h"
#include "messaging/LspReinstaller.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "resource.h"

#include <cstddef>

namespace {

// The text of a box is composed into a buffer of this many characters, terminator included.
constexpr std::size_t BoxTextBuffer = 1024;

// The message as the class its id names. The id is what routed it, so anything else of that
// id can only be a stand-in; its fields then read as empty, as an unparsable text's do.
template <class Message>
const Message& As(const IMessage& msg) {
    static const Message empty;
    const auto* typed = dynamic_cast<const Message*>(&msg);
    return typed != nullptr ? *typed : empty;
}

stdstr FailedToLoadText(const stdstr& componentName) {
    stdstr text;
    text.Format(QGEntString(IDS_LSP_LOAD_FAILED).c_str(), componentName);
    if (text.size() > BoxTextBuffer - 1)
        text.resize(BoxTextBuffer - 1);
    return text;
}

} // namespace

ComponentFailureResponder::ComponentFailureResponder(InboundDialogs& dialogs,
                                                     LspReinstaller& reinstaller)
    : m_dialogs(dialogs), m_reinstaller(reinstaller) {}

bool ComponentFailureResponder::IsComponentFailure(std::uint32_t id) {
    return id == enumMSG_FAILED_TO_LOAD_LSP_Message::Id || id == enumMSG_LSP_ERROR_Message::Id ||
           id == enumMSG_REINSTALL_LSP_Message::Id;
}

bool ComponentFailureResponder::Respond(const IMessage& msg, InboundDialogs::Owner owner) {
    switch (msg.GetId()) {
    case enumMSG_FAILED_TO_LOAD_LSP_Message::Id: {
        const stdstr text =
            FailedToLoadText(As<enumMSG_FAILED_TO_LOAD_LSP_Message>(msg).GetComponentName());
        const QGEntString title(IDS_PRODUCT_NAME);
        m_dialogs.MessageBox(owner, text, title, InboundDialogs::MB_ICONHAND);
        return true;
    }
    case enumMSG_LSP_ERROR_Message::Id: {
        const QGEntString text(IDS_LSP_ERROR);
        const QGEntString title(IDS_PRODUCT_NAME);
        m_dialogs.MessageBox(owner, text, title, InboundDialogs::MB_ICONHAND);
        return true;
    }
    case enumMSG_REINSTALL_LSP_Message::Id: {
        const auto& reinstall = As<enumMSG_REINSTALL_LSP_Message>(msg);
        m_reinstaller.RunLspReinstall(reinstall.GetFile(), reinstall.GetParameters(),
                                      reinstall.GetFolder());
        return true;
    }
    default:
        return false;
    }
}
