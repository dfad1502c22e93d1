// SPDX-License-Identifier: MIT
#include "book_database.h"

#include <QSqlError>

#include <algorithm>
#include <atomic>

using namespace Qt::StringLiterals;

namespace {

std::atomic<quint64> connections = 0;

/// As the database can keep it: SQLite knows no half of a pair, and an unset text is none.
QVariant stored(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString)
        return value;
    const QString text = value.toString();
    if (text.isNull())
        return u""_s;
    const bool isPlain = std::ranges::none_of(text, [](QChar each) { return each.isSurrogate(); });
    return isPlain ? value : QVariant(QString::fromUtf8(text.toUtf8()));
}

constexpr int noRoomForIndex = 4874; // SQLITE_IOERR_SHMSIZE: that of the log could not grow

/// The words of SQLite's result codes that mean something to whoever has the book; the higher bytes say more than is
/// needed.
BookFault::Kind kindOf(int code)
{
    if (code == noRoomForIndex)
        return BookFault::Full;
    switch (code & 0xFF) {
    case 5: // SQLITE_BUSY
    case 6: // SQLITE_LOCKED
        return BookFault::Locked;
    case 8: // SQLITE_READONLY
        return BookFault::ReadOnly;
    case 11: // SQLITE_CORRUPT
    case 26: // SQLITE_NOTADB
        return BookFault::Broken;
    case 13: // SQLITE_FULL
        return BookFault::Full;
    default:
        return BookFault::Unusable;
    }
}

} // namespace

bool BookDatabase::Rows::next()
{
    if (query.next())
        return true;
    if (query.lastError().isValid())
        throw owner.fault(query.lastError());
    return false;
}

BookDatabase::BookDatabase(QString path, Access access)
    : file(std::move(path)), name(u"player book %1"_s.arg(++connections))
{
    const QString driver = u"QSQLITE"_s;
    if (!QSqlDatabase::isDriverAvailable(driver))
        throw bookFault(BookFault::Unusable, file, u"Qt's driver for SQLite is not installed."_s);
    connection = QSqlDatabase::addDatabase(driver, name);
    connection.setDatabaseName(file);
    const QString wait = u"QSQLITE_BUSY_TIMEOUT=250"_s; // milliseconds; who wants to wait longer tries again
    connection.setConnectOptions(access == Access::Read ? wait + u";QSQLITE_OPEN_READONLY"_s : wait);
    if (connection.open())
        return;
    const QSqlError error = connection.lastError();
    connection = {};
    QSqlDatabase::removeDatabase(name);
    throw fault(error);
}

BookDatabase::~BookDatabase()
{
    statements.clear();
    connection.close();
    connection = {};
    QSqlDatabase::removeDatabase(name);
}

QSqlQuery &BookDatabase::prepared(const QString &sql, const QVariantList &values)
{
    std::shared_ptr<QSqlQuery> &query = statements[sql];
    if (!query) {
        auto made = std::make_shared<QSqlQuery>(connection);
        made->setForwardOnly(true);
        if (!made->prepare(sql)) {
            statements.remove(sql);
            throw fault(made->lastError());
        }
        query = std::move(made);
    }
    for (qsizetype at = 0; at < values.size(); ++at)
        query->bindValue(static_cast<int>(at), stored(values.at(at)));
    if (!query->exec()) {
        const QSqlError error = query->lastError();
        query->finish();
        throw fault(error);
    }
    return *query;
}

void BookDatabase::run(const QString &sql, const QVariantList &values)
{
    prepared(sql, values).finish();
}

BookDatabase::Rows BookDatabase::rows(const QString &sql, const QVariantList &values)
{
    return {*this, prepared(sql, values)};
}

qint64 BookDatabase::number(const QString &sql, const QVariantList &values)
{
    Rows found = rows(sql, values);
    return found.next() ? found.number(0) : 0;
}

// SQLite has rolled back by itself after some errors, and says then that nothing is begun.
void BookDatabase::rollBack() noexcept
{
    try {
        run(u"ROLLBACK"_s);
    } catch (const BookFault &) {
    }
}

BookFault BookDatabase::fault(const QSqlError &error) const
{
    return bookFault(kindOf(error.nativeErrorCode().toInt()), file, error.databaseText());
}
