// SPDX-License-Identifier: MIT
#include "rcon/read_values.h"
#include "rcon/server_listing.h"
#include "rcon/words_file.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString valueOf(const ReadValues &values, const QString &name)
{
    const ReadValue *value = values.find(name);
    return value ? value->value : u"not read"_s;
}

} // namespace

/// What is taken from the listings of a server: names and values.
class ServerListingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theNamesOfVariablesAreTaken_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("with flags") << u"S    A  sv_hostname \"My \"Server\"\"\n"_s << QStringList{u"sv_hostname"_s};
        QTest::newRow("squeezed") << u"S A sv_fps \"20\"\n g_x \"\"\n"_s << QStringList({u"sv_fps"_s, u"g_x"_s});
        QTest::newRow("carriage returns") << u"S A sv_fps \"20\"\r\n"_s << QStringList{u"sv_fps"_s};
        QTest::newRow("the count") << u"\n315 total dvars\n315 dvar indexes\n"_s << QStringList();
        QTest::newRow("no end") << u"S A sv_fps \"20\""_s << QStringList();
        QTest::newRow("no quotes") << u"S A sv_fps 20\n"_s << QStringList();
        QTest::newRow("an open quote") << u"S A sv_fps \"20\nS A sv_x \"\n"_s << QStringList();
        QTest::newRow("other letters") << u"Say hello \"you\"\n"_s << QStringList();
        QTest::newRow("a name with a semicolon") << u"A a;quit \"1\"\n"_s << QStringList();
        QTest::newRow("a name that is too long") << u"A %1 \"1\"\n"_s.arg(QString(65, u'x')) << QStringList();
        QTest::newRow("a long name") << u"A %1 \"1\"\n"_s.arg(QString(64, u'x')) << QStringList{QString(64, u'x')};
    }

    void theNamesOfVariablesAreTaken()
    {
        QFETCH(QString, reply);
        QTEST(listedVariables(reply, {}), "names");
    }

    void theNamesOfCommandsAreTaken()
    {
        QCOMPARE(listedCommands(u"banClient\nsay\n19 commands\n"_s, {}), QStringList({u"banClient"_s, u"say"_s}));
        QCOMPARE(listedCommands(u"Unknown command \"cmdlist\"\n"_s, {}), QStringList());
    }

    void aLineThatMayLackACharacterIsLeftOut()
    {
        const QString reply = u"A aa \"1\"\nA bb \"2\"\nA cc \"3\"\n"_s; // each line has nine characters
        QCOMPARE(listedVariables(reply, {{0, true}, {12, false}}), QStringList({u"aa"_s, u"cc"_s}));
        QCOMPARE(listedVariables(reply, {{0, true}, {9, false}}), QStringList({u"aa"_s, u"cc"_s}));
        QCOMPARE(listedVariables(reply, {{0, true}, {8, false}}), QStringList({u"bb"_s, u"cc"_s}));
        QCOMPARE(listedVariables(reply, {{0, false}, {12, false}}).size(), 3);
        QCOMPARE(listedVariables(reply, {{0, false}, {12, true}}).size(), 3);
    }

    void aListingWithAsManyGapsAsLinesIsReadInNoTime()
    {
        constexpr int lines = 300'000;
        const QString line = u"A aa \"1\"\n"_s;
        QList<ReplyPiece> pieces{{0, true}};
        for (int number = 0; number < lines; ++number)
            pieces.append({number * line.size() + 4, true});
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(listedVariables(line.repeated(lines), pieces), QStringList());
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    }

    void moreWordsThanAreKeptAreNotRead()
    {
        QCOMPARE(listedVariables(u"A a \"\"\n"_s.repeated(20'100), {}).size(), ServerWords::most);
        QCOMPARE(listedCommands(u"say\n"_s.repeated(20'100), {}).size(), ServerWords::most);
    }

    void theCountEndsAListing_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<bool>("isWhole");
        QTest::newRow("dvarlist") << u"A x \"1\"\n\n1 total dvars\n"_s << true;
        QTest::newRow("with indexes") << u"\n1 total dvars\n1 dvar indexes\n"_s << true;
        QTest::newRow("cmdlist") << u"say\n1 commands\n"_s << true;
        QTest::newRow("unknown") << u"Unknown command \"cmdlist\"\n"_s << true;
        QTest::newRow("not at its end") << u"A x \"1\"\n\n1 total dva"_s << false;
        QTest::newRow("in the middle") << u"A x \"1\"\n"_s << false;
        QTest::newRow("a value that looks like it") << u"A x \"1 total dvars\"\n"_s << false;
        QTest::newRow("nothing") << QString() << false;
    }

    void theCountEndsAListing()
    {
        QFETCH(QString, reply);
        QTEST(isWholeListing(reply), "isWhole");
    }

    void valuesOfAListingAreRead()
    {
        ReadValues values;
        values.take(u"S    A  sv_hostname \"My \"good\" Server\"\n        g_x \"\"\n"_s, false, 5us);
        QCOMPARE(valueOf(values, u"SV_HOSTNAME"_s), u"My \"good\" Server"_s);
        QCOMPARE(valueOf(values, u"g_x"_s), QString());
        QCOMPARE(values.find(u"g_x"_s)->at, 5us);
        QVERIFY(values.find(u"g_x"_s)->stock.isNull());
        QCOMPARE(valueOf(values, u"g_y"_s), u"not read"_s);
    }

    void aDescriptionHasDefaultAndDomain_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::newRow("plain")
            << u"\"sv_fps\" is: \"25^7\" default: \"20^7\"\n  Domain is any integer from 10 to 1000\n"_s;
        QTest::newRow("latched") << u"\"sv_fps\" is: \"25^7\" default: \"20^7\"\nlatched: \"30^7\"\n"
                                    "  Domain is any integer from 10 to 1000\n"_s;
        QTest::newRow("narrow") << u"\"sv_fps\" is:\"25^7\" default:\"20^7\"\r\n"
                                   "  Domain is any integer from 10 to 1000\r\n"_s;
    }

    void aDescriptionHasDefaultAndDomain()
    {
        QFETCH(QString, reply);
        ReadValues values;
        values.take(reply, false, 1us);
        const ReadValue *value = values.find(u"sv_fps"_s);
        QVERIFY(value);
        QCOMPARE(value->value, u"25"_s);
        QCOMPARE(value->stock, u"20"_s);
        QCOMPARE(value->domain, u"any integer from 10 to 1000"_s);
        values.take(u"A       sv_fps \"30\"\n"_s, false, 2us); // a later listing says nothing of these
        value = values.find(u"sv_fps"_s);
        QCOMPARE(value->value, u"30"_s);
        QCOMPARE(value->stock, u"20"_s);
        QCOMPARE(value->domain, u"any integer from 10 to 1000"_s);
    }

    void aLineMayComeInSeveralDatagrams()
    {
        ReadValues values;
        values.take(u"A       sv_fps \"2"_s, false, 1us);
        QVERIFY(!values.find(u"sv_fps"_s));
        values.take(u"0\"\n"_s, false, 2us);
        QCOMPARE(valueOf(values, u"sv_fps"_s), u"20"_s);
    }

    void aLineThatMayLackACharacterDoesNotCount()
    {
        ReadValues values;
        values.take(u"A       sv_a \"1\"\nA       sv_fps \"2"_s, true, 1us);
        values.take(u"0\"\nA       sv_b \"3\"\n"_s, false, 2us);
        QCOMPARE(valueOf(values, u"sv_a"_s), u"1"_s);
        QVERIFY(!values.find(u"sv_fps"_s));
        QCOMPARE(valueOf(values, u"sv_b"_s), u"3"_s);
    }

    void anotherReplyDoesNotGoOnWithALine()
    {
        ReadValues values;
        values.take(u"A       sv_fps \"2"_s, false, 1us);
        values.beginReply();
        values.take(u"A       sv_b \"3\"\n"_s, false, 1us);
        QCOMPARE(valueOf(values, u"sv_b"_s), u"3"_s);
        QVERIFY(!values.find(u"sv_fps"_s));
    }

    void passwordsAreNotKept()
    {
        ReadValues values;
        values.take(u"A       g_password \"secret\"\n\"rcon_Password\" is: \"secret^7\" default: \"^7\"\n"_s, false,
                    1us);
        QVERIFY(!values.find(u"g_password"_s));
        QVERIFY(!values.find(u"rcon_password"_s));
    }

    void otherTextIsNoValue_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("a row of the status") << u"  0     0   55 63281996 \"x\"^7  50 11.11.11.11:524 8045 25000"_s;
        QTest::newRow("a map") << u"map: mp_villa"_s;
        QTest::newRow("too few flags") << u"A sv_fps \"20\""_s;
        QTest::newRow("an open quote") << u"A       sv_fps \"20"_s;
        QTest::newRow("one quote") << u"A       sv_fps \""_s;
        QTest::newRow("a quote alone") << u"\""_s;
        QTest::newRow("no value") << u"\"sv_fps\" is:"_s;
        QTest::newRow("a domain alone") << u"  Domain is any text"_s;
        QTest::newRow("endless") << u"A       sv_fps \"%1\""_s.arg(QString(5000, u'x'));
    }

    void otherTextIsNoValue()
    {
        QFETCH(QString, line);
        ReadValues values;
        values.take(line + u'\n', false, 1us);
        QVERIFY(!values.find(u"sv_fps"_s));
    }

    void aServerCannotFillTheMemory()
    {
        ReadValues values;
        for (int number = 0; number < 20'100; ++number)
            values.take(u"A       v%1 \"1\"\n"_s.arg(number), false, 1us);
        QVERIFY(values.find(u"v19999"_s));
        QVERIFY(!values.find(u"v20000"_s));
        values.take(u"A       v7 \"2\"\n"_s, false, 1us);
        QCOMPARE(valueOf(values, u"v7"_s), u"2"_s);
    }
};

GUILESS_TEST(ServerListingTest)
#include "tst_server_listing.moc"
