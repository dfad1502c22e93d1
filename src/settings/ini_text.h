// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/// One key of the settings file and its value. The names are the program's own: plain letters and digits.
struct IniEntry {
    QString section;
    QString key;
    QString value;

    bool operator==(const IniEntry &) const = default;
};

/// The text of a settings file, in the system's ANSI code page. It knows where each key stands and keeps every byte
/// that it is not told to change: comments, foreign keys, order, line ends.
///
/// Names are compared without regard to case. The first section of a name counts, and in it the first key of a name.
class IniText {
public:
    explicit IniText(const QByteArray &bytes = {});

    /// The value without blanks around it and without one pair of enclosing quotes, as a reader with a buffer of
    /// `buffer` characters gets it: the last place is the terminator's. Carriage returns and NUL in it are blanks. A
    /// value of blanks only is those blanks; empty when the section or the key is missing.
    [[nodiscard]] QString value(const QString &section, const QString &key, int buffer) const;

    /// Replaces the value, or adds the key, or the section and the key. What value() would change is put into quotes
    /// so that it comes back as it was, but line ends and NUL become blanks: a value is one line.
    void set(const IniEntry &entry);

    /// Takes all sections of that name out, with their comments. False when there is none.
    bool removeSection(const QString &section);

    [[nodiscard]] QByteArray bytes() const;

private:
    struct Section {
        QList<QByteArray> lines;        ///< header first, with their line ends, up to the last that is not blank
        QByteArray blanklines;          ///< the blank lines after them
        QHash<QString, qsizetype> keys; ///< where in `lines` the first key of a name stands
    };

    void append(const QByteArray &line);
    Section &obtainSection(const QByteArray &name);

    QByteArray mark;                    ///< the byte-order mark, if there is one
    QList<Section> sections;            ///< the first is what stands before all headers
    QHash<QString, qsizetype> headings; ///< where in `sections` the first section of a name stands
};
