// SPDX-License-Identifier: MIT
#include "practice/datagrams.h"
#include "settings_tab.h"

#include <QRadioButton>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

struct Field {
    QString control;
    QString variable; ///< as the game spells it
    QString value;    ///< another one than the stock value
    QByteArray command;
};

// The stock server has the kill cam, the team icons, the enemy's view, voting and free look on, and team balance off.
const QList<Field> fields{
    {u"txtservername"_s, u"sv_hostname"_s, u"Our ^2snow ^7server"_s, "sv_hostname\"Our ^2snow ^7server\""},
    {u"txtservermotd"_s, u"scr_motd"_s, u"Mind the snipers; have fun!"_s, "scr_motd\"Mind the snipers; have fun!\""},
    {u"txtmaxclients"_s, u"sv_maxclients"_s, u"30"_s, "sv_maxclients 30"},
    {u"txtmaxping"_s, u"sv_maxPing"_s, u"250"_s, "sv_maxping 250"},
    {u"txtmaxrate"_s, u"sv_maxRate"_s, u"9000"_s, "sv_maxrate 9000"},
    {u"txtbantime"_s, u"sv_kickBanTime"_s, u"90"_s, "sv_kickbantime 90"},
    {u"chkkillcam"_s, u"scr_killcam"_s, u"0"_s, "scr_killcam 0"},
    {u"chkteamicons"_s, u"scr_drawfriend"_s, u"0"_s, "scr_drawfriend 0"},
    {u"chkteambal"_s, u"scr_teambalance"_s, u"1"_s, "scr_teambalance 1"},
    {u"chkspecenemy"_s, u"scr_spectateenemy"_s, u"0"_s, "scr_spectateenemy 0"},
    {u"chkvoting"_s, u"scr_allow_vote"_s, u"0"_s, "scr_allow_vote 0"},
    {u"chkvoting"_s, u"g_allowVote"_s, u"0"_s, "g_allowvote 0"},
    {u"chkfreelook"_s, u"cl_freelook"_s, u"0"_s, "cl_freelook 0"},
};

BoundControl &control(const SettingsTab &tab, const Field &field)
{
    if (field.control.startsWith(u"chk"))
        return *tab.check(field.control);
    return *tab.text(field.control);
}

void editEverything(const SettingsTab &tab)
{
    for (const Field &field : fields)
        control(tab, field).setValue(field.value);
}

/// What the server has, or will have with the next map.
QString valueOnServer(SettingsTab &tab, const Field &field)
{
    const Dvar *dvar = tab.server.game().dvars().find(field.variable);
    return dvar->latched.value_or(dvar->value);
}

const QByteArray serverGroup = "S A sv_hostname \"O ^2b c\"\nsv_maxclients \"24\"\nsv_kickBanTime \"60\"\n"
                               "sv_maxPing \"250\"\nsv_maxRate \"9000\"\n";
const QByteArray scriptGroup = "scr_motd \"a b c\"\nscr_killcam \"1\"\nscr_drawfriend \"0\"\nscr_friendlyfire \"2\"\n"
                               "scr_teambalance \"1\"\nscr_spectateenemy \"1\"\nscr_allow_vote \"0\"\n";
const QByteArray lookGroup = "  A     cl_freelook \"1\"\n";

/// `text` in pieces that end before the bytes that `isCut` names.
template <typename IsCut>
QList<QByteArray> pieces(const QByteArray &text, const IsCut &isCut)
{
    QList<QByteArray> made{{}};
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (at > 0 && isCut(at))
            made.append(QByteArray());
        made.last() += text.at(at);
    }
    return made;
}

/// Everything that the tab shows, in the order of the groups.
QString shown(const SettingsTab &tab)
{
    QStringList values;
    for (const QString &name : {u"txtservername"_s, u"txtmaxclients"_s, u"txtbantime"_s, u"txtmaxping"_s,
                                u"txtmaxrate"_s, u"txtservermotd"_s})
        values.append(tab.text(name)->text());
    for (const QString &name : {u"chkkillcam"_s, u"chkteamicons"_s})
        values.append(tab.check(name)->value());
    for (int mode = 0; mode < 4; ++mode) {
        if (tab.program.find<QRadioButton>(u"optff_"_s + QString::number(mode))->isChecked())
            values.append(QString::number(mode));
    }
    for (const QString &name : {u"chkteambal"_s, u"chkspecenemy"_s, u"chkvoting"_s, u"chkfreelook"_s})
        values.append(tab.check(name)->value());
    return values.join(u'|');
}

const QString wanted = u"O ^2b c|24|60|250|9000|a b c|1|0|2|1|1|0|1"_s;

/// Shows other values than those of the groups.
void spoil(const SettingsTab &tab)
{
    for (const Field &field : fields)
        control(tab, field).setValue(field.control.startsWith(u"txt") ? u"spoilt"_s : u"0"_s);
    tab.check(u"chkteamicons"_s)->setChecked(true);
    tab.check(u"chkvoting"_s)->setChecked(true);
    tab.program.click(u"optff_0"_s);
}

void answerCut(SettingsTab &tab, const QList<QByteArray> &server, const QList<QByteArray> &scripts,
               const QList<QByteArray> &look)
{
    tab.server.answer("dvarlist sv_*", server);
    tab.server.answer("dvarlist scr_*", scripts);
    tab.server.answer("dvarlist cl_free*", look);
}

} // namespace

class ServerPageRoundTripTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void whatIsSentIsReadAgain()
    {
        SettingsTab tab;
        tab.program.click(u"cmdservpop"_s);
        editEverything(tab);
        for (const Field &field : fields)
            QVERIFY2(control(tab, field).dataChanged(), qPrintable(field.control + u" has its stock value already"_s));
        tab.program.click(u"cmdservsetbasics"_s);
        QCOMPARE(tab.boxes().size(), 1);
        tab.program.trigger(u"commmap_restart"_s); // the number of players changes with the next map
        spoil(tab);
        tab.program.click(u"cmdservpop"_s);
        for (const Field &field : fields) {
            QCOMPARE(tab.server.game().dvars().value(field.variable), field.value);
            QCOMPARE(control(tab, field).value(), field.value);
            QVERIFY(!control(tab, field).dataChanged());
        }
    }

    // Requests and replies get lost: what has not reached the server has been told.
    void overABadLineEachValueArrivesOrTheSilenceIsTold_data()
    {
        QTest::addColumn<int>("loss");
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 2; ++seed)
            QTest::newRow(qPrintable(u"30 %, seed %1"_s.arg(seed))) << 30 << seed;
        QTest::newRow("60 %, seed 1") << 60 << 1U;
    }

    void overABadLineEachValueArrivesOrTheSilenceIsTold()
    {
        QFETCH(int, loss);
        QFETCH(quint32, seed);
        SettingsTab tab(quickServer(seed));
        tab.program.click(u"cmdservpop"_s);
        editEverything(tab);
        tab.server.setLoss(loss);
        QSet<QByteArray> unanswered;
        tab.forget();
        tab.program.prompts.whileOpen = [&] {
            if (!tab.server.commands().isEmpty())
                unanswered.insert(tab.server.commands().constLast());
        };
        tab.program.click(u"cmdservsetbasics"_s);
        tab.program.prompts.whileOpen = nullptr;
        tab.server.setLoss(0);
        const QList<Box> told = tab.boxes();
        QCOMPARE(told.size(), 1 + unanswered.size());
        for (const Box &box : told.sliced(1))
            QCOMPARE(box, noResponseBox());
        QVERIFY2(tab.server.commands().size() > fields.size(), "the line was too good to tell anything");
        for (const Field &field : fields) {
            QVERIFY2(tab.server.commands().contains(field.command), field.command.constData());
            QVERIFY2(valueOnServer(tab, field) == field.value || unanswered.contains(field.command),
                     field.command.constData());
        }
    }

    void aReplyCutAtEveryByteIsReadTheSame()
    {
        SettingsTab tab;
        const auto everywhere = [](qsizetype) { return true; };
        answerCut(tab, pieces(serverGroup, everywhere), pieces(scriptGroup, everywhere), pieces(lookGroup, everywhere));
        spoil(tab);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(shown(tab), wanted);
    }

    // Each populate has a few cuts at one distance, the next populate has them one byte further: no place stays uncut.
    void aReplyCutAnywhereIsReadTheSame()
    {
        SettingsTab tab;
        constexpr qsizetype distance = 11;
        for (qsizetype phase = 0; phase < distance; ++phase) {
            const auto cut = [&](qsizetype at) { return at % distance == phase; };
            answerCut(tab, pieces(serverGroup, cut), pieces(scriptGroup, cut), pieces(lookGroup, cut));
            spoil(tab);
            tab.program.click(u"cmdservpop"_s);
            QVERIFY2(shown(tab) == wanted, qPrintable(QString::number(phase) + u": "_s + shown(tab)));
        }
    }

    // In these values a datagram ends at every single place, and nowhere else in the reply.
    void aReplyCutOnceInAValueIsReadTheSame()
    {
        SettingsTab tab;
        const qsizetype nameEnd = serverGroup.indexOf('\n') + 1;
        const qsizetype motdEnd = scriptGroup.indexOf('\n') + 1;
        for (qsizetype place = 0; place < std::max(nameEnd, motdEnd); ++place) {
            const auto cut = [&](qsizetype at) { return at == place; };
            answerCut(tab, pieces(serverGroup, cut), pieces(scriptGroup, cut), pieces(lookGroup, cut));
            spoil(tab);
            tab.program.click(u"cmdservpop"_s);
            QVERIFY2(shown(tab) == wanted, qPrintable(QString::number(place) + u": "_s + shown(tab)));
        }
    }

    void theWholeListingIsReadInDatagramsOfAnySize()
    {
        SettingsTab tab;
        Dvars &dvars = tab.server.game().dvars();
        for (const auto &[name, value] :
             std::initializer_list<std::pair<QString, QString>>{{u"sv_hostname"_s, u"O ^2b c"_s},
                                                                {u"sv_maxclients"_s, u"24"_s},
                                                                {u"sv_kickBanTime"_s, u"60"_s},
                                                                {u"sv_maxPing"_s, u"250"_s},
                                                                {u"sv_maxRate"_s, u"9000"_s},
                                                                {u"scr_motd"_s, u"a b c"_s},
                                                                {u"scr_drawfriend"_s, u"0"_s},
                                                                {u"scr_teambalance"_s, u"1"_s},
                                                                {u"scr_friendlyfire"_s, u"2"_s},
                                                                {u"scr_allow_vote"_s, u"0"_s}})
            dvars.set(name, value);
        for (const int size : {17, 101, 8000}) {
            tab.server.setDatagramSize(size);
            spoil(tab);
            tab.program.click(u"cmdservpop"_s);
            QVERIFY2(shown(tab) == wanted, qPrintable(QString::number(size) + u": "_s + shown(tab)));
        }
    }
};

WINDOW_TEST(ServerPageRoundTripTest)
#include "tst_server_page_round_trip.moc"
