// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <utility>

/// Why the player book could not do what it was asked to, in one line that names it.
class BookFault final : public std::exception {
public:
    enum Kind {
        Locked,    ///< by another program
        ReadOnly,  ///< the file or its folder
        Full,      ///< the disk
        Newer,     ///< made by a later version of this program
        Broken,    ///< it is no database, or a damaged one
        Exchanged, ///< another has taken its place, and what was asked for went by numbers of the old one
        Unusable,  ///< anything else
    };

    BookFault(Kind kind_, QString line_) : why(kind_), text(std::move(line_)) {}

    [[nodiscard]] Kind kind() const { return why; }
    [[nodiscard]] QString line() const { return text; }
    [[nodiscard]] const char *what() const noexcept override { return "fault of the player book"; }

private:
    Kind why;
    QString text;
};

/// With the words for `kind`; `reason` is what the system says of one that is unusable.
[[nodiscard]] BookFault bookFault(BookFault::Kind kind, const QString &path, const QString &reason = {});
