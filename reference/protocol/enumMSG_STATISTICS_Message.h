#pragma once
// The plug-in's own question to the service: how many mails were examined and how many of
// them were spam, for the Status page and the summary pop-up. The program itself never sends
// it; a request has no fields that the service reads, and the reply carries both counts.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_STATISTICS_Message : public IMessage {
public:
    // Outside the ids that the program uses, below the envelope's limit of 1024.
    static constexpr std::uint32_t Id = 0x120;
    static constexpr const char16_t* Name = u"Statistics";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    std::int32_t GetSpamCount() const { return m_spam; }
    void SetSpamCount(std::int32_t value) { m_spam = value; }
    std::int32_t GetExaminedCount() const { return m_examined; }
    void SetExaminedCount(std::int32_t value) { m_examined = value; }

private:
    std::int32_t m_spam = 0;
    std::int32_t m_examined = 0;
};
