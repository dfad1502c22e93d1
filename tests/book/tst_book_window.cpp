// SPDX-License-Identifier: MIT
#include "activation.h"
#include "app/attention.h"
#include "book/sql_book_store.h"
#include "book_hands.h"
#include "evening.h"
#include "other_eye.h"
#include "tests/players/losing_lists.h"

#include <QCheckBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSpinBox>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

const QString bookFile = u"molvark-players.db"_s;

/// What stands in the file when the program has written it.
QByteArray written(const Program &program, const QString &name)
{
    (void)QTest::qWaitFor([&] { return !program.file(name).isEmpty(); });
    return program.file(name);
}

/// What one reads in the tip of an item.
QString tip(const QListWidget &list, int row)
{
    const QString text = list.item(row)->toolTip();
    QTextDocument shown;
    if (Qt::mightBeRichText(text))
        shown.setHtml(text);
    else
        shown.setPlainText(text);
    return shown.toPlainText();
}

} // namespace

/// The window of the player book: its switch, the page of the players, and what the list of players shows of it.
class BookWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void atFirstNoBookIsKept()
    {
        BookHands it(QByteArray{});
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        QVERIFY(!it.find<QCheckBox>("chkbook")->isChecked());
        QVERIFY2(it.state().startsWith(u"No player book is kept."), qPrintable(it.state()));
        QVERIFY(!it.find<QTabWidget>("tabbook")->isEnabled());
        QVERIFY(!QFile::exists(bookFile));
        QCOMPARE(it.find<QSpinBox>("spnbookdays")->value(), 90);
    }

    void theSwitchBeginsABookAndTheSettingsKeepIt()
    {
        BookHands it(QByteArray{});
        it.open();
        it.find<QCheckBox>("chkbook")->click();
        QTRY_COMPARE(it.state().section(u',', 0, 1), u"0 players, 0 sightings"_s);
        QVERIFY(QFile::exists(bookFile));
        QVERIFY(it.program.file(u"molvark.ini"_s).contains("[book]\r\nkeep=true\r\ndays=90"));
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        QTRY_COMPARE(it.players(), QStringList{u"Ann^7"_s});
        it.find<QCheckBox>("chkbook")->click();
        QVERIFY(it.state().startsWith(u"No player book is kept."));
        QCOMPARE(it.players(), QStringList());
        QVERIFY(it.program.file(u"molvark.ini"_s).contains("keep=false"));
        it.populate();
        it.find<QCheckBox>("chkbook")->click();
        QTRY_COMPARE(it.players(), QStringList{u"Ann^7"_s});
        QTRY_COMPARE(it.state().section(u',', 0, 1), u"1 player, 1 sighting"_s);
    }

    void whatTheSettingsSayIsSoFromTheStart()
    {
        BookHands it("[book]\r\nkeep=true\r\ndays=30\r\n");
        QTRY_VERIFY(QFile::exists(bookFile));
        it.open();
        QVERIFY(it.find<QCheckBox>("chkbook")->isChecked());
        QCOMPARE(it.find<QSpinBox>("spnbookdays")->value(), 30);
        it.find<QSpinBox>("spnbookdays")->setValue(7);
        QVERIFY(it.program.file(u"molvark.ini"_s).contains("days=7\r\n"));
    }

    void settingsThatCannotBeWrittenAreTold()
    {
        BookHands it(QByteArray{});
        it.open();
        QFile::setPermissions(u"molvark.ini"_s, {});
        QFile::remove(u"molvark.ini"_s);
        QDir().mkdir(u"molvark.ini"_s);
        it.find<QCheckBox>("chkbook")->click();
        QCOMPARE(it.box().title, u"INI Write Fail"_s);
        QVERIFY2(it.find<QTabWidget>("tabbook")->isEnabled(), "for this run it is kept all the same");
    }

    void theColumnsAreThese()
    {
        BookHands it;
        it.open();
        QStringList headers;
        const QAbstractItemModel *model = it.find<QTableView>("tblbook")->model();
        for (int column = 0; column < model->columnCount(); ++column)
            headers.append(model->headerData(column, Qt::Horizontal).toString());
        QCOMPARE(headers.join(u'|'), u"Player|GUID|Last seen|First seen|Times|Names|Flag"_s);
        QStringList pages;
        for (int page = 0; page < it.find<QTabWidget>("tabbook")->count(); ++page)
            pages.append(it.find<QTabWidget>("tabbook")->tabText(page));
        QCOMPARE(pages, QStringList({u"Players"_s, u"Servers"_s, u"Bans"_s}));
    }

    void everyPopulateIsInIt()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"^1Ben"_s)});
        it.populate();
        const QString first = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.pass(600);
        it.server.game().players().remove(3);
        it.populate();
        it.open();
        const QString second = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        QTRY_COMPARE(it.table("tblbook").value(0),
                     (QStringList{u"^1Ben^7"_s, u"100005"_s, second, first, u"1"_s, u"1"_s, {}}));
        QCOMPARE(it.table("tblbook").value(1),
                 (QStringList{u"Ann^7"_s, u"100003"_s, first, first, u"1"_s, u"1"_s, {}}));
        it.pass(1801);
        it.server.game().players().rename(5, u"Benno"_s);
        it.populate();
        QTRY_COMPARE(it.table("tblbook").value(0).mid(4, 2), (QStringList{u"2"_s, u"2"_s}));
        it.choosePlayer(u"Benno^7"_s);
        QTRY_COMPARE(it.list("lstbooknames").size(), 2);
        QVERIFY(it.list("lstbooknames").at(0).startsWith(u"Benno^7  ("));
        QVERIFY(it.list("lstbooknames").at(1).startsWith(u"^1Ben^7  ("));
        QCOMPARE(it.list("lstbookaddresses").size(), 1);
        QVERIFY(it.list("lstbookaddresses").at(0).startsWith(u"10.0.0.5  ("));
        QVERIFY2(it.find<QWidget>("pltbookping")->accessibleDescription().contains(u"at most 50"),
                 qPrintable(it.find<QWidget>("pltbookping")->accessibleDescription()));
    }

    void theTickOfTheRefreshFeedsItToo()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.tickBox(u"chkautoupdate"_s);
        it.put({somebody(4, u"Ben"_s)});
        it.tick();
        it.open();
        QTRY_COMPARE(it.players().size(), 2);
    }

    void thePublicQueryIsNot()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.tickBox(u"chkplyq"_s);
        it.populate();
        QCOMPARE(it.column(3), QStringList{u"Ann"_s});
        it.open();
        QTRY_VERIFY(it.state().startsWith(u"0 players, 0 sightings"));
        QCOMPARE(it.players(), QStringList());
    }

    void aListThatIsCutOffIsNot()
    {
        BookHands it;
        it.tickBox(u"chkautoupdate"_s);
        it.server.answer("status", {statusHeading + statusLine("Ann") + "  4   7 48"});
        it.tick();
        QCOMPARE(it.column(3), QStringList{u"Ann"_s});
        it.open();
        QTRY_VERIFY(it.state().startsWith(u"0 players, 0 sightings"));
        it.server.answer("status", {statusHeading + statusLine("Ann") + "\n"});
        it.tick();
        QTRY_COMPARE(it.players(), QStringList{u"Ann"_s});
    }

    void damagedRowsAreLeftOut()
    {
        BookHands it(keepsBook, losingServer(40, 3));
        it.populate();
        QSet<QString> damaged;
        QSet<QString> sound;
        for (int row = 0; row < it.view()->model()->rowCount(); ++row)
            (it.mark(row).isEmpty() ? sound : damaged).insert(it.grid().at(row).at(2));
        QVERIFY(damaged.size() >= 2);
        it.open();
        QTRY_VERIFY(!it.players().isEmpty());
        QSet<QString> inBook;
        for (const QString &guid : it.tableColumn("tblbook", 1))
            inBook.insert(guid);
        QCOMPARE(inBook, sound);
    }

    void theSearchFindsWhileOneTypes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("name") << u"nn"_s << QStringList{u"Ann^7"_s};
        QTest::newRow("other case") << u"ANN"_s << QStringList{u"Ann^7"_s};
        QTest::newRow("one letter") << u"b"_s << QStringList{u"^1B^2en^7"_s};
        QTest::newRow("across a colour") << u"ben"_s << QStringList{u"^1B^2en^7"_s};
        QTest::newRow("GUID") << u"100005"_s << QStringList{u"^1B^2en^7"_s};
        QTest::newRow("address") << u"0.0.3"_s << QStringList{u"Ann^7"_s};
        QTest::newRow("no pattern") << u"%"_s << QStringList{};
        QTest::newRow("nobody") << u"nobody"_s << QStringList{};
    }

    void theSearchFindsWhileOneTypes()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, found);
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"^1B^2en"_s)});
        it.populate();
        it.open();
        QTRY_COMPARE(it.players().size(), 2);
        QTest::keyClicks(it.find<QLineEdit>("txtbooksearch"), text);
        QTRY_COMPARE(it.players(), found);
        it.find<QLineEdit>("txtbooksearch")->clear();
        QTRY_COMPARE(it.players().size(), 2);
    }

    void moreThanAPageIsReadWhenOneScrolls()
    {
        BookHands it;
        for (int hundred = 0; hundred < 7; ++hundred) {
            QByteArray lines;
            for (int slot = 0; slot < 60; ++slot)
                lines += QByteArray(statusLine("P" + QByteArray::number(hundred * 60 + slot)))
                             .replace("123456", QByteArray::number(5000 + hundred * 60 + slot));
            it.server.answer("status", {statusHeading, lines, "\n"});
            it.populate();
        }
        it.open();
        QTRY_COMPARE(it.players().size(), 200);
        it.find<QTableView>("tblbook")->scrollToBottom();
        QTRY_COMPARE(it.players().size(), 400);
        it.find<QTableView>("tblbook")->scrollToBottom();
        QTRY_VERIFY(it.players().size() >= 410);
        it.type("txtbooksearch", u"p"_s); // all of them, and only a page of them is wanted
        QTRY_COMPARE(it.players().size(), 200);
    }

    void notesAreAddedChangedAndDeleted()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        QVERIFY(!it.button("cmdbooknote")->isEnabled());
        it.type("txtbooknote", u"Wallhack?  Watch "_s);
        const QString first = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.button("cmdbooknote")->click();
        QTRY_COMPARE(it.list("lstbooknotes"), QStringList{first + u"  Wallhack?  Watch"_s});
        QCOMPARE(it.find<QLineEdit>("txtbooknote")->text(), QString());
        QTRY_COMPARE(it.mark(0), u"has a note in the player book"_s);

        it.pass(120);
        auto *notes = it.find<QListWidget>("lstbooknotes");
        notes->setCurrentRow(0);
        notes->editItem(notes->item(0));
        auto *editor = notes->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QCOMPARE(editor->text(), u"Wallhack?  Watch"_s);
        editor->setText(u"No, just good"_s);
        const QString second = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(it.list("lstbooknotes"), QStringList{second + u"  No, just good"_s});

        it.find<QListWidget>("lstbooknotes")->setCurrentRow(0);
        it.button("cmdbooknotedelete")->click();
        QTRY_COMPARE(it.list("lstbooknotes"), QStringList());
        QTRY_COMPARE(it.mark(0), QString());
    }

    void whatLooksLikeMarkUpIsShownAsItIs()
    {
        BookHands it;
        it.put({somebody(3, u"<b>x</b>"_s)});
        it.populate();
        it.select(0);
        it.program.click(u"cmdplykick"_s);
        it.open();
        it.choosePlayer(u"<b>x</b>^7"_s);
        it.type("txtbooknote", u"<i>y</i>"_s);
        it.button("cmdbooknote")->click();
        QTRY_COMPARE(it.list("lstbooknotes").size(), 1);
        QTRY_COMPARE(it.list("lstbookactions").size(), 1);
        QVERIFY(tip(*it.find<QListWidget>("lstbooknames"), 0).startsWith(u"<b>x</b>^7 "));
        QVERIFY(tip(*it.find<QListWidget>("lstbookactions"), 0).contains(u"as <b>x</b>^7"));
        QCOMPARE(tip(*it.find<QListWidget>("lstbooknotes"), 0), u"<i>y</i>"_s);
    }

    void nothingIsDoneToOneWhoIsNotShownYet()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        QVERIFY(it.button("cmdbookforget")->isEnabled());
        it.choose("tblbook", u"Ben^7"_s); // and no answer of the book yet
        QCOMPARE(it.label("lblbookplayer"), u"Ann, GUID 100003"_s);
        QVERIFY(!it.button("cmdbookforget")->isEnabled());
        QVERIFY(!it.find<QCheckBox>("chkbookflag")->isEnabled());
        QVERIFY(!it.find<QLineEdit>("txtbooknote")->isEnabled());
        QVERIFY(!it.button("cmdbookjson")->isEnabled());
        QTRY_COMPARE(it.label("lblbookplayer"), u"Ben, GUID 100005"_s);
        QVERIFY(it.button("cmdbookforget")->isEnabled());
    }

    // Behind the lock of another program.
    void whatWasTypedAndDoneIsNotLost()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        it.type("txtbooknote", u"Polite"_s);
        {
            OtherEye other(bookFile);
            other.ask("BEGIN IMMEDIATE");
            it.button("cmdbooknote")->click();
            QTRY_VERIFY_WITH_TIMEOUT(it.status("lblbook").contains(u"locked"), 15'000);
            QTRY_VERIFY(it.button("cmdbooknote")->isEnabled());
            QCOMPARE(it.find<QLineEdit>("txtbooknote")->text(), u"Polite"_s);
            it.button("cmdbookforget")->click();
            QVERIFY2(it.box().text.startsWith(u"Remove everything"), "it asks");
            const Box told = it.nextBox();
            QVERIFY2(told.text.startsWith(u"Ann, GUID 100003 has not been forgotten."), qPrintable(told.text));
            QCOMPARE(it.label("lblbookplayer"), u"Ann, GUID 100003"_s);
            it.select(0);
            it.program.click(u"cmdplykick"_s);
            it.populate();
            (void)it.program.prompts.takeBoxes();
        }
        it.button("cmdbooknote")->click();
        QTRY_COMPARE(it.list("lstbooknotes").size(), 1);
        QCOMPARE(it.find<QLineEdit>("txtbooknote")->text(), QString());
        QTRY_VERIFY2(it.list("lstbookactions").value(0).endsWith(u"as Ann^7: answered"),
                     qPrintable(it.list("lstbookactions").join(u'|')));
        QCOMPARE(it.list("lstbookactions").size(), 1);
    }

    // Behind the lock of another program, too.
    void whatWasChangedIsWrittenLater()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.select(0);
        it.program.click(u"cmdplykick"_s);
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        it.type("txtbooknote", u"Polite"_s);
        it.button("cmdbooknote")->click();
        QTRY_COMPARE(it.list("lstbooknotes").size(), 1);
        QTRY_COMPARE(it.list("lstbookactions").size(), 1);
        {
            OtherEye other(bookFile);
            other.ask("BEGIN IMMEDIATE");
            auto *notes = it.find<QListWidget>("lstbooknotes");
            notes->setCurrentRow(0);
            notes->editItem(notes->item(0));
            auto *editor = notes->viewport()->findChild<QLineEdit *>();
            QVERIFY(editor);
            editor->setText(u"Rude"_s);
            QTest::keyClick(editor, Qt::Key_Return);
            it.find<QListWidget>("lstbookactions")->setCurrentRow(0);
            it.type("txtbookreason", u"Spawn camping"_s);
            it.button("cmdbookreason")->click();
            QTRY_VERIFY_WITH_TIMEOUT(it.status("lblbook").contains(u"locked"), 15'000);
        }
        it.populate();
        (void)it.program.prompts.takeBoxes(); // "No players on server"
        QTRY_VERIFY2(it.list("lstbooknotes").value(0).endsWith(u"  Rude"),
                     qPrintable(it.list("lstbooknotes").join(u'|')));
        QTRY_VERIFY2(it.list("lstbookactions").value(0).endsWith(u"(Spawn camping)"),
                     qPrintable(it.list("lstbookactions").join(u'|')));
    }

    // An action was kept back behind a lock; then he is forgotten.
    void whatWasKeptBackDoesNotComeAfterTheForgetting()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        {
            OtherEye other(bookFile);
            other.ask("BEGIN IMMEDIATE");
            it.select(0);
            it.program.click(u"cmdplykick"_s);
            QTRY_VERIFY_WITH_TIMEOUT(it.status("lblbook").contains(u"locked"), 15'000);
            it.type("txtbooksearch", u"nobody"_s); // is found when all of that has been tried
            QTRY_COMPARE_WITH_TIMEOUT(it.players(), QStringList(), 15'000);
            it.type("txtbooksearch", {});
        }
        it.button("cmdbookforget")->click();
        (void)it.box();
        QTRY_COMPARE(it.players(), QStringList{u"Ben^7"_s});
        it.pass(60);
        it.populate();
        OtherEye eye(bookFile);
        QTRY_COMPARE(eye.ask("SELECT count(*) FROM counts"), 2);
        QCOMPARE(eye.ask("SELECT count(*) FROM actions"), 0);
    }

#ifndef Q_OS_WIN
    // As when a backup is brought back while the window is open: the number that Ann had is that of Bob there.
    void nobodyOfAnotherBookIsForgotten()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        {
            SqlBookStore other(u"other.db"_s);
            other.feed(populate(it.program.clock.now().toSecsSinceEpoch(), {bob}));
        }
        QVERIFY(QFile::remove(bookFile) && QFile::rename(u"other.db"_s, bookFile));
        it.button("cmdbookforget")->click();
        QVERIFY2(it.box().text.startsWith(u"Remove everything"), "it asks");
        const Box told = it.nextBox();
        QVERIFY2(told.text.startsWith(u"Ann, GUID 100003 has not been forgotten.") &&
                     told.text.contains(u"(molvark-players.db) is another one now"),
                 qPrintable(told.text));
        QTRY_COMPARE(it.players(), QStringList{u"^1Bob"_s});
        QCOMPARE(OtherEye(bookFile).ask("SELECT count(*) FROM players"), 1);
        QVERIFY(!it.button("cmdbookforget")->isEnabled());
        QVERIFY2(it.status("lblbook").contains(u"is another one now"), qPrintable(it.status("lblbook")));
        it.populate();
        QTRY_COMPARE(it.status("lblbook"), QString());
    }
#endif

    // The program is about to end, which may go too fast for anything else to be done.
    void whatWasKeptBackIsWrittenAtTheEnd()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        QTRY_COMPARE(it.players().size(), 1);
        {
            OtherEye other(bookFile);
            other.ask("BEGIN IMMEDIATE");
            it.select(0);
            it.program.click(u"cmdplykick"_s);
            QTRY_VERIFY_WITH_TIMEOUT(it.status("lblbook").contains(u"locked"), 15'000);
            it.type("txtbooksearch", u"nobody"_s); // is found when all of that has been tried
            QTRY_COMPARE_WITH_TIMEOUT(it.players(), QStringList(), 15'000);
            it.type("txtbooksearch", {});
        }
        QMetaObject::invokeMethod(qApp, "aboutToQuit");
        QCOMPARE(OtherEye(bookFile).ask("SELECT count(*) FROM actions"), 1);
    }

    void theReasonIsThatOfTheChosenAction()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        it.populate();
        it.select(0);
        it.program.click(u"cmdplykick"_s);
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        QTRY_COMPARE(it.list("lstbookactions").size(), 1);
        it.find<QListWidget>("lstbookactions")->setCurrentRow(0);
        it.type("txtbookreason", u"Spawn camping"_s);
        it.button("cmdbookreason")->click();
        QTRY_VERIFY(it.list("lstbookactions").value(0).endsWith(u"(Spawn camping)"));
        QCOMPARE(it.find<QLineEdit>("txtbookreason")->text(), u"Spawn camping"_s);

        // What is typed stays when the page is shown anew, wherever the cursor is.
        it.type("txtbookreason", u"Spawn camping, twice"_s);
        it.find<QLineEdit>("txtbooksearch")->setFocus();
        it.type("txtbooknote", u"Polite"_s);
        it.button("cmdbooknote")->click();
        QTRY_COMPARE(it.list("lstbooknotes").size(), 1);
        QCOMPARE(it.find<QLineEdit>("txtbookreason")->text(), u"Spawn camping, twice"_s);
        it.choosePlayer(u"Ben^7"_s);
        QTRY_COMPARE(it.list("lstbookactions").size(), 0);
        QCOMPARE(it.find<QLineEdit>("txtbookreason")->text(), QString());
    }

    void theDaysOfTheSettingsAreThoseOfTheBook()
    {
        BookHands it("[book]\r\ndays=7\r\n");
        {
            const qint64 now = QDateTime::currentSecsSinceEpoch();
            SqlBookStore store(bookFile);
            store.feed(populate(now - 8 * secondsOfDay, {bob}));
            store.feed(populate(now - 6 * secondsOfDay, {bob}));
        }
        it.open();
        it.find<QCheckBox>("chkbook")->click();
        QTRY_COMPARE(it.state().section(u',', 0, 1), u"1 player, 1 sighting"_s);
        it.find<QSpinBox>("spnbookdays")->setValue(5);
        it.find<QCheckBox>("chkbook")->click();
        it.find<QCheckBox>("chkbook")->click();
        QTRY_COMPARE(it.state().section(u',', 0, 1), u"1 player, 0 sightings"_s);
    }

    void whoIsConnectingHasNoPing()
    {
        BookHands it;
        it.server.answer("status",
                         {statusHeading + "  3     7 CNCT 123456 Ann            50 10.0.0.1:28960 1234 25000\n\n"});
        it.populate();
        it.pass(60);
        it.server.answer("status", {statusHeading + statusLine("Ann") + "\n"});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann"_s);
        QTRY_VERIFY2(it.find<QWidget>("pltbookping")->accessibleDescription().contains(u"at least 48"),
                     qPrintable(it.find<QWidget>("pltbookping")->accessibleDescription()));
    }

    void whoIsNotFlaggedAnyMoreIsNotTold()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_COMPARE(it.status("lblbook"), u"Flagged: Ann"_s);
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_COMPARE(it.status("lblbook"), QString());
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_COMPARE(it.status("lblbook"), u"Flagged: Ann"_s);
        it.button("cmdbookforget")->click();
        (void)it.box();
        QTRY_COMPARE(it.status("lblbook"), QString());
    }

    void whoIsFlaggedStandsBesideWhatIsWrongWithTheBook()
    {
        BookHands it(QByteArray{});
        QVERIFY(writeBytes(bookFile, "no book"));
        it.open();
        it.find<QCheckBox>("chkbook")->click();
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.choosePlayer(u"Ann^7"_s);
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_VERIFY2(it.status("lblbook").startsWith(u"Flagged: Ann. molvark-players.db was broken"),
                     qPrintable(it.status("lblbook")));
    }

    void daysBeyondTheLimitsAreNinety_data()
    {
        QTest::addColumn<QByteArray>("days");
        QTest::addColumn<int>("kept");
        QTest::newRow("none") << "0"_ba << 90;
        QTest::newRow("less than none") << "-1"_ba << 90;
        QTest::newRow("too many") << "3651"_ba << 90;
        QTest::newRow("far too many") << "99999999999"_ba << 90;
        QTest::newRow("no number") << "ten"_ba << 90;
        QTest::newRow("most") << "3650"_ba << 3650;
        QTest::newRow("fewest") << "1"_ba << 1;
    }

    void daysBeyondTheLimitsAreNinety()
    {
        QFETCH(QByteArray, days);
        BookHands it("[book]\r\ndays=" + days + "\r\n");
        it.open();
        QTEST(it.find<QSpinBox>("spnbookdays")->value(), "kept");
    }

    void aPlayerWhoIsGoneCannotBeSaved()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        OtherEye(bookFile).ask("DELETE FROM players");
        it.program.prompts.lines = {u"ann.json"_s};
        it.button("cmdbookjson")->click();
        QVERIFY(it.nextBox().text.startsWith(u"This player is not in the book any more"));
        QVERIFY(!QFile::exists(u"ann.json"_s));
    }

    void aFlaggedPlayerWhoComesIsTold()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"^1Ben"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"^1Ben^7"_s);
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_COMPARE(it.mark(1), u"flagged in the player book"_s);
        QTRY_COMPARE(it.tableColumn("tblbook", 6).join(u'|').remove(u'|'), u"flagged"_s);
        QCOMPARE(it.mark(0), QString());

        const QSignalSpy attention(it.program.find<Attention>({}), &Attention::wanted);
        it.server.game().players().remove(5);
        it.populate();
        QTRY_COMPARE(it.status("lblbook"), QString());
        it.put({somebody(7, u"^1Benny"_s)});
        Player back = somebody(9, u"Somebody"_s);
        back.guid = u"100005"_s;
        it.put({back});
        it.populate();
        QTRY_COMPARE(it.status("lblbook"), u"Flagged: Somebody"_s);
        QCOMPARE(it.mark(2), u"flagged in the player book"_s);
        QCOMPARE(attention.size(), 1);
        QVERIFY(it.program.prompts.takeBoxes().isEmpty());
        it.populate();
        QCOMPARE(it.mark(2), u"flagged in the player book"_s); // at once, without the book's answer
        it.put({somebody(11, u"Cid"_s)});
        it.populate();
        it.find<QLineEdit>("txtbooksearch")->setText(u"cid"_s);
        QTRY_COMPARE(it.players().size(), 1); // the lists are in the book
        QCOMPARE(attention.size(), 1);
        it.program.click(u"cmdconnect"_s);
        QCOMPARE(it.status("lblbook"), QString());
    }

    void theMarkStandsBesideThatOfDamage()
    {
        BookHands it;
        it.server.answer("status", {statusHeading + statusLine("Ann") + "\n"});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann"_s);
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_COMPARE(it.mark(0), u"flagged in the player book"_s);
        const QByteArray list = statusHeading + statusLine("Ann") + "\n";
        const qsizetype border = list.indexOf("Ann") + 3;
        it.server.answer("status", {list.first(border), list.sliced(border)});
        it.populate();
        QTRY_COMPARE(it.mark(0), u"came in two datagrams, flagged in the player book"_s);
        const QModelIndex edge = it.view()->model()->index(0, 0);
        const auto picture = [&] { return edge.data(Qt::DecorationRole).value<QIcon>().pixmap(32).toImage(); };
        const QImage both = picture();
        QVERIFY(!both.isNull());
        QCOMPARE(edge.data(Qt::ToolTipRole).toString(), it.mark(0));
        it.type("txtbooknote", u"Polite"_s);
        it.button("cmdbooknote")->click();
        QTRY_COMPARE(it.list("lstbooknotes").size(), 1);
        it.find<QCheckBox>("chkbookflag")->click();
        QTRY_COMPARE(it.mark(0), u"came in two datagrams, has a note in the player book"_s);
        const QImage note = picture();
        QVERIFY(note != both);
        it.find<QListWidget>("lstbooknotes")->setCurrentRow(0);
        it.button("cmdbooknotedelete")->click();
        QTRY_COMPARE(it.mark(0), u"came in two datagrams"_s);
        QVERIFY(!picture().isNull() && picture() != both && picture() != note);
    }

    void whoIsThisOpensTheBookAtHim()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"^1Ben"_s)});
        it.populate();
        it.select(1);
        const QModelIndex cell = it.view()->model()->index(1, 3);
        OpenMenu(*it.view(), it.view()->visualRect(cell).center()).choose(u"Who is this?"_s);
        QTRY_VERIFY((it.window = otherWindow(u"frmbook"_s)) != nullptr);
        QTRY_COMPARE(it.label("lblbookplayer"), u"Ben, GUID 100005"_s);
        QTRY_COMPARE(it.find<QTableView>("tblbook")->currentIndex().data().toString(), u"^1Ben^7"_s);
    }

    void withoutABookItShowsTheSwitch()
    {
        BookHands it(QByteArray{});
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.select(0);
        const QModelIndex cell = it.view()->model()->index(0, 3);
        OpenMenu(*it.view(), it.view()->visualRect(cell).center()).choose(u"Who is this?"_s);
        QTRY_VERIFY((it.window = otherWindow(u"frmbook"_s)) != nullptr);
        QVERIFY(becomesActive(it.window));
        QVERIFY(it.find<QCheckBox>("chkbook")->hasFocus());
        QVERIFY(it.state().startsWith(u"No player book is kept."));
        QVERIFY(!QFile::exists(bookFile));
    }

    void whoIsNotInItIsSaidToBe()
    {
        BookHands it;
        it.server.answer("status", {statusHeading + "  3     7   48 0 Nobody  50 10.0.0.1:28960 1234 25000\n\n"});
        it.populate();
        it.open();
        QTRY_COMPARE(it.players().size(), 1);
        it.program.prompts.answers = {Answer::Yes};
        it.choosePlayer(u"Nobody"_s);
        it.button("cmdbookforget")->click();
        QCOMPARE(it.box().title, u"Forget this player"_s);
        QTRY_COMPARE(it.players(), QStringList());
        it.select(0);
        OpenMenu(*it.view(), it.view()->visualRect(it.view()->model()->index(0, 3)).center()).choose(u"Who is this?"_s);
        QTRY_COMPARE(it.label("lblbookplayer"), u"Nobody is not in the book yet."_s);
    }

    void forgettingAsksFirst()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        it.program.prompts.answers = {Answer::No};
        it.button("cmdbookforget")->click();
        const Box asked = it.box();
        QCOMPARE(asked.buttons, BoxButtons::YesNo);
        QVERIFY2(asked.text.endsWith(u"Ann, GUID 100003"), qPrintable(asked.text));
        QCOMPARE(it.label("lblbookplayer"), u"Ann, GUID 100003"_s);
        it.button("cmdbookforget")->click();
        (void)it.box();
        QTRY_COMPARE(it.players(), QStringList{u"Ben^7"_s});
        QVERIFY(!it.button("cmdbookforget")->isEnabled());
        QVERIFY(!it.program.file(bookFile).contains("Ann"));
        QVERIFY(!it.program.file(bookFile + u"-wal"_s).contains("Ann"));
    }

    void everythingAboutOneIsSavedAsJson()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        it.type("txtbooknote", u"Polite"_s);
        it.button("cmdbooknote")->click();
        it.program.prompts.lines = {u"ann.json"_s};
        it.button("cmdbookjson")->click();
        const QJsonObject saved = QJsonDocument::fromJson(written(it.program, u"ann.json"_s)).object();
        QCOMPARE(saved.value(u"guid"_s).toString(), u"100003"_s);
        QCOMPARE(saved.value(u"names"_s).toArray().at(0).toObject().value(u"text"_s).toString(), u"Ann^7"_s);
        QCOMPARE(saved.value(u"notes"_s).toArray().at(0).toObject().value(u"text"_s).toString(), u"Polite"_s);
        QCOMPARE(saved.value(u"sightings"_s).toArray().at(0).toObject().value(u"server"_s).toString(), it.address());
    }

    void theListIsSavedAsCsv()
    {
        BookHands it;
        it.put({somebody(3, u"Ann \"A\""_s), somebody(5, u"Ben"_s)});
        it.populate();
        it.open();
        it.type("txtbooksearch", u"ann"_s);
        it.program.prompts.lines = {u"list.csv"_s};
        it.button("cmdbookcsv")->click();
        const QByteArrayList lines = written(it.program, u"list.csv"_s).split('\n');
        QCOMPARE(lines.at(0),
                 "\xEF\xBB\xBF\"Player\",\"GUID\",\"Last seen\",\"First seen\",\"Times\",\"Names\",\"Flag\"\r"_ba);
        QVERIFY2(lines.at(1).startsWith("\"Ann \"\"A\"\"^7\",\"100003\",\""), lines.at(1));
        QCOMPARE(lines.size(), 3); // the last one is empty
    }

    // More than the list has read so far.
    void allWhoAreFoundAreInTheFile()
    {
        BookHands it(QByteArray{});
        {
            SqlBookStore store(bookFile);
            QList<SeenPlayer> many;
            for (int number = 0; number < 450; ++number)
                many.append({QString::number(5000 + number), u"P%1"_s.arg(number), u"10.0.0.1:1"_s, 50, 0});
            store.feed(populate(QDateTime::currentSecsSinceEpoch(), many));
        }
        it.open();
        it.find<QCheckBox>("chkbook")->click();
        QTRY_COMPARE(it.players().size(), 200);
        it.program.prompts.lines = {u"list.csv"_s};
        it.button("cmdbookcsv")->click();
        QSet<QByteArray> guids;
        for (const QByteArray &line : written(it.program, u"list.csv"_s).split('\n').sliced(1))
            guids.insert(line.split(',').value(1));
        guids.remove({});
        QCOMPARE(guids.size(), 450);
        QCOMPARE(it.players().size(), 200);
    }

    void aFileThatCannotBeWrittenIsTold()
    {
        BookHands it;
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        it.open();
        it.choosePlayer(u"Ann^7"_s);
        for (const char *name : {"cmdbookjson", "cmdbookcsv"}) {
            it.program.prompts.lines = {u"no/such/folder/file"_s};
            it.button(name)->click();
            QCOMPARE(it.nextBox().title, u"Failed to Save"_s);
        }
    }

    void aBookThatCannotBeOpenedIsToldInBothPlaces()
    {
        BookHands it(QByteArray{});
        QDir().mkdir(bookFile);
        it.open();
        it.find<QCheckBox>("chkbook")->click();
        QTRY_VERIFY2(it.status("lblbook").contains(bookFile), qPrintable(it.status("lblbook")));
        QCOMPARE(it.state(), it.status("lblbook"));
        it.put({somebody(3, u"Ann"_s)});
        it.populate();
        QCOMPARE(it.column(3), QStringList{u"Ann"_s});
        QDir().rmdir(bookFile);
        it.populate();
        QTRY_COMPARE(it.players(), QStringList{u"Ann^7"_s});
        QTRY_COMPARE(it.status("lblbook"), QString());
    }

    void itFitsOnASmallScreen()
    {
        BookHands it;
        it.open();
        const QSize least = it.window->minimumSizeHint();
        QVERIFY2(least.width() <= 1000 && least.height() <= 640,
                 qPrintable(u"%1 x %2"_s.arg(least.width()).arg(least.height())));
    }

    void escClosesItAndItGoesWithTheMainWindow()
    {
        BookHands it;
        it.open();
        QVERIFY(becomesActive(it.window));
        QTest::keyClick(it.window, Qt::Key_Escape);
        QVERIFY(!it.window->isVisible());
        it.open();
        it.program.window.close();
        QVERIFY(!it.window->isVisible());
    }
};

WINDOW_TEST(BookWindowTest)
#include "tst_book_window.moc"
