// SPDX-License-Identifier: MIT
#include "base/controls.h"
#include "window_test.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QStyleOptionButton>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

/// A combo box of three maps on the screen, with the focus.
class Maps final {
public:
    Maps()
    {
        box.addItems({u"mp_toujane"_s, u"mp_carentan"_s, u"mp_villa"_s});
        box.setCurrentIndex(1);
        box.show();
        if (!QTest::qWaitForWindowActive(&box))
            qFatal("the window does not become active");
        box.setFocus();
    }

    void turnWheel()
    {
        const QPoint middle = box.rect().center();
        QWheelEvent turn(middle, box.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &turn);
    }

    /// Presses the mouse on the arrow at the right.
    void pressArrow() { QTest::mousePress(&box, Qt::LeftButton, {}, {box.width() - 5, box.height() / 2}); }
    [[nodiscard]] bool isOpen() const { return box.view()->isVisible(); }

    ComboBox box;
};

/// A check box on the screen, wide enough for its caption.
class Tick final {
public:
    Tick()
    {
        box.setText(u"Query Mode"_s);
        box.show();
        if (!QTest::qWaitForWindowExposed(&box))
            qFatal("the window does not appear");
    }

    [[nodiscard]] QPoint onBox() const { return middleOf(QStyle::SE_CheckBoxIndicator); }
    [[nodiscard]] QPoint onCaption() const { return middleOf(QStyle::SE_CheckBoxContents); }

    /// What shows up when the mouse rests there.
    [[nodiscard]] QString shownAt(QPoint place)
    {
        QToolTip::hideText();
        QHelpEvent rest(QEvent::ToolTip, place, box.mapToGlobal(place));
        QApplication::sendEvent(&box, &rest);
        return QToolTip::text();
    }

    CheckBox box;

private:
    [[nodiscard]] QPoint middleOf(QStyle::SubElement part) const
    {
        QStyleOptionButton option;
        option.initFrom(&box);
        option.text = box.text();
        return box.style()->subElementRect(part, &option, &box).center();
    }
};

/// A clickable label on the screen, and how often it was clicked.
class Link final {
public:
    Link() : clicks(&label, &ClickLabel::clicked)
    {
        label.setText(u"Mod site"_s);
        label.resize(100, 20);
        label.show();
        if (!QTest::qWaitForWindowActive(&label))
            qFatal("the window does not become active");
    }

    ClickLabel label;
    QSignalSpy clicks;
};

} // namespace

class ControlsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aButtonCarriesItsTag()
    {
        Button button;
        QCOMPARE(button.tag, QString());
        QVERIFY(button.setProperty("Tag", u"YES"_s));
        QCOMPARE(button.tag, u"YES"_s);
        button.tag = u"NO"_s;
        QCOMPARE(button.property("Tag").toString(), u"NO"_s);
    }

    void aLockedLineTakesNoTypingAndLooksLikeTheWindow()
    {
        QLineEdit line;
        const QColor unlocked = line.palette().color(QPalette::Base);
        lockLine(&line, true);
        QTest::keyClicks(&line, u"abc"_s);
        QCOMPARE(line.text(), QString());
        QCOMPARE(line.palette().color(QPalette::Base), line.palette().color(QPalette::Window));
        lockLine(&line, false);
        QTest::keyClicks(&line, u"abc"_s);
        QCOMPARE(line.text(), u"abc"_s);
        QCOMPARE(line.palette().color(QPalette::Base), unlocked);
    }

    void aLockedBoxTakesNoTyping()
    {
        Maps maps;
        maps.box.setLocked(true);
        QVERIFY(maps.box.isLocked());
        QTest::keyClicks(&maps.box, u"abc"_s);
        QTest::keyClick(&maps.box, Qt::Key_Backspace);
        QCOMPARE(maps.box.currentText(), u"mp_carentan"_s);
    }

    void aLockedBoxKeepsItsChoiceOnKeysAndWheel()
    {
        Maps maps;
        maps.box.setLocked(true);
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Return}) {
            QTest::keyClick(&maps.box, key);
            QCOMPARE(maps.box.currentIndex(), 1);
        }
        maps.turnWheel();
        QCOMPARE(maps.box.currentIndex(), 1);
        QCOMPARE(maps.box.currentText(), u"mp_carentan"_s);
    }

    void aLockedBoxDoesNotOpenItsList()
    {
        Maps maps;
        maps.box.setLocked(true);
        maps.pressArrow();
        QVERIFY(!maps.isOpen());
        QTest::keyClick(&maps.box, Qt::Key_Down, Qt::AltModifier);
        QVERIFY(!maps.isOpen());
        QTest::keyClick(&maps.box, Qt::Key_F4);
        QVERIFY(!maps.isOpen());
    }

    void theProgramSetsTheTextOfALockedBox()
    {
        Maps maps;
        maps.box.setLocked(true);
        maps.box.setEditText(u"127.0.0.1"_s);
        QCOMPARE(maps.box.currentText(), u"127.0.0.1"_s);
        QCOMPARE(maps.box.lineEdit()->displayText(), u"127.0.0.1"_s);
        maps.box.setCurrentIndex(2);
        QCOMPARE(maps.box.currentText(), u"mp_villa"_s);
    }

    void anUnlockedBoxIsEditedAndChosenFromAgain()
    {
        Maps maps;
        maps.box.setLocked(true);
        maps.box.setLocked(false);
        QVERIFY(!maps.box.isLocked());
        QTest::keyClick(&maps.box, Qt::Key_Down);
        QCOMPARE(maps.box.currentIndex(), 2);
        QTest::keyClick(&maps.box, Qt::Key_Up);
        QCOMPARE(maps.box.currentIndex(), 1);
        maps.turnWheel();
        QCOMPARE(maps.box.currentIndex(), 2);
        QTest::keyClicks(&maps.box, u"_x"_s);
        QCOMPARE(maps.box.currentText(), u"mp_villa_x"_s);
        maps.pressArrow();
        QTRY_VERIFY(maps.isOpen());
        maps.box.hidePopup();
    }

    void aBoxCompletesNothingThatIsTyped()
    {
        Maps maps;
        maps.box.clearEditText();
        QTest::keyClicks(&maps.box, u"mp_t"_s);
        QCOMPARE(maps.box.currentText(), u"mp_t"_s);
        QTest::keyClick(&maps.box, Qt::Key_Return);
        QCOMPARE(maps.box.currentText(), u"mp_t"_s);
    }

    void returnAddsNothingToTheList()
    {
        Maps maps;
        maps.box.setEditText(u"mp_harbor"_s);
        QTest::keyClick(&maps.box, Qt::Key_Return);
        QTest::keyClick(&maps.box, Qt::Key_Enter);
        QCOMPARE(maps.box.entries(), QStringList({u"mp_toujane"_s, u"mp_carentan"_s, u"mp_villa"_s}));
        QCOMPARE(maps.box.currentText(), u"mp_harbor"_s);
    }

    void aCheckBoxHasOneToolTipForItsBoxAndOneForItsCaption()
    {
        Tick tick;
        tick.box.setToolTip(u"of the box"_s);
        tick.box.setProperty("captionToolTip", u"of the caption"_s);
        QVERIFY(!tick.onBox().isNull() && tick.onBox() != tick.onCaption());
        QCOMPARE(tick.box.toolTipAt(tick.onBox()), u"of the box"_s);
        QCOMPARE(tick.box.toolTipAt(tick.onCaption()), u"of the caption"_s);
        QVERIFY(tick.shownAt(tick.onBox()).contains(u"of the box"_s));
        QVERIFY(tick.shownAt(tick.onCaption()).contains(u"of the caption"_s));
    }

    void aCaptionWithoutAToolTipHasThatOfTheBox()
    {
        Tick tick;
        tick.box.setToolTip(u"of the box"_s);
        QCOMPARE(tick.box.toolTipAt(tick.onBox()), u"of the box"_s);
        QCOMPARE(tick.box.toolTipAt(tick.onCaption()), u"of the box"_s);
    }

    void aToolTipOfACheckBoxIsWrappedAndNotReadAsMarkup()
    {
        Tick tick;
        const QString tip = u"Removes <b>^n</b> & all from names. If changed then call Populate again"_s;
        tick.box.setToolTip(tip);
        const QString shown = tick.shownAt(tick.onBox());
        QVERIFY(Qt::mightBeRichText(shown)); // other text stands in one line, however long
        QCOMPARE(QTextDocumentFragment::fromHtml(shown).toPlainText(), tip);
    }

    void aCheckBoxWithoutToolTipsShowsNone()
    {
        Tick tick;
        QCOMPARE(tick.box.toolTipAt(tick.onCaption()), QString());
        QCOMPARE(tick.shownAt(tick.onCaption()), QString());
        QVERIFY(!QToolTip::isVisible());
    }

    void aLabelIsClickedWithTheLeftButton()
    {
        Link link;
        QTest::mouseClick(&link.label, Qt::LeftButton);
        QCOMPARE(link.clicks.size(), 1);
        QTest::mouseClick(&link.label, Qt::RightButton);
        QTest::mouseClick(&link.label, Qt::MiddleButton);
        QCOMPARE(link.clicks.size(), 1);
    }

    void aLabelReachedWithTheTabKeyShowsTheFocus()
    {
        QWidget window;
        auto *line = new QLineEdit(&window);
        auto *label = new ClickLabel(&window);
        label->setGeometry(0, 40, 100, 20);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        line->setFocus();
        const QImage without = label->grab().toImage();
        QTest::keyClick(line, Qt::Key_Tab);
        QVERIFY(label->hasFocus());
        QVERIFY(label->grab().toImage() != without);
    }

    void aLabelLeftWithTheButtonDownIsNotClicked()
    {
        Link link;
        QTest::mousePress(&link.label, Qt::LeftButton);
        QTest::mouseRelease(&link.label, Qt::LeftButton, {}, {link.label.width() + 20, 5});
        QCOMPARE(link.clicks.size(), 0);
    }

    void aLabelIsPressedWithTheSpaceBarOnly()
    {
        Link link;
        QCOMPARE(link.label.focusPolicy(), Qt::TabFocus);
        link.label.setFocus();
        QVERIFY(link.label.hasFocus());
        QTest::keyClick(&link.label, Qt::Key_Space);
        QCOMPARE(link.clicks.size(), 1);
        QTest::keyClick(&link.label, Qt::Key_A);
        QTest::keyClick(&link.label, Qt::Key_Return);
        QCOMPARE(link.clicks.size(), 1);
    }
};

WINDOW_TEST_MAIN(ControlsTest)
#include "tst_controls.moc"
