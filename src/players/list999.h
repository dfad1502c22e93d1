// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// A player who was seen at ping 999.
struct Rec999 {
    qint16 hits = 0;   ///< consecutive populates at ping 999
    QString pname;     ///< without colour codes and blanks at its ends; the key of the list
    QString pnum;      ///< the slot number
    bool seen = false; ///< in the current populate

    bool operator==(const Rec999 &) const = default;
};

/// Who has been at ping 999, and how often in a row. It is never empty: a single nameless record stands for an empty
/// list, and stays in front when others are added.
class List999 final {
public:
    [[nodiscard]] const QList<Rec999> &records() const { return list; }

    /// A new populate begins: nobody has been seen yet.
    void unsee();
    /// Takes note of one player of a populate. Throws Overflow when 32,767 hits are counted already.
    void check999(const QString &name, const QString &ping, const QString &num);
    /// Removes those who have left, but for the last record.
    void sweep();

    /// What `check999` did last, for the report of its fault.
    [[nodiscard]] QString section() const { return step; }

private:
    void addHit(Rec999 &record);
    void remove(qsizetype index);

    QList<Rec999> list{Rec999()};
    QString step;
};
