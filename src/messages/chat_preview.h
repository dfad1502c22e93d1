// SPDX-License-Identifier: MIT
#pragma once

#include "chat_colours.h"

#include <QLabel>

#include <functional>

class QLineEdit;
class QTextLayout;

/// A line of chat as the players will read it: in the game's colours, on a dark ground, wrapped where it is longer than
/// the preview is wide. Of more than three lines the last three are seen, where one is typing.
class ChatPreview final : public QLabel {
    Q_OBJECT

public:
    explicit ChatPreview(QWidget *parent = nullptr);

    /// Shows `line`, in which colours are given by their codes.
    void showLine(const QString &line);
    /// Shows what `lineOf` makes of the text of `typed`, now and whenever that changes.
    void follow(QLineEdit *typed, const std::function<QString(const QString &)> &lineOf);

    /// Has the height of the longest line from the start, where a window does not grow with what is typed.
    void keepRoom();

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int layOut(QTextLayout &layout, int width) const;

    QList<ChatRun> runs;
};
