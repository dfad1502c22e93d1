// SPDX-License-Identifier: MIT
#include "colour_labels.h"

#include "chat_colours.h"

#include <QLabel>

void showColourCodes(const std::array<QLabel *, 8> &labels)
{
    for (std::size_t code = 0; code < labels.size(); ++code) {
        labels.at(code)->setAutoFillBackground(true);
        if (code == 0)
            continue; // in the default text colour, which is the desktop's
        const QColor colour = chatColour(static_cast<int>(code));
        QPalette shown;
        shown.setColor(QPalette::WindowText, colour);
        shown.setColor(QPalette::Window, chatGround(colour));
        labels.at(code)->setPalette(shown);
    }
}
