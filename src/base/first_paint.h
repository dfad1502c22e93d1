// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

class QWidget;

/// Calls `action` once, from the event loop: when `widget` has been painted for the first time, and after `atMost` at
/// the latest, because a minimised window is not painted. It is not called when the widget is deleted before.
void afterFirstPaint(QWidget *widget, std::chrono::milliseconds atMost, std::function<void()> action);
