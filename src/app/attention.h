// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// Has the desktop point at a window that is not the active one; the window owns it.
class Attention final : public QObject {
    Q_OBJECT

public:
    explicit Attention(QWidget &window_) : QObject(&window_), window(window_) {}

    void want();

signals:
    /// It has been asked for. Not every desktop can be asked what it does then.
    void wanted();

private:
    QWidget &window;
};
