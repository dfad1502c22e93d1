// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QGroupBox>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

bool isInside(const QWidget *widget, const QString &frame)
{
    for (; widget; widget = widget->parentWidget()) {
        const auto *box = qobject_cast<const QGroupBox *>(widget);
        if (box && box->title() == frame)
            return true;
    }
    return false;
}

} // namespace

/// The form of the "Server" tab.
class ServerPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aTextIsBoundToItsVariable_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("initial");
        QTest::newRow("txtservername") << u"Server Name"_s << u"sv_hostname"_s << u"sv_hostname"_s << u""_s;
        QTest::newRow("txtmaxclients") << u"Max Clients"_s << u"sv_maxclients"_s << u"sv_maxclients"_s << u""_s;
        QTest::newRow("txtmaxping") << u"Max Ping"_s << u"sv_maxping"_s << u"sv_maxping"_s << u""_s;
        QTest::newRow("txtmaxrate") << u"Max Rate"_s << u"sv_maxrate"_s << u"sv_maxrate"_s << u""_s;
        QTest::newRow("txtbantime") << u"Temporary ban duration in seconds"_s
                                    << u"sv_kickbantime (Default 300) unit in seconds"_s << u"sv_kickbantime"_s
                                    << u"300"_s;
        QTest::newRow("txtservermotd") << u"Server MOTD"_s << u"scr_motd"_s << u"scr_motd"_s << u""_s;
        QTest::newRow("txtservpass") << u"Server password"_s << u"g_password"_s << u"g_password"_s << u""_s;
    }

    void aTextIsBoundToItsVariable()
    {
        QFETCH(QString, label);
        QFETCH(QString, tip);
        QFETCH(QString, tag);
        QFETCH(QString, initial);
        const Program program;
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        const auto *box = program.find<TextBox>(name);
        QCOMPARE(labelOf(program, name)->text(), label);
        QCOMPARE(labelOf(program, name)->toolTip(), tip);
        QCOMPARE(box->tag, tag);
        QCOMPARE(box->text(), initial);
        QVERIFY2(!box->dataChanged(), "nobody has edited it");
    }

    void aSwitchIsBoundToItsVariable_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QString>("tag");
        QTest::newRow("chkkillcam") << u"Kill Cam "_s << u"scr_killcam"_s << u"scr_killcam"_s;
        QTest::newRow("chkteamicons") << u"Team Icons"_s << u"scr_drawfriend"_s << u"scr_drawfriend"_s;
        QTest::newRow("chkteambal") << u"Team Balance"_s << u"scr_teambalance"_s << u"scr_teambalance"_s;
        QTest::newRow("chkspecenemy") << u"Spectate enemy"_s << u"scr_spectateenemy"_s << u"scr_spectateenemy"_s;
        QTest::newRow("chkvoting") << u"Allow Voting"_s << u"scr_allow_vote & g_allowvote"_s << u"scr_allow_vote"_s;
        // Its tool tip names another variable than the one that it shows and sets.
        QTest::newRow("chkfreelook") << u"Free Look"_s << u"scr_freelook"_s << u"cl_freelook"_s;
    }

    void aSwitchIsBoundToItsVariable()
    {
        QFETCH(QString, caption);
        QFETCH(QString, tip);
        QFETCH(QString, tag);
        const Program program;
        const auto *box = program.find<CheckBox>(QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(box->text(), caption);
        QCOMPARE(box->toolTip(), tip);
        QCOMPARE(box->tag, tag);
        QVERIFY(!box->isChecked());
        QVERIFY(!box->dataChanged());
    }

    void friendlyFireHasFourModesAndItsButton()
    {
        const Program program;
        const QStringList captions{u"Off"_s, u"On"_s, u"Reflective"_s, u"Shared"_s};
        for (int mode = 0; mode < 4; ++mode) {
            const auto *option = program.find<QRadioButton>(u"optff_"_s + QString::number(mode));
            QCOMPARE(option->text(), captions.at(mode));
            QCOMPARE(option->toolTip(), u"set friendlyfire "_s + QString::number(mode));
            QVERIFY2(!option->isChecked(), "nothing is known yet");
        }
        QCOMPARE(program.text(u"cmdff"_s), u"Set Friendly Fire >>"_s);
        QCOMPARE(program.find<Button>(u"cmdff"_s)->tag, u"scr_friendlyfire"_s);
    }

    void theFriendlyFireModesExcludeEachOther()
    {
        const Program program;
        for (const QString &chosen : {u"optff_3"_s, u"optff_0"_s, u"optff_2"_s, u"optff_1"_s}) {
            program.click(chosen);
            for (int mode = 0; mode < 4; ++mode) {
                const QString name = u"optff_"_s + QString::number(mode);
                QCOMPARE(program.find<QRadioButton>(name)->isChecked(), name == chosen);
            }
        }
    }

    void theButtonsSayWhatTheyDo()
    {
        const Program program;
        QCOMPARE(program.text(u"cmdservpop"_s), u"Populate from server"_s);
        QCOMPARE(program.find<QWidget>(u"cmdservpop"_s)->toolTip(),
                 u"Check existing settings on server and sets below fields up"_s);
        QCOMPARE(program.text(u"cmdservsetbasics"_s), u"Send current to server"_s);
        QCOMPARE(program.find<QWidget>(u"cmdservsetbasics"_s)->toolTip(),
                 u"Send setting to server, blanks will be ignored."_s);
        QCOMPARE(program.text(u"cmdservsetpass"_s), u"Set"_s);
        QCOMPARE(program.text(u"cmdservrempass"_s), u"Remove"_s);
    }

    void thePasswordIsAmongTheCommonSettings()
    {
        const Program program;
        QVERIFY(isInside(program.find<QWidget>(u"txtservpass"_s), u"Common settings"_s));
    }

    void theTabIsTheFirst()
    {
        const Program program;
        const auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        QCOMPARE(tabs->tabText(0), u"Server"_s);
        QVERIFY(tabs->widget(0)->isAncestorOf(program.find<QWidget>(u"cmdservpop"_s)));
    }
};

WINDOW_TEST(ServerPageTest)
#include "tst_server_page.moc"
