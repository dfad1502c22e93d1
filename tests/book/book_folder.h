// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

/// A folder of its own for one test, which is the current one meanwhile. A warning fails the test.
class BookFolder final {
public:
    BookFolder() : before(QDir::currentPath())
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        if (!folder.isValid() || !QDir::setCurrent(folder.path()))
            QTest::qFail("no folder", __FILE__, __LINE__);
    }
    ~BookFolder() { QDir::setCurrent(before); }
    Q_DISABLE_COPY_MOVE(BookFolder)

    [[nodiscard]] QString path() const { return folder.path(); }
    [[nodiscard]] QString filePath(const QString &name) const { return folder.filePath(name); }
    /// The book's file.
    [[nodiscard]] QString book() const { return filePath(QStringLiteral("molvark-players.db")); }

private:
    const QTemporaryDir folder;
    const QString before;
};
