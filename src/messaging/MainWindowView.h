#pragma once
// What the handling of a service message needs of the main window beyond its messages:
// whether it is on screen, and bringing it there, so that a failure is never reported
// behind a hidden window.

class MainWindowView {
public:
    virtual bool isVisible() = 0;
    // ShowWindow(SW_SHOW).
    virtual void show() = 0;

    virtual ~MainWindowView() = default;

protected:
    MainWindowView() = default;
    MainWindowView(const MainWindowView&) = default;
    MainWindowView& operator=(const MainWindowView&) = default;
};
