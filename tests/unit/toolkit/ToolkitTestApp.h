#pragma once
// The one QApplication of a toolkit test program, on the offscreen platform, made on
// first use so that a test file needs nothing but a call to ToolkitTestApp().
//
// It is destroyed when the tests end, before static destruction: by then Qt's own
// statics that its destructor touches (the pointing devices that QTest makes on its
// first mouse event, for one) may already be gone.

#include <QApplication>
#include <QByteArray>

#include <gtest/gtest.h>

#include <memory>

class ToolkitTestEnvironment : public ::testing::Environment {
public:
    static QApplication& App() {
        if (!Holder()) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static int argc = 1;
            static char name[] = "toolkit-test";
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

// Registered before main runs; GoogleTest owns the environment.
inline ::testing::Environment* const g_toolkitTestEnvironment =
    ::testing::AddGlobalTestEnvironment(new ToolkitTestEnvironment);

inline QApplication& ToolkitTestApp() {
    return ToolkitTestEnvironment::App();
}
