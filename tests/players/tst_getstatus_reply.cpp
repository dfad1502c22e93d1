// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fault_of.h"
#include "players/getstatus_reply.h"
#include "practice/players.h"
#include "practice/status_table.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString head = u"statusResponse\n\\mapname\\mp_villa\\sv_hostname\\My Server\n"_s;

/// Every player up to the last whole line, each as "score|ping|name".
QStringList playersIn(const QString &text)
{
    GetstatusReply reply(text);
    QStringList rows;
    while (const std::optional<GetstatusRow> row = reply.next())
        rows.append(row->score + u'|' + row->ping + u'|' + row->name);
    return rows;
}

/// The same as it must be read, taken from the players themselves.
QStringList expectedOf(const QList<Player> &players)
{
    QStringList rows;
    for (const Player &player : players) {
        const QStringList words = player.name.section(u'"', 0, 0).split(u' ', Qt::SkipEmptyParts);
        if (player.state != Player::State::Leaving)
            rows.append(u"%1|%2|"_s.arg(player.score).arg(player.ping) + words.join(u' '));
    }
    return rows;
}

/// The answer of a practice game with many odd players, as it arrives.
QString answerOf(const QList<Player> &players)
{
    Dvars dvars;
    dvars.add({u"sv_hostname"_s, u"SA"_s, u"My \"Server\""_s, {}});
    return squeezeBlanks(fromAnsi(toAnsi(statusResponseText(dvars, players))));
}

} // namespace

class GetstatusReplyTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aLineIsCutIntoItsFields_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("row");
        const auto row = [](const char *title, const QString &line, const QString &read) {
            QTest::newRow(title) << line << read;
        };
        row("ordinary", u"12 55 \"BandAid\""_s, u"12|55|BandAid"_s);
        row("a negative score", u"-3 55 \"BandAid\""_s, u"-3|55|BandAid"_s);
        row("ping 999", u"0 999 \"BandAid\""_s, u"0|999|BandAid"_s);
        row("blanks in the name", u"0 55 \"the quick brown\""_s, u"0|55|the quick brown"_s);
        row("blanks at the ends of the name", u"0 55 \" Bob \""_s, u"0|55|Bob"_s);
        row("tabs at the ends of the name", u"0 55 \"\tBob\t\""_s, u"0|55|\tBob\t"_s);
        row("colour codes", u"0 55 \"^1Big ^7Bob\""_s, u"0|55|^1Big ^7Bob"_s);
        row("an empty name", u"0 55 \"\""_s, u"0|55|"_s);
        row("a blank for a name", u"0 55 \" \""_s, u"0|55|"_s);
        row("a quote ends the name", u"0 55 \"Big \"Bob\"\""_s, u"0|55|Big"_s);
        row("a quote in front", u"0 55 \"\"quoted\"\""_s, u"0|55|"_s);
        row("a quote alone", u"0 55 \"\"\""_s, u"0|55|"_s);
        row("a line within the name", u"0 55 \"5 999 \"fake\"\""_s, u"0|55|5 999"_s);
        row("a number", u"0 55 \"100\""_s, u"0|55|100"_s);
        row("backslashes", u"0 55 \"\\mapname\\mp_fake\\\""_s, u"0|55|\\mapname\\mp_fake\\"_s);
    }

    void aLineIsCutIntoItsFields()
    {
        QFETCH(QString, line);
        QFETCH(QString, row);
        const GetstatusReply reply(head + line + u'\n');
        QVERIFY(!reply.isEmpty());
        QCOMPARE(playersIn(head + line + u'\n'), QStringList{row});
        QCOMPARE(playersIn(head + u"7 8 \"Ann\"\n"_s + line + u"\n9 10 \"Eve\"\n"_s),
                 QStringList({u"7|8|Ann"_s, row, u"9|10|Eve"_s}));
    }

    void anEmptyServerHasTwoLines()
    {
        QVERIFY(GetstatusReply(head).isEmpty());
        QCOMPARE(playersIn(head), QStringList());
        QVERIFY(GetstatusReply(u"\n\n"_s).isEmpty());
    }

    void lessThanTwoLinesIsNoEmptyServer_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << QString();
        QTest::newRow("one line without its end") << u"statusResponse"_s;
        QTest::newRow("one line") << u"statusResponse\n"_s;
        QTest::newRow("two lines without the end") << head.chopped(1);
    }

    void lessThanTwoLinesIsNoEmptyServer()
    {
        QFETCH(QString, text);
        QVERIFY(!GetstatusReply(text).isEmpty());
        QCOMPARE(playersIn(text), QStringList());
    }

    void aFullServerIsReadLineByLine()
    {
        for (const quint32 seed : {1U, 2U, 3U, 4U}) {
            const QList<Player> players = Players(64, seed, true).all();
            QCOMPARE(playersIn(answerOf(players)), expectedOf(players));
        }
    }

    void aReplyThatIsCutEndsAtItsLastWholeLine()
    {
        const QList<Player> players = Players(64, 1, true).all();
        const QString whole = answerOf(players);
        const QStringList expected = expectedOf(players);
        QVERIFY(expected.size() > 40);
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const QString part = whole.first(length);
            const qsizetype lines = qMax<qsizetype>(part.count(u'\n') - 2, 0);
            QCOMPARE(playersIn(part), expected.first(lines));
        }
    }

    void behindTheLastLineNothingFollows()
    {
        GetstatusReply reply(head + u"7 8 \"Ann\"\n9 10 \"Eve"_s);
        QCOMPARE(reply.next(), (GetstatusRow{u"7"_s, u"8"_s, u"Ann"_s}));
        QCOMPARE(reply.next(), std::nullopt);
        QCOMPARE(reply.next(), std::nullopt);
    }

    void everyByteOfANameIsKept()
    {
        for (int code = 0; code < 0x100; ++code) {
            const QString character = fromAnsi(QByteArray(1, static_cast<char>(code)));
            if (character == u'\n' || character == u'"')
                continue;
            QCOMPARE(playersIn(head + u"0 55 \"a"_s + character + u"z\"\n"_s),
                     QStringList{u"0|55|a"_s + character + u'z'});
        }
    }

    // The quote that opens the name is taken to be there.
    void aNameThatIsCutOffOverflowsWhereItWouldHaveBegun()
    {
        const QString line = u"0 55 "_s;
        for (const qsizetype nameAt : {32'767, 32'768}) {
            const QString information(nameAt - 9, u'x'); // two line feeds and six characters stand between
            GetstatusReply reply(u"\n"_s + information + u'\n' + line);
            std::optional<GetstatusRow> row;
            QCOMPARE(faultOf([&] { row = reply.next(); }), nameAt > 32'767 ? 6 : 0);
            QVERIFY(!row);
        }
    }

    void aNameThatBeginsBeyondPosition32767Overflows()
    {
        const QString line = u"0 55 \"Bob\"\n"_s; // the name is its seventh character
        for (const qsizetype nameAt : {32'766, 32'767, 32'768, 40'000}) {
            const QString information(nameAt - 9, u'x'); // two line feeds and six characters stand between
            GetstatusReply reply(u"\n"_s + information + u'\n' + line);
            QCOMPARE(information.size() + 2 + line.indexOf(u'B') + 1, nameAt);
            std::optional<GetstatusRow> row;
            QCOMPARE(faultOf([&] { row = reply.next(); }), nameAt > 32'767 ? 6 : 0);
            QCOMPARE(row.has_value(), nameAt <= 32'767);
        }
    }
};

GUILESS_TEST(GetstatusReplyTest)
#include "tst_getstatus_reply.moc"
