// SPDX-License-Identifier: MIT
#include "store_module.h"

#include "sql_book_store.h"

const char *molvarkBookVersion()
{
    return MOLVARK_VERSION;
}

BookStore *molvarkOpenBookStore(const QString &path, qint64 oldest, const BookStore::Patience &patience, bool doubt)
{
    return std::make_unique<SqlBookStore>(path, oldest, patience, doubt).release();
}
