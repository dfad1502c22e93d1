// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPlainTextEdit>

/// The RCON pane: the whole history of server text as plain text, bold yellow on a dark ground, never as markup.
/// It follows the newest text unless the user has scrolled up. The control characters that frame the commands in it
/// take no room and are not copied; they are in the history all the same.
class RconPane final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit RconPane(QWidget *parent = nullptr);

    /// Adds `text` at the end as it stands. Costs time in proportion to `text`, not to the history.
    void append(const QString &text);
    /// The whole history; its lines end in carriage return and line feed.
    [[nodiscard]] QString text() const;
    /// What the menu offers besides copying.
    void setMenuActions(const QList<QAction *> &actions) { menuActions = actions; }

    /// Where in the document `wanted` begins, in any letter case, without overlaps; none for an empty text.
    [[nodiscard]] QList<int> occurrences(const QString &wanted) const;
    /// Selects what is found there and shows it.
    void selectText(int position, int length);

protected:
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;

private:
    [[nodiscard]] QString textBetween(int start, int end, QStringView lineEnd) const;

    QList<QAction *> menuActions;
    bool following = true;
};
