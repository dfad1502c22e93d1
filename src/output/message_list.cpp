// SPDX-License-Identifier: MIT
#include "message_list.h"

void MessageList::append(const QString &line)
{
    addItem(line);
    // With a grid only the new line is measured, and not all of them at each layout.
    const QSize size = sizeHintForIndex(model()->index(count() - 1, 0));
    setGridSize(count() == 1 ? size : gridSize().expandedTo({size.width(), 0}));
}
