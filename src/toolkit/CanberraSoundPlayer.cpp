#include "toolkit/CanberraSoundPlayer.h"

#include "foundation/Trace.h"
#include "foundation/stdstr.h"

#include <QFile>

#include <canberra.h>

CanberraSoundPlayer::~CanberraSoundPlayer() {
    if (m_context != nullptr)
        ca_context_destroy(m_context);
}

bool CanberraSoundPlayer::Open() {
    if (m_context != nullptr)
        return true;
    if (m_openFailed)
        return false;
    if (ca_context_create(&m_context) != CA_SUCCESS) {
        m_context = nullptr;
        m_openFailed = true;
        return false;
    }
    ca_context_change_props(m_context, CA_PROP_APPLICATION_NAME, "Quillgate",
                            CA_PROP_APPLICATION_ID, "com.velloran.Quillgate", nullptr);
    const int result = ca_context_open(m_context);
    if (result != CA_SUCCESS) {
        // No sound server and no device: the program stays silent for the session
        // rather than trying again on every click.
        TraceFmt(TRACE_DEBUG, u"CanberraSoundPlayer::Open - no sound (%s)",
                 stdstr::toTString(ca_strerror(result)));
        ca_context_destroy(m_context);
        m_context = nullptr;
        m_openFailed = true;
        return false;
    }
    return true;
}

bool CanberraSoundPlayer::Play(int id) {
    std::lock_guard guard(m_lock);
    const QString path = m_files.FileFor(id);
    if (path.isEmpty() || !Open())
        return false;
    const QByteArray file = QFile::encodeName(path);
    // ca_context_play returns once the sound is queued; the server plays it on its own.
    const int result =
        ca_context_play(m_context, static_cast<uint32_t>(id), CA_PROP_MEDIA_FILENAME,
                        file.constData(), CA_PROP_CANBERRA_CACHE_CONTROL, "volatile", nullptr);
    return result == CA_SUCCESS;
}
