#include "service/MessageLog.h"

#include "foundation/SystemPaths.h"
#include "service/JsonText.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

MessageLog::MessageLog(std::string path) : m_path(std::move(path)) {}

MessageLog::~MessageLog() {
    if (m_fd >= 0)
        ::close(m_fd);
}

bool MessageLog::open(std::string& error) {
    const auto slash = m_path.rfind('/');
    if (slash != std::string::npos && slash > 0 &&
        !SystemPaths::MakeFolders(m_path.substr(0, slash))) {
        error = "cannot create the folder of " + m_path + ": " + std::strerror(errno);
        return false;
    }
    m_fd = ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (m_fd < 0) {
        error = "cannot open " + m_path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

std::string MessageLog::fieldsText(const std::vector<FieldValue>& fields) {
    std::string text = "[";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0)
            text += ",";
        if (const auto* number = std::get_if<std::int32_t>(&fields[i]))
            text += std::to_string(*number);
        else
            text += JsonText::quote(std::get<stdstr>(fields[i]));
    }
    return text + "]";
}

void MessageLog::received(const PeerCredentials& peer, std::int32_t id, const stdstr& name,
                          const std::vector<FieldValue>& fields,
                          std::optional<std::uint32_t> reply) {
    append("{\"dir\":\"in\",\"pid\":" + std::to_string(peer.pid) +
           ",\"uid\":" + std::to_string(peer.uid) + ",\"id\":" + std::to_string(id) +
           ",\"name\":" + JsonText::quote(name) + ",\"fields\":" + fieldsText(fields) +
           ",\"reply\":" + (reply ? std::to_string(*reply) : std::string("null")) + "}");
}

void MessageLog::sent(const FieldMessage& message, std::size_t recipients) {
    append("{\"dir\":\"out\",\"id\":" + std::to_string(message.GetId()) +
           ",\"name\":" + JsonText::quote(std::u16string(message.GetName())) + ",\"fields\":" +
           fieldsText(message.values()) + ",\"to\":" + std::to_string(recipients) + "}");
}

void MessageLog::control(const PeerCredentials& peer, std::string_view operation,
                         const std::vector<std::string>& arguments, std::uint32_t result,
                         std::string_view text) {
    std::string args = "[";
    for (std::size_t i = 0; i < arguments.size(); ++i)
        args += (i > 0 ? "," : "") + JsonText::quote(arguments[i]);
    args += "]";
    append("{\"dir\":\"control\",\"pid\":" + std::to_string(peer.pid) +
           ",\"uid\":" + std::to_string(peer.uid) + ",\"op\":" + JsonText::quote(operation) +
           ",\"args\":" + args + ",\"result\":" + std::to_string(result) +
           ",\"text\":" + JsonText::quote(text) + "}");
}

void MessageLog::service(std::string_view event, int pid) {
    append("{\"dir\":\"service\",\"event\":" + JsonText::quote(event) +
           ",\"pid\":" + std::to_string(pid) + "}");
}

void MessageLog::append(const std::string& line) {
    if (m_fd < 0)
        return;
    const std::string text = line + "\n";
    // O_APPEND and one write: concurrent readers see whole lines only.
    [[maybe_unused]] const ssize_t written = ::write(m_fd, text.data(), text.size());
}
