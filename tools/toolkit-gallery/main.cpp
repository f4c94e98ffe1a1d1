// toolkit-gallery [folder] [section...]: draws the toolkit's controls into PNG files under
// the folder (default build/gallery), on the offscreen platform unless another is chosen.

#include "Gallery.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    QStringList args = QApplication::arguments().mid(1);
    if (args.contains(QStringLiteral("--help"))) {
        QTextStream(stdout) << "toolkit-gallery [folder] [section...]\nsections: "
                            << Gallery::SectionNames().join(QLatin1Char(' ')) << "\n";
        return 0;
    }
    const QString folder = args.isEmpty() ? QStringLiteral("build/gallery") : args.takeFirst();
    Gallery gallery(folder);
    gallery.RunSections(args);
    QTextStream(stdout) << gallery.Saved() << " pictures written to " << folder << "\n";
    return gallery.Failed() == 0 ? 0 : 1;
}
