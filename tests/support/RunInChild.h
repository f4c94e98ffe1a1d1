#pragma once
// Runs a piece of a test in a forked child process and returns its exit code. For state that
// is decided once per process (the debug log switch, tracing turned off for good, a named
// lock held until exit), each case gets a process of its own.

#include <functional>

namespace TestSupport {

// The child runs `body` and exits with what it returns; a child that dies of a signal gives
// 128 + the signal number, one that cannot be forked -1.
int RunInChild(const std::function<int()>& body);

} // namespace TestSupport
