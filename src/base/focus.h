// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QWidget;

/// Calls `handler` each time `control` has lost the focus to another control of the program. The loss of activation,
/// an opened list or menu, a message box and the progress window do not count: the focus comes back from there.
void onLostFocus(QWidget *control, const std::function<void()> &handler);

/// Sends `receiver` the Tab key, so that the focus goes on from there.
void pressTab(QWidget *receiver);

/// The program's active window; the main window when none is active; nullptr when there is neither.
[[nodiscard]] QWidget *programWindow();

/// True when that window is minimised.
[[nodiscard]] bool programMinimised();
