#pragma once
// One control message between this program and the filter service. A class of this family
// knows only its id, its display name and how its own fields are written into and read from
// the inner text of an envelope; CMessageEnvelope does everything around that.

#include "foundation/stdstr.h"

#include <cstdint>

class CMessageEnvelope;

class IMessage {
public:
    // Sets `out` to the fields as a run of elements written with env.PutInt and
    // env.PutString, and returns it.
    virtual stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const = 0;
    // Reads the fields in the order WriteBody writes them, through env.GetInt and
    // env.GetString; the envelope's cursor stands at 0 when this is called. A field that is
    // missing reads as 0 or empty.
    virtual void ReadBody(const stdstr& text, CMessageEnvelope& env) = 0;
    virtual std::uint32_t GetId() const = 0;
    // The constant display name, written into VLNAME and trace lines.
    virtual const char16_t* GetName() const = 0;

    // Messages of the inbound queue are owned and deleted through this interface.
    virtual ~IMessage() = default;

protected:
    IMessage() = default;
    IMessage(const IMessage&) = default;
    IMessage& operator=(const IMessage&) = default;
};
