// SPDX-License-Identifier: MIT
#include "sql_book_store.h"

std::unique_ptr<BookStore> openBookStore(const QString &path, qint64 oldest, const BookStore::Patience &patience,
                                         bool doubt)
{
    return std::make_unique<SqlBookStore>(path, oldest, patience, doubt);
}
