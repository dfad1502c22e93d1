// SPDX-License-Identifier: MIT
#include "menus.h"
#include "program.h"
#include "saved_entries.h"
#include "window_test.h"

#include <QListWidget>

using namespace Qt::StringLiterals;

namespace {

const QByteArray threeServers = "[servers]\r\nserver1=my.home\r\nserver2=home\r\nserver3=other\r\n"
                                "[ports]\r\nport1=28960\r\nport2=28960\r\nport3=1\r\n"
                                "[rcon]\r\nrcon1=a\r\nrcon2=b\r\nrcon3=c\r\n";

struct SavedList final {
    SavedList() { program.start(); }

    [[nodiscard]] QListWidget &list() const { return *program.find<QListWidget>(u"lstservers"_s); }
    [[nodiscard]] QPoint placeOf(int row) const { return list().visualItemRect(list().item(row)).center(); }
    [[nodiscard]] QStringList rows() const { return program.rows(u"lstservers"_s); }
    [[nodiscard]] QStringList fields() const
    {
        return {program.text(u"comserver"_s), program.text(u"comport"_s), program.text(u"txtPWD"_s)};
    }

    Program program{threeServers};
};

} // namespace

class SavedListMenuTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theMenuIsAboutTheRowUnderTheMouse()
    {
        const SavedList saved;
        const QStringList before = saved.fields();
        const OpenMenu menu(saved.list(), saved.placeOf(1));
        QCOMPARE(menu.captions(), QStringList({u"Use this server"_s, u"Copy"_s, u"Remove"_s}));
        QVERIFY(saved.list().item(1)->isSelected());
        QCOMPARE(saved.fields(), before); // asking for a menu is no choice of a server
    }

    void theMenuKeyAsksForTheCurrentRow()
    {
        const SavedList saved;
        saved.list().setCurrentRow(2);
        QCOMPARE(copiedBy([&] { OpenMenu(saved.list()).choose(u"Copy"_s); }), u"other:1"_s);
    }

    void besideTheRowsThereIsNothingToDo()
    {
        const SavedList saved;
        const OpenMenu menu(saved.list(), saved.list().viewport()->rect().bottomLeft() + QPoint(3, -3));
        for (const QString &item : menu.captions())
            QVERIFY2(!menu.item(item)->isEnabled(), qPrintable(item));
    }

    void usingAServerFillsTheFields()
    {
        const SavedList saved;
        OpenMenu(saved.list(), saved.placeOf(1)).choose(u"Use this server"_s);
        QCOMPARE(saved.fields(), QStringList({u"home"_s, u"28960"_s, u"b"_s}));
        OpenMenu(saved.list(), saved.placeOf(2)).choose(u"Use this server"_s);
        QCOMPARE(saved.fields(), QStringList({u"other"_s, u"1"_s, u"c"_s}));
    }

    void thePasswordIsNotCopied()
    {
        const SavedList saved;
        QCOMPARE(copiedBy([&] { OpenMenu(saved.list(), saved.placeOf(0)).choose(u"Copy"_s); }), u"my.home:28960"_s);
        saved.list().setFocus();
        QCOMPARE(copiedBy([&] { QTest::keySequence(&saved.list(), QKeySequence::Copy); }), u"my.home:28960"_s);
    }

    // An earlier row holds this one's text.
    void theRowItselfIsRemoved()
    {
        SavedList saved;
        const QStringList before = saved.fields();
        OpenMenu(saved.list(), saved.placeOf(1)).choose(u"Remove"_s);
        QCOMPARE(saved.rows(), QStringList({u"my.home:28960"_s, u"other:1"_s}));
        QCOMPARE(saved.fields(), before);
        QVERIFY(saved.list().selectedItems().isEmpty());
        // The passwords stay as they are, as when the server in the fields is removed.
        QCOMPARE(saved.program.rows(u"lstrcon"_s), QStringList({u"a"_s, u"b"_s, u"c"_s}));
        OpenMenu(saved.list(), saved.placeOf(1)).choose(u"Use this server"_s);
        QCOMPARE(saved.fields(), QStringList({u"other"_s, u"1"_s, u"b"_s}));
        QCOMPARE(emptiedAtTheEnd(saved.program), 3);
    }

    // The list changes while somebody looks at the menu.
    void aRowThatHasGoneIsLeftAlone()
    {
        const SavedList saved;
        OpenMenu menu(saved.list(), saved.placeOf(2));
        saved.program.setText(u"comserver"_s, u"other"_s);
        saved.program.setText(u"comport"_s, u"1"_s);
        saved.program.trigger(u"removeserver"_s);
        menu.choose(u"Remove"_s);
        QCOMPARE(saved.rows(), QStringList({u"my.home:28960"_s, u"home:28960"_s}));
    }
};

WINDOW_TEST(SavedListMenuTest)
#include "tst_saved_list_menu.moc"
