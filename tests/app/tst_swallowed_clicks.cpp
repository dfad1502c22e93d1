// SPDX-License-Identifier: MIT
#include "base/dialog_prompts.h"
#include "open_dialog.h"
#include "practice/practice_server.h"
#include "tests/messages/cycler_tab.h"
#include "tests/mods/hob.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// The left button of the mouse, over a control, as the system tells it to the control's window.
class Mouse final {
public:
    explicit Mouse(const QWidget *control)
        : window(control->window()->windowHandle()), place(control->mapTo(control->window(), control->rect().center()))
    {
    }

    void press() const { QTest::mousePress(window, Qt::LeftButton, {}, place); }
    void release() const { QTest::mouseRelease(window, Qt::LeftButton, {}, place); }
    void click() const { QTest::mouseClick(window, Qt::LeftButton, {}, place); }

private:
    QWindow *window;
    QPoint place;
};

/// Opens a real box for each that is asked while this lives: the mouse's button is released over the button that is
/// below the box, and the box is answered after that.
class RealBoxes final {
public:
    RealBoxes(ScriptedPrompts &prompts_, const Mouse &mouse) : prompts(prompts_)
    {
        prompts.whileOpen = [mouse] {
            onNextDialog<QMessageBox>([mouse](QMessageBox &box) {
                mouse.release();
                QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
            });
            DialogPrompts().inform(u"Something is wrong"_s, u"Title"_s);
        };
    }
    ~RealBoxes() { prompts.whileOpen = nullptr; }
    Q_DISABLE_COPY_MOVE(RealBoxes)

private:
    ScriptedPrompts &prompts;
};

} // namespace

/// A mouse button is pressed over a button, and a box comes before it is released.
class SwallowedClicksTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aRefusedIntervalLeavesStartUnpressed()
    {
        CyclerTab cycler({"first"});
        auto *interval = cycler.program().find<QLineEdit>(u"txtinterval"_s);
        interval->setFocus();
        interval->selectAll();
        QTest::keyClicks(interval, u"abc"_s);
        const auto *start = cycler.program().find<QPushButton>(u"cmdmessstart"_s);
        const Mouse mouse(start);
        {
            const RealBoxes real(cycler.program().prompts, mouse);
            mouse.press();
        }
        QVERIFY(!start->isDown());
        const Box refused{u"Invalid Entry"_s, u"Value between 1 and 10 only please"_s, BoxIcon::Information,
                          BoxButtons::Ok};
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{refused});
        QVERIFY2(!cycler.isRunning(), "the click that was swallowed counts");

        mouse.click();
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{startBox(u"Ann"_s)});
        QVERIFY(cycler.isRunning());
    }

    void aRefusedWaveTimeLeavesSendUnpressed()
    {
        Hob hob;
        Hob::type(u"txtwave"_s, u"99"_s);
        const auto *send = Hob::find<QPushButton>(u"cmdhobset"_s);
        const Mouse mouse(send);
        {
            const RealBoxes real(hob.program.prompts, mouse);
            mouse.press();
        }
        QVERIFY(!send->isDown());
        const Box refused{u"Invalid Value"_s, u"Value between 1 and 30 please"_s, BoxIcon::Information, BoxButtons::Ok};
        QCOMPARE(hob.program.prompts.takeBoxes(), QList<Box>{refused});
        QVERIFY2(hob.server.requests().isEmpty(), "the click that was swallowed counts");

        Hob::type(u"txtwave"_s, u"9"_s);
        mouse.click();
        QCOMPARE(hob.program.prompts.takeBoxes(), QList<Box>{sendBox()});
        QVERIFY(!hob.server.requests().isEmpty());
    }

    void aNewSetLeavesDeleteSetUnpressed()
    {
        MessagesTab tab(threeSets());
        auto *name = tab.program.find<QComboBox>(u"commessset"_s);
        name->setFocus();
        name->lineEdit()->selectAll();
        QTest::keyClicks(name, u"Dora"_s);
        const auto *remove = tab.program.find<QPushButton>(u"cmdsetdel"_s);
        const Mouse mouse(remove);
        {
            const RealBoxes real(tab.program.prompts, mouse);
            mouse.press();
        }
        QVERIFY(!remove->isDown());
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{newSetBox()});
        QCOMPARE(tab.sets(), QStringList({u"Ann"_s, u"Ben"_s, u"Cem"_s, u"Dora"_s}));
    }

    // This button does not take the focus, so that it does not lose it to the box either.
    void aBoxThatComesByItselfLetsGoOfTheButtonThatIsDown()
    {
        CyclerTab cycler({"first", "second"});
        cycler.start();
        cycler.program().session.connected = false;
        cycler.tab.select(0);
        const auto *remove = cycler.program().find<QAbstractButton>(u"imgdel"_s);
        const Mouse mouse(remove);
        mouse.press();
        QVERIFY(remove->isDown());
        {
            const RealBoxes real(cycler.program().prompts, mouse);
            cycler.tick();
        }
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{noConnectionBox()});
        QVERIFY(!remove->isDown());
        QVERIFY2(cycler.tab.messages().size() == 2, "the click that was swallowed counts");
        mouse.click();
        QCOMPARE(cycler.tab.messages(), QStringList{u"second"_s});
    }
};

WINDOW_TEST(SwallowedClicksTest)
#include "tst_swallowed_clicks.moc"
