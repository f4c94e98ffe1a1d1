#include "Chimes.h"

#include "ArtworkOutput.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace artwork::chimes {

namespace {

void put32(std::vector<std::uint8_t>& out, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) {
        out.push_back(static_cast<std::uint8_t>((v >> (8 * i)) & 0xffu));
    }
}

void put16(std::vector<std::uint8_t>& out, std::uint16_t v) {
    out.push_back(static_cast<std::uint8_t>(v & 0xffu));
    out.push_back(static_cast<std::uint8_t>((v >> 8) & 0xffu));
}

void putTag(std::vector<std::uint8_t>& out, const char* tag) {
    for (int i = 0; i < 4; ++i) {
        out.push_back(static_cast<std::uint8_t>(tag[i]));
    }
}

// Partials of a soft bell: the fundamental, its octave, and a slightly sharp
// twelfth that gives the metallic shimmer; the upper ones die away sooner.
struct Partial {
    double ratio;
    double gain;
    double decayFactor;
};
constexpr Partial partials[] = {{1.0, 1.0, 1.0}, {2.0, 0.35, 0.55}, {3.01, 0.12, 0.35}};

} // namespace

std::vector<std::int16_t> synthesise(const std::vector<Note>& notes, double lengthSeconds) {
    const auto count = static_cast<std::size_t>(std::lround(lengthSeconds * sampleRate));
    std::vector<double> mix(count, 0.0);
    constexpr double attack = 0.004;
    for (const Note& note : notes) {
        const auto first = static_cast<std::size_t>(std::lround(note.startSeconds * sampleRate));
        for (std::size_t i = first; i < count; ++i) {
            const double t = static_cast<double>(i - first) / sampleRate;
            const double rise = std::min(1.0, t / attack);
            double v = 0;
            for (const Partial& pt : partials) {
                v += pt.gain * std::exp(-t / (note.decaySeconds * pt.decayFactor)) *
                     std::sin(2 * std::numbers::pi * note.frequency * pt.ratio * t);
            }
            mix[i] += note.gain * rise * v;
        }
    }
    // Fade the last 30 ms to silence, so that no click ends the sound.
    const auto fade = static_cast<std::size_t>(0.03 * sampleRate);
    for (std::size_t k = 0; k < fade && k < count; ++k) {
        mix[count - 1 - k] *= static_cast<double>(k) / static_cast<double>(fade);
    }
    double peak = 0;
    for (double v : mix) {
        peak = std::max(peak, std::abs(v));
    }
    const double scale = peak > 0 ? 16384.0 / peak : 0.0;
    std::vector<std::int16_t> out(count);
    std::transform(mix.begin(), mix.end(), out.begin(),
                   [scale](double v) { return static_cast<std::int16_t>(std::lround(v * scale)); });
    return out;
}

std::vector<std::uint8_t> wave(const std::vector<std::int16_t>& samples) {
    const auto dataBytes = static_cast<std::uint32_t>(samples.size() * 2);
    std::vector<std::uint8_t> out;
    putTag(out, "RIFF");
    put32(out, 36 + dataBytes);
    putTag(out, "WAVE");
    putTag(out, "fmt ");
    put32(out, 16);
    put16(out, 1); // PCM
    put16(out, 1); // mono
    put32(out, sampleRate);
    put32(out, sampleRate * 2);
    put16(out, 2);
    put16(out, 16);
    putTag(out, "data");
    put32(out, dataBytes);
    for (std::int16_t s : samples) {
        put16(out, static_cast<std::uint16_t>(s));
    }
    return out;
}

void write(ArtworkOutput& out) {
    struct Sound {
        int id;
        std::vector<Note> notes;
        double length;
        const char* shows;
        const char* usedBy;
    };
    const Sound sounds[] = {
        {204,
         {{0.0, 880.00, 1.0, 0.10}, {0.11, 659.26, 0.9, 0.14}},
         0.42,
         "two notes falling, A5 then E5: \"already here\"",
         "`CVLQuillgateApp::CheckSingleInstance` when another copy runs"},
        {205,
         {{0.0, 1046.50, 0.8, 0.09}, {0.085, 1567.98, 0.7, 0.12}},
         0.40,
         "two notes rising, C6 then G6: a soft notification",
         "`CQGStatusDlg::ShowPopup` as the summary rises"},
        {206,
         {{0.0, 1318.51, 1.0, 0.07}},
         0.26,
         "one short bright bell, E6",
         "`CMainDlg` tray set-up when the program starts; also the click sound id of the "
         "section and top bar buttons (`CDibButtonCtrl`, sound switched off)"},
    };
    for (const Sound& s : sounds) {
        const std::string file = "sounds/" + std::to_string(s.id) + ".wav";
        const auto samples = synthesise(s.notes, s.length);
        out.writeFile(file, wave(samples));
        const auto ms = static_cast<long>(std::lround(s.length * 1000));
        out.add({Family::Sound,
                 std::to_string(s.id),
                 {file},
                 std::to_string(ms) + " ms, 22050 Hz, 16-bit mono",
                 s.shows,
                 s.usedBy});
    }
}

} // namespace artwork::chimes
