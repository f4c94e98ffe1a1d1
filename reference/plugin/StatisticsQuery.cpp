#include "StatisticsQuery.h"

#include "RpcObject.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/TransportText.h"
#include "protocol/enumMSG_STATISTICS_Message.h"

StatisticsAnswer StatisticsQuery::Ask(RpcObject& rpc) {
    StatisticsAnswer answer;
    CMessageEnvelope envelope;
    const enumMSG_STATISTICS_Message question;
    const RpcAnswer reply = rpc.Exchange(TransportText::RequestBytes(envelope.Serialize(question)));
    answer.status = reply.status;
    if (reply.status != RpcStatus::Success || reply.payload.empty())
        return answer;
    enumMSG_STATISTICS_Message counts;
    CMessageEnvelope reader;
    if (!reader.ParseChecked(counts, reply.payload.data(),
                             static_cast<std::uint32_t>(reply.payload.size())))
        return answer;
    answer.answered = true;
    answer.spam = counts.GetSpamCount();
    answer.examined = counts.GetExaminedCount();
    return answer;
}
