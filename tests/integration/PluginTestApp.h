#pragma once
// The one QApplication of a test program that shows the plug-in's pages, on the offscreen
// platform, made on first use and destroyed when the tests end (before static destruction,
// since Qt's own statics that its destructor needs may be gone by then).

#include <QApplication>
#include <QByteArray>

#include <gtest/gtest.h>

#include <memory>

class PluginTestApp : public ::testing::Environment {
public:
    static QApplication& App() {
        if (!Holder()) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static int argc = 1;
            static char name[] = "plugin-test";
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

inline ::testing::Environment* const g_pluginTestApp =
    ::testing::AddGlobalTestEnvironment(new PluginTestApp);
