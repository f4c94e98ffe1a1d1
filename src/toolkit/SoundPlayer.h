#pragma once
// The seam between "play event sound N" and whatever makes the noise: the desktop's sound
// server in the program, a recorder in the tests.

class SoundPlayer {
public:
    SoundPlayer() = default;
    SoundPlayer(const SoundPlayer&) = delete;
    SoundPlayer& operator=(const SoundPlayer&) = delete;
    virtual ~SoundPlayer() = default;

    // Starts the sound with this resource id and returns at once; false when it could not
    // be started (no such sound, no sound server). Never blocks for the sound's length.
    virtual bool Play(int id) = 0;
};
