// SPDX-License-Identifier: MIT
#pragma once

class QLineEdit;

/// Shows the line's text as dots and gives it, when it has been painted, an eye at its end: the action "acteye", which
/// shows the text while it is checked. It is also in the line's context menu, and Ctrl+H presses it while the line has
/// the focus.
void addPasswordEye(QLineEdit *line);
