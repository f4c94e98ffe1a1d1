#include "service/RequestHandler.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/EnvelopeIds.h"
#include "messaging/EnvelopeTexts.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/RpcPayload.h"
#include "protocol/RpcStatus.h"
#include "protocol/enumMSG_STATISTICS_Message.h"
#include "service/MessageCatalogue.h"

#include <unistd.h>

RequestHandler::RequestHandler(ConfigStore& config, ServiceState& state)
    : m_config(config), m_state(state) {}

ReceivedRequest RequestHandler::read(std::string_view payload) {
    ReceivedRequest request;
    request.xml = RpcPayload::TextOfRequest(payload);
    request.id = ReadMessageId(request.xml);
    CMessageEnvelope envelope;
    stdstr name;
    envelope.ExtractElement(name, request.xml, EnvelopeTexts::NameOpen, EnvelopeTexts::NameClose);
    request.name = name;
    const MessageEntry* entry = MessageCatalogue::find(static_cast<std::uint32_t>(request.id));
    FieldMessage fields(static_cast<std::uint32_t>(request.id), request.name,
                        entry ? std::optional(MessageCatalogue::typesOf(*entry)) : std::nullopt);
    CMessageEnvelope reader;
    reader.Parse(fields, request.xml);
    request.fields = fields.values();
    return request;
}

RequestOutcome RequestHandler::handle(const ReceivedRequest& request) {
    RequestOutcome outcome;
    CMessageEnvelope envelope;
    const auto pid = static_cast<std::int32_t>(::getpid());
    switch (request.id) {
    case static_cast<std::int32_t>(enumMSG_PING_Message::Id): {
        outcome.status = RpcStatus::Delivered;
        outcome.reply = RpcPayload::RequestOf(enumMSG_PING_Message());
        break;
    }
    case static_cast<std::int32_t>(enumMSG_CONFIG_CHANGE_Message::Id):
        return configChange(request);
    case static_cast<std::int32_t>(enumMSG_FILTER_CHANGE_Message::Id): {
        enumMSG_FILTER_CHANGE_Message message;
        envelope.Parse(message, request.xml);
        m_state.filterState = message.GetFilterState();
        outcome.status = RpcStatus::Delivered;
        outcome.reply = RpcPayload::RequestOf(message);
        break;
    }
    case static_cast<std::int32_t>(enumMSG_GUI_START_Message::Id): {
        enumMSG_GUI_START_Message message;
        envelope.Parse(message, request.xml);
        m_state.guiProcessId = message.GetProcessId();
        enumMSG_GUI_START_Message answer;
        answer.SetProcessId(pid);
        outcome.status = RpcStatus::Delivered;
        outcome.reply = RpcPayload::RequestOf(answer);
        break;
    }
    case static_cast<std::int32_t>(enumMSG_STATISTICS_Message::Id): {
        enumMSG_STATISTICS_Message answer;
        answer.SetSpamCount(m_state.spamCount);
        answer.SetExaminedCount(m_state.examinedCount);
        outcome.status = RpcStatus::Delivered;
        outcome.reply = RpcPayload::RequestOf(answer);
        break;
    }
    default:
        outcome.status = RpcStatus::NotUnderstood;
        outcome.problem = "no request with id " + std::to_string(request.id);
        break;
    }
    return outcome;
}

RequestOutcome RequestHandler::configChange(const ReceivedRequest& request) {
    RequestOutcome outcome;
    enumMSG_CONFIG_CHANGE_Message message;
    CMessageEnvelope envelope;
    envelope.Parse(message, request.xml);
    const SystemSettings settings = SystemSettings::of(message);
    if (!m_config.store(settings, outcome.problem)) {
        outcome.status = RpcStatus::NotUnderstood;
        return outcome;
    }
    // The echo, and the reply, come from the service: its own process id leads them.
    const auto pid = static_cast<std::int32_t>(::getpid());
    outcome.broadcast.emplace(enumMSG_CONFIG_CHANGE_Message::Id,
                              enumMSG_CONFIG_CHANGE_Message::Name, settings.fields(pid));
    enumMSG_CONFIG_CHANGE_Message answer;
    settings.fill(answer, pid);
    outcome.status = RpcStatus::Delivered;
    outcome.reply = RpcPayload::RequestOf(answer);
    return outcome;
}
