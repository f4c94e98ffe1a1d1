#include "toolkit/CDialogPage.h"

namespace {
// Right of the navigation column and below the caption band.
constexpr int PageLeft = 143;
constexpr int PageTop = 65;
constexpr int WidthTaken = 145;
constexpr int HeightTaken = 83;
} // namespace

void CDialogPage::OnParentSize(const QSize& parentClient) {
    if (QWidget* window = Window())
        window->setGeometry(PageRect(parentClient));
}

QRect CDialogPage::PageRect(const QSize& parentClient) {
    return QRect(PageLeft, PageTop, parentClient.width() - WidthTaken,
                 parentClient.height() - HeightTaken);
}
