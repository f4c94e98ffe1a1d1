// SendRequest's time-out and the variable that overrides it.
#include "RpcTimeout.h"

#include <gtest/gtest.h>

#include <cstdlib>

using std::chrono::milliseconds;

TEST(RpcTimeout, WithoutTheVariableTheWaitIsThreeSeconds) {
    ::unsetenv(RpcTimeout::Variable);
    EXPECT_EQ(RpcTimeout::Current(), milliseconds(3000));
}

TEST(RpcTimeout, TheVariableIsReadForEachRequest) {
    ::setenv(RpcTimeout::Variable, "250", 1);
    EXPECT_EQ(RpcTimeout::Current(), milliseconds(250));
    ::setenv(RpcTimeout::Variable, "40", 1);
    EXPECT_EQ(RpcTimeout::Current(), milliseconds(40));
    ::unsetenv(RpcTimeout::Variable);
}

TEST(RpcTimeout, AValueThatIsNotAWholeNumberInRangeGivesTheDefault) {
    for (const char* text : {"", "0", "-5", "12ms", " 100", "600001", "99999999999999999999"})
        EXPECT_EQ(RpcTimeout::Parse(text), milliseconds(3000)) << text;
    EXPECT_EQ(RpcTimeout::Parse("600000"), milliseconds(600000));
    EXPECT_EQ(RpcTimeout::Parse("1"), milliseconds(1));
}
