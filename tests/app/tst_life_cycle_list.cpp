// SPDX-License-Identifier: MIT
#include "folder_in_the_way.h"
#include "program.h"
#include "saved_entries.h"
#include "window_test.h"

#include <QDir>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

QString systemError(int number)
{
    return u"Error code %1 Descr: "_s.arg(number) + QString::fromLocal8Bit(strerror(number));
}

} // namespace

class LifeCycleListTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aNewFileHoldsTheListInOrder()
    {
        Program program("");
        program.start();
        addServer(program);
        program.setText(u"comserver"_s, u"four"_s);
        program.trigger(u"Saveserver"_s);
        program.window.close();
        QList<QByteArray> lines = program.file(settingsFile).split('\n');
        lines.removeAll(QByteArray("\r"));
        lines.removeAll(QByteArray());
        QCOMPARE(lines, QList<QByteArray>({"[servers]\r", "server1=three\r", "server2=four\r", "[ports]\r", "port1=3\r",
                                           "port2=3\r", "[rcon]\r", "rcon1=c\r", "rcon2=c\r"}));
    }

    void theNextRunReadsTheSameList()
    {
        QByteArray settings;
        {
            Program program;
            program.start();
            program.setText(u"comserver"_s, u"game.example"_s);
            program.setText(u"comport"_s, u"28960"_s);
            program.setText(u"txtPWD"_s, u" \"pass;word\" "_s);
            program.trigger(u"Saveserver"_s);
            program.window.close();
            settings = program.file(settingsFile);
        }
        Program program(settings);
        program.start();
        QCOMPARE(program.rows(u"lstservers"_s), QStringList{u"game.example:28960"_s});
        QCOMPARE(program.rows(u"lstrcon"_s), QStringList{u" \"pass;word\" "_s});
        QCOMPARE(emptiedAtTheEnd(program), 1);
    }

    void aShorterListEmptiesTheKeysAboveIt()
    {
        Program program(twoServers);
        program.start();
        program.setText(u"comserver"_s, u"one"_s);
        program.setText(u"comport"_s, u"1"_s);
        program.trigger(u"removeserver"_s);
        program.window.close();
        // The remaining server has the password of the one before it.
        QCOMPARE(saved(program, 1), u"two 2 a"_s);
        QCOMPARE(saved(program, 2), u"  "_s);
        QCOMPARE(saved(program, 3), u"- - -"_s);
    }

    void aServerOfBlanksIsEmptied()
    {
        Program program(
            "[servers]\r\nserver1=one\r\nserver2=   \r\nserver3=three\r\n[ports]\r\nport1=1\r\nport2=2\r\n");
        program.start();
        program.window.close();
        QCOMPARE(saved(program, 1), u"one 1 "_s);
        QCOMPARE(saved(program, 2), u"  "_s);
        QCOMPARE(saved(program, 3), u"three - -"_s);
    }

    void anEmptyListWritesNothing()
    {
        Program program;
        program.start();
        program.window.close();
        QVERIFY(!QFile::exists(settingsFile));
        QVERIFY(QFile::exists(rconLog));
    }

    void anEmptyListCannotFail()
    {
        Program program;
        program.start();
        QVERIFY(QDir().mkdir(settingsFile));
        program.window.close();
        QVERIFY(program.prompts.takeBoxes().isEmpty());
        QVERIFY(QFile::exists(rconLog));
    }

    void aFailedWriteIsToldAndNothingElseIsSaved()
    {
        Program program;
        program.start();
        addServer(program);
        QVERIFY(QDir().mkdir(settingsFile));
        QStringList whileTold;
        program.prompts.whileOpen = [&] {
            const bool closed = program.udpclient.State() == UDPClient::Closed;
            whileTold = {program.note(), program.progress()->isVisible() ? u"shown"_s : u"hidden"_s,
                         closed ? u"closed"_s : u"open"_s};
        };
        QVERIFY(program.window.close());
        const Box failure{u"INI Write Fail"_s,
                          u"Failed to write new server list to INI file (Server)\r"_s + systemError(EISDIR),
                          BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{failure});
        QCOMPARE(whileTold, QStringList({u"Saving server list to INI"_s, u"shown"_s, u"closed"_s}));
        QVERIFY(!QFile::exists(rconLog));
        QVERIFY(!QFile::exists(messageLog));
        QVERIFY(program.progress()->isHidden());
        QVERIFY(!program.window.isVisible());
    }

    void theListIsWrittenBeforeTheLogs()
    {
        Program program;
        program.start();
        addServer(program);
        QVERIFY(QDir().mkdir(rconLog));
        QString note;
        QString list;
        program.prompts.whileOpen = [&] {
            note = program.note();
            list = saved(program, 1);
        };
        QVERIFY(program.window.close());
        const Box failure{u"Failed to Save"_s,
                          u"Error writing file, err %1\rRcon log not written"_s.arg(folderInTheWay),
                          BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{failure});
        QCOMPARE(note, u"Saving server list to INI\nSaving RCON output..."_s);
        QCOMPARE(list, u"three 3 c"_s);
        QVERIFY2(QFile::exists(messageLog), "the other log is saved all the same");
        QVERIFY(program.progress()->isHidden());
    }
};

WINDOW_TEST(LifeCycleListTest)
#include "tst_life_cycle_list.moc"
