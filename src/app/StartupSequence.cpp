#include "app/StartupSequence.h"

#include "app/IStartupSteps.h"
#include "app/LanguageSetting.h"
#include "app/SharedConstants.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/Trace.h"

#include <sys/stat.h>
#include <unistd.h>

StartupSequence::StartupSequence(IStartupSteps& steps) : m_steps(steps) {}

stdstr StartupSequence::FolderOf(const stdstr& path) {
    const std::size_t slash = path.rfind(u'/');
    return slash == stdstr::npos ? stdstr() : stdstr(path.substr(0, slash));
}

bool StartupSequence::EnsureFolder(const stdstr& folder) {
    const std::string path = stdstr::fromTString(folder);
    if (::access(path.c_str(), F_OK) != -1)
        return true;
    return ::mkdir(path.c_str(), 0777) == 0;
}

std::int32_t StartupSequence::Init() {
    std::int32_t result = S_OK;
    try {
        // The steps trace "Init - ended" themselves when they all ran; the early returns
        // leave it out.
        return RunSteps();
    } catch (const Corvane::BaseException& e) {
        // The message is the format, as it always was: a percent sign in it is a conversion.
        const stdstr message = e.GetMessage();
        TraceFmt(TRACE_ERROR, message.c_str());
        m_steps.ShowErrorBox(message);
        result = E_FAIL;
    } catch (...) {
        m_steps.ShowErrorBox(u"Unhandled exception");
        result = E_FAIL;
        throw;
    }
    TraceMsg(TRACE_DEBUG, u"Init - ended");
    return result;
}

std::int32_t StartupSequence::RunSteps() {
    m_steps.StartMessageThread();
    TraceMsg(TRACE_DEBUG, u"Init - start");
    m_steps.RequestLowFragmentationHeap();

    stdstr exePath;
    if (!m_steps.ReadModuleFileName(exePath))
        throw Corvane::BaseException(ThrowingFile, ModuleFileNameLine, NotInstalledMessage, -1);
    m_paths.exePath = exePath;
    TraceFmt(TRACE_DEBUG, u"Quillgate exe full path = %s", m_paths.exePath);
    m_paths.exeFolder = FolderOf(m_paths.exePath);
    TraceFmt(TRACE_DEBUG, u"Quillgate exe folder = %s", m_paths.exeFolder);

    m_steps.DiscoverLanguages();
    m_steps.SelectLanguage(LanguageSetting::NameOf(m_steps.LanguageSettingText()));
    m_steps.InstallTranslator();
    TraceMsg(TRACE_DEBUG, u"Load language files.");

    const std::int32_t result = m_steps.InitModule();
    if (result < 0)
        throw Corvane::BaseException(ThrowingFile, ModuleInitLine, NotInstalledMessage, -1);

    TraceMsg(TRACE_DEBUG, u"Load GUI Resources");
    m_steps.LoadGUIResources();

    if (!m_steps.EnsureServiceRunning())
        return E_FAIL;

    // The user's folder behind the user's application data folder.
    m_paths.configFolder = m_steps.AppDataFolder() + SharedConstants::UserFolderSuffix;
    TraceFmt(TRACE_INFO, u"Quillgate Configuration folder = %s", m_paths.configFolder);
    if (!EnsureFolder(m_paths.configFolder))
        return E_FAIL;

    TraceMsg(TRACE_DEBUG, u"Load Registry and other configs");
    m_steps.LoadSettings();

    if (!m_steps.CheckSingleInstance())
        return E_FAIL;

    TraceMsg(TRACE_DEBUG, u"Getting list of drives");
    m_steps.LoadDrives();

    TraceMsg(TRACE_DEBUG, u"Init - ended");
    return result;
}
