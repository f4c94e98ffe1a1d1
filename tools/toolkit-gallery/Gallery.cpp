#include "Gallery.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTextStream>
#include <QWidget>

#include <map>

namespace {
std::map<QString, Gallery::Section>& Sections() {
    static std::map<QString, Gallery::Section> sections;
    return sections;
}
} // namespace

bool Gallery::Register(const char* name, Section section) {
    Sections().emplace(QString::fromLatin1(name), std::move(section));
    return true;
}

QStringList Gallery::SectionNames() {
    QStringList names;
    for (const auto& [name, section] : Sections())
        names.append(name);
    return names;
}

void Gallery::RunSections(const QStringList& only) {
    for (const auto& [name, section] : Sections()) {
        if (!only.isEmpty() && !only.contains(name, Qt::CaseInsensitive))
            continue;
        QTextStream(stdout) << "section " << name << "\n";
        section(*this);
    }
}

void Gallery::Save(const QString& name, QWidget& widget) {
    if (widget.isWindow() && !widget.isVisible()) {
        widget.setAttribute(Qt::WA_DontShowOnScreen, true);
        widget.show();
    }
    QApplication::processEvents();
    QImage image = widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    // grab() paints the whole rectangle; the window system would cut it to the mask.
    const QRegion mask = widget.mask();
    if (!mask.isEmpty()) {
        // The painter works in the widget's coordinates whatever the picture's pixel ratio.
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        QRegion outside(QRect(QPoint(0, 0), widget.size()));
        outside -= mask;
        for (const QRect& rect : outside)
            painter.fillRect(rect, Qt::transparent);
    }
    Save(name, image);
}

void Gallery::Save(const QString& name, const QImage& image) {
    QDir().mkpath(m_folder);
    const QString path = QDir(m_folder).filePath(name + QStringLiteral(".png"));
    if (!image.isNull() && image.save(path)) {
        ++m_saved;
        QTextStream(stdout) << "  " << path << " (" << image.width() << " x " << image.height()
                            << ")\n";
    } else {
        ++m_failed;
        QTextStream(stderr) << "  could not write " << path << "\n";
    }
}
