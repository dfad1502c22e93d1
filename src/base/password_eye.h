// SPDX-License-Identifier: MIT
#pragma once

class QLineEdit;

/// Shows the line's text as dots and gives it an eye at its end, the action "acteye", that shows the text while it is
/// checked. The eye is also in the line's context menu, and Ctrl+H presses it while the line has the focus.
void addPasswordEye(QLineEdit *line);
