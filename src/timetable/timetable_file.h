// SPDX-License-Identifier: MIT
#pragma once

#include "timed_list.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// What one file holds at most.
inline constexpr qsizetype mostTimedLists = 1000;

/// The lists as the text of a JSON file, and back. Nothing when the text is none of that kind. What one list lacks or
/// has wrong is as in a new list; one that is not read wholly is switched off.
[[nodiscard]] QByteArray timetableText(const QList<TimedList> &lists);
[[nodiscard]] std::optional<QList<TimedList>> readTimetable(const QByteArray &text);

/// The file of the lists. It is read anew before each change and replaced whole. One that is none of ours is put aside
/// under another name, one that cannot be read is left alone, and the lists of another program are not written over.
class TimetableFile final {
public:
    explicit TimetableFile(QString path_);

    [[nodiscard]] QList<TimedList> read();
    /// Writes the lists; those of another program when it has changed the file, which is then as it was.
    [[nodiscard]] std::optional<QList<TimedList>> write(const QList<TimedList> &lists);
    /// What the person should know about the last reading or writing; empty when there is nothing.
    [[nodiscard]] const QString &fault() const { return trouble; }

private:
    [[nodiscard]] std::optional<QByteArray> contents();
    bool putAside();

    QString file;
    QString trouble;
    QByteArray lastText; ///< as it was read or written last
};
