#pragma once
// The pieces of the application object's start-up that touch the rest of the system, one
// operation per step, in the order in which StartupSequence calls them. The application
// object implements them; tests implement them to see the order, the early returns and the
// failure handling without a service, a plug-in or a window system.

#include "foundation/stdstr.h"

#include <cstdint>

class IStartupSteps {
public:
    // Starts the inbound pump's thread; the answer is not looked at.
    virtual bool StartMessageThread() = 0;
    // Asks the allocator for the heap that fragments least, where there is such a request.
    virtual void RequestLowFragmentationHeap() = 0;
    // The full path of the running program; false when it cannot be had.
    virtual bool ReadModuleFileName(stdstr& path) = 0;
    // Finds the language files beside the program.
    virtual void DiscoverLanguages() = 0;
    // The setting "Language": a decimal language id as text.
    virtual stdstr LanguageSettingText() = 0;
    // Loads the language of this name, without keeping the choice for the user.
    virtual void SelectLanguage(const stdstr& name) = 0;
    // Makes the translator and puts it where QGEntString looks for one.
    virtual void InstallTranslator() = 0;
    // Brings up the parts of the application object that need the window system; a negative
    // answer is a failure (HRESULT).
    virtual std::int32_t InitModule() = 0;
    virtual void LoadGUIResources() = 0;
    // False: the program cannot go on (the user has been told already).
    virtual bool EnsureServiceRunning() = 0;
    // The user's application data folder.
    virtual stdstr AppDataFolder() = 0;
    // Reads QGConfig.ini again.
    virtual void LoadSettings() = 0;
    // True when no other copy runs.
    virtual bool CheckSingleInstance() = 0;
    virtual void LoadDrives() = 0;
    // A box with no owner, string 129 as caption and the error icon.
    virtual void ShowErrorBox(const stdstr& text) = 0;

    virtual ~IStartupSteps() = default;

protected:
    IStartupSteps() = default;
    IStartupSteps(const IStartupSteps&) = default;
    IStartupSteps& operator=(const IStartupSteps&) = default;
};
