// SPDX-License-Identifier: MIT
#include "weapons_tab.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box slowBox{u"Slow Server Response"_s,
                  u"The server is not responding quickly enough\ror a server side mod has replaced the rcon variables\r"
                  "Try populate again"_s,
                  BoxIcon::Exclamation, BoxButtons::Ok};
const Box sendBox{u"Send to Server?"_s, u"Send weapon settings to server?\rOnly changed values will be sent."_s,
                  BoxIcon::Information, BoxButtons::OkCancel};

/// The reply to the request for all weapons, each line as a server prints it. `instead` replaces one weapon's value; an
/// empty one leaves the weapon out.
QByteArray listing(const QString &box, const QByteArray &instead)
{
    QByteArray text;
    for (const QString &name : readingOrder()) {
        const QByteArray value = name == box ? instead : QByteArray("0");
        if (!value.isEmpty())
            text += "A       " + weaponRow(name).variable.toLatin1() + " \"" + value + "\"\n";
    }
    return text + "\n21 total dvars\n21 dvar indexes\n";
}

} // namespace

class WeaponsPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void everyWeaponHasABoxInItsGroup()
    {
        Program program;
        program.start();
        const auto *frame = program.find<QGroupBox>(u"frmweapons"_s);
        QCOMPARE(frame->title(), u"Weapon enable or disable"_s);
        QCOMPARE(frame->findChildren<QCheckBox *>().size(), 21);
        for (const WeaponRow &row : weaponRows()) {
            const auto *box = program.find<CheckBox>(row.box);
            QCOMPARE(box->text(), row.caption);
            QCOMPARE(box->toolTipAt({25, box->height() / 2}), row.toolTip);
            QCOMPARE(box->tag, row.variable);
            const auto *group = qobject_cast<QGroupBox *>(box->parentWidget());
            QVERIFY(group && frame->isAncestorOf(group));
            QCOMPARE(group->title(), row.group);
            QVERIFY(group->objectName().startsWith(u"frmwep"));
        }
    }

    void theButtonsSayWhatTheyDo()
    {
        Program program;
        program.start();
        QCOMPARE(program.text(u"cmdpopwep"_s), u"Populate from server"_s);
        QCOMPARE(program.text(u"cmdwepsetserv"_s), u"Send current to server"_s);
        QCOMPARE(program.text(u"cmdwepselall"_s), u"Select all"_s);
        QCOMPARE(program.text(u"cmdwepunselall"_s), u"De-select all"_s);
        QCOMPARE(program.text(u"cmdnosnipers"_s), u"No Snipers"_s);
        QCOMPARE(program.text(u"cmdriflesonly"_s), u"Rifles Only"_s);
        QCOMPARE(program.find<QWidget>(u"cmdpopwep"_s)->toolTip(),
                 u"Check existing settings on server and sets below fields up"_s);
        QCOMPARE(program.find<QWidget>(u"cmdwepsetserv"_s)->toolTip(),
                 u"Send setting to server, blanks will be ignored."_s);
    }

    void populateReadsAllByOneRequest()
    {
        WeaponsTab tab;
        tab.put(u"chkbar"_s, u"0"_s);
        tab.put(u"chknagantsniper"_s, u"0"_s);
        tab.put(u"chksvt40"_s, u"0"_s);
        const double before = tab.program.clock.secondsSinceMidnight();
        tab.populate();
        QCOMPARE(tab.server.requests(),
                 QList<QByteArray>{QByteArray(4, '\xFF') + "rcon practice dvarlist scr_allow_*"});
        QStringList others = readingOrder();
        others.removeIf([](auto &box) { return box == u"chkbar" || box == u"chknagantsniper" || box == u"chksvt40"; });
        QCOMPARE(tab.ticked(), others);
        QCOMPARE(tab.changed(), QStringList());
        QVERIFY2(tab.program.clock.secondsSinceMidnight() - before > 1.4, "a second behind the reply's own");
        QVERIFY(!tab.program.progress()->isVisible());
        QCOMPARE(tab.lines(), QStringList());
        QVERIFY(tab.showsReplies());
        QVERIFY(tab.isRefreshing());
    }

    void aListingThatComesInPiecesIsReadWhole()
    {
        WeaponsTab tab;
        tab.server.setDatagramSize(50);
        for (const QString &box : readingOrder())
            tab.put(box, box.size() % 2 == 0 ? u"1"_s : u"0"_s);
        tab.populate();
        QStringList wanted = readingOrder();
        wanted.removeIf([](const QString &box) { return box.size() % 2 != 0; });
        QCOMPARE(tab.ticked(), wanted);
    }

    void whileReadingTheServerIsBusyAndTheProgressShown()
    {
        WeaponsTab tab;
        QString note;
        bool refreshed = true;
        const QString pane = tab.program.pane();
        atRequest(tab.server, "dvarlist scr_allow_*", [&] {
            note = tab.program.note();
            refreshed = tab.isRefreshing();
        });
        QStringList notes;
        connect(tab.program.progress()->findChild<QPlainTextEdit *>(u"txtprogress"_s), &QPlainTextEdit::textChanged,
                this, [&] { notes.append(tab.program.note()); });
        tab.populate();
        const QString first = u"Reading variables from the server...\nAllies..."_s;
        QCOMPARE(note, first);
        QVERIFY(!refreshed);
        QCOMPARE(tab.program.pane(), pane);
        QVERIFY(notes.contains(first + u"\nRussians...\nBritish...\nGerman...\nOthers..."_s));
    }

    void withoutAConnectionPopulateWarns()
    {
        Program program;
        program.start();
        program.click(u"cmdpopwep"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedPageBox()});
        QVERIFY(!program.session.rconbusy && !program.session.rconcollect);
    }

    // The boxes in front of the faulty one take their new values, the others keep theirs.
    void aFaultyValueEndsTheReading_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("no number") << QByteArray("yes");
        QTest::newRow("a blank") << QByteArray(" ");
        QTest::newRow("too large") << QByteArray("70000");
    }

    void aFaultyValueEndsTheReading()
    {
        QFETCH(QByteArray, value);
        WeaponsTab tab;
        tab.populate();
        tab.click(u"chkgreasegun"_s);
        tab.server.answer("dvarlist scr_allow_*", {listing(u"chkgreasegun"_s, value)});
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{slowBox});
        QCOMPARE(tab.ticked(), readingOrder().mid(6));
        QCOMPARE(tab.changed(), QStringList{u"chkgreasegun"_s});
        QVERIFY(!tab.program.progress()->isVisible());
        QVERIFY(tab.showsReplies());
        QVERIFY(tab.isRefreshing());
    }

    void everyNumberButZeroTicksItsBox()
    {
        WeaponsTab tab;
        for (const QByteArray &value : {"2"_ba, "-1"_ba, "1.5"_ba}) {
            tab.server.answer("dvarlist scr_allow_*", {listing(u"chkgreasegun"_s, value)});
            tab.populate();
            QCOMPARE(tab.ticked(), QStringList{u"chkgreasegun"_s});
            QCOMPARE(tab.changed(), QStringList());
        }
    }

    void aReplyThatWasCutOffEndsTheReading()
    {
        WeaponsTab tab;
        tab.populate();
        const QByteArray whole = listing({}, {});
        tab.server.answer("dvarlist scr_allow_*", {whole.first(whole.indexOf("scr_allow_thompson \"") + 20)});
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{slowBox});
        QCOMPARE(tab.ticked(), readingOrder().mid(2));
        QVERIFY(tab.showsReplies());
        QVERIFY(tab.isRefreshing());
    }

    void aSilentServerLeavesThePageUsable()
    {
        WeaponsTab tab;
        tab.server.setSilent(true);
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), (QList<Box>{noResponseBox(), slowBox}));
        tab.server.setSilent(false);
        QVERIFY(tab.showsReplies());
        QVERIFY(tab.isRefreshing());
        tab.populate();
        QCOMPARE(tab.ticked(), readingOrder());
    }

    void sendBehindPopulateSendsNothing()
    {
        WeaponsTab tab;
        tab.populate();
        tab.forget();
        tab.program.click(u"cmdwepsetserv"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{sendBox});
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.lines(), QStringList());
    }

    void aBoxTickedAndUntickedIsSentOnce()
    {
        WeaponsTab tab;
        tab.populate();
        tab.click(u"chknagantsniper"_s);
        tab.click(u"chknagantsniper"_s);
        QCOMPARE(tab.changed(), QStringList{u"chknagantsniper"_s});
        tab.forget();
        for (int time = 0; time < 2; ++time)
            tab.program.click(u"cmdwepsetserv"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>(2, sendBox));
        QCOMPARE(tab.server.requests(),
                 QList<QByteArray>{QByteArray(4, '\xFF') + "rcon practice scr_allow_nagantsniper\"1\""});
        QCOMPARE(tab.lines(), QStringList{u"Scoped Nagant updated."_s});
    }

    void allAreSentInOrderAndConfirmed()
    {
        WeaponsTab tab;
        tab.populate();
        tab.program.click(u"cmdwepunselall"_s);
        tab.forget();
        bool refreshed = true;
        atRequest(tab.server, weaponCommand(u"chkm1a1carbine"_s, false), [&] { refreshed = tab.isRefreshing(); });
        const QString pane = tab.program.pane();
        tab.program.click(u"cmdwepsetserv"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{sendBox});
        QList<QByteArray> commands;
        QStringList lines;
        for (const QString &box : readingOrder()) {
            commands.append(weaponCommand(box, false));
            lines.append(weaponRow(box).confirmation);
            QCOMPARE(tab.value(box), u"0"_s);
        }
        QCOMPARE(tab.server.commands(), commands);
        QCOMPARE(tab.lines(), lines);
        QCOMPARE(tab.changed(), QStringList());
        QVERIFY(!refreshed);
        QCOMPARE(tab.program.pane().mid(pane.size()).count(u">>RCON sent ["_s), 21);
        QVERIFY(tab.isRefreshing());
    }

    void cancelSendsNothing()
    {
        WeaponsTab tab;
        tab.populate();
        tab.click(u"chkbren"_s);
        tab.forget();
        tab.program.prompts.answers = {Answer::Cancel};
        tab.program.click(u"cmdwepsetserv"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{sendBox});
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.changed(), QStringList{u"chkbren"_s});
        QVERIFY(tab.isRefreshing());
    }

    void selectingAllMarksWhatItChanges()
    {
        WeaponsTab tab;
        tab.put(u"chkmp44"_s, u"0"_s);
        tab.populate();
        tab.forget();
        tab.program.click(u"cmdwepselall"_s);
        QCOMPARE(tab.ticked(), readingOrder());
        QCOMPARE(tab.changed(), QStringList{u"chkmp44"_s});
        tab.program.click(u"cmdwepsetserv"_s);
        tab.program.prompts.takeBoxes();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"scr_allow_mp44\"1\""});
        tab.program.click(u"cmdwepselall"_s);
        QCOMPARE(tab.changed(), QStringList());
        tab.program.click(u"cmdwepunselall"_s);
        QCOMPARE(tab.ticked(), QStringList());
        QCOMPARE(tab.changed(), readingOrder());
        QCOMPARE(tab.server.commands().size(), 1);
    }

    // Each command fails by itself, so there is a box for each.
    void withoutAConnectionEachCommandFails()
    {
        Program program;
        program.start();
        program.find<CheckBox>(u"chkmp40"_s)->click();
        program.find<CheckBox>(u"chkbar"_s)->click();
        program.click(u"cmdwepsetserv"_s);
        QCOMPARE(program.prompts.takeBoxes(), (QList<Box>{sendBox, notConnectedBox(), notConnectedBox()}));
        QCOMPARE(program.messages(), (QStringList{u"Browning Auto Rifle updated."_s, u"MP40 updated."_s}));
        PracticeServer server;
        listenOrFail(server);
        program.connectTo(server);
        QVERIFY(program.isRefreshingFrom(server));
    }
};

WINDOW_TEST(WeaponsPageTest)
#include "tst_weapons_page.moc"
