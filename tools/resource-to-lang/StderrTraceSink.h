#pragma once
// Shows the trace lines of the conversion on standard error, so that whoever prepares a
// language file sees which lines of the header were passed over and why.

#include "foundation/CTraceModule.h"
#include "foundation/stdstr.h"

#include <cstdio>
#include <string>

class StderrTraceSink : public CTraceModule {
public:
    explicit StderrTraceSink(std::uint32_t mask) { SetLevel(mask); }

    void Write(std::u16string_view text, bool endOfLine) override {
        const std::string narrow = stdstr::fromTString(std::u16string(text));
        std::fputs(narrow.c_str(), stderr);
        if (endOfLine)
            std::fputc('\n', stderr);
    }
};
