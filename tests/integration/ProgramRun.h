#pragma once
// Runs one of the built programs to its end, as a test needs it: its exit code and what it
// wrote, with a deadline after which it is killed (the test then fails on the result rather
// than hanging).

#include <chrono>
#include <string>
#include <vector>

namespace TestSupport {

struct ProgramResult {
    // The exit code; 128 + the signal for a program killed by one; -1 when it could not
    // be started or ran past the deadline.
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs `program` with `arguments` in the current environment.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         std::chrono::milliseconds deadline = std::chrono::seconds(30));

} // namespace TestSupport
