// SPDX-License-Identifier: MIT
#include "menus.h"
#include "settings_tab.h"

#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QStringList stockMaps{u"mp_breakout"_s,  u"mp_brecourt"_s, u"mp_burgundy"_s, u"mp_carentan"_s,
                            u"mp_dawnville"_s, u"mp_decoy"_s,    u"mp_downtown"_s, u"mp_farmhouse"_s,
                            u"mp_leningrad"_s, u"mp_matmata"_s,  u"mp_toujane"_s,  u"mp_trainstation"_s};
const QByteArray listCommand = "dir maps/mp d3dbsp";
const QByteArray heading = "Directory of maps/mp d3dbsp\n---------------\n\n";
const Box noListBox{u"No response"_s, u"Asked server 3 times for list and none returned"_s, BoxIcon::Information,
                    BoxButtons::Ok};
const Box selectBox{u"Select Map"_s, u"Select a map in the table to load first"_s, BoxIcon::Information,
                    BoxButtons::Ok};

QStringList maps(const SettingsTab &tab)
{
    return tab.program.rows(u"lstmaps"_s);
}

/// Clicks the entry with the mouse.
void selectMap(const Program &program, int row)
{
    showTabOf(program, u"lstmaps"_s);
    auto *list = program.find<QListWidget>(u"lstmaps"_s);
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

#define VERIFY_RESTING(tab)                                                                                            \
    do {                                                                                                               \
        QVERIFY(tab.program.progress()->isHidden());                                                                   \
        QCOMPARE(tab.program.note(), QString());                                                                       \
        QVERIFY(tab.showsReplies());                                                                                   \
        QVERIFY(tab.isRefreshing());                                                                                   \
    } while (false)

} // namespace

class MapsPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theFormIsCaptioned()
    {
        Program program;
        program.start();
        QCOMPARE(program.text(u"cmdmapload"_s), u"Load selected map"_s);
        QCOMPARE(program.text(u"cmddefmaps"_s), u"Load Default maps"_s);
        QCOMPARE(program.text(u"cmdpopmaps"_s), u"Populate from server"_s);
        QCOMPARE(program.text(u"cmdrestartmap"_s), u"Restart current map"_s);
        QCOMPARE(program.text(u"cmdrotatemap"_s), u"Next map in rotation"_s);
        QCOMPARE(
            program.find<QLabel>(u"lblgeneric"_s)->text(),
            u"Note: Default maps loads the basic list provided with the game.  Use Populate to see ALL maps server "
            "has available."_s);
        QVERIFY(program.rows(u"lstmaps"_s).isEmpty());
        const auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        QCOMPARE(tabs->tabText(2), u"Maps"_s);
        const QList<QGroupBox *> frames = tabs->widget(2)->findChildren<QGroupBox *>();
        QCOMPARE(frames.size(), 1);
        QCOMPARE(frames.constFirst()->title(), u"Select Map to load"_s);
    }

    void theDefaultMapsAreTheStockOnes()
    {
        Program program;
        program.start();
        program.click(u"cmddefmaps"_s);
        QCOMPARE(program.rows(u"lstmaps"_s), stockMaps);
        program.click(u"cmddefmaps"_s);
        QCOMPARE(program.rows(u"lstmaps"_s), stockMaps);
        QVERIFY(program.prompts.takeBoxes().isEmpty());
        QCOMPARE(program.messages(), QStringList());
    }

    void theDefaultMapsReplaceThoseOfTheServer()
    {
        SettingsTab tab;
        tab.server.answer(listCommand, {heading + "mp_harbor.d3dbsp\n"});
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(maps(tab), QStringList{u"mp_harbor"_s});
        tab.forget();
        tab.program.click(u"cmddefmaps"_s);
        QCOMPARE(maps(tab), stockMaps);
        QCOMPARE(tab.commands(), QList<QByteArray>());
    }

    void populateShowsTheMapsInTheServersOrder()
    {
        SettingsTab tab;
        tab.program.click(u"cmddefmaps"_s);
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(maps(tab), QStringList({u"mp_toujane"_s, u"mp_breakout"_s, u"mp_carentan"_s, u"mp_trainstation"_s,
                                         u"mp_matmata"_s, u"mp_dawnville"_s, u"mp_farmhouse"_s, u"mp_leningrad"_s,
                                         u"mp_burgundy"_s, u"mp_downtown"_s, u"mp_brecourt"_s, u"mp_decoy"_s}));
        QCOMPARE(tab.commands(), QList<QByteArray>{listCommand});
        QCOMPARE(tab.echoed(), QList<QByteArray>{listCommand});
        QVERIFY2(!tab.pane().contains(u"d3dbsp\r\n"_s), "the listing itself is not shown");
        QCOMPARE(tab.messages(), QStringList());
        VERIFY_RESTING(tab);
        QVERIFY(tab.boxes().isEmpty());
    }

    void aListingGivesItsMaps_data()
    {
        QTest::addColumn<QList<QByteArray>>("datagrams");
        QTest::addColumn<QStringList>("names");
        const QStringList both{u"mp_a"_s, u"mp_b"_s};
        const auto row = [](const char *name, const QList<QByteArray> &datagrams, const QStringList &names) {
            QTest::newRow(name) << datagrams << names;
        };
        row("capitals", {heading + "mp_a.d3dbsp\nmp_b.D3DBSP\n"}, both);
        row("no last line feed", {heading + "mp_a.d3dbsp\nmp_b.d3dbsp"}, both);
        row("other lines", {heading + "readme.txt\nmp_a.d3dbsp\n\nmp_b.d3dbsp\n2 files\n"}, both);
        row("maps in the heading", {"mp_x.d3dbsp\nmp_y.d3dbsp\nmp_z.d3dbsp\nmp_a.d3dbsp\nmp_b.d3dbsp\n"}, both);
        row("cut in a name", {heading + "mp_a.d3dbsp\nmp", "_b.d3dbsp\n"}, both);
        row("cut in an extension", {heading + "mp_a.d3d", "bsp\nmp_b.d3dbsp\n"}, both);
        row("cut in the heading", {heading.first(20), heading.sliced(20) + "mp_a.d3dbsp\nmp_b.d3dbsp\n"}, both);
        row("cut off", {heading + "mp_a.d3dbsp\nmp_b.d3db"}, {u"mp_a"_s});
        row("no maps", {heading}, {});
    }

    void aListingGivesItsMaps()
    {
        QFETCH(QList<QByteArray>, datagrams);
        QFETCH(QStringList, names);
        SettingsTab tab;
        tab.server.answer(listCommand, datagrams);
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{listCommand});
        QCOMPARE(maps(tab), names);
        VERIFY_RESTING(tab);
    }

    void whileItReadsTheProgramIsBusyAndTheListEmpty()
    {
        SettingsTab tab;
        tab.ticksMeanwhile = true;
        tab.program.click(u"cmddefmaps"_s);
        QStringList meanwhile{u"not asked"_s};
        atRequest(tab.server, listCommand, [&] { meanwhile = maps(tab); });
        tab.startSecond();
        const double before = tab.program.clock.secondsSinceMidnight();
        tab.program.click(u"cmdpopmaps"_s);
        QVERIFY2(tab.program.clock.secondsSinceMidnight() - before > 1.4, "the reply has a second more to come in");
        QCOMPARE(meanwhile, QStringList());
        QCOMPARE(tab.asked.size(), 1);
        QVERIFY(!tab.refreshedMeanwhile);
        QVERIFY2(maps(tab).contains(u"mp_carentan"_s) && !tab.pane().contains(u"mp_carentan"_s),
                 "only the echo is shown");
        QCOMPARE(tab.asked.constFirst().note, u"Asking server for map list..."_s);
    }

    void threeAttemptsWithoutAListAreTold_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("two line feeds") << QByteArray("Unknown command \"dir\"\n\nmp_a.d3dbsp");
        QTest::newRow("nothing printed") << QByteArray();
    }

    void threeAttemptsWithoutAListAreTold()
    {
        QFETCH(QByteArray, reply);
        SettingsTab tab;
        tab.server.answer(listCommand, {reply});
        bool progressWasOpen = false;
        tab.program.prompts.whileOpen = [&] { progressWasOpen = tab.program.progress()->isVisible(); };
        tab.startSecond();
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(tab.boxes(), QList<Box>{noListBox});
        QVERIFY2(progressWasOpen, "the progress window is closed behind the box");
        QCOMPARE(tab.commands(), QList<QByteArray>(3, listCommand));
        QVERIFY(tab.smallestGap() > 1.4);
        QCOMPARE(maps(tab), QStringList());
        QVERIFY(tab.showsReplies());
        QVERIFY(tab.program.progress()->isHidden());
        QVERIFY2(!tab.isRefreshing(), "the mark stays");

        tab.program.prompts.whileOpen = nullptr;
        tab.program.click(u"cmdservpop"_s);
        QVERIFY2(tab.isRefreshing(), "until another reading ends");
    }

    void theThirdAttemptMayBringTheList()
    {
        SettingsTab tab;
        tab.server.answer(listCommand, {"busy\n"});
        int requests = 0;
        QObject::connect(&tab.server, &PracticeServer::requested, &tab.server, [&] {
            if (++requests == 3)
                tab.server.answer(listCommand, {heading + "mp_a.d3dbsp\n"});
        });
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(requests, 3);
        QCOMPARE(maps(tab), QStringList{u"mp_a"_s});
        VERIFY_RESTING(tab);
        QVERIFY(tab.boxes().isEmpty());
    }

    void silenceIsToldOnceAndEndsTheAttempts()
    {
        SettingsTab tab;
        tab.program.click(u"cmddefmaps"_s);
        tab.server.answer(listCommand, {});
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(tab.boxes(), QList<Box>{noResponseBox()});
        QCOMPARE(tab.commands(), QList<QByteArray>(5, listCommand));
        QCOMPARE(maps(tab), QStringList());
        VERIFY_RESTING(tab);
    }

    void unconnectedTheListStaysEmpty()
    {
        Program program;
        program.start();
        program.click(u"cmddefmaps"_s);
        program.click(u"cmdpopmaps"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
        QVERIFY(program.rows(u"lstmaps"_s).isEmpty());
        QVERIFY(!program.session.rconbusy);
        QVERIFY(!program.session.rconcollect);
        QVERIFY(program.progress()->isHidden());
    }

    void aSecondClickDuringAReadingIsIgnored()
    {
        SettingsTab tab;
        tab.server.answer(listCommand, {heading + "mp_a.d3dbsp\n"});
        atRequest(tab.server, listCommand, [&] { tab.program.click(u"cmdpopmaps"_s); });
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{listCommand});
        QCOMPARE(maps(tab), QStringList{u"mp_a"_s});
        VERIFY_RESTING(tab);
    }

    void stockMapsLoadedDuringAReadingGiveWayToTheServers()
    {
        SettingsTab tab;
        tab.server.answer(listCommand, {heading + "mp_a.d3dbsp\n"});
        atRequest(tab.server, listCommand, [&] { tab.program.click(u"cmddefmaps"_s); });
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(maps(tab), QStringList{u"mp_a"_s});
    }

    void theSelectedMapIsLoadedOnceWithoutWaiting()
    {
        SettingsTab tab;
        tab.program.click(u"cmddefmaps"_s);
        selectMap(tab.program, 3);
        tab.server.answer("map mp_carentan", {});
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{"map mp_carentan"});
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
        QVERIFY2(tab.showsReplies(), "the next command waits for its reply");

        tab.server.answerAsUsual("map mp_decoy");
        selectMap(tab.program, 5);
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.commands().constLast(), "map mp_decoy");
        QCOMPARE(tab.server.game().dvars().value(u"mapname"_s), u"mp_decoy"_s);
    }

    void withoutASelectedMapNothingIsLoaded()
    {
        SettingsTab tab;
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.boxes(), QList<Box>{selectBox});
        tab.program.click(u"cmddefmaps"_s);
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.boxes(), QList<Box>{selectBox});
        selectMap(tab.program, 3);
        tab.program.click(u"cmddefmaps"_s); // the new list has no selection
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.boxes(), QList<Box>{selectBox});
        QCOMPARE(tab.commands(), QList<QByteArray>());
    }

    void theKeyboardsFocusAloneSelectsNoMap()
    {
        SettingsTab tab;
        showTabOf(tab.program, u"lstmaps"_s);
        tab.program.click(u"cmddefmaps"_s);
        auto *list = tab.program.find<QListWidget>(u"lstmaps"_s);
        list->setFocus(Qt::TabFocusReason);
        QVERIFY(list->hasFocus());
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.boxes(), QList<Box>{selectBox});
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Up);
        tab.program.click(u"cmdmapload"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{"map mp_breakout"});
    }

    void theNameOfAMapIsCopied()
    {
        SettingsTab tab;
        tab.program.click(u"cmddefmaps"_s);
        selectMap(tab.program, 2);
        auto *list = tab.program.find<QListWidget>(u"lstmaps"_s);
        QCOMPARE(copiedBy([&] { QTest::keySequence(list, QKeySequence::Copy); }), u"mp_burgundy"_s);
        const QPoint other = list->visualItemRect(list->item(4)).center();
        QCOMPARE(OpenMenu(*list, other).captions(), QStringList{u"Copy"_s});
        QCOMPARE(copiedBy([&] { OpenMenu(*list, other).choose(u"Copy"_s); }), u"mp_dawnville"_s);
        QCOMPARE(copiedBy([&] { OpenMenu(*list).choose(u"Copy"_s); }), u"mp_dawnville"_s); // the one it was about last
        QVERIFY(!OpenMenu(*list, list->viewport()->rect().bottomLeft() - QPoint(-3, 3)).item(u"Copy"_s)->isEnabled());
        QCOMPARE(tab.commands(), QList<QByteArray>());
    }

    void aDoubleClickLoadsNothingAndEditsNothing()
    {
        SettingsTab tab;
        tab.program.click(u"cmddefmaps"_s);
        selectMap(tab.program, 1);
        auto *list = tab.program.find<QListWidget>(u"lstmaps"_s);
        const QStringList before = maps(tab);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
        QTest::keyClicks(list->viewport(), u"x"_s);
        QCoreApplication::processEvents();
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QVERIFY(tab.boxes().isEmpty());
        QCOMPARE(maps(tab), before);
        QVERIFY(list->viewport()->findChildren<QLineEdit *>().isEmpty());
    }

    void unconnectedTheLoadIsRefused()
    {
        Program program;
        program.start();
        program.click(u"cmddefmaps"_s);
        selectMap(program, 0);
        program.click(u"cmdmapload"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
    }
};

WINDOW_TEST(MapsPageTest)
#include "tst_maps_page.moc"
