// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// The passwords that have been used or set in this run, of whatever server. Where one stands in a text it is shown as
/// asterisks, one for each character.
class KnownPasswords final {
public:
    /// Both return true when something was not known before.
    bool add(const QString &password);
    /// The passwords that a command sets.
    bool addFrom(const QString &comm);

    [[nodiscard]] const QStringList &all() const { return passwords; }
    /// The characters of the longest.
    [[nodiscard]] qsizetype longest() const;

    void star(QString &text) const;
    /// Of a text that came in two datagrams, of which `before` has been starred: those in `after`, and those that stand
    /// across the border. When `isLosing` a character may have been lost there.
    void starNext(QString &before, QString &after, bool isLosing) const;
    /// A password at the end of `text` that lacks its last character.
    void starLosingEnd(QString &text) const;
    /// Whether `text` ends as a password begins.
    [[nodiscard]] bool mayGoOn(QStringView text) const;

private:
    QStringList passwords;
    std::vector<std::vector<std::size_t>> overlaps; ///< of each with itself
};
