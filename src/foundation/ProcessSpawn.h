#pragma once
// Starting another program the way both the shell-open helper and the service supervision
// need it: the words of a parameter text split at blanks (as the Windows shell passes a
// parameter line on), and a child started with the signal state a fresh program expects.

#include <string>
#include <sys/types.h>
#include <vector>

namespace Corvane {

// The words of `text`, split at blanks and tabs; runs of them count as one.
std::vector<std::string> SplitOnBlanks(const std::string& text);

// Starts `command`, its first word looked up in PATH when `searchPath` is set and taken as a
// path otherwise, with no signal blocked and SIGPIPE at its default. The child's id, or -1
// with errno set.
pid_t SpawnProcess(const std::vector<std::string>& command, bool searchPath);

} // namespace Corvane
