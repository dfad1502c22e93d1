// SPDX-License-Identifier: MIT
#include "ledger/traffic_mask.h"
#include "link.h"
#include "recording_lines.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QJsonObject object(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object();
}

/// The datagrams in these lines.
QByteArrayList datagrams(const QByteArray &lines)
{
    QByteArrayList found;
    for (const QByteArray &line : lines.split('\n')) {
        if (!line.isEmpty())
            found.append(QByteArray::fromBase64(object(line).value("data"_L1).toString().toLatin1()));
    }
    return found;
}

} // namespace

/// How datagrams become the lines of a recording.
class TrafficMaskTest final : public QObject {
    Q_OBJECT

private slots:
    void aDatagramIsAJsonLine()
    {
        TrafficMask mask;
        const QByteArray sent = mask.sent(1'234'567us, request("status"), "practice");
        QCOMPARE(object(sent), object(recording::out(1'234'567us, request("status", "********"))));
        QVERIFY(sent.endsWith('\n') && sent.count('\n') == 1);
        const QByteArray bytes = printed(QByteArray("\x00\x01\xFE\xFF\n", 5));
        const QByteArray read = mask.received(7us, bytes);
        QCOMPARE(object(read), object(recording::in(7us, bytes)));
        QVERIFY(read.endsWith('\n') && read.count('\n') == 1);
    }

    void noPasswordGoesOut_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("recorded");
        const auto row = [](const char *command, const char *recorded) {
            QTest::newRow(command) << QByteArray(command) << QByteArray(recorded);
        };
        row("status", "status");
        row("say practice, practice", "say ********, ********");
        row("set g_password letmein", "set g_password *******");
        row("SETS sv_privatePassword \"a practice\"", "SETS sv_privatePassword \"**********\"");
        row("rcon_password new", "rcon_password ***");
        row("say \xE4\xF6\xFC", "say \xE4\xF6\xFC");
        row("", "");
    }

    void noPasswordGoesOut()
    {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, recorded);
        TrafficMask mask;
        QCOMPARE(datagrams(mask.sent(0us, request(command), "practice")),
                 QByteArrayList({request(recorded, "********")}));
    }

    void thePasswordIsHiddenInRepliesToo()
    {
        TrafficMask mask;
        mask.hide("practice");
        QCOMPARE(datagrams(mask.received(0us, printed("rcon_password \"practice\"\n"))),
                 QByteArrayList({printed("rcon_password \"********\"\n")}));
    }

    void everyPasswordStaysHidden()
    {
        TrafficMask mask;
        (void)mask.sent(0us, request("status", "first"), "first");
        (void)mask.sent(0us, request("status", "other"), "other");
        QCOMPARE(datagrams(mask.received(0us, printed("first, other.\n"))),
                 QByteArrayList({printed("*****, *****.\n")}));
    }

    void aPasswordLikeTheHeaderLeavesTheHeader()
    {
        TrafficMask mask;
        QCOMPARE(datagrams(mask.sent(0us, request("say rcon", "rcon"), "rcon")),
                 QByteArrayList({request("say ****", "****")}));
        TrafficMask other;
        other.hide("print");
        QCOMPARE(datagrams(other.received(0us, printed("print\n"))), QByteArrayList({printed("*****\n")}));
    }

    void aPasswordLikeAPublicQueryLeavesItsHead()
    {
        for (const QByteArray &head : {"getstatus"_ba, "getinfo"_ba, "statusResponse"_ba, "infoResponse"_ba}) {
            for (const QByteArray &password : {"status"_ba, "get"_ba, "info"_ba, "Response"_ba}) {
                TrafficMask mask;
                mask.hide(password);
                const QByteArray datagram = "\xFF\xFF\xFF\xFF" + head + "\n\\x\\" + password;
                const QByteArray masked = "\xFF\xFF\xFF\xFF" + head + "\n\\x\\" + QByteArray(password.size(), '*');
                QCOMPARE(datagrams(mask.received(0us, datagram)), QByteArrayList{masked});
            }
        }
    }

    void aPublicQueryIsAsItIs()
    {
        TrafficMask mask;
        mask.hide("practice");
        const QByteArray query("\xFF\xFF\xFF\xFFgetstatus");
        QCOMPARE(datagrams(mask.sent(0us, query, "practice")), QByteArrayList({query}));
    }

    void aPasswordPartedByABorderIsHidden()
    {
        for (qsizetype at = 1; at < 8; ++at) {
            const QByteArray password = "practice";
            TrafficMask mask;
            mask.hide(password);
            QByteArray lines = mask.received(1us, printed("it is " + password.first(at)));
            QCOMPARE(lines, QByteArray()); // it waits for what may follow
            lines += mask.sent(2us, request("say a"), password);
            lines += mask.received(3us, printed(password.sliced(at) + " indeed\n"));
            lines += mask.rest();
            QCOMPARE(datagrams(lines),
                     QByteArrayList({printed("it is " + QByteArray(at, '*')), request("say a", "********"),
                                     printed(QByteArray(8 - at, '*') + " indeed\n")}));
        }
    }

    // As many characters of it go over the border as are left.
    void aPasswordThatLostACharacterIsHidden()
    {
        for (qsizetype lost = 0; lost < 8; ++lost) {
            const QByteArray password = "practice";
            TrafficMask mask;
            mask.hide(password);
            const QByteArray full = printed(password.first(lost).rightJustified(1293, 'x'));
            QCOMPARE(full.size(), 1303);
            QByteArray lines = mask.received(1us, full);
            lines += mask.received(2us, printed(password.sliced(lost + 1) + " indeed\n"));
            lines += mask.rest();
            QCOMPARE(datagrams(lines), QByteArrayList({printed(QByteArray(lost, '*').rightJustified(1293, 'x')),
                                                       printed(QByteArray(7 - lost, '*') + " indeed\n")}));
        }
    }

    void theLastOfAFullDatagramIsHiddenWhenNothingComesBehindIt()
    {
        TrafficMask mask;
        mask.hide("practice");
        QByteArray lines = mask.received(1us, printed(QByteArray("practic").rightJustified(1293, 'x')));
        lines += mask.rest();
        QCOMPARE(datagrams(lines), QByteArrayList{printed(QByteArray(7, '*').rightJustified(1293, 'x'))});
    }

    void aPasswordThatIsSetIsHiddenFromThenOn()
    {
        TrafficMask mask;
        QCOMPARE(datagrams(mask.sent(0us, request("set rcon_password \"newword\""), "practice")),
                 QByteArrayList{request("set rcon_password \"*******\"", "********")});
        QCOMPARE(datagrams(mask.received(1us, printed("newword, practice.\n"))),
                 QByteArrayList{printed("*******, ********.\n")});
        QCOMPARE(datagrams(mask.sent(2us, request("say newword"), "practice")),
                 QByteArrayList{request("say *******", "********")});
    }

    // Two replies come at once, each over a link of its own.
    void theLinksAreNotMixedUp()
    {
        TrafficMask mask;
        mask.hide("practice");
        QByteArray lines = mask.received(1us, printed("it is prac"));
        lines += mask.received(2us, printed("map\n"), TrafficMask::OfCheck);
        QCOMPARE(lines, QByteArray());
        lines += mask.received(3us, printed("tice\n"));
        QCOMPARE(datagrams(lines), QByteArrayList({printed("it is ****"), printed("map\n"), printed("****\n")}));
    }

    void nothingIsHeldBackForLong()
    {
        TrafficMask mask;
        mask.hide("practice");
        QVERIFY(mask.received(1s, printed("a map")).isEmpty());
        QVERIFY(mask.sent(11s, request("say a"), "practice").isEmpty());
        QCOMPARE(datagrams(mask.sent(11s + 1us, request("say b"), "practice")).size(), 3);
    }

    void whatWasHeldBackForNothingIsWrittenAsItCame()
    {
        TrafficMask mask;
        mask.hide("practice");
        QByteArray lines = mask.received(1us, printed("a map"));
        QVERIFY(lines.isEmpty());
        lines += mask.received(2us, printed("le\n"));
        lines += mask.received(3us, printed("p"));
        lines += mask.rest();
        QCOMPARE(datagrams(lines), QByteArrayList({printed("a map"), printed("le\n"), printed("p")}));
        QCOMPARE(object(lines.split('\n').first()).value("us"_L1).toInt(), 1);
        QCOMPARE(mask.rest(), QByteArray());
    }
};

GUILESS_TEST(TrafficMaskTest)
#include "tst_traffic_mask.moc"
