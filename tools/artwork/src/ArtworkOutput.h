// ArtworkOutput: writes the generated files under the resources folder and keeps
// the index of what was written, from which ARTWORK.md is made. Every file is
// written through here, so the index can't miss one.
#pragma once

#include <QImage>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace artwork {

enum class Family { Bitmap, Icon, Animation, Sound };

struct ArtworkEntry {
    Family family = Family::Bitmap;
    std::string id;
    std::vector<std::string> files;
    std::string size;
    std::string shows;
    std::string usedBy;
};

class ArtworkOutput {
public:
    explicit ArtworkOutput(std::filesystem::path resourcesDir);

    // A bitmap drawn at scale 1 and 2, written as bitmaps/<name>.png and
    // bitmaps/<name>@2x.png. The drawing must come out at w by h times the scale.
    void bitmap(const std::string& name, int w, int h, const std::function<QImage(int)>& draw,
                std::string shows, std::string usedBy);

    void writePng(const std::string& relPath, const QImage& image) const;
    void writeFile(const std::string& relPath, const std::vector<std::uint8_t>& bytes) const;
    void add(ArtworkEntry entry);

    // Free text closing ARTWORK.md (Markdown).
    void setNotes(std::string notes);

    // Writes ARTWORK.md from the entries.
    void writeIndex() const;

private:
    std::filesystem::path root_;
    std::vector<ArtworkEntry> entries_;
    std::string notes_;
};

} // namespace artwork
