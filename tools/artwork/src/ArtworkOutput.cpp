#include "ArtworkOutput.h"

#include "Raster.h"

#include <QBuffer>
#include <QByteArray>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace artwork {

namespace {

std::string sizeText(int w, int h) {
    return std::to_string(w) + " x " + std::to_string(h);
}

// Numeric ids first, in numeric order; named resources after them.
bool idLess(const ArtworkEntry& a, const ArtworkEntry& b) {
    const auto key = [](const std::string& id) {
        const bool numeric = !id.empty() && std::all_of(id.begin(), id.end(), [](char c) {
            return c >= '0' && c <= '9';
        });
        return std::make_pair(numeric ? 0 : 1, numeric ? std::stol(id) : 0L);
    };
    const auto ka = key(a.id);
    const auto kb = key(b.id);
    return ka != kb ? ka < kb : a.id < b.id;
}

void writeTable(std::ostringstream& out, std::vector<ArtworkEntry> entries) {
    std::stable_sort(entries.begin(), entries.end(), idLess);
    out << "| Id | Files | Size (1x) | What it shows | Used by |\n";
    out << "|---|---|---|---|---|\n";
    for (const auto& e : entries) {
        std::string files;
        for (const auto& f : e.files) {
            files += (files.empty() ? "" : "<br>") + std::string("`") + f + "`";
        }
        out << "| " << e.id << " | " << files << " | " << e.size << " | " << e.shows << " | "
            << e.usedBy << " |\n";
    }
    out << "\n";
}

const char* const indexHead = R"(# Artwork of Quillgate

Everything in `bitmaps/`, `icons/`, `animations/` and `sounds/` is drawn by
`tools/artwork` (`qg-artwork <resources-dir>`). Do not edit these files by hand: change
the drawing code and run the program again. Its output is the same, byte for byte, on
every run on the same Qt and zlib. This file is written by the same program.

## Naming

- `bitmaps/<id>.png`: the bitmap with that resource id, at the size the program lays it
  out with (one logical pixel per pixel). `bitmaps/<id>@2x.png`: the same picture drawn
  at twice the size for a display scale of 2; it is not an enlargement of the first.
- `icons/<id>.png` and `icons/<id>@2x.png`: the icon at its base size and twice that.
  `icons/<id>-<n>.png`: the icon drawn for an exact size of n by n pixels (16, 22, 24
  and 32 for tray icons, which is what notification areas ask for; 16 up to 256 for the
  application icon). Pick the exact size when the host asks for one; each is drawn for
  its size, with lines on whole pixels, not scaled from another.
- `animations/<id>.gif`, `animations/<id>@2x.gif`: looping GIF89a animation.
- `sounds/<id>.wav`: 16-bit PCM, mono, 22050 Hz.
- Named resources that have no number keep their name: `bitmaps/IDB_BMP_TASK_1.png`.

Pictures are opaque (RGB) where the program copies them as a block over its own
background, and carry alpha only where the window's rounded outline passes through them
(the corners of the main window and of the dialog frame) and for icons.

)";

} // namespace

ArtworkOutput::ArtworkOutput(std::filesystem::path resourcesDir) : root_(std::move(resourcesDir)) {}

void ArtworkOutput::bitmap(const std::string& name, int w, int h,
                           const std::function<QImage(int)>& draw, std::string shows,
                           std::string usedBy) {
    ArtworkEntry entry{Family::Bitmap,   name, {}, sizeText(w, h), std::move(shows),
                       std::move(usedBy)};
    for (int scale : {1, 2}) {
        const QImage image = draw(scale);
        if (image.width() != w * scale || image.height() != h * scale) {
            throw std::runtime_error("bitmap " + name + " drawn at the wrong size");
        }
        std::string file = "bitmaps/";
        file += name;
        file += scale == 1 ? ".png" : "@2x.png";
        writePng(file, image);
        entry.files.push_back(file);
    }
    add(std::move(entry));
}

void ArtworkOutput::writePng(const std::string& relPath, const QImage& image) const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!forSaving(image).save(&buffer, "PNG")) {
        throw std::runtime_error("cannot encode " + relPath);
    }
    writeFile(relPath, std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

void ArtworkOutput::writeFile(const std::string& relPath,
                              const std::vector<std::uint8_t>& bytes) const {
    const std::filesystem::path path = root_ / relPath;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void ArtworkOutput::add(ArtworkEntry entry) {
    entries_.push_back(std::move(entry));
}

void ArtworkOutput::setNotes(std::string notes) {
    notes_ = std::move(notes);
}

void ArtworkOutput::writeIndex() const {
    std::ostringstream out;
    out << indexHead;
    const std::pair<Family, const char*> sections[] = {
        {Family::Bitmap, "Bitmaps"},
        {Family::Icon, "Icons"},
        {Family::Animation, "Animation"},
        {Family::Sound, "Sounds"},
    };
    for (const auto& section : sections) {
        const Family family = section.first;
        std::vector<ArtworkEntry> part;
        std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(part),
                     [family](const ArtworkEntry& e) { return e.family == family; });
        out << "## " << section.second << "\n\n";
        writeTable(out, std::move(part));
    }
    if (!notes_.empty()) {
        out << "## Notes\n\n" << notes_;
    }
    const std::string text = out.str();
    writeFile("ARTWORK.md", std::vector<std::uint8_t>(text.begin(), text.end()));
}

} // namespace artwork
