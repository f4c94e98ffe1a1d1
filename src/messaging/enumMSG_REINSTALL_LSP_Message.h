#pragma once
// Sent by the service to have the traffic layer reinstalled: the installer to launch, its
// parameters and its working folder.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_REINSTALL_LSP_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x108;
    static constexpr const char16_t* Name = u"Reinstall LSP";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    // The file to launch.
    const stdstr& GetFile() const { return m_file; }
    void SetFile(const stdstr& value) { m_file = value; }
    // Its parameters.
    const stdstr& GetParameters() const { return m_parameters; }
    void SetParameters(const stdstr& value) { m_parameters = value; }
    // Its working folder.
    const stdstr& GetFolder() const { return m_folder; }
    void SetFolder(const stdstr& value) { m_folder = value; }

private:
    stdstr m_file;
    stdstr m_parameters;
    stdstr m_folder;
};
