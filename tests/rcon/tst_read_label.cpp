// SPDX-License-Identifier: MIT
#include "base/controls.h"
#include "connected_program.h"
#include "two_servers.h"
#include "window_test.h"

#include <QLabel>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const QString unread = u"not read yet"_s;
const QString readThen = u"read 21:08"_s;

PracticeOptions modServer()
{
    PracticeOptions options;
    options.mod = PracticeOptions::hobMod;
    options.mapLoadMs = 0;
    return options;
}

QWidget *hobWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"frmhob")
            return window;
    }
    failTest(u"the mod's window is not there"_s);
}

/// The program connected to a server with the mod, and its window open.
struct Pages final : ConnectedProgram {
    Pages() : ConnectedProgram({.practice = modServer(), .prepare = {}}) { program.click(u"cmdhob"_s); }

    template <typename Object>
    [[nodiscard]] Object *find(const QString &name) const
    {
        if (auto *found = hobWindow()->findChild<Object *>(name))
            return found;
        return program.find<Object>(name);
    }
    void populate(const QString &button, QTime at = QTime(21, 8)) const
    {
        const_cast<Program &>(program).clock.set(QDateTime(QDate(2006, 3, 5), at));
        find<QAbstractButton>(button)->click();
    }
    [[nodiscard]] QString said(const QString &button = u"cmdservpop"_s) const
    {
        return find<QLabel>(u"lblread_"_s + button)->text();
    }
};

const QStringList populateButtons{u"cmdservpop"_s, u"cmdplypop"_s,     u"cmdpopmaps"_s,
                                  u"cmdpopwep"_s,  u"cmdCodOther_1"_s, u"cmdhobpop"_s};

void eachButton()
{
    QTest::addColumn<QString>("button");
    for (const QString &button : populateButtons)
        QTest::newRow(qPrintable(button)) << button;
}

} // namespace

/// What stands beside the buttons that populate a page.
class ReadLabelTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aPageSaysWhenItWasRead_data() { eachButton(); }

    void aPageSaysWhenItWasRead()
    {
        QFETCH(QString, button);
        Pages pages;
        QCOMPARE(pages.said(button), unread);
        pages.populate(button);
        QCOMPARE(pages.said(button), readThen);
        pages.populate(button, QTime(9, 5));
        QCOMPARE(pages.said(button), u"read 09:05"_s);
        for (const QString &other : populateButtons) {
            if (other != button)
                QCOMPARE(pages.said(other), unread);
        }
        pages.program.prompts.takeBoxes();
    }

    void aServerThatDoesNotAnswerHasNotBeenRead_data() { eachButton(); }

    void aServerThatDoesNotAnswerHasNotBeenRead()
    {
        QFETCH(QString, button);
        Pages pages;
        pages.server.setSilent(true);
        pages.populate(button);
        QCOMPARE(pages.said(button), unread);
        QVERIFY(!pages.program.prompts.takeBoxes().isEmpty());
    }

    void aPageThatWasReadInPartHasNotBeenRead()
    {
        Pages pages;
        pages.populate(u"cmdservpop"_s);
        QCOMPARE(pages.said(), readThen);
        pages.server.answer("dvarlist scr_*", {"scr_killcam \"maybe\"\n"});
        pages.populate(u"cmdservpop"_s);
        QCOMPARE(pages.said(), unread);
    }

    void withoutAServerNothingIsRead()
    {
        Pages pages;
        pages.program.click(u"cmdconnect"_s);
        pages.populate(u"cmdservpop"_s);
        QCOMPARE(pages.said(), unread);
        QCOMPARE(pages.program.prompts.takeBoxes().size(), 1);
    }

    void leavingTheServerForgetsWhatItSaid_data() { eachButton(); }

    void leavingTheServerForgetsWhatItSaid()
    {
        QFETCH(QString, button);
        Pages pages;
        pages.populate(button);
        QCOMPARE(pages.said(button), readThen);
        pages.program.click(u"cmdconnect"_s);
        QCOMPARE(pages.said(button), unread);
        pages.program.connectTo(pages.server);
        QCOMPARE(pages.said(button), unread);
        pages.program.prompts.takeBoxes();
    }

    void anotherServerInTheMiddleOfTheReadingHasNotBeenRead()
    {
        TwoServers servers;
        servers.leaveAt("dvarlist scr_*");
        servers.program.click(u"cmdservpop"_s);
        QTRY_VERIFY(servers.program.isConnected());
        QCOMPARE(servers.program.find<QLabel>(u"lblread_cmdservpop"_s)->text(), unread);
    }

    void theDefaultMapsAreNotTheServers()
    {
        Pages pages;
        pages.populate(u"cmdpopmaps"_s);
        QCOMPARE(pages.said(u"cmdpopmaps"_s), readThen);
        pages.program.click(u"cmddefmaps"_s);
        QCOMPARE(pages.said(u"cmdpopmaps"_s), unread);
    }

    void changesAreCountedUntilTheyAreSent()
    {
        Pages pages;
        pages.populate(u"cmdservpop"_s);
        pages.program.setText(u"txtservername"_s, u"Anew"_s);
        QCOMPARE(pages.said(), u"1 change not sent"_s);
        pages.program.setText(u"txtservername"_s, u"Anew again"_s);
        QCOMPARE(pages.said(), u"1 change not sent"_s);
        pages.find<CheckBox>(u"chkkillcam"_s)->click();
        QCOMPARE(pages.said(), u"2 changes not sent"_s);
        pages.program.click(u"cmdservsetbasics"_s);
        pages.program.prompts.takeBoxes();
        QCOMPARE(pages.said(), readThen);
    }

    void readingAnewEndsTheCount()
    {
        Pages pages;
        pages.populate(u"cmdhobpop"_s, QTime(20, 0));
        for (const QString &box : {u"chkspawn"_s, u"chkdb"_s})
            pages.find<CheckBox>(box)->click();
        pages.find<TextBox>(u"txtrifle"_s)->setText(u"40"_s);
        QCOMPARE(pages.said(u"cmdhobpop"_s), u"3 changes not sent"_s);
        pages.populate(u"cmdhobpop"_s);
        QCOMPARE(pages.said(u"cmdhobpop"_s), readThen);
    }

    void changesAreCountedBeforeAnythingIsRead()
    {
        Pages pages;
        pages.find<CheckBox>(u"chkbren"_s)->click();
        QCOMPARE(pages.said(u"cmdpopwep"_s), u"1 change not sent"_s);
        QCOMPARE(pages.said(), unread);
        pages.program.click(u"cmdwepsetserv"_s);
        pages.program.prompts.takeBoxes();
        QCOMPARE(pages.said(u"cmdpopwep"_s), unread);
    }

    void aMarkThatTheProgramSetsCounts()
    {
        Pages pages;
        QVERIFY(pages.find<CheckBox>(u"chkCodOther_0"_s)->setProperty("DataChanged", true));
        QCOMPARE(pages.said(u"cmdCodOther_1"_s), u"1 change not sent"_s);
    }

    void theJoinPasswordHasAButtonOfItsOwn()
    {
        Pages pages;
        pages.program.setText(u"txtservpass"_s, u"friends"_s);
        QCOMPARE(pages.said(), unread);
        QVERIFY(pages.find<TextBox>(u"txtservpass"_s)->isUnsent());
        pages.program.click(u"cmdservsetpass"_s);
        QVERIFY(!pages.find<TextBox>(u"txtservpass"_s)->isUnsent());
    }

    void theButtonsStandStillWhateverItSays()
    {
        Pages pages;
        const auto *button = pages.find<QWidget>(u"cmdservsetbasics"_s);
        const int place = button->x();
        QVERIFY(pages.find<QWidget>(u"lblread_cmdservpop"_s)->geometry().right() < place);
        for (const QString &box : {u"chkkillcam"_s, u"chkteamicons"_s}) {
            pages.find<CheckBox>(box)->click();
            QApplication::processEvents();
            QCOMPARE(button->x(), place);
        }
    }
};

WINDOW_TEST(ReadLabelTest)
#include "tst_read_label.moc"
