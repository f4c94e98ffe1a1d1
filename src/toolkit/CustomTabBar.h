#pragma once
// The row of tabs of CCustomTabCtrl. The style draws each tab's shape; the label is drawn
// here (TabLabelLayout), so that a page that is switched off shows an embossed grey label
// while its tab stays where it is. A click on such a tab is refused. The bar takes no
// focus and no wheel: the tab control handles the keys.

#include <QPixmap>
#include <QTabBar>

#include <functional>
#include <vector>

class CustomTabBar : public QTabBar {
    Q_OBJECT

public:
    explicit CustomTabBar(QWidget* parent = nullptr);

    void SetPageEnabledQuery(std::function<bool(int)> isEnabled);
    void SetImageList(std::vector<QPixmap> images);
    bool HasImageList() const { return !m_images.empty(); }
    // Image index of a tab, -1 for none.
    void SetTabImage(int index, int image);
    int TabImage(int index) const;
    void SetBottomStyle(bool bottom) { m_bottomStyle = bottom; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void tabInserted(int index) override;
    void tabRemoved(int index) override;
    QSize tabSizeHint(int index) const override;

private:
    bool PageEnabled(int index) const;
    void Relayout(int index);
    void DrawLabel(QPainter& painter, int index, bool selected) const;

    std::function<bool(int)> m_isEnabled;
    std::vector<QPixmap> m_images;
    std::vector<int> m_tabImages;
    bool m_bottomStyle = false;
};
