// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class ComboBox;
class ConsoleWords;
class QContextMenuEvent;
class ServerFields;

/// The history of the console line between runs, when the person wants it kept: the line's menu has a switch. Lines
/// that hold a password are never kept.
class KeptHistory final : public QObject {
    Q_OBJECT

public:
    KeptHistory(ComboBox &line_, ConsoleWords &words_, const ServerFields &fields_);

    /// The lines of the history without those that hold a password, the oldest first.
    [[nodiscard]] QStringList lines() const;

    /// The switch as a text, 0 or 1.
    [[nodiscard]] QString text() const;
    /// Sets the switch at the start, and brings the lines back; false for any other text.
    bool restore(const QString &text);
    /// Off takes the lines out of the file at once.
    void setOn(bool on);
    /// Adds the lines of this run to the file when they are to be kept.
    void save();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void markSecrets(int first, int last);
    void markKept(int count, bool areKept);
    [[nodiscard]] QStringList linesWithout(const QList<int> &roles) const;
    void bringBack(const QStringList &before);
    void showMenu(const QContextMenuEvent &event);

    ComboBox &line;
    ConsoleWords &words;
    const ServerFields &fields;
    bool isOn = false;
};
