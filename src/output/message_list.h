// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>

/// A list of lines, which stays quick with very many of them. All are as high as the first since it was empty, and its
/// scroll bar reaches the end of the widest.
class MessageList final : public QListWidget {
    Q_OBJECT

public:
    using QListWidget::QListWidget;

    void append(const QString &line);
};
