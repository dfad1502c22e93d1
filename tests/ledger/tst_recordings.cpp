// SPDX-License-Identifier: MIT
#include "ledger_hands.h"
#include "window_test.h"

#include <QListWidget>

using namespace Qt::StringLiterals;

namespace {

/// The program beside the server of a recording that the program has made of itself.
Beginning recorded(const QString &name)
{
    QFile file(QStringLiteral(QT_TESTCASE_SOURCEDIR) + u"/recordings/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        failTest(u"no recording "_s + name);
    return {.prepare = {}, .recording = file.readAll()};
}

QStringList players(const LedgerHands &it)
{
    const auto *model = it.on.program.find<QTableView>(u"msfplayers"_s)->model();
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row)
        names.append(model->index(row, 3).data().toString());
    return names;
}

/// Waits for the answer, as the person did.
void enterAndWait(LedgerHands &it, const QString &line, const QString &verdict)
{
    it.enter(line);
    QTRY_COMPARE(it.verdict(), verdict);
    it.pass(600);
}

} // namespace

/// What servers once said, said again: the program does with it what it did then.
class RecordingsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theKindServer()
    {
        LedgerHands it(recorded(u"kind.jsonl"_s));
        QVERIFY(it.on.program.isConnected());
        QVERIFY(it.on.program.pane().endsWith(u"Server running game mode [tdm] on map [mp_toujane]"_s));
        QCOMPARE(it.on.program.rows(u"lstcfgs"_s).size(), 6); // those of the game folder
        it.on.program.click(u"cmdplypop"_s);
        QCOMPARE(players(it).size(), 12);
        enterAndWait(it, u"say hello"_s, u"acknowledged"_s);
        enterAndWait(it, u"foo"_s, u"unknown command"_s);
        enterAndWait(it, u"clientkick 99"_s, u"no such player"_s);
        enterAndWait(it, u"set g_password another"_s, u"acknowledged"_s);
        enterAndWait(it, u"rcon_password"_s, u"answered"_s);
        it.chooseNewest();
        QVERIFY2(it.reply().startsWith(u"\"rcon_password\" is: \"********^7\""_s), qPrintable(it.reply()));
    }

    void theServerOfTheEngine()
    {
        LedgerHands it(recorded(u"cod2.jsonl"_s));
        QVERIFY(it.on.program.isConnected());
        it.on.program.click(u"cmdplypop"_s);
        QCOMPARE(players(it).size(), 32);
        QCOMPARE(it.cells(3).mid(4, 2), QStringList({u"3"_s, QString::number(1303 + 1303 + 334)}));
        it.pass(600);
        enterAndWait(it, u"say one"_s, u"acknowledged"_s);
        it.enter(u"say two"_s);
        it.pass(15'000);
        it.judgeSilence();
        QCOMPARE(it.verdict(), u"silent"_s);
        enterAndWait(it, u"rcon_password"_s, u"answered"_s);
        enterAndWait(it, u"unbanUser"_s, u"usage"_s);
        QCOMPARE(it.status(u"lblverdict"_s), u"usage: unbanUser"_s);
    }

    // The first copy of two questions was lost, the second piece of one list of players, and the first of the other.
    void theBadLine()
    {
        LedgerHands it(recorded(u"bad-line.jsonl"_s));
        QVERIFY(it.on.program.isConnected());
        QCOMPARE(it.on.connecting, QByteArrayList({"status", "status", "getstatus", "dvarlist sv_maprotation",
                                                   "fdir *.cfg", "fdir *.cfg"}));
        QCOMPARE(it.column(2), QStringList({u"2"_s, u"1"_s, u"2"_s}));
        QCOMPARE(it.verdicts(), QStringList(3, u"answered"_s));
        const int first = it.cells(0).at(3).toInt();
        QVERIFY2(first > 2500 && first < 4500, qPrintable(QString::number(first)));
        it.on.program.click(u"cmdplypop"_s);
        QCOMPARE(players(it).size(), 8);
        QVERIFY(!it.on.program.pane().contains(u"serverinfo"_s));
        it.on.program.click(u"cmsserverinfo"_s);
        QCOMPARE(it.cells(4).mid(1),
                 QStringList({u"serverinfo"_s, u"1"_s, it.cells(4).at(3), u"1"_s, u"529"_s, u"answered"_s}));
        enterAndWait(it, u"say hello"_s, u"acknowledged"_s);
    }

    void noRecordingHasAPassword_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u"kind.jsonl"_s, u"cod2.jsonl"_s, u"bad-line.jsonl"_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void noRecordingHasAPassword()
    {
        QFETCH(QString, name);
        int passwords = 0;
        for (const QByteArray &line : recorded(name).recording.split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            const QByteArray datagram = QByteArray::fromBase64(object.value("data"_L1).toString().toLatin1());
            QVERIFY(!datagram.contains("practice") && !datagram.contains("letmein"));
            passwords += datagram.contains("rcon ******** ") ? 1 : 0;
        }
        QVERIFY(passwords > 5);
    }
};

WINDOW_TEST(RecordingsTest)
#include "tst_recordings.moc"
