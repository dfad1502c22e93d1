// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

class QWidget;

/// Calls `action` once, from the event loop: when `widget` has been painted for the first time, or when `atMost` has
/// passed, since a minimised window is not painted. Never when the widget is gone before.
void afterFirstPaint(QWidget *widget, std::chrono::milliseconds atMost, std::function<void()> action);
