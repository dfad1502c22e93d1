// SPDX-License-Identifier: MIT
#include "cli/server_choice.h"
#include "cli/wrong_usage.h"
#include "test_class.h"

#include <QtTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QString complaint(const std::function<void()> &action)
{
    try {
        action();
        return {};
    } catch (const WrongUsage &wrong) {
        return wrong.text();
    }
}

const QList<SavedServer> &saved()
{
    static const QList<SavedServer> all{{u"game.example.org"_s, u"28960"_s, u"one"_s},
                                        {u"192.0.2.7"_s, u"28961"_s, u"two"_s},
                                        {u"192.0.2.7"_s, u"28962"_s, u"three"_s},
                                        {u"7"_s, u"28963"_s, u""_s},
                                        {u"bad.example.org"_s, u"x"_s, u"five"_s}};
    return all;
}

} // namespace

class CliServerChoiceTest final : public QObject {
    Q_OBJECT

private slots:
    void aServerIsHostAndPort_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("host");
        QTest::addColumn<int>("port");
        QTest::newRow("host") << u"game.example.org"_s << u"game.example.org"_s << 28960;
        QTest::newRow("port") << u"192.0.2.7:28961"_s << u"192.0.2.7"_s << 28961;
        QTest::newRow("six") << u"2001:db8::7"_s << u"2001:db8::7"_s << 28960;
        QTest::newRow("six and port") << u"[2001:db8::7]:28961"_s << u"2001:db8::7"_s << 28961;
        QTest::newRow("six in brackets") << u"[::1]"_s << u"::1"_s << 28960;
    }
    void aServerIsHostAndPort()
    {
        QFETCH(QString, text);
        const CliServer server = readServer(text);
        QTEST(server.host, "host");
        QTEST(server.port, "port");
        QCOMPARE(server.savedPassword, QString());
    }

    void aServerThatIsNoneIsWrong()
    {
        for (const auto &text :
             {u"a:0"_s, u"a:65536"_s, u"a:"_s, u"a:b"_s, u":28960"_s, u"[::1"_s, u"[::1]x"_s, u"[]"_s})
            QVERIFY2(!complaint([&] { (void)readServer(text); }).isEmpty(), qPrintable(text));
    }

    void digitsAreTheNumberOfTheRow()
    {
        QCOMPARE(chooseServer(saved(), u"1"_s), (CliServer{u"game.example.org"_s, 28960, u"one"_s}));
        QCOMPARE(chooseServer(saved(), u"3"_s), (CliServer{u"192.0.2.7"_s, 28962, u"three"_s}));
        for (const auto &number : {u"0"_s, u"6"_s, u"7"_s, u"99999999999999999999"_s})
            QVERIFY2(complaint([&] { (void)chooseServer(saved(), number); }).contains(u"has 5"_s), qPrintable(number));
    }

    void aNameIsTheWholeServerFieldInAnyLetterCase()
    {
        QCOMPARE(chooseServer(saved(), u"GAME.Example.org"_s).savedPassword, u"one"_s);
        QVERIFY(complaint([] { (void)chooseServer(saved(), u"game.example"_s); }).startsWith(u"No saved server"_s));
        QVERIFY(complaint([] { (void)chooseServer(saved(), u"192.0.2.7"_s); }).startsWith(u"2 saved servers"_s));
        QVERIFY(complaint([] { (void)chooseServer(saved(), u"bad.example.org"_s); }).contains(u"no port"_s));
    }

    void aRowWithoutAPortIsNamed()
    {
        const QList<SavedServer> rows{{u"good.example.org"_s, u"28960"_s, u"one"_s},
                                      {u"none.example.org"_s, u" "_s, u"two"_s}};
        for (const auto &wanted : {u"2"_s, u"none.example.org"_s})
            QCOMPARE(complaint([&] { (void)chooseServer(rows, wanted); }),
                     u"Saved server 2, \"none.example.org\", in molvark.ini in this folder has no port."_s);
        QCOMPARE(complaint([] { (void)chooseServer(saved(), u"5"_s); }),
                 u"Saved server 5, \"bad.example.org\", in molvark.ini in this folder: \"x\" is no port: that is a "
                 "number from 1 to 65535."_s);
        QCOMPARE(complaint([&] { (void)chooseServer(rows.last(1), {}); }).left(14), u"Saved server 1"_s);
    }

    void withoutAWordTheOnlyOneIsMeant()
    {
        QCOMPARE(chooseServer(saved().first(1), {}).host, u"game.example.org"_s);
        QVERIFY(!complaint([] { (void)chooseServer(saved(), {}); }).isEmpty());
        QVERIFY(!complaint([] { (void)chooseServer({}, {}); }).isEmpty());
    }

    void thePasswordComesFromFileThenEnvironmentThenRow()
    {
        QCOMPARE(choosePassword("file", u"environment"_s, u"row"_s), u"file"_s);
        QCOMPARE(choosePassword(std::nullopt, u"environment"_s, u"row"_s), u"environment"_s);
        QCOMPARE(choosePassword(std::nullopt, {}, u"row"_s), u"row"_s);
        QVERIFY(
            complaint([] { (void)choosePassword(std::nullopt, {}, {}); }).startsWith(u"There is no RCON password"_s));
        QVERIFY(complaint([] { (void)choosePassword("\n", u"environment"_s, u"row"_s); }).contains(u"file is empty"_s));
    }

    void blanksAtTheEndsOfAPasswordDoNotCount()
    {
        QCOMPARE(choosePassword(" file \t\n", {}, {}), u"file"_s);
        QCOMPARE(choosePassword(std::nullopt, u" two words "_s, u"row"_s), u"two words"_s);
        QCOMPARE(choosePassword(std::nullopt, u"  "_s, u"\trow "_s), u"row"_s);
        QVERIFY(complaint([] { (void)choosePassword(" \t\n", u"environment"_s, {}); }).contains(u"file is empty"_s));
        QVERIFY(complaint([] {
                    (void)choosePassword(std::nullopt, u" "_s, u"\t"_s);
                }).startsWith(u"There is no RCON password"_s));
        QCOMPARE(knownPassword(u" "_s, u" "_s), QString());
        QCOMPARE(knownPassword(u" a "_s, u"b"_s), u"a"_s);
    }

    void aPasswordFitsARequest()
    {
        QCOMPARE(choosePassword(std::nullopt, QString(1016, u'p'), {}).size(), 1016);
        for (const QString &password : {QString(1017, u'p'), QString(5000, u'p')}) {
            const QString text = complaint([&] { (void)choosePassword(std::nullopt, password, {}); });
            QVERIFY2(text.contains(QString::number(password.size())) && !text.contains(u"pp"_s), qPrintable(text));
        }
    }

    void oneLineEndOfAPasswordFileDoesNotCount()
    {
        QCOMPARE(passwordIn("geheim\n"), u"geheim"_s);
        QCOMPARE(passwordIn("geheim\r\n"), u"geheim"_s);
        QCOMPARE(passwordIn("geheim"), u"geheim"_s);
        QCOMPARE(passwordIn(" geheim \n"), u" geheim "_s);
        QCOMPARE(passwordIn("gehe\xc3\xafm\n"), u"gehe\u00efm"_s);
        QCOMPARE(passwordIn("\xef\xbb\xbfgeheim\n"), u"geheim"_s);
        QVERIFY(complaint([] { (void)choosePassword("a\n\n", {}, {}); }).contains(u"more than one line"_s));
        QVERIFY(complaint([] { (void)choosePassword("\xc5\x82", {}, {}); }).contains(u"cannot read"_s));
    }
};

GUILESS_TEST(CliServerChoiceTest)
#include "tst_cli_server_choice.moc"
