// SPDX-License-Identifier: MIT
#include "practice/datagrams.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

using Kind = Request::Kind;
Q_DECLARE_METATYPE(Kind)

class PracticeDatagramsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aRequestIsRead_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<QByteArray>("command");
        const QByteArray header("\xFF\xFF\xFF\xFF");
        const auto row = [&header](const char *name, const QByteArray &text, Kind kind, const QByteArray &password = {},
                                   const QByteArray &command = {}) {
            QTest::newRow(name) << QByteArray(header + text) << kind << password << command;
        };
        row("status", "rcon practice status", Kind::Rcon, "practice", "status");
        row("any case", "RCon practice Status", Kind::Rcon, "practice", "Status");
        row("a command keeps its blanks", "rcon pw say  a  b ", Kind::Rcon, "pw", "say  a  b ");
        row("an empty password", "rcon  status", Kind::Rcon, "", "status");
        row("no command", "rcon pw", Kind::Rcon, "pw");
        row("no password", "rcon", Kind::Rcon);
        row("only the first line", "rcon pw say a\nmap b", Kind::Rcon, "pw", "say a");
        row("public status", "getstatus", Kind::Status, "", "getstatus");
        row("with a challenge", "getstatus 12345", Kind::Status, "", "getstatus");
        row("with a line feed", "getstatus\n", Kind::Status, "", "getstatus");
        row("other words", "getinfo", Kind::Unknown);
        row("almost", "rconpw status", Kind::Unknown);
        row("header only", "", Kind::Unknown);
        row("a long command is cut", "rcon pw " + QByteArray(5000, 'x'), Kind::Rcon, "pw", QByteArray(1023, 'x'));
        QTest::newRow("no header") << QByteArray("rcon practice status") << Kind::Unknown << QByteArray()
                                   << QByteArray();
        QTest::newRow("half a header") << QByteArray("\xFF\xFF") << Kind::Unknown << QByteArray() << QByteArray();
        QTest::newRow("empty") << QByteArray() << Kind::Unknown << QByteArray() << QByteArray();
    }
    void aRequestIsRead()
    {
        QFETCH(QByteArray, datagram);
        QFETCH(Kind, kind);
        QFETCH(QByteArray, password);
        QFETCH(QByteArray, command);
        const Request request = readRequest(datagram);
        QCOMPARE(request.kind, kind);
        QCOMPARE(request.password, password);
        QCOMPARE(request.command, command);
    }

    void thePiecesOfAReplyMakeTheWhole()
    {
        QByteArray text;
        for (int line = 0; line < 200; ++line)
            text += "line " + QByteArray::number(line) + '\n';
        for (qsizetype size = 40; size <= 1300; ++size) {
            QByteArray joined;
            const QList<QByteArray> datagrams = printDatagrams(text, size);
            for (const QByteArray &datagram : datagrams) {
                QVERIFY(datagram.startsWith("\xFF\xFF\xFF\xFFprint\n"));
                QVERIFY(datagram.size() <= size + 10);
                joined += datagram.sliced(10);
            }
            QCOMPARE(joined, text);
            QCOMPARE(datagrams.size(), (text.size() + size - 1) / size);
        }
    }

    void silenceIsAcknowledgedByTheBareHeader()
    {
        QCOMPARE(printDatagrams({}, 1000), QList<QByteArray>({"\xFF\xFF\xFF\xFFprint\n"}));
    }

    void aReplyThatJustFitsIsOneDatagram()
    {
        QCOMPARE(printDatagrams("abcd", 4).size(), 1);
        QCOMPARE(printDatagrams("abcde", 4),
                 QList<QByteArray>({"\xFF\xFF\xFF\xFFprint\nabcd", "\xFF\xFF\xFF\xFFprint\ne"}));
    }

    void neighboursChangePlaces()
    {
        QCOMPARE(reordered({"1", "2", "3", "4", "5"}), QList<QByteArray>({"2", "1", "4", "3", "5"}));
        QCOMPARE(reordered({"1"}), QList<QByteArray>({"1"}));
    }
};

GUILESS_TEST(PracticeDatagramsTest)
#include "tst_practice_datagrams.moc"
