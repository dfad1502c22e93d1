// SPDX-License-Identifier: MIT
#include "cli/player_text.h"
#include "test_class.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

StatusRow rowOf(const QString &num, const QString &ping, const QString &name, const QString &address)
{
    return {num, u"-5"_s, ping, u"63281996"_s, name, address, u"-804"_s, u"25000"_s, RowDamage::None};
}

const QList<StatusRow> &players()
{
    static const QList<StatusRow> all{rowOf(u"0"_s, u"55"_s, u"^1Ban^2dAid, \"the\" 1st^7"_s, u"192.0.2.7:524"_s),
                                      rowOf(u"12"_s, u"CNCT"_s, u"J\u00fcrgen\x1b^7"_s, u"loopback"_s)};
    return all;
}

} // namespace

class CliPlayerTextTest final : public QObject {
    Q_OBJECT

private slots:
    void theTableIsAlignedAndHasNoColours()
    {
        QCOMPARE(playersTable(players(), {}),
                 u"num  score  ping      guid  name                address        qport   rate\n"
                 "  0     -5    55  63281996  BandAid, \"the\" 1st  192.0.2.7:524   -804  25000\n"
                 " 12     -5  CNCT  63281996  J\u00fcrgen?             loopback        -804  25000\n"_s);
        QCOMPARE(playersTable({}, {}), u"num  score  ping  guid  name  address  qport  rate\n"_s);
    }

    void theKeysOfJsonStandInTheirOrder()
    {
        QCOMPARE(playersJson(players().last(1), {}),
                 u"[{\"num\":12,\"score\":-5,\"ping\":\"CNCT\",\"guid\":63281996,\"name\":\"J\u00fcrgen\\u001b^7\","
                 "\"address\":\"loopback\",\"qport\":-804,\"rate\":25000}]\n"_s);
        QCOMPARE(playersJson({}, {}), u"[]\n"_s);
    }

    void coloursStayInJson()
    {
        const QJsonArray array = QJsonDocument::fromJson(playersJson(players(), {}).toUtf8()).array();
        QCOMPARE(array.size(), 2);
        QCOMPARE(array.at(0)[u"name"_s].toString(), u"^1Ban^2dAid, \"the\" 1st^7"_s);
        QCOMPARE(array.at(0)[u"num"_s].toInt(-1), 0);
    }

    void whatIsNoPlainNumberIsText_data()
    {
        QTest::addColumn<QString>("guid");
        QTest::addColumn<QString>("json");
        QTest::newRow("zero") << u"0"_s << u"0"_s;
        QTest::newRow("large") << u"9007199254740992"_s << u"9007199254740992"_s;
        QTest::newRow("larger") << u"9007199254740993"_s << u"\"9007199254740993\""_s;
        QTest::newRow("leading zero") << u"007"_s << u"\"007\""_s;
        QTest::newRow("plus") << u"+7"_s << u"\"+7\""_s;
        QTest::newRow("empty") << u""_s << u"\"\""_s;
    }
    void whatIsNoPlainNumberIsText()
    {
        QFETCH(QString, guid);
        QFETCH(QString, json);
        StatusRow row = players().first();
        row.guid = guid;
        const QString text = playersJson({row}, {});
        QVERIFY2(text.contains(u"\"guid\":"_s + json + u','), qPrintable(text));
    }

    void csvIsThatOfRfc4180()
    {
        StatusRow line = players().last();
        line.name = u"two\nlines"_s;
        QCOMPARE(playersCsv({players().first(), players().last(), line}, {}),
                 u"num,score,ping,guid,name,address,qport,rate\r\n"
                 "0,-5,55,63281996,\"^1Ban^2dAid, \"\"the\"\" 1st^7\",192.0.2.7:524,-804,25000\r\n"
                 "12,-5,CNCT,63281996,J\u00fcrgen\x1b^7,loopback,-804,25000\r\n"
                 "12,-5,CNCT,63281996,\"two\nlines\",loopback,-804,25000\r\n"_s);
        QCOMPARE(playersCsv({}, {}), u"num,score,ping,guid,name,address,qport,rate\r\n"_s);
    }

    void aSampleHasTimeAndPlayers()
    {
        const QDateTime time(QDate(2006, 3, 5), QTime(21, 7, 9), Qt::OffsetFromUTC, 3600);
        const QString line = sampleJson(time, players(), {});
        QVERIFY2(line.startsWith(u"{\"time\":\"2006-03-05T20:07:09Z\",\"players\":[{\"num\":0,"_s), qPrintable(line));
        QCOMPARE(line.count(u'\n'), 1);
        QCOMPARE(QJsonDocument::fromJson(line.toUtf8())[u"players"_s].toArray().size(), 2);
    }

    void thePasswordIsNobodysName()
    {
        QList<StatusRow> rows{players().first()};
        rows[0].name = u"hush ^1hu^2sh num"_s;
        for (const QString &text :
             {playersTable(rows, u"hush"_s), playersJson(rows, u"hush"_s), playersCsv(rows, u"hush"_s)})
            QVERIFY2(!text.contains(u"hush"_s) && text.contains(u"****"_s), qPrintable(text));
        QVERIFY(playersTable(rows, u"hush"_s).contains(u"**** **** num"_s)); // put together only without its colours
        QVERIFY(playersJson(rows, u"num"_s).startsWith(u"[{\"num\":"_s));    // a key is nobody's answer
    }
};

GUILESS_TEST(CliPlayerTextTest)
#include "tst_cli_player_text.moc"
