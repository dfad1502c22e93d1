// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

class QWidget;

/// The main window as it is seen, with a number on each of the parts that the manual explains first, in the order in
/// which it does. Null when the window lacks one of them.
[[nodiscard]] QPixmap withNumbers(QWidget &window);
