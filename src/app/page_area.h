// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// The place of a page on its tab: where the window is too small for the page, it scrolls. It is empty, and costs next
/// to nothing, until it gets its page.
class PageArea final : public QWidget {
    Q_OBJECT

public:
    explicit PageArea(QWidget *parent = nullptr);

    void setPage(QWidget &page);
};
