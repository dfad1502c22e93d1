// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <QtTest>

/// Another program that has the database open.
class OtherEye final {
public:
    explicit OtherEye(const QString &path) : name(QStringLiteral("other eye %1").arg(++count))
    {
        database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        if (!database.open())
            QTest::qFail("another program cannot open the database", __FILE__, __LINE__);
    }
    ~OtherEye()
    {
        database.close();
        database = {};
        QSqlDatabase::removeDatabase(name);
    }
    Q_DISABLE_COPY_MOVE(OtherEye)

    /// The first column of the first row.
    QVariant ask(const char *sql)
    {
        QSqlQuery query(database);
        if (!query.exec(QString::fromUtf8(sql)))
            QTest::qFail(qPrintable(query.lastError().text()), __FILE__, __LINE__);
        return query.next() ? query.value(0) : QVariant();
    }

private:
    static inline int count = 0;
    QString name;
    QSqlDatabase database;
};

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// The folder of a database that was in use when its program was killed.
inline bool copyAsKilled(const QString &from, const QString &to)
{
    return QFile::copy(from, to) && QFile::copy(from + QStringLiteral("-wal"), to + QStringLiteral("-wal"));
}
