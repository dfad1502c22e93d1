// SPDX-License-Identifier: MIT
#include "book/ban_lines.h"
#include "book/book_export.h"
#include "book/book_text.h"
#include "test_class.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QStringList shown(const BanLines &lines)
{
    QStringList all;
    for (const BookBan &ban : lines.bans)
        all.append(ban.guid + u'|' + ban.name);
    return all;
}

BookBan ban(const QString &guid, const QString &name, BookBan::State state = BookBan::InForce)
{
    BookBan ban;
    ban.guid = guid;
    ban.name = name;
    ban.state = state;
    return ban;
}

} // namespace

class BanLinesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void linesAreRead_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("bans");
        QTest::addColumn<int>("unreadable");
        const auto row = [](const char *what, const QByteArray &file, const QStringList &bans, int unreadable) {
            QTest::newRow(what) << file << bans << unreadable;
        };
        row("empty", "", {}, 0);
        row("one", "123 Bob\n", {u"123|Bob"_s}, 0);
        row("without an end", "123 Bob", {u"123|Bob"_s}, 0);
        row("as Windows ends lines", "123 Bob\r\n45 Al\r\n", {u"123|Bob"_s, u"45|Al"_s}, 0);
        row("empty lines", "\n\r\n  \n123 Bob\n\n", {u"123|Bob"_s}, 0);
        row("a name of several words", "123 Bob the  Builder \n", {u"123|Bob the  Builder"_s}, 0);
        row("no name", "123 \n", {u"123|"_s}, 0);
        row("negative", "-123 Bob\n", {u"-123|Bob"_s}, 0);
        row("the game's character set", "123 \xC4rger\n", {u"123|Ärger"_s}, 0);
        row("quotes and colour codes stay", "123 ^1\"Bob\"'\n", {u"123|^1\"Bob\"'"_s}, 0);
        row("a byte order mark",
            "\xEF\xBB\xBF"
            "123 Bob\n45 Al\n",
            {u"123|Bob"_s, u"45|Al"_s}, 0);
        row("no blank", "123\nBob\n", {}, 2);
        row("a blank in front", " 123 Bob\n", {}, 1);
        row("a tab", "123\tBob\n", {}, 1);
        row("no number", "12a Bob\n+12 Bob\n- Bob\n", {}, 3);
        row("of many", "0 Bob\n000 Bob\n-0 Bob\n", {}, 3);
        row("too large a number", "123456789012345678901 Bob\n", {}, 1);
        row("NUL", QByteArray("123 B\0b\n", 8), {}, 1);
        row("control characters",
            "123 B\x01"
            "b\n124 B\x7F"
            "b\n125 B\x1B[31m\n",
            {}, 3);
        row("ten megabytes", "123 " + QByteArray(10'000'000, 'x') + "\n5 Al\n", {u"5|Al"_s}, 1);
        row("ten megabytes without a line's end", QByteArray(10'000'000, '1'), {}, 1);
    }
    void linesAreRead()
    {
        QFETCH(const QByteArray, file);
        QFETCH(const QStringList, bans);
        QFETCH(const int, unreadable);
        const BanLines lines = readBanLines(file);
        QCOMPARE(shown(lines), bans);
        QCOMPARE(lines.unreadable, unreadable);
    }

    void whatIsInForceIsWritten()
    {
        QCOMPARE(banLines({ban(u"1"_s, u"^1Bob"_s), ban(u"1"_s, u"BOB"_s), ban(u"2"_s, u"Al\nice\r"_s),
                           ban(u"3"_s, u"Tim"_s, BookBan::Temporary), ban(u"4"_s, u"Ref"_s, BookBan::Refused),
                           ban(u"5"_s, u"Lif"_s, BookBan::Lifted), ban(u"6"_s, u"Ärger"_s, BookBan::Imported),
                           ban(u"0"_s, u"Many"_s), ban({}, u"Damaged"_s)}),
                 "1 Bob\n2 Alice\n6 \xC4rger\n"_ba);
    }

    // Who is called "^^11Bob" is "^1Bob" in a server's file.
    void aColourCodeWithinAnotherIsPartOfTheCleanName()
    {
        const BookBan made = ban(u"1"_s, u"^^11Bob"_s);
        const BanLines read = readBanLines(banLines({made}));
        QCOMPARE(shown(read), QStringList{u"1|^1Bob"_s});
        QCOMPARE(keyOfBan(read.bans.first()), keyOfBan(made));
        QCOMPARE(banLines(read.bans), "1 ^1Bob\n"_ba);
        QCOMPARE(bansLiftedWith({made}, {}, u"^1BOB"_s).size(), 1);
        QCOMPARE(bansLiftedWith(read.bans, {}, u"^1Bob"_s).size(), 1);
        QCOMPARE(bansLiftedWith({made}, {}, u"Bob"_s).size(), 0);
        QCOMPARE(bansLiftedWith(read.bans, {}, u"Bob"_s).size(), 0);
    }

    void portsAreLeftOut_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("without");
        QTest::newRow("port") << u"10.0.0.1:28960"_s << u"10.0.0.1"_s;
        QTest::newRow("negative") << u"10.0.0.1:-2896"_s << u"10.0.0.1"_s;
        QTest::newRow("none") << u"10.0.0.1"_s << u"10.0.0.1"_s;
        QTest::newRow("cut") << u" 10.0.0.1: "_s << u"10.0.0.1"_s;
        QTest::newRow("bot") << u"bot"_s << u"bot"_s;
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("IPv6 with port") << u"[2001:db8::1]:28960"_s << u"2001:db8::1"_s;
        QTest::newRow("IPv6") << u"2001:db8::1"_s << u"2001:db8::1"_s;
    }
    void portsAreLeftOut()
    {
        QFETCH(const QString, address);
        QTEST(withoutPort(address), "without");
    }

    void aPageIsWrittenAsJson()
    {
        BookPage page;
        page.player.name = u"^1\"Bob\""_s;
        page.player.guid = u"1001"_s;
        page.player.firstSeen = 0;
        page.player.visits = 2;
        page.names.append({u"^1\"Bob\""_s, 0, 86'400, 2});
        BookNote note;
        note.time = 60;
        note.text = u"line\nline"_s;
        page.notes.append(note);
        BookAction action;
        action.kind = BookAction::TempBan;
        action.reason = u"Ärger"_s;
        page.actions.append(action);
        action.state = BookBan::Lifted;
        action.isImported = true;
        page.actions.append(action);
        action.kind = BookAction::Kick;
        page.actions.append(action);
        page.sightings.append({30, u"10.1.1.1:28960"_s, 999, 7});
        page.sightings.append({60, u"10.1.1.1:28960"_s, -1, 0});
        const QJsonObject read = QJsonDocument::fromJson(pageJson(page)).object();
        QCOMPARE(read.value("name"_L1), u"^1\"Bob\""_s);
        QCOMPARE(read.value("guid"_L1), u"1001"_s);
        QCOMPARE(read.value("firstSeen"_L1), u"1970-01-01T00:00:00Z"_s);
        QCOMPARE(read.value("times"_L1), 2);
        QCOMPARE(read.value("names"_L1)[0]["lastSeen"_L1], u"1970-01-02T00:00:00Z"_s);
        QCOMPARE(read.value("notes"_L1)[0]["text"_L1], u"line\nline"_s);
        QCOMPARE(read.value("actions"_L1)[0]["action"_L1], u"temporary ban"_s);
        QCOMPARE(read.value("actions"_L1)[0]["reason"_L1], u"Ärger"_s);
        QCOMPARE(read.value("actions"_L1)[0]["state"_L1], u"in force"_s);
        QCOMPARE(read.value("actions"_L1)[0]["imported"_L1], false);
        QCOMPARE(read.value("actions"_L1)[1]["state"_L1], u"lifted"_s);
        QCOMPARE(read.value("actions"_L1)[1]["imported"_L1], true);
        QVERIFY2(read.value("actions"_L1)[2]["state"_L1].isUndefined(), "a kick has none");
        QCOMPARE(read.value("sightings"_L1)[0]["ping"_L1], 999);
        QCOMPARE(read.value("sightings"_L1)[0]["score"_L1], 7);
        QCOMPARE(read.value("sightings"_L1)[0]["time"_L1], u"1970-01-01T00:00:30Z"_s);
        QCOMPARE(read.value("sightings"_L1)[0]["server"_L1], u"10.1.1.1:28960"_s);
        QVERIFY(read.value("sightings"_L1)[1]["ping"_L1].isUndefined());
        QVERIFY(read.value("keptByName"_L1).isUndefined());
        QCOMPARE(read.value("addresses"_L1).toArray().size(), 0);
    }
};

GUILESS_TEST(BanLinesTest)
#include "tst_ban_lines.moc"
