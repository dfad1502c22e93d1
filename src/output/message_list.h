// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>

/// A list of lines of one height, which stays quick with very many of them. Its scroll bar reaches the end of the
/// widest.
class MessageList final : public QListWidget {
    Q_OBJECT

public:
    using QListWidget::QListWidget;

    void append(const QString &line);
};
