#include "messaging/enumMSG_LSP_ERROR_Message.h"

#include "messaging/CMessageEnvelope.h"

// Nothing but the id travels: the body is empty, and reading it has nothing to fill.
stdstr& enumMSG_LSP_ERROR_Message::WriteBody(stdstr& out, CMessageEnvelope&) const {
    out.clear();
    return out;
}

void enumMSG_LSP_ERROR_Message::ReadBody(const stdstr&, CMessageEnvelope&) {}
