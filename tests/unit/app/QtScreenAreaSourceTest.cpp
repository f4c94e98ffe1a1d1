#include "app/QtScreenAreaSource.h"

#include "foundation/CorvaneSystemInfo.h"

#include "AppTestApp.h"

#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(QtScreenAreaSource, ThePrimaryScreenIsGivenWithRightAndBottomOnePastTheLastPixel) {
    AppTestApp();
    const QScreen* screen = QGuiApplication::primaryScreen();
    ASSERT_NE(screen, nullptr);
    const QRect geometry = screen->geometry();
    const QRect available = screen->availableGeometry();

    const auto area = QtScreenAreaSource().primaryScreen();

    ASSERT_TRUE(area.has_value());
    EXPECT_EQ(area->geometry,
              (Corvane::Rect{geometry.x(), geometry.y(), geometry.x() + geometry.width(),
                             geometry.y() + geometry.height()}));
    EXPECT_EQ(area->workArea,
              (Corvane::Rect{available.x(), available.y(), available.x() + available.width(),
                             available.y() + available.height()}));
    EXPECT_EQ(area->bitsPerPixel, screen->depth());
}

TEST(QtScreenAreaSource, OnceInstalledTheSystemEnquiryReadsTheScreen) {
    AppTestApp();
    Corvane::ScreenAreaSource::install(std::make_shared<QtScreenAreaSource>());
    const QScreen* screen = QGuiApplication::primaryScreen();
    ASSERT_NE(screen, nullptr);

    EXPECT_EQ(Corvane::SystemInfo().getScreenWidth(), screen->geometry().width());
    EXPECT_EQ(Corvane::SystemInfo().getScreenHeight(), screen->geometry().height());

    Corvane::ScreenAreaSource::install(nullptr);
    EXPECT_EQ(Corvane::SystemInfo().getScreenWidth(), 0);
}

} // namespace
