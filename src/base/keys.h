// SPDX-License-Identifier: MIT
#pragma once

class QEvent;
class QObject;
class QPushButton;
class QWidget;

/// What the keyboard does everywhere in the program beyond what Qt does: Enter presses the push button that has the
/// focus, and Alt with a letter, when no menu or button has that letter, types nothing. True when that was it, and
/// `receiver` is not to get `event`.
[[nodiscard]] bool keyTaken(QObject *receiver, QEvent *event);

/// Enter presses `button` wherever the focus is in `window`, but on another push button.
void addDefaultButton(QWidget &window, QPushButton &button);
/// Esc closes `window`.
void addCloseKey(QWidget &window);
