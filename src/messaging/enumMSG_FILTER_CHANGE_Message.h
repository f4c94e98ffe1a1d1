#pragma once
// Tells the service that the user turned filtering on (1) or off (0).

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_FILTER_CHANGE_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x101;
    static constexpr const char16_t* Name = u"Filter status";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    // 1: filtering was turned on, 0: off.
    std::int32_t GetFilterState() const { return m_filterState; }
    void SetFilterState(std::int32_t value) { m_filterState = value; }

private:
    std::int32_t m_filterState = 0;
};
