#pragma once
// The fonts, brushes and pictures that every window of the program shares. One object,
// owned by the application, made once when the user interface starts; windows borrow
// from it and never free what they get. Also home of the pop-up slot table and of the
// large-font layout helpers.

#include "toolkit/PopupSlotTable.h"

#include <QBrush>
#include <QFont>
#include <QIcon>
#include <QList>
#include <QPixmap>

#include <array>

class QWidget;

class QuillgateGUIRes {
public:
    QuillgateGUIRes() = default;
    QuillgateGUIRes(const QuillgateGUIRes&) = delete;
    QuillgateGUIRes& operator=(const QuillgateGUIRes&) = delete;
    virtual ~QuillgateGUIRes() = default;

    // Builds everything for the primary screen. Always true: a piece that fails to load
    // stays empty, and its users cope as if it had not been asked for.
    bool Create();
    // The same for a screen with these dots per inch (horizontal for the large-font test,
    // vertical for the font height).
    bool Create(int dpiX, int dpiY);

    QFont GetBoldFont() const { return m_fontBold; }
    QFont GetNormalFont() const { return m_fontNormal; }
    QFont GetTitleFont() const { return m_fontBold2; }
    QFont GetLinkFont() const { return m_fontLink; }
    QFont GetBold1Font() const { return m_fontBold1; }
    QFont GetBold3Font() const { return m_fontBold3; }

    QPixmap GetSmallIcon() const { return m_iconSmall; }
    QPixmap GetLargeIcon() const { return m_iconLarge; }
    // The application icon with all its drawings, for window icons.
    QIcon GetAppIcon() const { return m_appIcon; }

    QBrush GetWhiteBrush() const { return m_brushWhite; }
    QBrush GetNullBrush() const { return m_brushNull; }
    QBrush GetGreyBrush() const { return m_brushGrey; }
    QBrush GetCreamBrush() const { return m_brushCream; }

    const QList<QPixmap>& GetImageList() const { return m_imageList; }
    const QList<QPixmap>& GetImageList16() const { return m_imageList16; }
    QPixmap GetBitmap254() const { return m_bitmap254; }
    QPixmap GetBitmap282() const { return m_bitmap282; }
    const std::array<int, 4>& GetImageNumbers() const { return m_imageNumbers; }

    // The dots per inch of the screen as the program's coordinates see them (Qt scales a
    // dense screen as a whole, so this is usually 96; 120 turns on the large-font layout).
    int GetScreenDpi() const;
    // The value that Create was given, 0 before.
    int GetCreatedDpi() const { return m_createdDpiX; }

    int ClaimPopupSlot() { return m_popupSlots.Claim(); }
    void ReleasePopupSlot(int slot) { m_popupSlots.Release(slot); }
    PopupSlotTable& GetPopupSlots() { return m_popupSlots; }

    // Large-font layout, by dialog and control number (see DialogControl). A control
    // that isn't there is left alone.
    static void GrowControl(QWidget* dialog, int id, int dy, int dx);
    static void ScaleControlSize(QWidget* dialog, int id, double factor);
    static void ScaleControlPos(QWidget* dialog, int id, double factor, bool toClient);

    // The face that stands in for the dialogs' "MS shell dlg": the desktop's sans face.
    static QString DialogFace();
    // A font from a Windows-style description: a negative height is the character height
    // in pixels, a positive one the cell height (ascent plus descent), 0 the default size;
    // quality 4 asks for anti-aliasing.
    static QFont MakeFont(int height, int weight, bool underline, int quality, const QString& face);

private:
    QPixmap m_iconLarge;
    QPixmap m_iconSmall;
    QIcon m_appIcon;
    QFont m_fontBold1;
    QFont m_fontBold2;
    QFont m_fontBold;
    QFont m_fontBold3;
    QFont m_fontNormal;
    QFont m_fontLink;
    QBrush m_brushWhite;
    QBrush m_brushNull;
    QBrush m_brushGrey;
    QBrush m_brushCream;
    QList<QPixmap> m_imageList;
    QList<QPixmap> m_imageList16;
    QPixmap m_bitmap254;
    QPixmap m_bitmap282;
    std::array<int, 4> m_imageNumbers{3, 1, 2, 4};
    int m_createdDpiX = 0;
    PopupSlotTable m_popupSlots;
};
