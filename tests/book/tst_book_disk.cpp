// SPDX-License-Identifier: MIT
#include "book/book.h"
#include "book/book_fault.h"
#include "book/sql_book_store.h"
#include "book_folder.h"
#include "evening.h"
#include "ordinary_user.h"
#include "other_eye.h"
#include "small_disk.h"
#include "test_class.h"

#include <QProcess>

#include <cstdio>
#include <fcntl.h>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const bool hasMountsOfItsOwn = takeMountsOfOnesOwn();
const QString bookName = u"molvark-players.db"_s;

bool isThrough(Book &book)
{
    bool isDone = false;
    QObject context;
    book.ask([](BookStore &store) { return store.size(); }, &context, [&](const BookSize &) { isDone = true; });
    return QTest::qWaitFor([&] { return isDone; }, 20'000);
}

/// Holds a lock on the file for as long as it lives.
[[noreturn]] void lockForEver(const QString &path)
{
    QFile file(path);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    if (!file.open(QIODevice::ReadWrite) || fcntl(file.handle(), F_SETLK, &lock) != 0)
        qFatal("cannot lock");
    std::putchar('.');
    std::fflush(stdout);
    for (;;)
        pause();
}

} // namespace

class BookDiskTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<BookFolder>(); }
    void cleanup() { folder.reset(); }

    void aFullDiskIsToldAndForgottenWhenThereIsRoom()
    {
        if (!hasMountsOfItsOwn)
            QSKIP("this system lets no test mount a disk");
        SmallDisk disk("2m");
        QVERIFY(disk.isThere());
        {
            Book book;
            book.open(36'500);
            book.tell([](BookStore &store) { store.feed(populate(1, {bob})); });
            QVERIFY(isThrough(book));
            QVERIFY(disk.fill());
            for (int number = 2; number < 100 && book.trouble().isEmpty(); ++number) {
                book.tell([number](BookStore &store) { store.feed(populate(number, {bob, alice})); });
                (void)isThrough(book);
            }
            QVERIFY2(book.trouble().contains(bookName), qPrintable(book.trouble()));
            QVERIFY2(book.trouble().contains(u"full"_s), qPrintable(book.trouble()));
            QVERIFY(disk.free());
            book.tell([](BookStore &store) { store.feed(populate(1000, {bob, alice})); });
            QTRY_COMPARE(book.trouble(), QString());
        }
        OtherEye eye(bookName);
        QCOMPARE(eye.ask("PRAGMA integrity_check"), u"ok"_s);
        QCOMPARE(eye.ask("SELECT count(*) FROM sightings WHERE time = 1000"), 2);
        QCOMPARE(eye.ask("SELECT count(*) FROM counts WHERE players <> (SELECT count(*) FROM sightings"
                         " WHERE sightings.time = counts.time)"),
                 0);
    }

    void aFullDiskAtTheBeginningIsTold()
    {
        if (!hasMountsOfItsOwn)
            QSKIP("this system lets no test mount a disk");
        SmallDisk disk("2m");
        QVERIFY(disk.isThere() && disk.fill());
        Book book;
        book.open(90);
        QTRY_VERIFY(book.trouble().contains(bookName));
        QVERIFY(disk.free());
        book.tell([](BookStore &store) { store.feed(populate(1000, {bob})); });
        QTRY_COMPARE(book.trouble(), QString());
    }

    void whatIsReadOnlyIsToldAndLeftAlone_data()
    {
        QTest::addColumn<bool>("folderToo");
        QTest::addColumn<bool>("broken");
        QTest::newRow("the file") << false << false;
        QTest::newRow("the folder") << true << false;
        QTest::newRow("a broken file") << false << true;
        QTest::newRow("a broken one in a read-only folder") << true << true;
    }
    void whatIsReadOnlyIsToldAndLeftAlone()
    {
        QFETCH(const bool, folderToo);
        QFETCH(const bool, broken);
        {
            SqlBookStore store(bookName);
            store.feed(populate(1000, {bob}));
        }
        if (broken)
            QVERIFY(writeBytes(bookName, "broken"));
        const QByteArray bytes = bytesOf(bookName);
        const OrdinaryUser user(QDir::currentPath());
        if (!user.isOrdinary())
            QSKIP("this system lets no test become an ordinary user");
        if (!folderToo)
            QVERIFY(QFile::setPermissions(bookName, QFile::ReadOwner));
        else
            QVERIFY(QFile::setPermissions(QDir::currentPath(), QFile::ReadOwner | QFile::ExeOwner));
        Book book;
        book.open(90);
        QTRY_VERIFY2(book.trouble().contains(u"read-only"_s), qPrintable(book.trouble()));
        QVERIFY(book.trouble().contains(bookName));
        QCOMPARE(QDir::current().entryList(QDir::Files), QStringList{bookName});
        QCOMPARE(bytesOf(bookName), bytes);
        QVERIFY(QFile::setPermissions(QDir::currentPath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(QFile::setPermissions(bookName, QFile::ReadOwner | QFile::WriteOwner));
        book.tell([](BookStore &store) { store.feed(populate(1000, {bob})); });
        QTRY_VERIFY(!book.trouble().contains(u"read-only"_s));
    }

    void aReadOnlyFolderWithoutABookIsTold()
    {
        const OrdinaryUser user(QDir::currentPath());
        if (!user.isOrdinary())
            QSKIP("this system lets no test become an ordinary user");
        QVERIFY(QFile::setPermissions(QDir::currentPath(), QFile::ReadOwner | QFile::ExeOwner));
        Book book;
        book.open(90);
        QTRY_VERIFY2(book.trouble().contains(u"read-only"_s), qPrintable(book.trouble()));
        QVERIFY(QFile::setPermissions(QDir::currentPath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void anotherProgramsFileThatIsInUseIsLeftAlone()
    {
        QVERIFY(writeBytes(bookName, "the file of another program"));
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(),
                    {u"book_disk"_s, u"--lock"_s, QDir::current().filePath(bookName)});
        QVERIFY(other.waitForReadyRead());
        std::optional<BookFault> fault;
        try {
            SqlBookStore store(bookName, 0, [](qint64) { return false; });
        } catch (const BookFault &caught) {
            fault = caught;
        }
        other.kill();
        QVERIFY(other.waitForFinished());
        QVERIFY(fault);
        QCOMPARE(fault->kind(), BookFault::Locked);
        QCOMPARE(QDir::current().entryList(QDir::Files), QStringList{bookName});
        QCOMPARE(SqlBookStore(bookName).putAside(), u"molvark-players.broken-1.db"_s);
    }

private:
    std::unique_ptr<BookFolder> folder;
};

static int runOrLock(int argc, char *argv[])
{
    if (argc > 2 && QString::fromLocal8Bit(argv[1]) == u"--lock")
        lockForEver(QString::fromLocal8Bit(argv[2]));
    return runTests<QCoreApplication, BookDiskTest>(argc, argv);
}

static const TestClass testClass(__FILE__, runOrLock);
#include "tst_book_disk.moc"
