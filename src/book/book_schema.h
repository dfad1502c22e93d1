// SPDX-License-Identifier: MIT
#pragma once

class BookDatabase;

/// The version of the tables that this program knows.
[[nodiscard]] int bookVersion();

/// Makes the tables of an empty database, or brings those of an older version up to date, step by step; each is done
/// whole or not at all. Throws when they are of a newer one.
void updateBook(BookDatabase &database, const class QString &path);
