// SPDX-License-Identifier: MIT
#include "output/log_file.h"
#include "test_class.h"

#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

#include <cerrno>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;

namespace {

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read"_ba;
}

#ifdef Q_OS_UNIX
/// As long as it lives no file of this process can grow beyond `bytes`: a disk that is full.
class FullDisk final {
public:
    explicit FullDisk(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit before{};
    void (*handler)(int);
};
#endif

} // namespace

class LogFileTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theDateHasTwoDigitsEachForDayMonthAndYear_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("text");
        QTest::newRow("5 March 2006") << QDate(2006, 3, 5) << u"050306"_s;
        QTest::newRow("31 December 1999") << QDate(1999, 12, 31) << u"311299"_s;
        QTest::newRow("1 January 2000") << QDate(2000, 1, 1) << u"010100"_s;
        QTest::newRow("10 November 2012") << QDate(2012, 11, 10) << u"101112"_s;
    }

    void theDateHasTwoDigitsEachForDayMonthAndYear()
    {
        QFETCH(QDate, date);
        QTEST(logDate(date), "text");
    }

    void theDateHasTheSameDigitsInEveryLanguage()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
        const QString text = logDate({2006, 3, 5});
        QLocale::setDefault(before);
        QCOMPARE(text, u"050306"_s);
    }

    void aMissingFileIsCreated()
    {
        QVERIFY(!appendToLog(path(u"new.log"_s), u"one\r\n"_s));
        QCOMPARE(bytesOf(path(u"new.log"_s)), "one\r\n"_ba);
    }

    void aFileThatIsThereIsAppendedTo()
    {
        QFile old(path(u"old.log"_s));
        QVERIFY(old.open(QIODevice::WriteOnly) && old.write("by hand, without a line end") > 0);
        old.close();
        QVERIFY(!appendToLog(path(u"old.log"_s), u" one\r\n"_s));
        QVERIFY(!appendToLog(path(u"old.log"_s), u"two\r\n"_s));
        QCOMPARE(bytesOf(path(u"old.log"_s)), "by hand, without a line end one\r\ntwo\r\n"_ba);
    }

    void nothingToWriteStillCreatesTheFile()
    {
        QVERIFY(!appendToLog(path(u"empty.log"_s), {}));
        QCOMPARE(bytesOf(path(u"empty.log"_s)), QByteArray());
        QVERIFY(QFile::exists(path(u"empty.log"_s)));
    }

    void lineEndsAreNotTouched()
    {
        QVERIFY(!appendToLog(path(u"ends.log"_s), u"a\r\nb\nc\rd"_s));
        QCOMPARE(bytesOf(path(u"ends.log"_s)), "a\r\nb\nc\rd"_ba);
    }

    void theTextIsWrittenInTheCodePageOfTheSystem()
    {
        QVERIFY(!appendToLog(path(u"text.log"_s), u"caf\u00E9\u00A0\u20AC \u0142 \U0001F600"_s));
        QCOMPARE(bytesOf(path(u"text.log"_s)), "caf\xE9\xA0\x80 ? ?"_ba);
    }

#ifdef Q_OS_UNIX
    void aFolderCannotBeWritten()
    {
        const std::optional<Fault> fault = appendToLog(folder.path(), u"one"_s);
        QVERIFY(fault.has_value());
        QCOMPARE(fault->number(), EISDIR);
    }

    void aFileInAFolderThatIsMissingCannotBeWritten()
    {
        const std::optional<Fault> fault = appendToLog(path(u"missing/new.log"_s), u"one"_s);
        QVERIFY(fault.has_value());
        QCOMPARE(fault->number(), ENOENT);
    }

    void aFullDiskIsAnErrorAndLeavesWhatIsThere()
    {
        QVERIFY(!appendToLog(path(u"full.log"_s), u"by hand\r\n"_s));
        std::optional<Fault> fault;
        {
            const FullDisk disk(1000);
            fault = appendToLog(path(u"full.log"_s), QString(2000, u'x'));
        }
        QVERIFY(fault.has_value());
        QCOMPARE(fault->number(), EFBIG);
        QCOMPARE(bytesOf(path(u"full.log"_s)), "by hand\r\n"_ba); // and no part of the text, though there was room
    }

    void anEarlierErrorIsNotTaken()
    {
        errno = EIO;
        QVERIFY(!appendToLog(path(u"errno.log"_s), u"one"_s));
        errno = EIO;
        QCOMPARE(appendToLog(folder.path(), u"one"_s)->number(), EISDIR);
    }

    void aPipeIsNotWaitedFor()
    {
        const QString pipe = folder.filePath(u"pipe.log"_s);
        QCOMPARE(mkfifo(qPrintable(pipe), S_IRUSR | S_IWUSR), 0);
        QCOMPARE(appendToLog(pipe, u"text"_s)->number(), ENOTSUP);
    }
#endif

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return folder.filePath(name);
    }

    QTemporaryDir folder;
};

GUILESS_TEST(LogFileTest)
#include "tst_log_file.moc"
