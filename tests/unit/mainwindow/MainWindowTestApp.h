#pragma once
// The one QApplication of a main window test program, on the offscreen platform, made on
// first use. It is destroyed when the tests end, before static destruction, since Qt's own
// statics that its destructor touches may be gone by then.

#include <QApplication>
#include <QByteArray>

#include <gtest/gtest.h>

#include <memory>

class MainWindowTestEnvironment : public ::testing::Environment {
public:
    static QApplication& App() {
        if (!Holder()) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static int argc = 1;
            static char name[] = "mainwindow-test";
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
inline ::testing::Environment* const g_mainWindowTestEnvironment =
    ::testing::AddGlobalTestEnvironment(new MainWindowTestEnvironment);

inline QApplication& MainWindowTestApp() {
    return MainWindowTestEnvironment::App();
}
