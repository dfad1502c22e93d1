// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QAction>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

/// Clicks the button or chooses the menu item of that name.
void run(const Program &program, const QString &name)
{
    if (program.window.findChild<QAction *>(name))
        program.trigger(name);
    else
        program.click(name);
}

void addGameTypeButtons()
{
    QTest::addColumn<QByteArray>("prefix");
    QTest::addColumn<QString>("confirmation");
    const auto row = [](const char *control, const QByteArray &prefix, const QString &confirmation) {
        QTest::newRow(control) << prefix << confirmation;
    };
    row("cmdcod_0", "sd", u"Mode changed to SD"_s);
    row("cmdcod_1", "ctf", u"Mode changed to CTF"_s);
    row("cmdcod_2", "tdm", u"Mode changed to TDM"_s);
    row("cmdcod_3", "dm", u"Mode changed to DM"_s);
    row("cmdcod_4", "hq", u"Mode changed to HeadQuarters"_s);
}

void addGameTypes()
{
    addGameTypeButtons();
    QTest::newRow("gmsd") << QByteArray("sd") << u"Mode changed to SD"_s;
    QTest::newRow("gmtdm") << QByteArray("tdm") << u"Mode changed to TDM"_s;
    // These two do not switch to what they are captioned.
    QTest::newRow("gmctf") << QByteArray("dm") << u"Mode changed to DM"_s;
    QTest::newRow("gmdm") << QByteArray("hq") << u"Mode changed to HeadQuarters"_s;
}

void addFriendlyFireModes()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("announcement");
    QTest::addColumn<QString>("confirmation");
    const auto row = [](const char *item, int mode, const QByteArray &announcement, const QString &confirmation) {
        QTest::newRow(item) << mode << "say ^3Molvark ^5(1.0)> ^7" + announcement << confirmation;
    };
    row("commFFOFF", 0, "Friendly Fire now ^2OFF", u"Friendly Fire OFF"_s);
    row("COMMFFON", 1, "Friendly Fire now ^2ON", u"Friendly Fire ON"_s);
    row("commFFREFL", 2, "Friendly Fire now ^2Reflective", u"Friendly Fire Reflective"_s);
    row("commFFSHARE", 3, "Friendly Fire now ^2Shared", u"Friendly Fire Shared"_s);
}

void addMapCommands()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("confirmation");
    QTest::newRow("commmap_restart") << QByteArray("map_restart") << u"Map Restart"_s;
    QTest::newRow("commmap_rotate") << QByteArray("map_rotate") << u"Map Rotate"_s;
    QTest::newRow("cmdrestartmap") << QByteArray("map_restart") << u"Map Restart"_s;
    QTest::newRow("cmdrotatemap") << QByteArray("map_rotate") << u"Map Rotate"_s;
}

QString rowName()
{
    return QString::fromLatin1(QTest::currentDataTag());
}

} // namespace

class QuickCommandsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aGameTypeIsSetAndTheMapRestarted_data() { addGameTypes(); }

    void aGameTypeIsSetAndTheMapRestarted()
    {
        QFETCH(QByteArray, prefix);
        QFETCH(QString, confirmation);
        SettingsTab tab;
        tab.startSecond();
        run(tab.program, rowName());
        QCOMPARE(tab.commands(), (QList<QByteArray>{"set g_gametype " + prefix, "map_restart"}));
        QCOMPARE(tab.messages(), QStringList{confirmation});
        QCOMPARE(tab.asked.at(0).messages, QStringList());
        QCOMPARE(tab.asked.at(1).messages, QStringList{confirmation});
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        // The slot of the reply and the second behind it; the team deathmatch type has no slot.
        QVERIFY(tab.smallestGap() > (prefix == "tdm" ? 0.8 : 1.4));
        QCOMPARE(tab.server.game().dvars().value(u"g_gametype"_s), QString::fromLatin1(prefix));
        QVERIFY(tab.boxes().isEmpty());
    }

    // The type is waited for and the restart is not; with team deathmatch it is the other way round.
    void oneOfTheTwoCommandsIsWaitedFor_data() { addGameTypeButtons(); }

    void oneOfTheTwoCommandsIsWaitedFor()
    {
        QFETCH(QByteArray, prefix);
        QFETCH(QString, confirmation);
        SettingsTab tab;
        const QByteArray type = "set g_gametype " + prefix;
        tab.server.answer(type, {});
        tab.server.answer("map_restart", {});
        run(tab.program, rowName());
        const bool waitsForRestart = prefix == "tdm";
        QCOMPARE(tab.commands(), QList<QByteArray>(waitsForRestart ? 1 : 5, type) +
                                     QList<QByteArray>(waitsForRestart ? 5 : 1, "map_restart"));
        QCOMPARE(tab.boxes(), QList<Box>{noResponseBox()});
        QCOMPARE(tab.messages(), QStringList{confirmation});
        QVERIFY2(tab.showsReplies(), "the next command waits for its reply");
    }

    void theHeadquartersItemDoesNothing()
    {
        SettingsTab tab;
        tab.program.trigger(u"gmhq"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
    }

    void onAClosedLinkTheGameTypeEndsAtItsFirstCommand_data() { addGameTypes(); }

    void onAClosedLinkTheGameTypeEndsAtItsFirstCommand()
    {
        Program program;
        program.start();
        run(program, rowName());
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
        QCOMPARE(program.messages(), QStringList());
    }

    void friendlyFireIsSetAndAnnouncedASecondLater_data() { addFriendlyFireModes(); }

    void friendlyFireIsSetAndAnnouncedASecondLater()
    {
        QFETCH(int, mode);
        QFETCH(QByteArray, announcement);
        QFETCH(QString, confirmation);
        SettingsTab tab;
        tab.startSecond();
        tab.program.trigger(rowName());
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_friendlyfire " + QByteArray::number(mode), announcement}));
        QCOMPARE(tab.messages(), QStringList{confirmation});
        QCOMPARE(tab.asked.at(1).messages, QStringList());
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        QVERIFY(tab.smallestGap() > 1.4);
        QCOMPARE(tab.server.game().dvars().number(u"scr_friendlyfire"_s), mode);
        QVERIFY(tab.boxes().isEmpty());
    }

    void theButtonSetsTheModeThatIsSelected_data() { addFriendlyFireModes(); }

    void theButtonSetsTheModeThatIsSelected()
    {
        QFETCH(int, mode);
        QFETCH(QByteArray, announcement);
        QFETCH(QString, confirmation);
        SettingsTab tab;
        tab.program.click(u"optff_"_s + QString::number(mode));
        QCOMPARE(tab.commands(), QList<QByteArray>());
        tab.program.click(u"cmdff"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_friendlyfire " + QByteArray::number(mode), announcement}));
        QCOMPARE(tab.messages(), QStringList{confirmation});
    }

    void withoutASelectedModeTheButtonDoesNothing()
    {
        SettingsTab tab;
        tab.program.click(u"cmdff"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
    }

    void bothFriendlyFireCommandsAreWaitedFor()
    {
        SettingsTab tab;
        const QByteArray announcement = "say ^3Molvark ^5(1.0)> ^7Friendly Fire now ^2ON";
        tab.server.answer("scr_friendlyfire 1", {});
        tab.server.answer(announcement, {});
        tab.program.trigger(u"COMMFFON"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>(5, "scr_friendlyfire 1") + QList<QByteArray>(5, announcement));
        QCOMPARE(tab.boxes(), QList<Box>(2, noResponseBox()));
        QCOMPARE(tab.messages(), QStringList{u"Friendly Fire ON"_s});
    }

    void onAClosedLinkFriendlyFireIsConfirmedAllTheSame_data() { addFriendlyFireModes(); }

    void onAClosedLinkFriendlyFireIsConfirmedAllTheSame()
    {
        QFETCH(QString, confirmation);
        Program program;
        program.start();
        program.trigger(rowName());
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>(2, notConnectedBox()));
        QCOMPARE(program.messages(), QStringList{confirmation});
    }

    void aMapCommandIsSentOnceWithoutWaiting_data() { addMapCommands(); }

    void aMapCommandIsSentOnceWithoutWaiting()
    {
        QFETCH(QByteArray, command);
        QFETCH(QString, confirmation);
        SettingsTab tab;
        tab.server.answer(command, {});
        const double before = tab.program.clock.secondsSinceMidnight();
        run(tab.program, rowName());
        QVERIFY2(tab.program.clock.secondsSinceMidnight() - before < 10, "nobody waits for a reply");
        QCOMPARE(tab.messages(), QStringList{confirmation});
        QCOMPARE(tab.commands(), QList<QByteArray>{command});
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        QVERIFY(tab.boxes().isEmpty());
        QVERIFY2(tab.showsReplies(), "the next command waits for its reply");
    }

    void aMapCommandIsCarriedOut()
    {
        SettingsTab tab;
        // The practice server's rotation goes on to its second map.
        tab.program.click(u"cmdrotatemap"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{"map_rotate"});
        QCOMPARE(tab.server.game().dvars().value(u"mapname"_s), u"mp_carentan"_s);
        tab.program.click(u"cmdrestartmap"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"map_rotate", "map_restart"}));
        QCOMPARE(tab.server.game().dvars().value(u"mapname"_s), u"mp_carentan"_s);
    }

    void onAClosedLinkAMapCommandIsConfirmedAllTheSame_data() { addMapCommands(); }

    void onAClosedLinkAMapCommandIsConfirmedAllTheSame()
    {
        QFETCH(QString, confirmation);
        Program program;
        program.start();
        run(program, rowName());
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
        QCOMPARE(program.messages(), QStringList{confirmation});
    }

    void theMapButtonsAreCaptioned()
    {
        Program program;
        program.start();
        QCOMPARE(program.text(u"cmdrestartmap"_s), u"Restart current map"_s);
        QCOMPARE(program.text(u"cmdrotatemap"_s), u"Next map in rotation"_s);
    }
};

WINDOW_TEST(QuickCommandsTest)
#include "tst_quick_commands.moc"
