// SPDX-License-Identifier: MIT
#include "activation.h"
#include "base/controls.h"
#include "base/dialog_prompts.h"
#include "base/focus.h"
#include "open_dialog.h"
#include "window_test.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

void activate(QWidget *window)
{
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        failTest(u"the window does not become active"_s);
}

/// A window with a box, a combo box, a button and a menu; it counts how often the first two have lost the focus.
class Form final {
public:
    Form()
    {
        auto *rows = new QVBoxLayout(&window);
        for (QWidget *control : std::initializer_list<QWidget *>{box, combo, button})
            rows->addWidget(control);
        combo->addItems({u"one"_s, u"two"_s});
        menu = bar->addMenu(u"File"_s);
        menu->addAction(u"Save"_s);
        rows->setMenuBar(bar);
        onLostFocus(box, [this] { ++boxLosses; });
        onLostFocus(combo, [this] { ++comboLosses; });
        activate(&window);
        box->setFocus();
    }

    QWidget window;
    QLineEdit *box = new QLineEdit;
    ComboBox *combo = new ComboBox;
    QPushButton *button = new QPushButton;
    QMenuBar *bar = new QMenuBar;
    QMenu *menu = nullptr;
    int boxLosses = 0;
    int comboLosses = 0;
};

} // namespace

class LostFocusTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void anotherControlTakesTheFocus()
    {
        Form form;
        QVERIFY(form.box->hasFocus());
        QCOMPARE(form.boxLosses, 0);
        form.button->setFocus();
        QCOMPARE(form.boxLosses, 1);
        form.combo->setFocus();
        QCOMPARE(form.boxLosses, 1);
        QCOMPARE(form.comboLosses, 0);
        form.box->setFocus();
        QCOMPARE(form.comboLosses, 1);
        QTest::keyClick(form.box, Qt::Key_Tab);
        QCOMPARE(form.boxLosses, 2);
    }

    void aClickOnAnotherControlCounts()
    {
        Form form;
        QTest::mouseClick(form.combo->lineEdit(), Qt::LeftButton);
        QVERIFY(form.combo->hasFocus());
        QCOMPARE(form.boxLosses, 1);
    }

    void aControlThatHadTheFocusBeforeIsWatchedToo()
    {
        Form form;
        int losses = 0;
        onLostFocus(form.box, [&] { ++losses; });
        form.button->setFocus();
        QCOMPARE(losses, 1);
    }

    void theOpenListOfAComboBoxIsNoLoss()
    {
        Form form;
        form.combo->setFocus();
        form.combo->showPopup();
        QTRY_VERIFY(form.combo->view()->isVisible());
        QCoreApplication::processEvents();
        QTest::keyClick(form.combo->view(), Qt::Key_Down);
        QCOMPARE(form.comboLosses, 0);
        QTest::keyClick(form.combo->view(), Qt::Key_Return);
        QTRY_VERIFY(!form.combo->view()->isVisible());
        QTRY_VERIFY(form.combo->hasFocus());
        QCOMPARE(form.comboLosses, 0);
        form.button->setFocus();
        QCOMPARE(form.comboLosses, 1);
    }

    void anOpenMenuIsNoLoss()
    {
        Form form;
        form.menu->popup(form.window.mapToGlobal(QPoint(0, 0)));
        QTRY_VERIFY(form.menu->isVisible());
        QCoreApplication::processEvents();
        form.menu->close();
        form.bar->setFocus(Qt::MenuBarFocusReason);
        QVERIFY(form.bar->hasFocus());
        form.box->setFocus();
        QCOMPARE(form.boxLosses, 0);
    }

    void aMessageBoxIsNoLoss()
    {
        Form form;
        DialogPrompts prompts;
        int lossesMeanwhile = -1;
        bool dialogHadFocus = false;
        onNextDialog<QDialog>([&](QDialog &dialog) {
            dialogHadFocus = dialog.isAncestorOf(QApplication::focusWidget());
            lossesMeanwhile = form.boxLosses;
        });
        prompts.refuse(u"No"_s, u"Box"_s);
        QVERIFY(dialogHadFocus);
        QCOMPARE(lossesMeanwhile, 0);
        activate(&form.window);
        QTRY_VERIFY(form.box->hasFocus());
        QCOMPARE(form.boxLosses, 0);
    }

    void anInputBoxIsNoLoss()
    {
        Form form;
        DialogPrompts prompts;
        bool dialogHadFocus = false;
        onNextDialog<QDialog>(
            [&](QDialog &dialog) { dialogHadFocus = dialog.isAncestorOf(QApplication::focusWidget()); });
        QVERIFY(prompts.askText(u"Text"_s, u"Title"_s, {}).isEmpty());
        QVERIFY(dialogHadFocus);
        activate(&form.window);
        QTRY_VERIFY(form.box->hasFocus());
        QCOMPARE(form.boxLosses, 0);
    }

    void theFocusThatGoesOnAfterAMessageBoxCounts()
    {
        Form form;
        DialogPrompts prompts;
        onNextDialog<QDialog>([](QDialog &) {});
        prompts.refuse(u"No"_s, u"Box"_s);
        activate(&form.window);
        form.button->setFocus();
        QCOMPARE(form.boxLosses, 1);
    }

    void aProgramThatLosesActivationIsNoLoss()
    {
        Form form;
        setActiveWindow(nullptr);
        QCOMPARE(QApplication::focusWidget(), nullptr);
        QCOMPARE(form.boxLosses, 0);
        setActiveWindow(&form.window);
        QVERIFY(form.box->hasFocus());
        QCOMPARE(form.boxLosses, 0);
    }

    void comingBackToAnotherControlCounts()
    {
        Form form;
        setActiveWindow(nullptr);
        form.button->setFocus(); // takes the focus as soon as the window is active again
        QCOMPARE(form.boxLosses, 0);
        setActiveWindow(&form.window);
        QVERIFY(form.button->hasFocus());
        QCOMPARE(form.boxLosses, 1);
    }

    void aControlOfAnotherWindowOfTheProgramCounts()
    {
        Form form;
        Form other;
        QVERIFY(other.box->hasFocus());
        QCOMPARE(form.boxLosses, 1);
        QCOMPARE(other.boxLosses, 0);
        activate(&form.window);
        QTRY_VERIFY(form.box->hasFocus());
        QCOMPARE(other.boxLosses, 1);
        QCOMPARE(form.boxLosses, 1);
    }

    void aControlThatIsGoneIsNotWatched()
    {
        Form form;
        auto losses = std::make_shared<int>(0);
        auto *second = new QLineEdit(&form.window);
        onLostFocus(second, [losses] { ++*losses; });
        second->show();
        second->setFocus();
        QVERIFY(second->hasFocus());
        delete second;
        form.box->setFocus();
        form.button->setFocus();
        QCOMPARE(*losses, 0);
    }
};

WINDOW_TEST(LostFocusTest)
#include "tst_lost_focus.moc"
