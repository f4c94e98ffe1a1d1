#pragma once
// Event sounds through the desktop's sound server (libcanberra). Playing is asynchronous;
// where no server runs, or the device cannot be opened, Play answers false and nothing
// else happens.

#include "toolkit/SoundFileCache.h"
#include "toolkit/SoundPlayer.h"

#include <mutex>

struct ca_context;

class CanberraSoundPlayer : public SoundPlayer {
public:
    CanberraSoundPlayer() = default;
    ~CanberraSoundPlayer() override;

    bool Play(int id) override;

private:
    bool Open();

    std::mutex m_lock;
    ca_context* m_context = nullptr;
    bool m_openFailed = false;
    SoundFileCache m_files;
};
