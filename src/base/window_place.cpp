// SPDX-License-Identifier: MIT
#include "window_place.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int handle = 60; // pixels of the upper edge that a person needs to take hold of it

/// Of a window that is no dialog desktops are not told that it belongs to another, and it goes behind that. Its buttons
/// stay.
void makeDialog(QWidget &window)
{
    if (window.windowType() == Qt::Window)
        window.setWindowFlags((window.windowFlags() & ~Qt::WindowType_Mask) | Qt::Dialog);
}

} // namespace

QRect withinScreen(QRect wanted, QRect available, QMargins frame)
{
    const QRect room = available.marginsRemoved(frame);
    wanted.setSize(wanted.size().boundedTo(room.size()));
    wanted.moveLeft(std::clamp(wanted.left(), room.left(), room.left() + room.width() - wanted.width()));
    wanted.moveTop(std::clamp(wanted.top(), room.top(), room.top() + room.height() - wanted.height()));
    return wanted;
}

bool canBeReached(QRect window, const QList<QRect> &screens)
{
    const QRect edge(window.left(), window.top(), window.width(), 1);
    return std::ranges::any_of(screens,
                               [&](QRect screen) { return (screen & edge).width() >= std::min(handle, edge.width()); });
}

QMargins frameOf(const QWidget &window)
{
    if (window.isVisible())
        return {window.geometry().left() - window.frameGeometry().left(),
                window.geometry().top() - window.frameGeometry().top(),
                window.frameGeometry().right() - window.geometry().right(),
                window.frameGeometry().bottom() - window.geometry().bottom()};
    const int edge = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {edge, edge + window.style()->pixelMetric(QStyle::PM_TitleBarHeight), edge, edge};
}

void showOver(QWidget &window, const QWidget &owner)
{
    if (window.isVisible())
        return;
    makeDialog(window);
    if (!window.testAttribute(Qt::WA_Moved)) {
        window.adjustSize();
        QRect place(QPoint(), window.size());
        place.moveCenter(owner.frameGeometry().center());
        if (const QScreen *screen = owner.screen())
            place = withinScreen(place, screen->availableGeometry(), frameOf(window));
        window.setGeometry(place);
    }
    window.winId(); // makes the window, so that it can belong to its owner's
    window.windowHandle()->setTransientParent(owner.windowHandle());
    window.show();
}

void bringUp(QWidget &window, const QWidget &owner)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    showOver(window, owner);
    window.raise();
    window.activateWindow();
}
