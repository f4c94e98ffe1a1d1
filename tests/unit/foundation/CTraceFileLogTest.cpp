#include "foundation/CTraceFileLog.h"
#include "foundation/CTraceModuleList.h"
#include "foundation/Trace.h"

#include "support/SandboxRoot.h"

#include "support/RunInChild.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using TestSupport::SandboxRoot;

std::u16string Wide(const std::string& text) {
    return stdstr::toTString(text);
}

// Destroying a file sink turns tracing off for the rest of the process, so every case that
// destroys one runs in a child and leaves this process's tracing as it found it.
TEST(CTraceFileLog, AMaxSizeUnder10241BecomesTheDefault) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  const std::uint32_t under =
                      CTraceFileLog(Wide(root.file("a.txt")).c_str(), true, 1, 10240).GetMaxSize();
                  const std::uint32_t least =
                      CTraceFileLog(Wide(root.file("b.txt")).c_str(), true, 1, 10241).GetMaxSize();
                  return under == 0x500000u && least == 10241u ? 0 : 1;
              }),
              0);
}

TEST(CTraceFileLog, WritesTextThenALineEnd) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  {
                      CTraceFileLog log(Wide(root.file("t.txt")).c_str(), true, 1, 0x100000);
                      log.Write(u"prefix ", false);
                      log.Write(u"message", true);
                  }
                  const std::u16string expected = u"\xFEFFprefix message\r\n";
                  const std::string bytes = SandboxRoot::readFile(root.file("t.txt"));
                  return bytes == std::string(reinterpret_cast<const char*>(expected.data()),
                                              expected.size() * 2)
                             ? 0
                             : 1;
              }),
              0);
}

TEST(CTraceFileLog, AFileThatCannotBeOpenedIsNoError) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  CTraceFileLog log(Wide(root.file("missing/folder/t.txt")).c_str(), true, 1,
                                    0x100000);
                  log.Write(u"dropped", true);
                  return log.IsOpen() ? 1 : 0;
              }),
              0);
}

TEST(CTraceFileLog, AfterASinkIsDestroyedTracingIsOff) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  auto* listed = TraceAddModule(std::make_unique<CTraceFileLog>(
                      Wide(root.file("kept.txt")).c_str(), true, 1, 0x100000));
                  if (!listed)
                      return 2; // tracing was off before the test began
                  listed->SetLevel(TRACE_ERROR);
                  TraceMsg(TRACE_ERROR, u"before");
                  { CTraceFileLog gone(Wide(root.file("gone.txt")).c_str(), true, 1, 0x100000); }
                  TraceMsg(TRACE_ERROR, u"after");
                  TraceFmt(TRACE_ERROR, u"after %d", 2);
                  auto* refused = TraceAddModule(std::make_unique<CTraceFileLog>(
                      Wide(root.file("late.txt")).c_str(), true, 1, 0x100000));
                  const std::string kept = SandboxRoot::readFile(root.file("kept.txt"));
                  const std::u16string text(reinterpret_cast<const char16_t*>(kept.data()),
                                            kept.size() / 2);
                  const bool ok = refused == nullptr &&
                                  text.find(u"before") != std::u16string::npos &&
                                  text.find(u"after") == std::u16string::npos;
                  return ok ? 0 : 1;
              }),
              0);
}

// Eight threads write many lines into a sink whose small limit makes it roll again and
// again. Every line that remains must be whole and unmixed.
TEST(CTraceFileLog, ConcurrentLinesStayWholeThroughManyRolls) {
    EXPECT_EQ(
        TestSupport::RunInChild([] {
            SandboxRoot root;
            const std::string path = root.file("load.txt");
            CTraceModuleList list;
            auto* log =
                list.Add(std::make_unique<CTraceFileLog>(Wide(path).c_str(), false, 0, 0x10000));
            log->SetLevel(TRACE_ERROR);
            constexpr int Threads = 8;
            constexpr int Lines = 10000;
            std::vector<std::thread> writers;
            for (int t = 0; t < Threads; ++t) {
                writers.emplace_back([&list, t] {
                    for (int n = 0; n < Lines; ++n) {
                        stdstr message;
                        message.Format(u"writer %d line %05d check %d", t, n,
                                       (t * 7919 + n) % 1000);
                        list.Dispatch(TRACE_ERROR, message);
                    }
                });
            }
            for (auto& writer : writers)
                writer.join();

            const std::string bytes = SandboxRoot::readFile(path);
            // A rolled file starts with the high byte of a line feed; text is aligned after it.
            if (bytes.size() < 2 || bytes[0] != '\0' || bytes.size() > 0x10000)
                return 2;
            const std::u16string text(reinterpret_cast<const char16_t*>(bytes.data() + 1),
                                      (bytes.size() - 1) / 2);
            const std::string narrow = stdstr::fromTString(text);
            const std::regex line(
                R"(\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2}\.\d{3} \d{5,}: Error: writer (\d) line (\d{5}) check (\d+))");
            std::map<int, int> lastSeen;
            std::size_t start = 0;
            int count = 0;
            int lastLine = -1;
            while (start < narrow.size()) {
                const std::size_t end = narrow.find("\r\n", start);
                if (end == std::string::npos)
                    return 3; // the file must end with a whole line
                std::smatch m;
                const std::string one = narrow.substr(start, end - start);
                if (!std::regex_match(one, m, line))
                    return 4;
                const int t = std::stoi(m[1]);
                const int n = std::stoi(m[2]);
                if (std::stoi(m[3]) != (t * 7919 + n) % 1000)
                    return 5;
                if (lastSeen.count(t) && lastSeen[t] >= n)
                    return 6; // each writer's lines stay in order
                lastSeen[t] = n;
                lastLine = n;
                ++count;
                start = end + 2;
            }
            // The newest lines are kept: the file ends with the last line that was written,
            // which is some writer's last.
            if (lastLine != Lines - 1)
                return 8;
            return count > 100 ? 0 : 7;
        }),
        0);
}

} // namespace
