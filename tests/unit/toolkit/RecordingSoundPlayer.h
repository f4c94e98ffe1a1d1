#pragma once
// A sound player for tests: remembers which sounds were asked for, plays nothing, and
// puts itself in the resource store for its lifetime.

#include "toolkit/ResourceStore.h"
#include "toolkit/SoundPlayer.h"

#include <vector>

class RecordingSoundPlayer : public SoundPlayer {
public:
    RecordingSoundPlayer() : m_previous(ResourceStore::SetSoundPlayer(this)) {}
    ~RecordingSoundPlayer() override { ResourceStore::SetSoundPlayer(m_previous); }

    bool Play(int id) override {
        played.push_back(id);
        return answer;
    }

    std::vector<int> played;
    bool answer = true;

private:
    SoundPlayer* m_previous;
};
