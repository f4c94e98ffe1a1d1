// Chimes: the three event sounds, synthesised as short bell-like notes (a few
// sine partials under a quick attack and an exponential decay) and written as
// 16-bit PCM mono WAVE files at 22050 Hz.
#pragma once

#include <cstdint>
#include <vector>

namespace artwork {

class ArtworkOutput;

namespace chimes {

inline constexpr int sampleRate = 22050;

struct Note {
    double startSeconds;
    double frequency;
    double gain;
    double decaySeconds; // time for the note to fall to 1/e
};

// Samples of the notes mixed, normalised to a peak of about -6 dB and faded to
// silence at the end.
std::vector<std::int16_t> synthesise(const std::vector<Note>& notes, double lengthSeconds);

// A complete WAVE file holding the samples.
std::vector<std::uint8_t> wave(const std::vector<std::int16_t>& samples);

void write(ArtworkOutput& out);

} // namespace chimes
} // namespace artwork
