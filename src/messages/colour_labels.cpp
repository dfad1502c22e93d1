// SPDX-License-Identifier: MIT
#include "colour_labels.h"

#include <QLabel>

void showColourCodes(const std::array<QLabel *, 8> &labels)
{
    const std::array colours{labels[0]->palette().color(QPalette::WindowText),
                             QColor(255, 0, 0),
                             QColor(0, 192, 0),
                             QColor(255, 255, 0),
                             QColor(0, 0, 255),
                             QColor(0, 255, 255),
                             QColor(255, 128, 255),
                             QColor(255, 255, 255)};
    for (std::size_t code = 0; code < colours.size(); ++code) {
        const QColor colour = colours.at(code);
        const bool isLight = qGray(colour.rgb()) > 80;
        QPalette shown = labels.at(code)->palette();
        shown.setColor(QPalette::WindowText, colour);
        // The one of two grounds on which it can be read.
        shown.setColor(QPalette::Window, isLight ? QColor(16, 16, 16) : QColor(240, 240, 240));
        labels.at(code)->setPalette(shown);
        labels.at(code)->setAutoFillBackground(true);
    }
}
