// SPDX-License-Identifier: MIT
#include "test_class.h"
#include "timetable/timetable_file.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QList<TimedList> ours{{.name = u"ours"_s, .commands = {u"say ours"_s}}};
const QList<TimedList> theirs{{.name = u"theirs"_s, .commands = {u"say theirs"_s}}};

struct Disk {
    void put(const QByteArray &bytes) const
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    [[nodiscard]] QByteArray content(const QString &name = u"lists.json"_s) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"lists.json"_s);
};

} // namespace

class TimetableFileTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void whatIsWrittenIsRead()
    {
        const Disk disk;
        TimetableFile file(disk.path);
        QCOMPARE(file.read(), QList<TimedList>());
        QVERIFY(!file.write(ours));
        QCOMPARE(file.fault(), QString());
        QCOMPARE(TimetableFile(disk.path).read(), ours);
        QCOMPARE(QFile::permissions(disk.path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void theListsOfAnotherProgramAreGivenBack()
    {
        const Disk disk;
        TimetableFile file(disk.path);
        (void)file.read();
        disk.put(timetableText(theirs));
        QCOMPARE(file.write(ours), theirs);
        QCOMPARE(disk.content(), timetableText(theirs));
        QVERIFY(file.fault().startsWith(u"Another program"_s));
        QVERIFY(!file.write(ours)); // now that they are known
        QCOMPARE(file.fault(), QString());
        QCOMPARE(disk.content(), timetableText(ours));
    }

    void oneThatHasGoneIsMadeAnew()
    {
        const Disk disk;
        TimetableFile file(disk.path);
        QVERIFY(!file.write(ours));
        QVERIFY(QFile::remove(disk.path));
        QVERIFY(!file.write(theirs));
        QCOMPARE(disk.content(), timetableText(theirs));
    }

    void oneThatIsNoneOfOursIsPutAside_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("broken") << QByteArray("{broken");
        QTest::newRow("newer") << QByteArray(R"({"lists":[{"name":"new"}],"version":2})");
    }

    void oneThatIsNoneOfOursIsPutAside()
    {
        QFETCH(QByteArray, text);
        const Disk disk;
        disk.put(text);
        TimetableFile file(disk.path);
        QCOMPARE(file.read(), QList<TimedList>());
        QCOMPARE(file.fault(), u"The timetable was broken and is kept as lists.broken-1.json"_s);
        QVERIFY(!file.write(ours));
        QCOMPARE(file.fault(), QString());
        QCOMPARE(disk.content(u"lists.broken-1.json"_s), text);
        disk.put(text); // while the program runs
        QVERIFY(!file.write(theirs));
        QCOMPARE(file.fault(), u"The timetable was broken and is kept as lists.broken-2.json"_s);
        QCOMPARE(disk.content(u"lists.broken-2.json"_s), text);
        QCOMPARE(disk.content(), timetableText(theirs));
    }

    void oneThatCannotBeReadIsLeftAlone()
    {
        const Disk disk;
        TimetableFile file(disk.path);
        QVERIFY(!file.write(ours));
        QVERIFY(QFile::remove(disk.path) && QDir().mkpath(disk.path));
        for (int time = 0; time < 2; ++time) {
            QVERIFY(!file.write(theirs));
            QVERIFY2(file.fault().startsWith(u"The timetable lists.json could not be read: "_s),
                     qPrintable(file.fault()));
        }
        QVERIFY(QFileInfo(disk.path).isDir());
        QCOMPARE(TimetableFile(disk.path).read(), QList<TimedList>());
    }

    void oneThatCannotBePutAsideIsLeftAlone()
    {
        const Disk disk;
        for (int number = 1; number <= 1000; ++number) // no name is free
            QVERIFY(QDir().mkpath(disk.folder.filePath(u"lists.broken-%1.json"_s.arg(number))));
        disk.put("{broken");
        TimetableFile file(disk.path);
        (void)file.read();
        QVERIFY(!file.write(ours));
        QCOMPARE(file.fault(), u"The timetable lists.json is broken and could not be put aside"_s);
        QCOMPARE(disk.content(), QByteArray("{broken"));
    }
};

GUILESS_TEST(TimetableFileTest)

#include "tst_timetable_file.moc"
