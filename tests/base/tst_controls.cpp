// SPDX-License-Identifier: MIT
#include "base/controls.h"
#include "base/fault.h"
#include "window_test.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QSignalSpy>
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
            failTest(u"the window does not become active"_s);
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
            failTest(u"the window does not appear"_s);
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
            failTest(u"the window does not become active"_s);
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

    void aBoundControlIsDescribedInItsForm()
    {
        TextBox line;
        QVERIFY(line.setProperty("Tag", u"sv_hostname"_s));
        QCOMPARE(line.tag, u"sv_hostname"_s);
        QVERIFY(!line.property("DataChanged").toBool());
        QVERIFY(line.setProperty("DataChanged", true) && line.dataChanged());

        CheckBox box;
        QVERIFY(box.setProperty("Tag", u"scr_killcam"_s));
        QCOMPARE(box.tag, u"scr_killcam"_s);
        QVERIFY(!box.property("DataChanged").toBool());
        QVERIFY(box.setProperty("DataChanged", true) && box.dataChanged());
    }

    void aChangedVariableIsSeenAndTold_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<QColor>("ink");
        QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("dark") << QColor(35, 35, 35) << QColor(Qt::white);
    }

    void aChangedVariableIsSeenAndTold()
    {
        QFETCH(QColor, ground);
        QFETCH(QColor, ink);
        TextBox line;
        CheckBox box;
        box.resize(box.sizeHint());
        const auto inCorner = [](QWidget &control, QPoint corner) {
            return control.grab().toImage().pixelColor(corner);
        };
        const auto check = [&](auto &control, QPoint corner) {
            QPalette colours;
            colours.setColor(QPalette::Base, ground);
            colours.setColor(QPalette::Text, ink);
            control.setPalette(colours);
            control.setAccessibleName(u"Max Ping"_s);
            control.setToolTip(u"sv_maxping"_s);
            control.setDataChanged(true);
            QVERIFY2(inCorner(control, corner) != ink, "no variable of the server, no mark");
            QCOMPARE(control.accessibleDescription(), QString());
            control.setDataChanged(false);

            control.tag = u"sv_maxping"_s;
            const QImage before = control.grab().toImage();
            control.setDataChanged(true);
            QCOMPARE(inCorner(control, corner), ink);
            QCOMPARE(control.accessibleDescription(), u"sv_maxping. Change not sent"_s);
            QCOMPARE(control.accessibleName(), u"Max Ping"_s);
            QCOMPARE(control.toolTip(), u"sv_maxping"_s);
            control.setDataChanged(false);
            QCOMPARE(control.grab().toImage(), before);
            QCOMPARE(control.accessibleDescription(), QString());
        };
        check(line, QPoint(2, 2));
        QStyleOptionButton option;
        option.initFrom(&box);
        check(box, box.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box).topLeft() + QPoint(1, 1));
    }

    void theMarkFollowsAChangeOfColours()
    {
        TextBox line;
        line.tag = u"sv_maxping"_s;
        line.setDataChanged(true);
        for (const QColor &ink : {QColor(Qt::black), QColor(Qt::white), QColor(Qt::red)}) {
            QPalette colours = line.palette();
            colours.setColor(QPalette::Text, ink);
            line.setPalette(colours);
            QCOMPARE(line.grab().toImage().pixelColor(2, 2), ink);
        }
    }

    void theMarkIsAnnouncedOnceForEachChange()
    {
        TextBox line;
        CheckBox box;
        QSignalSpy lineSpy(&line, &TextBox::datachangedset);
        QSignalSpy boxSpy(&box, &CheckBox::datachangedset);
        QTest::keyClicks(&line, u"abc"_s);
        box.click();
        box.click();
        QCOMPARE(lineSpy.size(), 1);
        QCOMPARE(boxSpy.size(), 1);
        QVERIFY(line.setProperty("DataChanged", false) && box.setProperty("DataChanged", false));
        QCOMPARE(lineSpy.size(), 2);
        QCOMPARE(boxSpy.size(), 2);
    }

    void aPastedLineBreakBecomesABlank_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("taken");
        QTest::newRow("line feed") << u"one\ntwo"_s << u"[one two]"_s;
        QTest::newRow("carriage return and line feed") << u"one\r\ntwo"_s << u"[one two]"_s;
        QTest::newRow("carriage return") << u"one\rtwo"_s << u"[one two]"_s;
        QTest::newRow("at both ends") << u"\none\r\n"_s << u"[ one ]"_s;
        QTest::newRow("two in a row") << u"one\n\ntwo\r\n\r\nthree"_s << u"[one  two  three]"_s;
        QTest::newRow("none") << u"one  two"_s << u"[one  two]"_s;
    }

    void aPastedLineBreakBecomesABlank()
    {
        QFETCH(QString, pasted);
        QFETCH(QString, taken);
        TextBox line;
        line.setText(u"[]"_s);
        line.setCursorPosition(1);
        line.setDataChanged(false);
        QGuiApplication::clipboard()->setText(pasted);
        line.paste();
        QCOMPARE(line.text(), taken);
        QCOMPARE(line.value(), taken);
        QVERIFY(line.dataChanged());
        QTest::keyClicks(&line, u"x"_s);
        QVERIFY2(line.text().endsWith(u"x]"), "typing goes on behind what was pasted");
    }

    void everyChangeOfATextMarksIt()
    {
        TextBox line;
        const auto marks = [&](const auto &change) {
            line.setDataChanged(false);
            change();
            return line.dataChanged();
        };
        QVERIFY(marks([&] { QTest::keyClicks(&line, u"a"_s); }));
        QVERIFY(marks([&] { QTest::keyClick(&line, Qt::Key_Backspace); }));
        QVERIFY(marks([&] { line.setText(u"by the program"_s); }));
        QVERIFY(marks([&] { line.setValue(u"read"_s); }));
        QCOMPARE(line.value(), u"read"_s);
        QVERIFY(!marks([&] { QTest::keyClick(&line, Qt::Key_Home); }));
    }

    void everyChangeOfACheckBoxMarksIt()
    {
        CheckBox box;
        const auto marks = [&](const auto &change) {
            box.setDataChanged(false);
            change();
            return box.dataChanged();
        };
        QCOMPARE(box.value(), u"0"_s);
        QVERIFY(marks([&] { box.click(); }));
        QCOMPARE(box.value(), u"1"_s);
        QVERIFY(marks([&] { QTest::keyClick(&box, Qt::Key_Space); }));
        QCOMPARE(box.value(), u"0"_s);
        QVERIFY(marks([&] { box.setChecked(true); }));
        QVERIFY(marks([&] { box.setValue(u"0"_s); }));
        QVERIFY(marks([&] { box.click(); }));
    }

    void aCheckBoxTakesAWholeNumber_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("state");
        for (const QString &value : {u"0"_s, u"00"_s, u"0.5"_s, u"-0.5"_s, u"0.4"_s, u"-0"_s})
            QTest::newRow(qPrintable(value)) << value << u"0"_s;
        for (const QString &value : {u"1"_s, u" 1 "_s, u"+1"_s, u"0.6"_s, u"1.4"_s, u"1e0"_s, u"1.5"_s, u"2"_s, u"-1"_s,
                                     u"-0.6"_s, u"32767"_s, u"-32768"_s})
            QTest::newRow(qPrintable(value)) << value << u"1"_s;
    }

    void aCheckBoxTakesAWholeNumber()
    {
        QFETCH(QString, value);
        QFETCH(QString, state);
        for (const bool before : {false, true}) {
            CheckBox box;
            box.setChecked(before);
            box.setValue(value);
            QCOMPARE(box.value(), state);
            QCOMPARE(box.isChecked(), state == u"1");
        }
    }

    void aCheckBoxRefusesAnythingElse_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("fault");
        QTest::newRow("abc") << u"abc"_s << 13;
        QTest::newRow("nothing") << u""_s << 13;
        QTest::newRow("true") << u"true"_s << 13;
        QTest::newRow("2x") << u"2x"_s << 13;
        QTest::newRow("32768") << u"32768"_s << 6;
        QTest::newRow("-32769") << u"-32769"_s << 6;
    }

    void aCheckBoxRefusesAnythingElse()
    {
        QFETCH(QString, value);
        QFETCH(int, fault);
        CheckBox box;
        box.setChecked(true);
        box.setDataChanged(false);
        try {
            box.setValue(value);
            QFAIL("no fault");
        } catch (const Fault &thrown) {
            QCOMPARE(thrown.number(), fault);
        }
        QVERIFY(box.isChecked());
        QVERIFY(!box.dataChanged());
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

    void aLockedLineFollowsTheColoursOfItsWindow()
    {
        QWidget window;
        QLineEdit line(&window);
        lockLine(&line, true);
        for (const QColor &ground : {QColor(50, 50, 50), QColor(230, 240, 250)}) {
            QPalette colours;
            colours.setColor(QPalette::Window, ground);
            colours.setColor(QPalette::Text, QColor(1, 2, 3));
            window.setPalette(colours);
            QCOMPARE(line.palette().color(QPalette::Base), ground);
            QCOMPARE(line.palette().color(QPalette::Text), QColor(1, 2, 3));
        }
        lockLine(&line, false);
        QCOMPARE(line.palette().color(QPalette::Base), window.palette().color(QPalette::Base));
    }

    void lockingTwiceIsUndoneByUnlockingOnce()
    {
        QLineEdit line;
        const QColor unlocked = line.palette().color(QPalette::Base);
        lockLine(&line, true);
        lockLine(&line, true);
        lockLine(&line, false);
        QVERIFY(!line.isReadOnly());
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

WINDOW_TEST(ControlsTest)
#include "tst_controls.moc"
