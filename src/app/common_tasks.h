// SPDX-License-Identifier: MIT
#pragma once

class QWidget;
struct Services;

/// Wires the items of the menu "Common Tasks", found by their names in `window`, to what they send.
void wireCommonTasks(QWidget &window, const Services &services);
