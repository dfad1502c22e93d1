// SPDX-License-Identifier: MIT
#pragma once

#include <array>

class QLabel;

/// Shows each of the labels "^0" to "^7" in the colour that the game gives to the text behind that code.
void showColourCodes(const std::array<QLabel *, 8> &labels);
