// SPDX-License-Identifier: MIT
#pragma once

#include "book_fault.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariantList>

#include <memory>
#include <utility>

/// A connection to an SQLite database. Everything throws `BookFault`.
class BookDatabase final {
public:
    enum class Access { Read, ReadAndWrite };

    /// The rows that a statement brings. It is at its end when they are destroyed.
    class Rows final {
    public:
        Rows(const BookDatabase &database, QSqlQuery &query_) : owner(database), query(query_) {}
        ~Rows() { query.finish(); }
        Q_DISABLE_COPY_MOVE(Rows)

        [[nodiscard]] bool next();
        [[nodiscard]] QString text(int column) const { return query.value(column).toString(); }
        [[nodiscard]] qint64 number(int column) const { return query.value(column).toLongLong(); }
        [[nodiscard]] int count(int column) const { return query.value(column).toInt(); }
        [[nodiscard]] bool isTrue(int column) const { return query.value(column).toBool(); }

    private:
        const BookDatabase &owner;
        QSqlQuery &query;
    };

    BookDatabase(QString path, Access access);
    ~BookDatabase();
    Q_DISABLE_COPY_MOVE(BookDatabase)

    /// Runs a statement; it stays prepared for the next time.
    void run(const QString &sql, const QVariantList &values = {});
    /// The same for one whose rows are wanted.
    [[nodiscard]] Rows rows(const QString &sql, const QVariantList &values = {});
    /// The first column of the only row.
    [[nodiscard]] qint64 number(const QString &sql, const QVariantList &values = {});
    /// The number of the row that was inserted last.
    [[nodiscard]] qint64 inserted() { return number(QStringLiteral("SELECT last_insert_rowid()")); }

    /// Does the work whole or not at all.
    template <typename Work>
    void transaction(const Work &work)
    {
        run(QStringLiteral("BEGIN IMMEDIATE"));
        try {
            work();
            run(QStringLiteral("COMMIT"));
        } catch (...) {
            rollBack();
            throw;
        }
        ++changes;
    }
    [[nodiscard]] quint64 commits() const { return changes; }

private:
    QSqlQuery &prepared(const QString &sql, const QVariantList &values);
    void rollBack() noexcept;
    [[nodiscard]] BookFault fault(const QSqlError &error) const;

    QString file;
    QString name; ///< of the connection
    QSqlDatabase connection;
    QHash<QString, std::shared_ptr<QSqlQuery>> statements;
    quint64 changes = 0;
};
