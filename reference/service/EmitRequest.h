#pragma once
// The arguments of "--emit" turned into the message to send: "<id> [field=value...]".
// The id is decimal or 0x-hexadecimal, 1..1023. A field of the id's own (see
// MessageCatalogue: "animation" of 256, "name" of 260, "file", "parameters" and "folder" of
// 264, the settings of 258...) is set by its name; "int=N" and "str=T" add further elements
// behind them, so that any id can carry any fields. Fields not given are 0 or empty, except
// that a Config change starts from the settings the service holds, led by its own pid.

#include "service/FieldMessage.h"
#include "service/SystemSettings.h"

#include <optional>
#include <string>
#include <vector>

class EmitRequest {
public:
    static std::optional<FieldMessage> parse(const std::vector<std::string>& arguments,
                                             const SystemSettings& current, std::int32_t pid,
                                             std::string& error);
};
