// SPDX-License-Identifier: MIT
#pragma once

#include "word_completion.h"

#include <QFrame>

#include <functional>
#include <optional>

class CompletionModel;
class QLabel;
class QListView;

/// The list of what a line can be completed to, with a description of the row that is chosen, or of the first one,
/// below it. It lies over the window and never has the focus: the line keeps it and hands the keys on.
class CompletionPopup final : public QFrame {
    Q_OBJECT

public:
    using Describe = std::function<QString(const Completion &word)>;

    CompletionPopup(QWidget &window_, Describe describe_);
    ~CompletionPopup() override;

    /// Shows `words`, of which there is one at least, beside `line`, which is a place in the window: above it where
    /// there is more room. None of them is chosen.
    void open(const QList<Completion> &words, const QRect &line);
    /// Chooses the row so many rows further on, or the last one on that way; from there, and when none is chosen, it
    /// goes round to the other end.
    void step(int rows);
    void stepPages(int pages);
    /// The row that is chosen.
    [[nodiscard]] std::optional<Completion> chosen() const;

signals:
    void clicked(const Completion &word);

private:
    void place(const QRect &line);
    void describeRow();
    [[nodiscard]] int rowHeight() const;

    const Describe describe;
    CompletionModel *model;
    QListView *lstcomplete;
    QLabel *lblcomplete;
};
