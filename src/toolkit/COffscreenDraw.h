#pragma once
// Flicker-free painting for a widget class T that supplies DoPaint(QPainter&): each paint
// goes through a CMemoryDC of the area to repaint, and the widget is marked as painting
// all of itself, so that Qt does not clear it first (the original swallowed the erase
// message for the same reason). Use: call OffscreenSetUp() once, and hand paintEvent to
// OffscreenPaint.

#include "toolkit/CMemoryDC.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

template <class T>
class COffscreenDraw {
protected:
    void OffscreenSetUp() {
        QWidget* self = static_cast<T*>(this);
        self->setAttribute(Qt::WA_OpaquePaintEvent, true);
    }

    void OffscreenPaint(QPaintEvent* event) {
        T* self = static_cast<T*>(this);
        QPainter target(self);
        const QRect area = event != nullptr ? event->rect() : self->rect();
        CMemoryDC memory(target, area, self->devicePixelRatioF());
        self->DoPaint(memory.dc());
    }
};
