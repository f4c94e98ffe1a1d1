// The tab control with its three styles of tab row, one page switched off (its tab drawn
// embossed) and the second page shown.

#include "Gallery.h"

#include "toolkit/CCustomPropPage.h"
#include "toolkit/CCustomTabCtrl.h"
#include "toolkit/TabGeometry.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

class GalleryPage : public QWidget, public CCustomPropPage {
public:
    explicit GalleryPage(const QString& text) : CCustomPropPage(this) {
        setAutoFillBackground(true);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QLabel(text, this));
        layout->addStretch();
    }
    void Refresh() override {}
};

class GalleryTabs : public CCustomTabCtrl {
public:
    using CCustomTabCtrl::CCustomTabCtrl;
    void OnPageSelected() override {}
    // The third page is switched off.
    bool IsPageEnabled(int index) const override { return index != 2; }
};

} // namespace

QG_GALLERY_SECTION(Tabs) {
    const std::pair<unsigned, const char*> styles[] = {
        {0, "tabs-top"},
        {TabGeometry::TabStyleBottom, "tabs-bottom"},
        {TabGeometry::TabStyleVertical, "tabs-left"},
    };
    for (const auto& [style, name] : styles) {
        // The pages outlive the tab control, which keeps them without owning them.
        GalleryPage version(QStringLiteral("Version 1.0.0.1"));
        GalleryPage updates(QStringLiteral("Updates are checked every day."));
        GalleryPage credits(QStringLiteral("Credits (switched off)"));
        QWidget dialog;
        dialog.resize(420, 260);
        GalleryTabs tabs(&dialog, style);
        tabs.setGeometry(10, 10, 400, 240);
        tabs.AddPage(QStringLiteral("Version"), &version);
        tabs.AddPage(QStringLiteral("Updates"), &updates, true);
        tabs.AddPage(QStringLiteral("Credits"), &credits);
        gallery.Save(QString::fromLatin1(name), dialog);
    }
}
