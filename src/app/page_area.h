// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

/// The place of a page on its tab: where the window is too small for the page, it scrolls.
class PageArea final : public QScrollArea {
    Q_OBJECT

public:
    explicit PageArea(QWidget *parent = nullptr);

    void setPage(QWidget &page);
};
