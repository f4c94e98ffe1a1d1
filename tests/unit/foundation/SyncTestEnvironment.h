#pragma once
// The test programs of the locks and threads check the lines these classes write to the
// debug log. The log decides once per process whether it is on, so one sandbox root with
// the machine store's "DebugOutput" value is set up before the first test and kept until
// the last; every test of the program works in it. Including this header registers it.

#include "foundation/DebugLog.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

class SyncTestEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        s_root = std::make_unique<TestSupport::SandboxRoot>();
        s_root->writeFile("var/lib/velloran/registry/machine.reg",
                          "Windows Registry Editor Version 5.00\r\n\r\n"
                          "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                          "\"DebugOutput\"=\"\"\r\n");
        // Taking the decision here makes sure it was not taken before the root existed.
        ASSERT_TRUE(DebugLogDetail::Enabled()) << "the debug log was decided before the sandbox";
        ASSERT_EQ(DebugLogPath().rfind(s_root->path(), 0), 0u) << DebugLogPath();
    }
    void TearDown() override { s_root.reset(); }

    static const TestSupport::SandboxRoot& Root() { return *s_root; }

private:
    static inline std::unique_ptr<TestSupport::SandboxRoot> s_root;
};

// GoogleTest owns the environments it is given.
inline ::testing::Environment* const g_syncTestEnvironment =
    ::testing::AddGlobalTestEnvironment(std::make_unique<SyncTestEnvironment>().release());
