#pragma once
// The toolkit gallery: each section draws some of the program's own controls and saves
// them as PNG files. A section is one function, registered where it is written:
//
//     QG_GALLERY_SECTION(Buttons) {
//         CDibButtonCtrl button;
//         ...
//         gallery.Save(QStringLiteral("button-normal"), button);
//     }
//
// in any .cpp file of this folder (the build takes them all). Sections run in the order
// of their names.

#include <QImage>
#include <QString>

#include <functional>

class QWidget;

class Gallery {
public:
    explicit Gallery(QString folder) : m_folder(std::move(folder)) {}

    // Grabs the widget (shown off screen if it is a window that is not shown yet) and saves
    // it as <folder>/<name>.png; outside a window's mask the picture is transparent.
    void Save(const QString& name, QWidget& widget);
    void Save(const QString& name, const QImage& image);

    const QString& Folder() const { return m_folder; }
    int Saved() const { return m_saved; }
    int Failed() const { return m_failed; }

    using Section = std::function<void(Gallery&)>;
    // Called by QG_GALLERY_SECTION; returns true so that it can run at static start-up.
    static bool Register(const char* name, Section section);
    // Runs every section, or only those whose name is listed.
    void RunSections(const QStringList& only);
    static QStringList SectionNames();

private:
    QString m_folder;
    int m_saved = 0;
    int m_failed = 0;
};

#define QG_GALLERY_SECTION(name)                                                                   \
    static void GallerySection_##name(Gallery& gallery);                                           \
    [[maybe_unused]] static const bool GalleryRegistered_##name =                                  \
        Gallery::Register(#name, GallerySection_##name);                                           \
    static void GallerySection_##name(Gallery& gallery)
