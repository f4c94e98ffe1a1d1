#pragma once
// The one QApplication of an app test program, on the offscreen platform, made on first use
// and destroyed when the tests end (before static destruction, which Qt's own statics need).

#include <QApplication>
#include <QByteArray>

#include <gtest/gtest.h>

#include <memory>

class AppTestEnvironment : public ::testing::Environment {
public:
    static QApplication& App() {
        if (!Holder()) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static int argc = 1;
            static char name[] = "app-test";
            static char* argv[] = {name, nullptr};
            Holder() = std::make_unique<QApplication>(argc, argv);
        }
        return *Holder();
    }
    void TearDown() override { Holder().reset(); }

private:
    static std::unique_ptr<QApplication>& Holder() {
        static std::unique_ptr<QApplication> app;
        return app;
    }
};

inline ::testing::Environment* const g_appTestEnvironment =
    ::testing::AddGlobalTestEnvironment(new AppTestEnvironment);

inline QApplication& AppTestApp() {
    return AppTestEnvironment::App();
}
