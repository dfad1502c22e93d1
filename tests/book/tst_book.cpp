// SPDX-License-Identifier: MIT
#include "book/book.h"
#include "book/sql_book_store.h"
#include "book_folder.h"
#include "evening.h"
#include "other_eye.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

const QString bookName = u"molvark-players.db"_s;

qint64 now()
{
    return QDateTime::currentSecsSinceEpoch();
}

/// Waits until everything that was asked of the book is done.
bool isThrough(Book &book)
{
    bool isDone = false;
    QObject context;
    book.ask([](BookStore &) {}, &context, [&] { isDone = true; });
    return QTest::qWaitFor([&] { return isDone; }, 20'000);
}

qint64 playersIn(const QString &path)
{
    return OtherEye(path).ask("SELECT count(*) FROM players").toLongLong();
}

} // namespace

class BookTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<BookFolder>(); }
    void cleanup() { folder.reset(); }

#ifdef Q_OS_LINUX
    void switchedOffThereIsNothing()
    {
        Book book;
        QVERIFY(!book.isOpen());
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
        QVERIFY(!QFile::exists(bookName));
        QVERIFY(!hasThread());
        book.open(90);
        QVERIFY(book.isOpen());
        QVERIFY(isThrough(book));
        QVERIFY(QFile::exists(bookName));
        QVERIFY(hasThread());
        book.close();
        QVERIFY(!book.isOpen());
        QTRY_VERIFY(!hasThread());
    }
#endif

    void whatIsAskedIsDoneInOrderElsewhereAndToldHere()
    {
        Book book;
        book.open(90);
        QStringList order;
        QThread *there = nullptr;
        for (int number = 0; number < 5; ++number)
            book.ask(
                [number, &there](BookStore &store) {
                    there = QThread::currentThread();
                    return store.addAction(BookAction()) * 100 + number;
                },
                this,
                [&](qint64 done) {
                    QCOMPARE(QThread::currentThread(), thread());
                    order.append(QString::number(done));
                });
        QTRY_COMPARE(order.size(), 5);
        QCOMPARE(order, (QStringList{u"100"_s, u"201"_s, u"302"_s, u"403"_s, u"504"_s}));
        QVERIFY(there != thread());
    }

    void whoIsGoneIsToldNothing()
    {
        Book book;
        book.open(90);
        bool isTold = false;
        auto context = std::make_unique<QObject>();
        book.ask([](BookStore &store) { return store.size(); }, context.get(),
                 [&](const BookSize &) { isTold = true; });
        context.reset();
        QVERIFY(isThrough(book));
        QVERIFY(!isTold);
        book.ask([](BookStore &store) { return store.size(); }, this, [&](const BookSize &) { isTold = true; });
        book.close();
        book.open(90);
        QVERIFY(isThrough(book));
        QVERIFY(!isTold);
    }

    void closingLosesNothingThatWasAsked()
    {
        {
            Book book;
            book.open(90);
            for (int number = 1; number <= 50; ++number)
                book.tell([number](BookStore &store) {
                    store.feed(populate(now(), {{QString::number(number), u"Player"_s, u"1.1.1.1:1"_s, 1, 1}}));
                });
        }
        QCOMPARE(playersIn(bookName), 50);
    }

    void itStaysInTheFolderInWhichItWasOpened()
    {
        QVERIFY(QDir::current().mkdir(u"elsewhere"_s));
        Book book;
        book.open(90);
        QVERIFY(QDir::setCurrent(u"elsewhere"_s));
        QVERIFY(isThrough(book));
        QVERIFY(!QFile::exists(bookName));
        QVERIFY(QFile::exists(folder->filePath(bookName)));
    }

    void theDaysAreKept()
    {
        {
            SqlBookStore store(bookName);
            store.feed(populate(now() - 11 * 86'400, {bob}));
            store.feed(populate(now() - 9 * 86'400, {bob}));
        }
        Book book;
        book.open(10);
        BookSize size;
        book.ask([](BookStore &store) { return store.size(); }, this, [&](const BookSize &found) { size = found; });
        QTRY_COMPARE(size.sightings, 1);
        QCOMPARE(size.players, 1);
    }

    // Five seconds are waited, and something is told before ten are over.
    void aLockedBookIsToldAndUsedAgainAfterwards()
    {
        {
            SqlBookStore store(bookName);
        }
        Book book;
        QSignalSpy changes(&book, &Book::statechanged);
        {
            OtherEye other(bookName);
            other.ask("BEGIN IMMEDIATE");
            QElapsedTimer time;
            time.start();
            book.open(90);
            QTRY_VERIFY_WITH_TIMEOUT(!book.trouble().isEmpty(), 10'000);
            QVERIFY2(time.elapsed() >= 5000 && time.elapsed() < 10'000, qPrintable(QString::number(time.elapsed())));
            QVERIFY(book.trouble().contains(bookName));
            QVERIFY(book.trouble().contains(u"locked"_s));
            QVERIFY(book.isOpen());
            bool isDone = false;
            book.ask([](BookStore &store) { return store.feed(populate(now(), {alice})); }, this,
                     [&](const QList<KnownPlayer> &) { isDone = true; });
            QVERIFY(!QTest::qWaitFor([&] { return isDone; }, 1000));
        }
        QVERIFY(changes.size() >= 2);
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
        QVERIFY(isThrough(book));
        QCOMPARE(book.trouble(), QString());
        QCOMPARE(playersIn(bookName), 1);
        QVERIFY(QDir::current().entryList({u"*broken*"_s}).isEmpty());
    }

    void theProgramEndsThoughTheBookIsLocked()
    {
        {
            SqlBookStore store(bookName);
        }
        OtherEye other(bookName);
        QElapsedTimer time;
        {
            Book book;
            book.open(90);
            QVERIFY(isThrough(book));
            other.ask("BEGIN IMMEDIATE");
            for (int number = 0; number < 100; ++number)
                book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
            time.start();
        }
        QVERIFY2(time.elapsed() < 5000, qPrintable(QString::number(time.elapsed())));
    }

    void whatWasPutAsideIsTold()
    {
        QVERIFY(writeBytes(bookName, "no book"));
        Book book;
        book.open(90);
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
        QVERIFY(isThrough(book));
        QVERIFY(book.trouble().contains(bookName));
        QVERIFY(book.trouble().contains(u"molvark-players.broken-1.db"_s));
        QCOMPARE(bytesOf(u"molvark-players.broken-1.db"_s), "no book"_ba);
        book.close();
        QCOMPARE(book.trouble(), QString());
        book.open(90);
        QVERIFY(isThrough(book));
        QCOMPARE(book.trouble(), QString());
    }

    void aBookThatBreaksWhileItIsInUseIsPutAside()
    {
        {
            SqlBookStore store(bookName);
            for (int number = 1; number <= 2000; number += 50) {
                QList<SeenPlayer> players;
                for (int each = number; each < number + 50; ++each)
                    players.append({QString::number(each), u"Player %1"_s.arg(each), u"1.1.1.1:1"_s, 1, 1});
                store.feed(populate(now(), players));
            }
        }
        Book book;
        book.open(90);
        QVERIFY(isThrough(book));
        QFile file(bookName);
        QVERIFY(file.open(QIODevice::ReadWrite));
        const qint64 size = file.size();
        QVERIFY(file.seek(4096) && file.write(QByteArray(size - 4096, '\x55')) > 0);
        file.close();
        bool isDone = false;
        book.ask([](BookStore &store) { return store.feed(populate(now(), {alice})); }, this,
                 [&](const QList<KnownPlayer> &known) {
                     QCOMPARE(known.size(), 1);
                     isDone = true;
                 });
        QTRY_VERIFY(isDone);
        QVERIFY(book.trouble().contains(u"molvark-players.broken-1.db"_s));
        QCOMPARE(QFileInfo(u"molvark-players.broken-1.db"_s).size(), size);
        QVERIFY(bytesOf(u"molvark-players.broken-1.db"_s).endsWith(QByteArray(4096, '\x55')));
        QVERIFY(isThrough(book));
        QCOMPARE(playersIn(bookName), 1);
    }

    // What looks whole until it is written to.
    void aBookWithAWrongIndexIsPutAside()
    {
        QList<SeenPlayer> players;
        for (int number = 1; number <= 50; ++number)
            players.append({QString::number(number), u"Player %1"_s.arg(number), u"1.1.1.1:1"_s, 1, 1});
        {
            SqlBookStore store(bookName);
            store.feed(populate(now() - 100, players));
        }
        QVERIFY(spoilIndex());
        const QByteArray spoilt = bytesOf(bookName);
        Book book;
        book.open(90);
        QVERIFY(isThrough(book));
        QCOMPARE(book.trouble(), QString());
        book.tell([players](BookStore &store) { store.feed(populate(now(), players)); });
        QVERIFY(isThrough(book));
        QVERIFY2(book.trouble().contains(u"molvark-players.broken-1.db"_s), qPrintable(book.trouble()));
        QCOMPARE(bytesOf(u"molvark-players.broken-1.db"_s).size(), spoilt.size());
        QCOMPARE(playersIn(bookName), 50);
    }

    void theLogDoesNotGrowWithoutEnd()
    {
        Book book;
        book.open(90);
        qint64 longest = 0;
        for (int round = 0; round < 40; ++round) {
            book.tell([round](BookStore &store) {
                QList<SeenPlayer> players;
                for (int number = 0; number < 1000; ++number)
                    players.append({QString::number(1 + round * 1000 + number), u"Player %1"_s.arg(number),
                                    u"10.0.%1.%2:1"_s.arg(round).arg(number), 1, 1});
                store.feed(populate(now(), players));
            });
            QVERIFY(isThrough(book));
            longest = std::max(longest, QFileInfo(bookName + u"-wal"_s).size());
        }
        QVERIFY2(QFileInfo(bookName).size() > 4'000'000, qPrintable(QString::number(QFileInfo(bookName).size())));
        QVERIFY2(longest < 10'000'000, qPrintable(QString::number(longest)));
    }

    void aReaderHoldsTheLogUpOnlyForAsLongAsItReads()
    {
        SqlBookStore store(bookName);
        const auto feed = [&store](int round) {
            QList<SeenPlayer> players;
            for (int number = 0; number < 1000; ++number)
                players.append({QString::number(1 + round * 1000 + number), u"Player %1"_s.arg(number),
                                u"10.0.%1.%2:1"_s.arg(round).arg(number), 1, 1});
            store.feed(populate(now(), players));
            store.moveLog();
        };
        const auto log = [] { return QFileInfo(bookName + u"-wal"_s).size(); };
        int round = 0;
        {
            OtherEye reader(bookName);
            reader.ask("BEGIN");
            (void)reader.ask("SELECT count(*) FROM players");
            while (log() < 10'000'000)
                feed(++round);
        }
        (void)OtherEye(bookName).ask("PRAGMA wal_checkpoint(TRUNCATE)"); // another program moves it
        qint64 longest = 0;
        for (const int end = round + 40; round < end;) {
            feed(++round);
            longest = std::max(longest, log());
        }
        QVERIFY2(longest > 2'000'000 && longest < 8'000'000, qPrintable(QString::number(longest)));
    }

#ifndef Q_OS_WIN
    void aBookThatIsTakenAwayIsBegunAnew()
    {
        Book book;
        book.open(90);
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
        QVERIFY(isThrough(book));
        QVERIFY(QFile::remove(bookName));
        book.tell([](BookStore &store) { store.feed(populate(now(), {alice, bob})); });
        QVERIFY(isThrough(book));
        QCOMPARE(book.trouble(), QString());
        book.tell([](BookStore &store) { store.feed(populate(now(), {guest(u"a"_s, u"b"_s)})); });
        QVERIFY(isThrough(book));
        QCOMPARE(playersIn(bookName), 3);
    }
#endif

#ifndef Q_OS_WIN
    void aBookThatIsPutInItsPlaceIsUsed_data()
    {
        QTest::addColumn<bool>("hasLog");
        QTest::newRow("a file") << false;
        QTest::newRow("a file and its log") << true;
    }

    // As when a backup is brought back while the program runs.
    void aBookThatIsPutInItsPlaceIsUsed()
    {
        QFETCH(const bool, hasLog);
        const QString backup = u"backup.db"_s;
        {
            SqlBookStore original(u"original.db"_s);
            original.feed(populate(now(), {alice}));
            QVERIFY(copyAsKilled(u"original.db"_s, backup)); // Alice is in its log
        }
        if (!hasLog) {
            QVERIFY(QFile::remove(backup + u"-wal"_s) && QFile::remove(backup));
            QVERIFY(QFile::copy(u"original.db"_s, backup));
        }
        Book book;
        QSignalSpy anew(&book, &Book::begunanew);
        book.open(90);
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob, guest(u"x"_s, u"y"_s)})); });
        QVERIFY(isThrough(book));
        QCOMPARE(anew.size(), 0);
        QVERIFY(QFile::remove(bookName) && QFile::rename(backup, bookName));
        if (hasLog)
            QVERIFY(QFile::remove(bookName + u"-wal"_s) && QFile::rename(backup + u"-wal"_s, bookName + u"-wal"_s));
        book.tell([](BookStore &store) { store.feed(populate(now(), {guest(u"a"_s, u"b"_s)})); });
        QVERIFY(isThrough(book));
        QCOMPARE(book.trouble(), QString());
        QCOMPARE(anew.size(), 1);
        OtherEye eye(bookName);
        QCOMPARE(eye.ask("SELECT count(*) FROM players"), 2);
        QCOMPARE(eye.ask("SELECT count(*) FROM players WHERE name = 'Alice'"), 1);
        QCOMPARE(eye.ask("PRAGMA integrity_check"), u"ok"_s);
    }
#endif

#ifndef Q_OS_WIN
    void oldNumbersMeanNothingInAnotherBook()
    {
        {
            SqlBookStore original(u"original.db"_s);
            original.feed(populate(now(), {alice}));
        }
        Book book;
        book.open(90);
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
        QVERIFY(isThrough(book));
        const int first = book.edition();
        QVERIFY(first > 0);
        QVERIFY(QFile::remove(bookName) && QFile::rename(u"original.db"_s, bookName));
        QStringList order;
        QObject::connect(&book, &Book::begunanew, this, [&] { order.append(u"begun anew"_s); });
        book.askThis([](BookStore &store) { store.remove(1); }, this, [&] { order.append(u"done"_s); },
                     [&] { order.append(u"failed: "_s + book.trouble()); });
        QVERIFY(isThrough(book));
        QCOMPARE(order.size(), 2);
        QCOMPARE(order.first(), u"begun anew"_s);
        QVERIFY2(order.last().startsWith(u"failed: The player book (molvark-players.db) is another one now"),
                 qPrintable(order.last()));
        QCOMPARE(playersIn(bookName), 1);
        QVERIFY(book.edition() != first);
        book.askThis([](BookStore &store) { store.remove(1); }, this, [&] { order.append(u"done"_s); });
        QVERIFY(isThrough(book));
        QCOMPARE(order.last(), u"done"_s);
        QCOMPARE(book.trouble(), QString());
        QCOMPARE(playersIn(bookName), 0);
    }
#endif

    void switchingItOffAndOnAndOffDoesNotHoldTheWindowUp()
    {
        QSemaphore first;
        QSemaphore second;
        std::atomic<int> begun = 0;
        const auto waitingFor = [&begun](QSemaphore &sign) {
            return [&begun, &sign](BookStore &) {
                ++begun;
                (void)sign.tryAcquire(1, 5000);
            };
        };
        Book book;
        book.open(90);
        QVERIFY(isThrough(book));
        book.tell(waitingFor(first));
        QElapsedTimer time;
        time.start();
        book.close();
        book.open(90);
        book.tell(waitingFor(second));
        book.close();
        first.release();
        (void)QTest::qWaitFor([&] { return begun.load() == 2; });
        QCoreApplication::processEvents(); // the news that it was closed the first time
        const qint64 held = time.elapsed();
        second.release();
        QVERIFY2(held < 3000, qPrintable(QString::number(held)));
    }

    void whatFailsIsToldToWhoAsked()
    {
        QVERIFY(QDir::current().mkdir(bookName));
        Book book;
        book.open(90);
        bool isDone = false;
        bool hasFailed = false;
        QString trouble;
        book.ask([](BookStore &store) { return store.size(); }, this, [&](const BookSize &) { isDone = true; },
                 [&] {
                     hasFailed = true;
                     trouble = book.trouble();
                 });
        QTRY_VERIFY(hasFailed);
        QVERIFY(!isDone);
        QVERIFY(trouble.contains(bookName));
    }

    void aFolderOfThatNameIsTold()
    {
        QVERIFY(QDir::current().mkdir(bookName));
        Book book;
        book.open(90);
        QTRY_VERIFY(book.trouble().contains(bookName));
        QVERIFY(QDir::current().rmdir(bookName));
        book.tell([](BookStore &store) { store.feed(populate(now(), {bob})); });
        QTRY_COMPARE(book.trouble(), QString());
    }

private:
    /// Changes one byte of an index, so that the book looks whole as long as the index is not compared with its table.
    static bool spoilIndex()
    {
        const auto ask = [](const char *sql) { return OtherEye(bookName).ask(sql); };
        const qint64 page = ask("PRAGMA page_size").toLongLong();
        const qint64 end =
            page * ask("SELECT rootpage FROM sqlite_schema WHERE name = 'players_last_seen'").toLongLong();
        const QByteArray whole = bytesOf(bookName);
        for (qint64 at = end - 1; at > end - 100; --at) {
            QByteArray bytes = whole;
            bytes[at] = static_cast<char>(bytes.at(at) ^ 1);
            if (writeBytes(bookName, bytes) && ask("PRAGMA quick_check(1)") == u"ok"_s &&
                ask("PRAGMA integrity_check(1)") != u"ok"_s)
                return true;
        }
        return false;
    }
#ifdef Q_OS_LINUX
    [[nodiscard]] static bool hasThread()
    {
        const QDir threads(u"/proc/self/task"_s);
        const QStringList all = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return std::ranges::any_of(
            all, [&](const QString &each) { return bytesOf(threads.filePath(each + u"/comm"_s)) == "book\n"; });
    }
#endif

    std::unique_ptr<BookFolder> folder;
};

GUILESS_TEST(BookTest)
#include "tst_book.moc"
