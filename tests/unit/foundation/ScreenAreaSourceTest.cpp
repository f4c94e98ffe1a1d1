#include "foundation/ScreenAreaSource.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class OneScreen : public Corvane::ScreenAreaSource {
public:
    std::optional<Corvane::ScreenArea> primaryScreen() const override {
        return Corvane::ScreenArea{{0, 0, 800, 600}, {0, 0, 800, 570}, 16};
    }
};

TEST(ScreenAreaSource, NothingIsInstalledAtFirst) {
    EXPECT_EQ(Corvane::ScreenAreaSource::installed(), nullptr);
}

TEST(ScreenAreaSource, TheInstalledSourceIsAskedUntilItIsRemoved) {
    const auto source = std::make_shared<OneScreen>();
    Corvane::ScreenAreaSource::install(source);
    EXPECT_EQ(Corvane::ScreenAreaSource::installed(), source);
    EXPECT_EQ(Corvane::ScreenAreaSource::installed()->primaryScreen()->workArea.bottom, 570);
    Corvane::ScreenAreaSource::install(nullptr);
    EXPECT_EQ(Corvane::ScreenAreaSource::installed(), nullptr);
}

} // namespace
