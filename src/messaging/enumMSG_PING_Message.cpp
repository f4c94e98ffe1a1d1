#include "messaging/enumMSG_PING_Message.h"

#include "messaging/CMessageEnvelope.h"

// Nothing but the id travels: the body is empty, and reading it has nothing to fill.
stdstr& enumMSG_PING_Message::WriteBody(stdstr& out, CMessageEnvelope&) const {
    out.clear();
    return out;
}

void enumMSG_PING_Message::ReadBody(const stdstr&, CMessageEnvelope&) {}
