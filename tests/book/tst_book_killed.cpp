// SPDX-License-Identifier: MIT
#include "book/sql_book_store.h"
#include "evening.h"
#include "other_eye.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int players = 8;

BookFeed feedOf(qint64 time)
{
    QList<SeenPlayer> all;
    for (int each = 0; each < players; ++each)
        all.append({QString::number(1000 + each), u"Name %1 of %2"_s.arg(time % 7).arg(each),
                    u"10.0.0.%1:28960"_s.arg(each), 50, 0});
    return populate(time, all);
}

/// Opens the book and feeds it for as long as it lives; says so when it is opened and after each.
[[noreturn]] void feedForEver(const QString &path)
{
    SqlBookStore store(path);
    for (qint64 time = OtherEye(path).ask("SELECT coalesce(max(time), 0) FROM counts").toLongLong() + 1;; ++time) {
        std::putchar('.');
        std::fflush(stdout);
        store.feed(feedOf(time));
    }
}

/// In memory where that can be had: a killed program loses nothing there either, and a disk takes its time.
QString quickFolder()
{
    const QString memory = u"/dev/shm"_s;
    return QFileInfo(memory).isWritable() ? memory + u"/book-XXXXXX"_s : QDir::temp().filePath(u"book-XXXXXX"_s);
}

} // namespace

class BookKilledTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void eachFeedIsInTheBookWholeOrNotAtAll()
    {
        qint64 feeds = 0;
        qint64 toldBefore = 0;
        for (int kill = 0; kill < 100; ++kill) {
            if (kill % 10 == 0)
                removeBook(); // so that it is killed at the making of the book, too
            const qint64 told = killFeeder(kill % 4 == 0);
            {
                SqlBookStore store(path);
                QCOMPARE(store.putAside(), QString());
            }
            OtherEye eye(path);
            QCOMPARE(eye.ask("PRAGMA integrity_check"), u"ok"_s);
            QCOMPARE(eye.ask("SELECT count(*) FROM pragma_foreign_key_check"), 0);
            QCOMPARE(eye.ask("SELECT count(*) FROM counts WHERE players <> (SELECT count(*) FROM sightings"
                             " WHERE sightings.time = counts.time)"),
                     0);
            QCOMPARE(eye.ask("SELECT count(*) FROM sightings WHERE time NOT IN (SELECT time FROM counts)"), 0);
            QCOMPARE(eye.ask("SELECT count(DISTINCT last_seen) > 1 FROM players"), 0);
            const qint64 found = eye.ask("SELECT count(*) FROM counts").toLongLong();
            QVERIFY2(found >= told, "a feed that was done is missing");
            feeds += told - (kill % 10 == 0 ? 0 : toldBefore);
            toldBefore = told;
        }
        QVERIFY2(feeds > 100, "the feeders were killed before they fed");
    }

private:
    /// Kills one at any moment, perhaps `early`, when it has just been started; how many feeds it said were done.
    qint64 killFeeder(bool early)
    {
        const qint64 before = feedsSoFar;
        QProcess feeder;
        QElapsedTimer time;
        time.start();
        feeder.start(QCoreApplication::applicationFilePath(), {u"book_killed"_s, u"--feed"_s, path});
        if (!early && feeder.waitForReadyRead(20'000))
            opening = time.nsecsElapsed();
        const double longest = early ? 1.2 * static_cast<double>(opening) : 30e6; // nanoseconds
        const auto moment = static_cast<qint64>(random.generateDouble() * longest);
        for (time.start(); time.nsecsElapsed() < moment;) {
        }
        feeder.kill();
        if (!feeder.waitForFinished() || feeder.exitStatus() != QProcess::CrashExit)
            failTest(u"the feeder ended by itself: "_s + QString::fromUtf8(feeder.readAllStandardError()));
        // The first dot says that it is open.
        feedsSoFar = before + qMax<qint64>(0, feeder.readAllStandardOutput().count('.') - 1);
        return feedsSoFar;
    }

    void removeBook()
    {
        for (const QString &ending : {u""_s, u"-wal"_s, u"-shm"_s, u"-journal"_s})
            QFile::remove(path + ending);
        feedsSoFar = 0;
    }

    QTemporaryDir folder{quickFolder()};
    QString path = folder.filePath(u"molvark-players.db"_s);
    QRandomGenerator random{7};
    qint64 opening = 100'000'000; // nanoseconds until a feeder has opened the book
    qint64 feedsSoFar = 0;
};

static int runOrFeed(int argc, char *argv[])
{
    if (argc > 2 && QString::fromLocal8Bit(argv[1]) == u"--feed") {
        const QCoreApplication application(argc, argv);
        feedForEver(QString::fromLocal8Bit(argv[2]));
    }
    return runTests<QCoreApplication, BookKilledTest>(argc, argv);
}

static const TestClass testClass(__FILE__, runOrFeed);
#include "tst_book_killed.moc"
