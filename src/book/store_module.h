// SPDX-License-Identifier: MIT
#pragma once

#include "book_store.h"

/// The only function of the module with the database in it, molvark-book, which the program loads when a book is
/// opened: without one it needs neither Qt's SQL library nor the memory for it. Returns what its caller has to delete.
using OpenBookStore = BookStore *(const QString &path, qint64 oldest, const BookStore::Patience &patience, bool doubt);

extern "C" OpenBookStore molvarkOpenBookStore;
