// SPDX-License-Identifier: MIT
#include "hob.h"

#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QStyleOptionSlider>
#include <QTimer>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

/// A percentage that was refused.
QString refusal(const QString &weapons)
{
    return weapons + u" allow Value should be a percentage between 0 and 100"_s;
}

/// The middle of a part of a scroll bar, as it is drawn.
QPoint middleOf(QStyle::SubControl part, const QScrollBar &bar)
{
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.state &= ~QStyle::State_Horizontal;
    option.orientation = bar.orientation();
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.sliderPosition = bar.sliderPosition();
    option.sliderValue = bar.value();
    option.singleStep = bar.singleStep();
    option.pageStep = bar.pageStep();
    option.upsideDown = bar.invertedAppearance();
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar).center();
}

void turnWheel(QScrollBar &bar, int by)
{
    const QPointF middle = QRectF(bar.rect()).center();
    QWheelEvent turn(middle, bar.mapToGlobal(middle), {}, {0, by}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                     false);
    QApplication::sendEvent(&bar, &turn);
}

} // namespace

/// The window itself: its texts, its hints and what it does with what is typed.
class HobWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theModsTabOpensIt()
    {
        Program program;
        program.start();
        QVERIFY(hobWindows().isEmpty());
        QStringList labels;
        for (const QLabel *label : program.find<QWidget>(u"ModsPage"_s)->findChildren<QLabel *>())
            labels.append(label->text());
        QVERIFY(labels.contains(u"No MODS supported yet."_s));
        QCOMPARE(program.text(u"cmdhob"_s), u"HOB settings..."_s);
        program.click(u"cmdhob"_s);
        program.click(u"cmdhob"_s);
        QCOMPARE(hobWindows().size(), 1);
        QCOMPARE(hobWindows().constFirst()->windowTitle(), u"Heat of Battle server variables"_s);
        QVERIFY2(!hobWindows().constFirst()->isModal(), "the main window can be used besides");
    }

    void exitUnloadsIt()
    {
        const Hob hob;
        Hob::box(u"chkobi"_s)->click();
        Hob::text(u"txtwave"_s)->setText(u"7"_s);
        hob.click(u"cmdexit"_s);
        QVERIFY(hobWindows().isEmpty());
        hob.program.click(u"cmdhob"_s);
        QVERIFY(!Hob::box(u"chkobi"_s)->isChecked());
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), QString());
    }

    void itGoesWithTheMainWindow()
    {
        Hob hob(false);
        QVERIFY(hob.program.window.close());
        QVERIFY(hobWindows().isEmpty());
    }

    void theControlsHaveTheirTexts()
    {
        const Hob hob(false);
        QStringList titles;
        for (const QGroupBox *frame : Hob::window()->findChildren<QGroupBox *>())
            titles.append(frame->title());
        QVERIFY(titles.contains(u"Heat of Battle server variables for Version 3"_s));
        const auto *populate = Hob::find<QAbstractButton>(u"cmdhobpop"_s);
        QCOMPARE(populate->text(), u"Populate from server"_s);
        QCOMPARE(populate->toolTip(), u"Check existing settings on server and sets below fields up"_s);
        const auto *send = Hob::find<QAbstractButton>(u"cmdhobset"_s);
        QCOMPARE(send->text(), u"Send current to server"_s);
        QCOMPARE(send->toolTip(), u"Send setting to server, blanks will be ignored."_s);
        const auto *mode = Hob::find<QAbstractButton>(u"cmdsethob"_s);
        QCOMPARE(mode->text(), u"Set Gametype to HOB"_s);
        QCOMPARE(mode->toolTip(), u"Set g_gametype HOB"_s);
        QCOMPARE(Hob::find<QAbstractButton>(u"cmdexit"_s)->text(), u"Exit"_s);
        QVERIFY(!Hob::find<QLabel>(u"pichob"_s)->pixmap().isNull());
    }

    void everySwitchHasItsVariableAndHint_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("variable");
        QTest::addColumn<QString>("hint");
        const auto add = [](const char *box, const QString &caption, const QString &variable, const QString &hint) {
            QTest::newRow(box) << QString::fromLatin1(box) << caption << u"scr_hob_"_s + variable << hint;
        };
        add("chkspawn", u"Spawn zone protection"_s, u"enableSpawnProtection"_s,
            u"Spawn Zone protection (Requires HOB compliant maps)"_s);
        add("chkdb", u"Dynamic bombs limiting"_s, u"dynamicLimitBombs"_s,
            u"Bomb plant/Defuse limiting.(Based on # of people on server)"_s);
        add("chkdf", u"Dynamic flags limiting"_s, u"dynamicLimitFlags"_s,
            u"Flag capping limiting.(Based on # of people on server)"_s);
        add("chkdw", u"Dynamic weapon limiting"_s, u"dynamicLimitWeapons"_s,
            u"Weapon limiting (Based on # of people on server)"_s);
        add("chkshell", u"Shell shock from nearby grenades"_s, u"shellshock"_s, u"Shell shock from nearly grenades."_s);
        add("chkdrop", u"Drop weapon on arm/leg shot"_s, u"dropWeapon"_s, u"Drop the weapon when shot in arm."_s);
        add("chkshot", u"Foot / Leg shot "_s, u"trip"_s, u"Enable/Disable Foot/Leg tripping Code."_s);
        add("chkobi", u"Show Obituary"_s, u"showObituary"_s, u"Show Obitory when people Die."_s);
        add("chkannouncespawn", u"Announce Spawn Campers"_s, u"announceSpawnCampers"_s, u"Announce spawn campers."_s);
    }

    void everySwitchHasItsVariableAndHint()
    {
        QFETCH(QString, box);
        const Hob hob(false);
        auto *found = Hob::box(box);
        QTEST(found->text(), "caption");
        QTEST(found->tag, "variable");
        found->click();
        QTEST(Hob::hint(), "hint");
    }

    void everyBoxHasItsVariableAndHint_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("variable");
        QTest::addColumn<QString>("hint");
        QTest::newRow("txtrifle") << u"Rifle allow percentage"_s << u"scr_hob_ riflePercentage"_s
                                  << u"Rifle allowed percentage 0 to 100"_s;
        QTest::newRow("txtsup") << u"Support weapons allow percentage"_s << u"scr_hob_ supportPercentage"_s
                                << u"Support allowed percentage 0 to 100"_s;
        QTest::newRow("txtsmg") << u"SMG allow percentage"_s << u"scr_hob_ smgPercentage"_s
                                << u"SMG allowed percentage 0 to 100"_s;
        QTest::newRow("txtsniper") << u"Sniper allow percentage"_s << u"scr_hob_ sniperPercentage"_s
                                   << u"Sniper allowed percentage 0 to 100"_s;
        QTest::newRow("txtwave") << u"Wave respawn"_s << u"scr_hob_respawntime"_s
                                 << u"Wave respawn time interval, 1 to 30 seconds"_s;
    }

    void everyBoxHasItsVariableAndHint()
    {
        const Hob hob(false);
        auto *box = Hob::text(QString::fromLatin1(QTest::currentDataTag()));
        QString label;
        for (const QLabel *each : Hob::window()->findChildren<QLabel *>()) {
            if (each->buddy() == box)
                label = each->text();
        }
        QTEST(label, "label");
        QTEST(box->tag, "variable");
        Hob::leave();
        box->setFocus();
        QTEST(Hob::hint(), "hint");
    }

    void aScrollBarWritesItsNumber_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("bar");
        QTest::newRow("rifle") << u"txtrifle"_s << u"vsrifle"_s;
        QTest::newRow("support") << u"txtsup"_s << u"vssup"_s;
        QTest::newRow("smg") << u"txtsmg"_s << u"vssmg"_s;
        QTest::newRow("sniper") << u"txtsniper"_s << u"vssniper"_s;
    }

    void aScrollBarWritesItsNumber()
    {
        QFETCH(QString, box);
        QFETCH(QString, bar);
        const Hob hob(false);
        QScrollBar *found = Hob::bar(bar);
        QCOMPARE(found->orientation(), Qt::Vertical);
        QCOMPARE(found->minimum(), 0);
        QCOMPARE(found->maximum(), 100);
        for (const int number : {37, 100, 0}) {
            found->setValue(number);
            QCOMPARE(Hob::text(box)->text(), QString::number(number));
            QVERIFY(Hob::text(box)->dataChanged());
        }
    }

    // 100 is at the top, and a wheel that is turned upwards leads there.
    void aScrollBarFollowsTheWheel()
    {
        const Hob hob(false);
        QScrollBar *bar = Hob::bar(u"vsrifle"_s);
        QVERIFY(bar->invertedAppearance());
        bar->setValue(50);
        turnWheel(*bar, 120);
        QVERIFY(bar->value() > 50);
        QCOMPARE(Hob::text(u"txtrifle"_s)->text(), QString::number(bar->value()));
        turnWheel(*bar, -120);
        QCOMPARE(bar->value(), 50);
    }

    void theArrowsAndTheGrooveLeadWhereTheyAre_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("bar");
        QTest::newRow("rifle") << u"txtrifle"_s << u"vsrifle"_s;
        QTest::newRow("support") << u"txtsup"_s << u"vssup"_s;
        QTest::newRow("smg") << u"txtsmg"_s << u"vssmg"_s;
        QTest::newRow("sniper") << u"txtsniper"_s << u"vssniper"_s;
    }

    void theArrowsAndTheGrooveLeadWhereTheyAre()
    {
        QFETCH(QString, box);
        QFETCH(QString, bar);
        const Hob hob(false);
        QScrollBar *found = Hob::bar(bar);
        const QPoint lower = middleOf(QStyle::SC_ScrollBarAddLine, *found);
        const QPoint upper = middleOf(QStyle::SC_ScrollBarSubLine, *found);
        found->setValue(40);
        const QPoint below = middleOf(QStyle::SC_ScrollBarAddPage, *found);
        const QPoint slider = middleOf(QStyle::SC_ScrollBarSlider, *found);
        const QPoint above = middleOf(QStyle::SC_ScrollBarSubPage, *found);
        QVERIFY(upper.y() < above.y() && above.y() < slider.y() && slider.y() < below.y() && below.y() < lower.y());
        for (const auto &[place, start, end] : std::initializer_list<std::tuple<QPoint, int, int>>{
                 {upper, 40, 41},
                 {lower, 40, 39},
                 {above, 40, 50},
                 {below, 40, 30},
                 {slider, 40, 40},
                 {upper, 0, 1},
                 {lower, 0, 0},
                 {upper, 100, 100},
                 {lower, 100, 99},
             }) {
            found->setValue(start);
            QTest::mouseClick(found, Qt::LeftButton, {}, place);
            QCOMPARE(found->value(), end);
            QCOMPARE(Hob::text(box)->text(), QString::number(end));
        }
    }

    void anArrowThatIsHeldGoesOn()
    {
        const Hob hob(false);
        QScrollBar *bar = Hob::bar(u"vsrifle"_s);
        const QPoint upper = middleOf(QStyle::SC_ScrollBarSubLine, *bar);
        bar->setValue(10);
        QTest::mousePress(bar, Qt::LeftButton, {}, upper);
        QTRY_VERIFY(bar->value() >= 14);
        QTest::mouseRelease(bar, Qt::LeftButton, {}, upper);

        // The mouse leaves the arrow and comes back with the button still down.
        const QPoint lower = middleOf(QStyle::SC_ScrollBarAddLine, *bar);
        bar->setValue(50);
        QTest::mousePress(bar, Qt::LeftButton, {}, lower);
        for (const QPoint place : {lower + QPoint(200, 0), lower}) {
            QMouseEvent move(QEvent::MouseMove, place, bar->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(bar, &move);
        }
        QCOMPARE(bar->value(), 48);
        QTRY_VERIFY(bar->value() <= 44);
        QTest::mouseRelease(bar, Qt::LeftButton, {}, lower);
    }

    void theGrooveThatIsHeldLeadsToTheMouse()
    {
        const Hob hob(false);
        QScrollBar *bar = Hob::bar(u"vsrifle"_s);
        bar->setValue(80);
        const QPoint there = middleOf(QStyle::SC_ScrollBarSlider, *bar);
        bar->setValue(10);
        QTest::mousePress(bar, Qt::LeftButton, {}, there);
        QCOMPARE(bar->value(), 20);
        QTRY_VERIFY(qAbs(bar->value() - 80) <= 5);
        QTest::mouseRelease(bar, Qt::LeftButton, {}, there);
    }

    void theSliderFollowsTheMouse()
    {
        const Hob hob(false);
        QScrollBar *bar = Hob::bar(u"vsrifle"_s);
        bar->setValue(50);
        const QPoint slider = middleOf(QStyle::SC_ScrollBarSlider, *bar);
        QTest::mousePress(bar, Qt::LeftButton, {}, slider);
        for (const int by : {-5, 5}) {
            const QPoint place = slider + QPoint(0, by);
            QMouseEvent move(QEvent::MouseMove, place, bar->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(bar, &move);
            QVERIFY(by < 0 ? bar->value() > 50 : bar->value() < 50);
            QCOMPARE(Hob::text(u"txtrifle"_s)->text(), QString::number(bar->value()));
        }
        QTest::mouseRelease(bar, Qt::LeftButton, {}, slider);
    }

    void theKeysMoveTheSlider()
    {
        const Hob hob(false);
        QScrollBar *bar = Hob::bar(u"vsrifle"_s);
        for (const auto &[key, number] : std::initializer_list<std::pair<Qt::Key, int>>{{Qt::Key_Up, 51},
                                                                                        {Qt::Key_Down, 49},
                                                                                        {Qt::Key_PageUp, 60},
                                                                                        {Qt::Key_PageDown, 40},
                                                                                        {Qt::Key_Home, 0},
                                                                                        {Qt::Key_End, 100}}) {
            bar->setValue(50);
            QTest::keyClick(bar, key);
            QCOMPARE(bar->value(), number);
        }
    }

    void theMenuOfAScrollBarLeadsWhereItSays()
    {
        const Hob hob(false);
        QScrollBar *bar = Hob::bar(u"vsrifle"_s);
        const auto choose = [bar](const QString &entry) {
            QTimer::singleShot(0, bar, [entry] {
                auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
                for (QAction *action : menu ? menu->actions() : QList<QAction *>()) {
                    if (action->text() == entry)
                        return QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                }
                QTest::qFail("the menu has no such entry", __FILE__, __LINE__);
                if (menu)
                    menu->close();
            });
            QContextMenuEvent asked(QContextMenuEvent::Mouse, bar->rect().center(),
                                    bar->mapToGlobal(bar->rect().center()));
            QApplication::sendEvent(bar, &asked);
        };
        for (const auto &[entry, number] : std::initializer_list<std::pair<QString, int>>{{u"Top"_s, 100},
                                                                                          {u"Bottom"_s, 0},
                                                                                          {u"Page up"_s, 60},
                                                                                          {u"Page down"_s, 40},
                                                                                          {u"Scroll up"_s, 51},
                                                                                          {u"Scroll down"_s, 49}}) {
            bar->setValue(50);
            choose(entry);
            QCOMPARE(bar->value(), number);
        }
    }

    void aPercentageIsCheckedAtEveryChange_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("number"); ///< -1 when it is refused
        QTest::newRow("0") << u"0"_s << 0;
        QTest::newRow("100") << u"100"_s << 100;
        QTest::newRow("55") << u"55"_s << 55;
        QTest::newRow("101") << u"101"_s << -1;
        QTest::newRow("below all") << u"-1"_s << -1;
        QTest::newRow("nothing") << QString() << -1;
        QTest::newRow("a word") << u"all"_s << -1;
        QTest::newRow("beyond 16 bits") << u"70000"_s << -1;
        QTest::newRow("a fraction that rounds to 100") << u"100.4"_s << 100;
    }

    void aPercentageIsCheckedAtEveryChange()
    {
        QFETCH(QString, typed);
        QFETCH(int, number);
        const Hob hob(false);
        for (const auto &[box, bar, weapons] :
             std::initializer_list<std::tuple<QString, QString, QString>>{{u"txtrifle"_s, u"vsrifle"_s, u"Rifle"_s},
                                                                          {u"txtsmg"_s, u"vssmg"_s, u"SMG"_s},
                                                                          {u"txtsup"_s, u"vssup"_s, u"Support"_s}}) {
            Hob::bar(bar)->setValue(50);
            Hob::leave();
            Hob::text(box)->setText(typed);
            QCOMPARE(Hob::bar(bar)->value(), std::max(number, 0));
            QCOMPARE(Hob::text(box)->text(), number < 0 ? u"0"_s : typed);
            QCOMPARE(Hob::hint() == refusal(weapons), number < 0);
            QCOMPARE(QApplication::focusWidget() == Hob::text(box), number < 0);
        }
        QVERIFY(hob.program.prompts.asked.isEmpty());
    }

    void typing101IntoTheRifleBoxRefusesIt()
    {
        const Hob hob(false);
        Hob::type(u"txtrifle"_s, u"10"_s);
        QCOMPARE(Hob::bar(u"vsrifle"_s)->value(), 10);
        QTest::keyClicks(Hob::text(u"txtrifle"_s), u"1"_s);
        QCOMPARE(Hob::text(u"txtrifle"_s)->text(), u"0"_s);
        QCOMPARE(Hob::bar(u"vsrifle"_s)->value(), 0);
        QCOMPARE(Hob::hint(), u"Rifle allow Value should be a percentage between 0 and 100"_s);
        QCOMPARE(QApplication::focusWidget(), Hob::text(u"txtrifle"_s));
    }

    void theSnipersPercentageIsCheckedWhenItsBoxIsLeft()
    {
        const Hob hob(false);
        QCOMPARE(Hob::text(u"txtsniper"_s)->text(), u"0"_s);
        QVERIFY(!Hob::text(u"txtsniper"_s)->dataChanged());
        Hob::type(u"txtsniper"_s, u"60"_s);
        QCOMPARE(Hob::bar(u"vssniper"_s)->value(), 0);
        Hob::leave();
        QCOMPARE(Hob::bar(u"vssniper"_s)->value(), 60);
        Hob::type(u"txtsniper"_s, u"101"_s);
        QCOMPARE(Hob::text(u"txtsniper"_s)->text(), u"101"_s);
        QVERIFY(Hob::hint() != refusal(u"Sniper"_s));
        Hob::leave();
        QCOMPARE(Hob::text(u"txtsniper"_s)->text(), u"0"_s);
        QCOMPARE(Hob::bar(u"vssniper"_s)->value(), 0);
        QCOMPARE(Hob::hint(), refusal(u"Sniper"_s));
        QCOMPARE(QApplication::focusWidget(), Hob::text(u"txtsniper"_s));
    }

    void theWaveTimeIsCheckedWhenItsBoxIsLeft_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("title"); ///< of the box; none when it is right
        QTest::addColumn<QString>("text");
        const QString range = u"Value between 1 and 30 please"_s;
        const QString word = u"Numeric value between 1 and 30 please"_s;
        QTest::newRow("0") << u"0"_s << u"Invalid Value"_s << range;
        QTest::newRow("31") << u"31"_s << u"Invalid Value"_s << range;
        QTest::newRow("below all") << u"-5"_s << u"Invalid Value"_s << range;
        QTest::newRow("a word") << u"abc"_s << u"Number Field"_s << word;
        QTest::newRow("a unit") << u"5s"_s << u"Number Field"_s << word;
        QTest::newRow("1") << u"1"_s << QString() << QString();
        QTest::newRow("30") << u"30"_s << QString() << QString();
    }

    void theWaveTimeIsCheckedWhenItsBoxIsLeft()
    {
        QFETCH(QString, typed);
        QFETCH(QString, title);
        QFETCH(QString, text);
        Hob hob(false);
        Hob::type(u"txtwave"_s, typed);
        Hob::leave();
        const Box box{title, text, BoxIcon::Information, BoxButtons::Ok};
        QCOMPARE(hob.program.prompts.takeBoxes(), title.isEmpty() ? QList<Box>() : QList<Box>{box});
        QCOMPARE(QApplication::focusWidget() == Hob::text(u"txtwave"_s), !title.isEmpty());
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), typed);
    }

    void anUneditedWaveTimeIsNotChecked()
    {
        const Hob hob(false);
        Hob::text(u"txtwave"_s)->setFocus();
        Hob::leave();
        QVERIFY(QApplication::focusWidget() != Hob::text(u"txtwave"_s));
    }
};

WINDOW_TEST(HobWindowTest)
#include "tst_hob_window.moc"
