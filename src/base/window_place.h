// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMargins>
#include <QRect>

class QWidget;

/// `wanted`, a window without its frame, made smaller and moved as far as needed to lie with its frame within
/// `available`. All in device-independent pixels.
[[nodiscard]] QRect withinScreen(QRect wanted, QRect available, QMargins frame);

/// True when so much of the window's upper edge lies on one of the screens that a person can take hold of it.
[[nodiscard]] bool canBeReached(QRect window, const QList<QRect> &screens);

/// The frame that the desktop is going to give to a window: its own estimate before it is shown.
[[nodiscard]] QMargins frameOf(const QWidget &window);

/// Shows `window` in front of `owner`, to which it belongs from then on, but modeless; the first time in its middle.
void showOver(QWidget &window, const QWidget &owner);
/// The same, and the keyboard goes there.
void bringUp(QWidget &window, const QWidget &owner);
