#include "RpcTimeout.h"

#include <cstdlib>
#include <string_view>

std::chrono::milliseconds RpcTimeout::Current() {
    return Parse(std::getenv(Variable));
}

std::chrono::milliseconds RpcTimeout::Parse(const char* text) {
    if (text == nullptr || *text == '\0')
        return Default;
    long long value = 0;
    for (const char c : std::string_view(text)) {
        if (c < '0' || c > '9')
            return Default;
        value = value * 10 + (c - '0');
        if (value > Longest.count())
            return Default;
    }
    if (value < 1)
        return Default;
    return std::chrono::milliseconds(value);
}
