// SPDX-License-Identifier: MIT
#include "started_program.h"
#include "test_class.h"

#include <QDir>
#include <QRegularExpression>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(MOLVARK_PROGRAM);
const QByteArray keepsBook = "[book]\r\nkeep=true\r\n";

/// The libraries that the process has in its memory.
QString libraries(const QProcess &process)
{
    QFile maps(u"/proc/%1/maps"_s.arg(process.processId()));
    return maps.open(QIODevice::ReadOnly) ? QString::fromUtf8(maps.readAll()) : QString();
}

} // namespace

/// The program and the module with the database, as they are installed.
class BookModuleTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void whoKeepsNoBookLoadsNothingOfIt()
    {
        StartedProgram started;
        started.start(program);
        const QString loaded = libraries(started.process);
        QVERIFY(loaded.contains("libQt6Widgets"_L1));
        QVERIFY(!loaded.contains("libQt6Sql"_L1));
        QVERIFY(!loaded.contains("sqlite"_L1));
        QVERIFY(!loaded.contains("molvark-book"_L1));
        end(started.process);
    }

    void theBookIsOpenedByTheModule()
    {
        StartedProgram started(keepsBook);
        started.start(program);
        QTRY_VERIFY(QFileInfo(started.folder.filePath(u"molvark-players.db"_s)).size() > 0);
        QVERIFY(libraries(started.process).contains("molvark-book.so"_L1));
        end(started.process);
    }

    void aFaultOfTheModuleEndsNothing()
    {
        StartedProgram started(keepsBook);
        QVERIFY(QDir(started.folder.path()).mkdir(u"molvark-players.db"_s));
        started.start(program);
        QTRY_VERIFY(libraries(started.process).contains("molvark-book.so"_L1));
        end(started.process);
    }

    void withoutItsModuleTheProgramGoesOn_data()
    {
        QTest::addColumn<QString>("module");
        QTest::newRow("none") << QString();
        QTest::newRow("that of another version") << QStringLiteral(OTHER_MODULE);
    }

    void withoutItsModuleTheProgramGoesOn()
    {
        QFETCH(QString, module);
        const QTemporaryDir alone;
        const QString copy = alone.filePath(u"molvark"_s);
        QVERIFY(QFile::copy(program, copy));
        QVERIFY(module.isEmpty() || QFile::copy(module, alone.filePath(u"molvark-book.so"_s)));
        StartedProgram started(keepsBook);
        started.start(copy);
        QVERIFY(!QFile::exists(started.folder.filePath(u"molvark-players.db"_s)));
        end(started.process);
    }

private:
    static void end(QProcess &process)
    {
        QCOMPARE(process.state(), QProcess::Running);
        process.terminate();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit); // by the signal, and by nothing before
        QCOMPARE(process.exitCode(), SIGTERM);
    }
};

GUILESS_TEST(BookModuleTest)
#include "tst_book_module.moc"
