// SPDX-License-Identifier: MIT
#include "weapons_tab.h"

using namespace Qt::StringLiterals;

namespace {

const Box riflesBox{u"Rifles only?"_s, u"Set weapons to rifles only on server?\rScreen will reflect changes"_s,
                    BoxIcon::Information, BoxButtons::OkCancel};
const Box snipersBox{u"No Snipers"_s, u"Disable snipers on server"_s, BoxIcon::Question, BoxButtons::OkCancel};

const QStringList rifles{u"chknagant"_s, u"chkenfield"_s, u"chkkar98k"_s};
const QStringList scoped{u"chkspringfield"_s, u"chknagantsniper"_s, u"chkkar98ksniper"_s, u"chkenfieldsniper"_s};

QList<QByteArray> riflesOnlyCommands()
{
    QList<QByteArray> commands;
    for (const char *weapon :
         {"m1carbine\"0\"",     "m1garand\"0\"",     "thompson\"0\"", "bar\"0\"",          "springfield\"0\"",
          "greasegun\"0\"",     "ppsh\"0\"",         "nagant\"1\"",   "nagantsniper\"0\"", "enfield\"1\"",
          "enfieldsniper\"0\"", "sten\"0\"",         "bren\"0\"",     "mp40\"0\"",         "mp44\"0\"",
          "kar98k\"1\"",        "kar98ksniper\"0\"", "g43\"0\"",      "shotgun\"0\"",      "pps42\"0\"",
          "svt40\"0\""})
        commands.append(QByteArray("scr_allow_") + weapon);
    return commands;
}

} // namespace

class WeaponPresetsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void riflesOnlySendsAllWhateverTheBoxesShow_data()
    {
        QTest::addColumn<QString>("before"); ///< the button that is pressed first
        QTest::newRow("nothing ticked") << u"cmdwepunselall"_s;
        QTest::newRow("all ticked") << u"cmdwepselall"_s;
        QTest::newRow("as the server has it") << u"cmdpopwep"_s;
        QTest::newRow("twice") << u"cmdriflesonly"_s;
    }

    void riflesOnlySendsAllWhateverTheBoxesShow()
    {
        QFETCH(QString, before);
        WeaponsTab tab;
        tab.program.click(before);
        tab.program.prompts.takeBoxes();
        tab.forget();
        const QString pane = tab.program.pane();
        tab.program.click(u"cmdriflesonly"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{riflesBox});
        QCOMPARE(tab.server.commands(), riflesOnlyCommands());
        QCOMPARE(tab.ticked(), rifles);
        QCOMPARE(tab.lines(), QStringList{u"Server set to rifles only"_s});
        QCOMPARE(tab.program.pane().mid(pane.size()).count(u">>RCON sent ["_s), 21);
        for (const QString &box : readingOrder())
            QCOMPARE(tab.value(box), rifles.contains(box) ? u"1"_s : u"0"_s);
    }

    void afterRiflesOnlyThereIsNothingToSend()
    {
        WeaponsTab tab;
        tab.program.click(u"cmdwepselall"_s);
        tab.program.click(u"cmdriflesonly"_s);
        QCOMPARE(tab.changed(), QStringList());
        tab.forget();
        tab.program.click(u"cmdwepsetserv"_s);
        tab.program.prompts.takeBoxes();
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.lines(), QStringList());
    }

    void riflesOnlyCanBeCancelled()
    {
        WeaponsTab tab;
        tab.populate();
        tab.forget();
        tab.program.prompts.answers = {Answer::Cancel};
        tab.program.click(u"cmdriflesonly"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{riflesBox});
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.ticked(), readingOrder());
        QCOMPARE(tab.changed(), QStringList());
        QCOMPARE(tab.lines(), QStringList());
    }

    void noSnipersSendsTheFourInItsOrder()
    {
        WeaponsTab tab;
        tab.populate();
        tab.forget();
        tab.program.click(u"cmdnosnipers"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{snipersBox});
        QCOMPARE(tab.server.commands(),
                 (QList<QByteArray>{"scr_allow_springfield\"0\"", "scr_allow_nagantsniper\"0\"",
                                    "scr_allow_kar98ksniper\"0\"", "scr_allow_enfieldsniper\"0\""}));
        QStringList others = readingOrder();
        others.removeIf([](const QString &box) { return scoped.contains(box); });
        QCOMPARE(tab.ticked(), others);
        QCOMPARE(tab.changed(), QStringList());
        QCOMPARE(tab.lines(), QStringList{u"No snipers set on server."_s});
        for (const QString &box : scoped)
            QCOMPARE(tab.value(box), u"0"_s);
    }

    void noSnipersSendsNothingWhenThereAreNone()
    {
        WeaponsTab tab;
        for (const QString &box : scoped)
            tab.put(box, u"0"_s);
        tab.populate();
        tab.forget();
        tab.program.click(u"cmdnosnipers"_s);
        tab.program.prompts.takeBoxes();
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.lines(), QStringList{u"No snipers set on server."_s});
    }

    void aScopedRifleThatWasTickedInVainIsSent()
    {
        WeaponsTab tab;
        for (const QString &box : scoped)
            tab.put(box, u"0"_s);
        tab.populate();
        tab.click(u"chkkar98ksniper"_s);
        tab.forget();
        tab.program.click(u"cmdnosnipers"_s);
        tab.program.prompts.takeBoxes();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"scr_allow_kar98ksniper\"0\""});
        QVERIFY(!tab.box(u"chkkar98ksniper"_s)->isChecked());
    }

    // Unticked by hand and not yet sent, it is unchanged by the preset but still marked.
    void aScopedRifleThatIsStillMarkedIsSent()
    {
        WeaponsTab tab;
        tab.populate();
        tab.click(u"chkspringfield"_s);
        tab.click(u"chkbren"_s);
        for (const QString &box : {u"chknagantsniper"_s, u"chkkar98ksniper"_s, u"chkenfieldsniper"_s})
            tab.put(box, u"0"_s);
        tab.forget();
        tab.program.click(u"cmdnosnipers"_s);
        tab.program.prompts.takeBoxes();
        QCOMPARE(tab.server.commands().first(), "scr_allow_springfield\"0\"");
        QCOMPARE(tab.changed(), QStringList{u"chkbren"_s});
        QCOMPARE(tab.value(u"chkbren"_s), u"1"_s);
    }

    void noSnipersCanBeCancelled()
    {
        WeaponsTab tab;
        tab.populate();
        tab.forget();
        tab.program.prompts.answers = {Answer::Cancel};
        tab.program.click(u"cmdnosnipers"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{snipersBox});
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.ticked(), readingOrder());
        QCOMPARE(tab.lines(), QStringList());
    }

    void withoutAConnectionEachCommandFailsAndTheLineIsWritten()
    {
        Program program;
        program.start();
        program.click(u"cmdriflesonly"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{riflesBox} + QList<Box>(21, notConnectedBox()));
        program.find<CheckBox>(u"chkspringfield"_s)->setChecked(true);
        program.click(u"cmdnosnipers"_s);
        QCOMPARE(program.prompts.takeBoxes(), (QList<Box>{snipersBox, notConnectedBox()}));
        QCOMPARE(program.messages(), (QStringList{u"Server set to rifles only"_s, u"No snipers set on server."_s}));
    }
};

WINDOW_TEST(WeaponPresetsTest)
#include "tst_weapon_presets.moc"
