#include "mainwindow/MainDlgHitTest.h"

MainDlgHitTest::Code MainDlgHitTest::HitTest(int x, int y, const Bounds& client,
                                             const Metrics& metrics) {
    const int bx = metrics.borderX + metrics.frameX;
    const int by = metrics.borderY + metrics.frameY;
    const int cap = 3 * metrics.caption;
    const int kx = metrics.cornerX;
    const int ky = metrics.cornerY;
    const int l = client.left;
    const int t = client.top;
    const int r = client.right;
    const int b = client.bottom;

    const bool acrossX = l <= x && x <= r;
    const bool acrossY = t <= y && y <= b;
    if (r - bx <= x && x <= r && acrossY)
        return Code::Right;
    if (l <= x && x <= l + bx && acrossY)
        return Code::Left;
    if (acrossX && t <= y && y <= t + by)
        return Code::Top;
    if (acrossX && b - by <= y && y <= b)
        return Code::Bottom;

    const bool inside = acrossX && acrossY;
    if (inside && x >= r - kx && y >= b - ky)
        return Code::BottomRight;
    if (inside && x <= l + kx && y >= b - ky)
        return Code::BottomLeft;
    if (inside && x <= l + kx && y <= t + ky)
        return Code::TopLeft;
    if (inside && x >= r - kx && y <= t + ky)
        return Code::TopRight;

    if (x > r || x < l)
        return Code::Client;
    if (t + by <= y && y <= t + by + cap)
        return Code::Caption;
    return Code::Client;
}

MainDlgHitTest::Code MainDlgHitTest::HitTest(int x, int y, const Bounds& client) {
    return HitTest(x, y, client, Metrics());
}

Qt::Edges MainDlgHitTest::EdgesOf(Code code) {
    switch (code) {
    case Code::Left:
        return Qt::LeftEdge;
    case Code::Right:
        return Qt::RightEdge;
    case Code::Top:
        return Qt::TopEdge;
    case Code::Bottom:
        return Qt::BottomEdge;
    case Code::TopLeft:
        return Qt::TopEdge | Qt::LeftEdge;
    case Code::TopRight:
        return Qt::TopEdge | Qt::RightEdge;
    case Code::BottomLeft:
        return Qt::BottomEdge | Qt::LeftEdge;
    case Code::BottomRight:
        return Qt::BottomEdge | Qt::RightEdge;
    case Code::Client:
    case Code::Caption:
        break;
    }
    return {};
}
