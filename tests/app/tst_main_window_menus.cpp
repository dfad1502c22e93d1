// SPDX-License-Identifier: MIT
#include "app/web_links.h"
#include "program.h"
#include "window_test.h"

#include <QDesktopServices>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace {

const QString separator = u"-"_s;

/// A caption as it is drawn, without the sign of its key; a doubled one stands for itself.
QString drawn(QString caption)
{
    static const QRegularExpression key(u"(?<!&)&(?!&)"_s);
    return caption.remove(key);
}

/// The items of a menu as "name: caption", a submenu as its caption alone.
QStringList items(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *item : menu->actions()) {
        if (item->isSeparator())
            texts.append(separator);
        else
            texts.append(item->menu() ? drawn(item->text()) : item->objectName() + u": "_s + drawn(item->text()));
    }
    return texts;
}

QMenu *menu(const Program &program, const QString &caption)
{
    for (auto *each : program.window.findChildren<QMenu *>()) {
        if (drawn(each->title()) == caption)
            return each;
    }
    failTest(u"no menu "_s + caption);
}

} // namespace

class MainWindowMenusTest final : public QObject {
    Q_OBJECT

public slots:
    void takeAddress(const QUrl &url) { opened.append(url.toString()); }

private slots:
    void init()
    {
        failOnWarnings();
        opened.clear();
        QDesktopServices::setUrlHandler(u"https"_s, this, "takeAddress");
    }

    void cleanup() { QDesktopServices::unsetUrlHandler(u"https"_s); }

    void fourMenusStandInTheBar()
    {
        Program program;
        QStringList captions;
        for (const QAction *item : program.find<QMenuBar>(u"menubar"_s)->actions())
            captions.append(drawn(item->text()));
        QCOMPARE(captions, QStringList({u"File"_s, u"Common Tasks"_s, u"Tools"_s, u"Help"_s}));
        QCOMPARE(menu(program, u"Common Tasks"_s)->objectName(), u"comm"_s);
        QCOMPARE(menu(program, u"Tools"_s)->objectName(), u"tools"_s);
        QCOMPARE(menu(program, u"Help"_s)->objectName(), u"help"_s);
    }

    void theFileMenuHasItsItems()
    {
        Program program;
        QCOMPARE(items(menu(program, u"File"_s)),
                 QStringList({u"Saveserver: Save current server Info"_s, u"removeserver: Remove current server Info"_s,
                              separator, u"savemessages: Save message log..."_s, u"clearmessage: Clear Message log"_s,
                              u"savercon: Save RCON log..."_s, u"clearrcon: Clear RCON log"_s, separator,
                              u"mpref: Preferences..."_s, separator, u"Exit: Exit"_s}));
    }

    void theCommonTasksMenuHasItsItems()
    {
        Program program;
        QCOMPARE(items(menu(program, u"Common Tasks"_s)),
                 QStringList({u"commmap_restart: Restart Map"_s, u"commmap_rotate: Next Map in Cycle"_s, separator,
                              u"COMMFFON: Friendly Fire On"_s, u"commFFOFF: Friendly Fire Off"_s,
                              u"commFFREFL: Friendly Fire Reflective damage"_s, u"commFFSHARE: Friendly Fire Shared"_s,
                              u"Game mode switch"_s}));
        // Two ampersands show as one; one alone would underline the blank behind it.
        QCOMPARE(items(menu(program, u"Game mode switch"_s)),
                 QStringList({u"gmsd: Search && Destroy"_s, u"gmctf: Capture the Flag"_s, u"gmdm: Death Match"_s,
                              u"gmtdm: Team Death Match"_s, u"gmhq: Headquarters"_s}));
    }

    void theToolsMenuHasItsItems()
    {
        Program program;
        QCOMPARE(items(menu(program, u"Tools"_s)),
                 QStringList({u"mledger: Ledger..."_s, u"mbook: Player book..."_s, u"mcheck: Check connection..."_s,
                              u"mrecord: Record traffic..."_s}));
    }

    void theHelpMenuHasItsItems()
    {
        Program program;
        QCOMPARE(items(menu(program, u"Help"_s)),
                 QStringList({u"mhelpsite: Visit Web Site"_s, u"mhelpforum: Visit forum"_s, separator,
                              u"helpabout: About"_s, u"helpinfo: Version 1.0.0 - 10/Nov/2005"_s}));
    }

    void theHelpItemsOpenTheirPages()
    {
        Program program;
        program.start();
        program.trigger(u"mhelpsite"_s);
        QCOMPARE(opened, QStringList{WebAddress::site.toString()});
        program.trigger(u"mhelpforum"_s);
        QCOMPARE(opened.mid(1), QStringList{WebAddress::forum.toString()});
    }

    void thePasswordsLabelOpensThePageOfTheMod()
    {
        Program program;
        program.start();
        QTest::mouseClick(program.find<QLabel>(u"Label3"_s), Qt::LeftButton);
        QCOMPARE(opened, QStringList{WebAddress::hobMod.toString()});
        QTest::mouseClick(program.find<QLabel>(u"Label1"_s), Qt::LeftButton);
        QTest::mouseClick(program.find<QLabel>(u"Label3"_s), Qt::RightButton);
        QCOMPARE(opened.size(), 1);
    }

    void theThreePagesDiffer()
    {
        QVERIFY(WebAddress::site != WebAddress::forum);
        QVERIFY(WebAddress::site != WebAddress::hobMod);
        QVERIFY(WebAddress::forum != WebAddress::hobMod);
    }

private:
    QStringList opened;
};

WINDOW_TEST(MainWindowMenusTest)
#include "tst_main_window_menus.moc"
