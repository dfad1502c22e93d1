// SPDX-License-Identifier: MIT
#include "settings/saved_servers.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const auto twoServers = "[servers]\r\nserver1=10.0.0.1\r\nserver2=cod.example.org\r\n"
                        "[ports]\r\nport1=28960\r\nport2=28961\r\n"
                        "[rcon]\r\nrcon1=secret\r\nrcon2=other\r\n"_ba;

const QList<SavedServer> theTwo{{u"10.0.0.1"_s, u"28960"_s, u"secret"_s},
                                {u"cod.example.org"_s, u"28961"_s, u"other"_s}};

IniText written(IniText text, const QList<IniEntry> &entries)
{
    for (const IniEntry &entry : entries)
        text.set(entry);
    return text;
}

} // namespace

class SavedServersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aListEndsAtTheFirstMissingServer();
    void anEmptyServerEndsTheListAndIsNotCounted();
    void aServerOfBlanksEndsTheListAndIsCounted();
    void anEmptyFileHasNoServers();
    void aServerMayLackPortAndPassword();
    void longTextsAreReadUpTo199Characters();
    void rowsAreWrittenWithTheirPasswords();
    void keysAboveTheListAreEmptied();
    void aShorterListReadsBackShorter();
    void aRemovedServerLeavesItsPasswordToTheNext();
    void aRowWithoutAPasswordIsWrittenWithAnEmptyOne();
    void aThousandServersComeBack();
    void aRowIsSplitAtItsFirstColon_data();
    void aRowIsSplitAtItsFirstColon();
    void aRowIsFoundByAnyPartOfIt_data();
    void aRowIsFoundByAnyPartOfIt();
    void aComboBoxRemembersTheFirstTextOnly();
};

void SavedServersTest::aListEndsAtTheFirstMissingServer()
{
    const SavedServers saved = readSavedServers(written(IniText(twoServers), {{u"servers"_s, u"server4"_s, u"x"_s}}));
    QCOMPARE(saved.servers, theTwo);
    QCOMPARE(saved.servercount, 2);
}

void SavedServersTest::anEmptyServerEndsTheListAndIsNotCounted()
{
    const SavedServers saved = readSavedServers(written(IniText(twoServers), {{u"servers"_s, u"server2"_s, u""_s}}));
    QCOMPARE(saved.servers, theTwo.first(1));
    QCOMPARE(saved.servercount, 1);
}

void SavedServersTest::aServerOfBlanksEndsTheListAndIsCounted()
{
    const SavedServers saved = readSavedServers(IniText(QByteArray(twoServers).replace("cod.example.org", "   ")));
    QCOMPARE(saved.servers, theTwo.first(1));
    QCOMPARE(saved.servercount, 2);
}

void SavedServersTest::anEmptyFileHasNoServers()
{
    const SavedServers saved = readSavedServers(IniText());
    QVERIFY(saved.servers.isEmpty());
    QCOMPARE(saved.servercount, 0);
}

void SavedServersTest::aServerMayLackPortAndPassword()
{
    const SavedServers saved = readSavedServers(IniText("[servers]\r\nserver1=a\r\n"_ba));
    QCOMPARE(saved.servers, QList<SavedServer>({{u"a"_s, u""_s, u""_s}}));
    QCOMPARE(saved.servercount, 1);
}

void SavedServersTest::longTextsAreReadUpTo199Characters()
{
    const QByteArray tooLong(250, 'x');
    const QString cut(199, u'x');
    const SavedServers saved = readSavedServers(IniText(
        "[servers]\r\nserver1=" + tooLong + "\r\n[ports]\r\nport1=" + tooLong + "\r\n[rcon]\r\nrcon1=" + tooLong));
    QCOMPARE(saved.servers, QList<SavedServer>({{cut, cut, cut}}));
}

void SavedServersTest::rowsAreWrittenWithTheirPasswords()
{
    const QStringList rows{u"10.0.0.1:28960"_s, u"cod.example.org:28961"_s};
    const QList<IniEntry> entries = savedServerEntries(rows, {u"secret"_s, u"other"_s}, 2);
    QCOMPARE(written(IniText(), entries).bytes(),
             QByteArray("[servers]\r\nserver1=10.0.0.1\r\nserver2=cod.example.org\r\n"
                        "[ports]\r\nport1=28960\r\nport2=28961\r\n"
                        "[rcon]\r\nrcon1=secret\r\nrcon2=other\r\n"));
}

void SavedServersTest::keysAboveTheListAreEmptied()
{
    const QList<IniEntry> expected{
        {u"servers"_s, u"server1"_s, u"a"_s}, {u"ports"_s, u"port1"_s, u"1"_s}, {u"rcon"_s, u"rcon1"_s, u"x"_s},
        {u"servers"_s, u"server2"_s, u""_s},  {u"ports"_s, u"port2"_s, u""_s},  {u"rcon"_s, u"rcon2"_s, u""_s},
        {u"servers"_s, u"server3"_s, u""_s},  {u"ports"_s, u"port3"_s, u""_s},  {u"rcon"_s, u"rcon3"_s, u""_s}};
    QCOMPARE(savedServerEntries({u"a:1"_s}, {u"x"_s}, 3), expected);
    QCOMPARE(savedServerEntries({u"a:1"_s}, {u"x"_s}, 1), expected.first(3));
    QCOMPARE(savedServerEntries({u"a:1"_s}, {u"x"_s}, 0), expected.first(3));
    QVERIFY(savedServerEntries({}, {}, 0).isEmpty());
}

void SavedServersTest::aShorterListReadsBackShorter()
{
    const IniText text = written(IniText(twoServers), savedServerEntries({u"10.0.0.1:28960"_s}, {u"secret"_s}, 2));
    const SavedServers saved = readSavedServers(text);
    QCOMPARE(saved.servers, theTwo.first(1));
    QCOMPARE(saved.servercount, 1);
    QVERIFY(text.bytes().contains("\r\nserver2=\r\n"));
    QVERIFY(!text.bytes().contains("other"));
}

void SavedServersTest::aRemovedServerLeavesItsPasswordToTheNext()
{
    const IniText text = written(IniText(), savedServerEntries({u"A:1"_s, u"C:3"_s}, {u"a"_s, u"b"_s, u"c"_s}, 3));
    QCOMPARE(readSavedServers(text).servers, QList<SavedServer>({{u"A"_s, u"1"_s, u"a"_s}, {u"C"_s, u"3"_s, u"b"_s}}));
    QVERIFY(text.bytes().contains("\r\nrcon3=\r\n"));
}

void SavedServersTest::aRowWithoutAPasswordIsWrittenWithAnEmptyOne()
{
    QCOMPARE(savedServerEntries({u"a:1"_s}, {}, 0).at(2), IniEntry({u"rcon"_s, u"rcon1"_s, u""_s}));
}

void SavedServersTest::aThousandServersComeBack()
{
    QStringList rows;
    QStringList passwords;
    QList<SavedServer> expected;
    for (int number = 1; number <= 1000; ++number) {
        expected.append({u"10.0.0.%1"_s.arg(number), u"%1"_s.arg(20'000 + number), u"password %1"_s.arg(number)});
        rows += savedServerRow(expected.last().server, expected.last().port);
        passwords += expected.last().password;
    }
    const IniText text = written(IniText(), savedServerEntries(rows, passwords, 0));
    const SavedServers saved = readSavedServers(IniText(text.bytes()));
    QCOMPARE(saved.servers, expected);
    QCOMPARE(saved.servercount, 1000);
}

void SavedServersTest::aRowIsSplitAtItsFirstColon_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("port");
    QTest::newRow("plain") << u"10.0.0.1:28960"_s << u"10.0.0.1"_s << u"28960"_s;
    QTest::newRow("two colons") << u"a:b:28960"_s << u"a"_s << u"b:28960"_s;
    QTest::newRow("no port") << u"a:"_s << u"a"_s << u""_s;
    QTest::newRow("no server") << u":28960"_s << u""_s << u"28960"_s;
    QTest::newRow("blanks") << u" a : 28960 "_s << u" a "_s << u" 28960 "_s;
    QTest::newRow("no colon") << u"a"_s << u"a"_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s << u""_s;
}

void SavedServersTest::aRowIsSplitAtItsFirstColon()
{
    QFETCH(const QString, row);
    const auto [server, port] = splitServerRow(row);
    QTEST(server, "server");
    QTEST(port, "port");
}

void SavedServersTest::aRowIsFoundByAnyPartOfIt_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<qsizetype>("index");
    QTest::newRow("part of an address") << u"10.0.0.1"_s << qsizetype{0};
    QTest::newRow("whole row") << u"10.0.0.12:28960"_s << qsizetype{0};
    QTest::newRow("listed with another port") << u"cod.example.org"_s << qsizetype{1};
    QTest::newRow("other case") << u"COD.Example.ORG:28961"_s << qsizetype{1};
    QTest::newRow("first of two") << u"28961"_s << qsizetype{1};
    QTest::newRow("last") << u"backup"_s << qsizetype{2};
    QTest::newRow("row with more before the port") << u"10.0.0.1:28960"_s << qsizetype{-1};
    QTest::newRow("unknown") << u"192.168.0.1"_s << qsizetype{-1};
}

void SavedServersTest::aRowIsFoundByAnyPartOfIt()
{
    QFETCH(const QString, part);
    const QStringList rows{u"10.0.0.12:28960"_s, u"cod.example.org:28961"_s, u"backup.example.org:28961"_s};
    QTEST(findServerRow(rows, part), "index");
    QCOMPARE(findServerRow({}, part), -1);
}

void SavedServersTest::aComboBoxRemembersTheFirstTextOnly()
{
    QVERIFY(comboRemembers({}, u"10.0.0.1"_s));
    QVERIFY(!comboRemembers({}, u""_s));
    QVERIFY(!comboRemembers({u"10.0.0.1"_s}, u"10.0.0.2"_s));
    QVERIFY(!comboRemembers({u"10.0.0.1"_s}, u"10.0.0.1"_s));
    QVERIFY(!comboRemembers({u"10.0.0.1"_s, u"10.0.0.2"_s}, u"10.0.0.3"_s));
}

GUILESS_TEST(SavedServersTest)
#include "tst_saved_servers.moc"
