#pragma once
// The record of everything the service received and sent, for tests and for a person
// watching the demo: one JSON object per line, appended with a single write so that a reader
// never sees half a line. A line is written before the reply or call it records goes out, so
// whoever has the reply in hand finds the line in the file. The lines:
//
//   {"dir":"in","pid":P,"uid":U,"id":272,"name":"PING","fields":[],"reply":1}
//   {"dir":"out","id":256,"name":"Tray Animation","fields":[1],"to":2}
//   {"dir":"control","pid":P,"uid":U,"op":"emit","args":["256","animation=1"],"result":0,
//    "text":"..."}
//   {"dir":"service","event":"started","pid":N}     (also "stopped")
//
// "pid" and "uid" are the peer's kernel credentials; "id" is the envelope's VLID (0 when it
// has none that is valid) and "name" its VLNAME as received; "fields" are the values in wire
// order, numbers for integer fields of a known id, texts otherwise; "reply" is the status
// the service answered with, or null when it closed the connection instead; "to" is the
// number of programs a call was sent to.

#include "service/FieldMessage.h"
#include "service/PeerCredentials.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class MessageLog {
public:
    explicit MessageLog(std::string path);
    ~MessageLog();
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    // Opens the file for appending, making its folder; false with `error` set.
    bool open(std::string& error);
    const std::string& path() const { return m_path; }

    void received(const PeerCredentials& peer, std::int32_t id, const stdstr& name,
                  const std::vector<FieldValue>& fields, std::optional<std::uint32_t> reply);
    void sent(const FieldMessage& message, std::size_t recipients);
    void control(const PeerCredentials& peer, std::string_view operation,
                 const std::vector<std::string>& arguments, std::uint32_t result,
                 std::string_view text);
    void service(std::string_view event, int pid);

    static std::string fieldsText(const std::vector<FieldValue>& fields);

private:
    void append(const std::string& line);

    std::string m_path;
    int m_fd = -1;
};
