#pragma once
// A trace sink that keeps what it was handed, for tests of the dispatch.

#include "foundation/CTraceModule.h"

#include <string>
#include <utility>
#include <vector>

class RecordingSink : public CTraceModule {
public:
    explicit RecordingSink(std::uint32_t mask) { SetLevel(mask); }
    void Write(std::u16string_view text, bool endOfLine) override {
        writes.emplace_back(std::u16string(text), endOfLine);
    }
    std::vector<std::pair<std::u16string, bool>> writes;
};
