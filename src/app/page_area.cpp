// SPDX-License-Identifier: MIT
#include "page_area.h"

PageArea::PageArea(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus); // it scrolls to the control that has the focus
    setWidgetResizable(true);
}

void PageArea::setPage(QWidget &page)
{
    setWidget(&page);
    // The ground is the tab's, not the window's.
    page.setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}
