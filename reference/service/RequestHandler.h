#pragma once
// What the service does with a request from a program, once it has decided to serve it:
// answers a ping, keeps the filter state and the program's process id, gives the mail counts,
// and on a Config change writes QGConfig.ini and has the change sent back to every program.
// A request that it does not know gets the status 0 and no reply payload.

#include "service/ConfigStore.h"
#include "service/FieldMessage.h"
#include "service/ServiceState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A request as read for the record: its header's id and name and its fields.
struct ReceivedRequest {
    std::int32_t id = 0;
    stdstr name;
    std::vector<FieldValue> fields;
    stdstr xml;
};

struct RequestOutcome {
    std::uint32_t status = 0;
    // A UTF-8 envelope, or empty.
    std::string reply;
    // A call to send to every program before the reply goes out.
    std::optional<FieldMessage> broadcast;
    // Why a request was not carried out, for the diagnostics.
    std::string problem;
};

class RequestHandler {
public:
    RequestHandler(ConfigStore& config, ServiceState& state);

    // Reads `payload` (a UTF-8 envelope): the fields by the id's known types, else as texts.
    static ReceivedRequest read(std::string_view payload);
    RequestOutcome handle(const ReceivedRequest& request);

private:
    RequestOutcome configChange(const ReceivedRequest& request);

    ConfigStore& m_config;
    ServiceState& m_state;
};
