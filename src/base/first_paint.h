// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

class QWidget;

/// Calls `action` once, from the event loop: when `window` has been painted for the first time, or when `atMost` has
/// passed, since a minimised window is not painted. Never when the window is gone before.
void afterFirstPaint(QWidget *window, std::chrono::milliseconds atMost, std::function<void()> action);
