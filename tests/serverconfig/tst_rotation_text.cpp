// SPDX-License-Identifier: MIT
#include "serverconfig/rotation_outlook.h"
#include "serverconfig/rotation_problems.h"
#include "serverconfig/rotation_text.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// "TYPE MAP", a star behind a type that is named; odd words in brackets.
QStringList described(const QString &text)
{
    QStringList lines;
    for (const RotationRow &row : rotationRows(text)) {
        const QString played = row.gametype + (row.namesGametype ? u"* "_s : u" "_s) + row.map;
        lines.append(row.isOdd() ? u'[' + row.odd + u']' : played);
    }
    return lines;
}

KnownNames stock()
{
    return {{u"sd"_s, u"tdm"_s, u"dm"_s}, {u"mp_decoy"_s, u"mp_toujane"_s}, false};
}

QStringList problems(const QString &text, const KnownNames &known)
{
    QStringList lines;
    for (const auto &[row, reason] : rotationProblems(rotationRows(text), known))
        lines.append(QString::number(row) + u' ' + reason);
    return lines;
}

const QDateTime evening(QDate(2026, 11, 20), QTime(23, 20)); // a Friday

} // namespace

class RotationTextTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aRotationIsReadAsTheGameReadsIt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("lines");
        const auto row = [](const char *name, const QString &text, const QStringList &lines) {
            QTest::newRow(name) << text << lines;
        };
        row("empty", u" \n "_s, {});
        row("pairs", u"gametype sd map mp_decoy gametype tdm map mp_toujane"_s,
            {u"sd* mp_decoy"_s, u"tdm* mp_toujane"_s});
        row("a game type holds on", u"gametype dm map mp_x gametype tdm map mp_y map mp_z"_s,
            {u"dm* mp_x"_s, u"tdm* mp_y"_s, u"tdm mp_z"_s});
        row("none is named", u"map a map b"_s, {u" a"_s, u" b"_s});
        row("capitals and line breaks", u"GAMETYPE dm\r\nMAP\tmp_x\n"_s, {u"dm* mp_x"_s});
        row("odd words", u"foo map a bar baz"_s, {u"[foo]"_s, u" a"_s, u"[bar baz]"_s});
        row("a keyword takes whatever is next", u"map gametype dm map x"_s, {u" gametype"_s, u"[dm]"_s, u" x"_s});
        row("a game type without a map", u"gametype dm gametype tdm map x"_s, {u"[gametype dm]"_s, u"tdm* x"_s});
        row("odd words between all that", u"foo gametype sd gametype hq bar map a"_s,
            {u"[foo bar]"_s, u"[gametype sd]"_s, u"hq* a"_s});
        row("nothing behind a keyword", u"map a MAP"_s, {u" a"_s, u"[map]"_s});
        row("nothing at all behind a game type", u"map a gametype dm map"_s, {u" a"_s, u"[gametype dm]"_s, u"[map]"_s});
    }

    void aRotationIsReadAsTheGameReadsIt()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, lines);
        QCOMPARE(described(text), lines);
        const QList<RotationRow> rows = rotationRows(text);
        QCOMPARE(rotationRows(rotationText(rows)), rows);
    }

    void whatIsWrittenHasTheSameWords()
    {
        const QString text = u"gametype dm map mp_x map mp_y odd gametype dm map mp_z gametype"_s;
        QCOMPARE(rotationText(rotationRows(text)), text);
    }

    void aMapThatIsMovedTakesItsGameTypeAlong()
    {
        QList<RotationRow> rows = rotationRows(u"gametype dm map mp_x gametype tdm map mp_y map mp_z"_s);
        rows.move(2, 0);
        QCOMPARE(rotationText(rows), u"gametype tdm map mp_z gametype dm map mp_x gametype tdm map mp_y"_s);
        rows.removeFirst();
        rows.removeFirst();
        QCOMPARE(rotationText(rows), u"gametype tdm map mp_y"_s);
    }

    void theCommandAndTheConfigLineHaveItInQuotes()
    {
        QCOMPARE(rotationCommand(u"map a"_s), u"sv_maprotationcurrent \"map a\""_s);
        QCOMPARE(rotationConfigLine(u"map a"_s), u"set sv_maprotation \"map a\""_s);
    }

    void aFileHasARotation_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("rotation");
        QTest::newRow("a config") << u"// set sv_maprotation \"map no\"\nset g_speed 190\r\n"
                                     "  SETA  sv_mapRotation   \"gametype dm map a\" // mine\r\nset sv_pure 1\n"_s
                                  << u"gametype dm map a"_s;
        QTest::newRow("the last one holds")
            << u"set sv_maprotation \"map a\"\nsv_maprotation \"map b\"\n"_s << u"map b"_s;
        QTest::newRow("an open quote") << u"set sv_maprotation \"map a\nset x 1\n"_s << u"map a"_s;
        QTest::newRow("several commands in a line")
            << u"a; set sv_maprotation \"map a; map b\";set g_speed 190\n"_s << u"map a; map b"_s;
        QTest::newRow("without quotation marks")
            << u"set sv_maprotation gametype dm map a; b // mine\n"_s << u"gametype dm map a"_s;
        QTest::newRow("a name in quotation marks")
            << u"set \"sv_mapRotation\" \"gametype dm map a\"\n"_s << u"gametype dm map a"_s;
        QTest::newRow("in another value") << u"set x \"1; set sv_maprotation map-a\"\n"_s << QString();
        QTest::newRow("in a comment") << u"// no; set sv_maprotation \"map a\"\n"_s << QString();
        QTest::newRow("another variable") << u"set sv_maprotationcurrent \"map a\"\n"_s << QString();
        QTest::newRow("bare") << u"\ngametype dm\nmap a\nmap b\n"_s << u"gametype dm map a map b"_s;
        QTest::newRow("a letter") << u"Dear map maker, see the map below"_s << QString();
        QTest::newRow("no map") << u"gametype dm"_s << QString();
        QTest::newRow("empty") << QString() << QString();
    }

    void aFileHasARotation()
    {
        QFETCH(QString, file);
        QFETCH(QString, rotation);
        QCOMPARE(rotationInFile(file), rotation);
    }

    void eachLineThatTheGameWouldNotUnderstandHasItsReason_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("reasons");
        const auto row = [](const QString &text, const QStringList &reasons) {
            QTest::newRow(qPrintable(text)) << text << reasons;
        };
        row(u"gametype SD map MP_decoy map mp_toujane"_s, {});
        row(u"gametype re map mp_decoy map mp_toujane"_s,
            {u"0 unknown game type re: the game has none of this name, only a mod could"_s,
             u"1 unknown game type re: the game has none of this name, only a mod could"_s});
        row(u"map mp_x"_s,
            {u"0 unknown map mp_x: the game has none of this name, and the server's list has not been read"_s});
        row(u"map mp_decoy foo bar"_s,
            {u"1 \"foo bar\": odd words, neither \"gametype\" nor \"map\" stands before them"_s});
        row(u"map mp_decoy gametype sd"_s, {u"1 \"gametype sd\" is followed by no map"_s});
        row(u"map mp_decoy map"_s, {u"1 \"map\" is followed by nothing"_s});
        row(u"map mp_\u0416"_s,
            {u"0 unknown map mp_\u0416: the game has none of this name, and the server's list has not been read"_s,
             u"0 mp_\u0416: has letters that cannot be sent"_s});
        row(u"map mp_decoy \"x\""_s, {u"1 \"\"x\"\": odd words, neither \"gametype\" nor \"map\" stands before them"_s,
                                      u"1 \"x\": a quotation mark ends the rotation"_s});
    }

    void eachLineThatTheGameWouldNotUnderstandHasItsReason()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, reasons);
        QCOMPARE(problems(text, stock()), reasons);
    }

    void theServersListDecidesWhichMapsThereAre()
    {
        KnownNames known = stock();
        known.maps = {u"mp_harbor"_s, u"mp_decoy"_s};
        known.areServersMaps = true;
        QCOMPARE(problems(u"map mp_harbor map mp_decoy map mp_toujane"_s, known),
                 QStringList{u"2 unknown map mp_toujane: the server's list does not have it"_s});
    }

    void theLengthIsThatOfTheWholeRequest()
    {
        // rcon pw sv_maprotationcurrent "map a"
        QCOMPARE(rotationSize(u"map a"_s, u"pw"_s), 5 + 2 + 1 + 22 + 1 + 5 + 1);
        QCOMPARE(rotationSize(u"map \u00e4"_s, u"p\u00e4"_s), 5 + 2 + 1 + 22 + 1 + 5 + 1);
    }

    void theFirstLineThatIsNotReadIsKnown()
    {
        // Around the lines of 6 characters with the blank before them: 5 + 2 + 1 + 22 + 1 + 1.
        QList<RotationRow> rows(166, {.gametype = {}, .map = u"a"_s, .odd = {}}); // 32 + 166 * 6 - 1 = 1,027
        QCOMPARE(rotationSize(rotationText(rows), u"pw"_s), 1027);
        QCOMPARE(firstUnreadRow(rows, u"pw"_s), 165);
        rows.removeLast();
        QCOMPARE(rotationSize(rotationText(rows), u"pw"_s), 1021);
        QCOMPARE(firstUnreadRow(rows, u"pw"_s), -1);
        QCOMPARE(firstUnreadRow(rows, u"pass"_s), -1);
        QCOMPARE(firstUnreadRow(rows, u"passw"_s), 164); // 1,024: the quotation mark behind it is cut
        QCOMPARE(firstUnreadRow(rows, QString(2000, u'p')), 0);
    }

    void timeLimitsAreReadFromAListing()
    {
        const TimeLimits limits = timeLimits(u"    A   scr_dm_timelimit \"30\"\n"
                                             "    A   SCR_TDM_timelimit \"2.5\"\n"
                                             "    A   scr_sd_timelimit \"0\"\n"
                                             "    A   scr_hq_timelimit \"soon\"\n"
                                             "    A   scr_ctf_timelimit \"-5\"\n"
                                             "    A   scr_war_timelimit \"9999\"\n"
                                             "    A   ui_dm_timelimit \"7\"\n"
                                             "    A   scr_timelimit \"8\"\n"
                                             "    A   scr_cut_timelimit \"15\n"
                                             "    A   scr_late_timelimit\n\"15\"\n"_s);
        QCOMPARE(limits, (TimeLimits{{u"dm"_s, 30}, {u"tdm"_s, 2.5}, {u"sd"_s, 0}, {u"war"_s, 1440}}));
    }

    void theOutlookSaysWhichMapComesWhen()
    {
        const TimeLimits limits{{u"dm"_s, 30}, {u"tdm"_s, 12.5}, {u"ctf"_s, 1}};
        const QString text = u"gametype DM map mp_x odd gametype tdm map mp_y gametype ctf map mp_z"_s;
        QCOMPARE(rotationOutlook(rotationRows(text), limits, evening),
                 QStringList({u"23:20  DM mp_x (30 minutes)"_s, u"23:50  tdm mp_y (12.5 minutes)"_s,
                              u"Sat 00:02  ctf mp_z (1 minute)"_s, u"Sat 00:03  the rotation is over"_s}));
        QCOMPARE(rotationOutlook({}, limits, evening), QStringList());
    }

    void withoutALimitNoTimesAreKnownAnyMore()
    {
        const TimeLimits limits{{u"dm"_s, 30}, {u"sd"_s, 0}};
        const QString text = u"map a gametype dm map mp_x"_s;
        QCOMPARE(rotationOutlook(rotationRows(text), limits, evening),
                 QStringList({u"23:20  a (time limit not read)"_s, u"then  dm mp_x (30 minutes)"_s,
                              u"then  the rotation is over"_s}));
        const QString scored = u"gametype dm map mp_x gametype sd map mp_y map mp_z"_s;
        QCOMPARE(rotationOutlook(rotationRows(scored), limits, evening),
                 QStringList({u"23:20  dm mp_x (30 minutes)"_s, u"23:50  sd mp_y (no time limit: over by score)"_s,
                              u"then  sd mp_z (no time limit: over by score)"_s, u"then  the rotation is over"_s}));
    }
};

GUILESS_TEST(RotationTextTest)
#include "tst_rotation_text.moc"
