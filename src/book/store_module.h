// SPDX-License-Identifier: MIT
#pragma once

#include "book_store.h"

/// The module with the database in it, molvark-book, which the program loads when a book is opened: without one it
/// needs neither Qt's SQL library nor the memory for it.

/// Of the program that it belongs to: with another one's module nothing can be done.
using BookModuleVersion = const char *();
/// Returns what its caller has to delete.
using OpenBookStore = BookStore *(const QString &path, qint64 oldest, const BookStore::Patience &patience, bool doubt);

extern "C" {
BookModuleVersion molvarkBookVersion;
OpenBookStore molvarkOpenBookStore;
}
