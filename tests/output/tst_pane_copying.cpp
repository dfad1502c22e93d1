// SPDX-License-Identifier: MIT
#include "connected_program.h"
#include "menus.h"
#include "shown_pane.h"
#include "window_test.h"

#include <QImage>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QString mark(QChar(0x18));

/// The picture of a pane with this text, all of it selected or nothing.
QImage pictureOf(const QStringList &texts, bool isSelected)
{
    Pane shown;
    for (const QString &text : texts)
        shown.append(text);
    if (isSelected)
        shown.pane.selectAll();
    return shown.pane.viewport()->grab().toImage();
}

QString copied(RconPane &pane)
{
    return copiedBy([&] { pane.copy(); });
}

void select(RconPane &pane, int from, int to)
{
    QTextCursor cursor(pane.document());
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    pane.setTextCursor(cursor);
}

QPalette dark()
{
    QPalette colours;
    for (const auto role : {QPalette::Window, QPalette::Button})
        colours.setColor(role, QColor(53, 53, 53));
    colours.setColor(QPalette::Base, QColor(35, 35, 35));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        colours.setColor(role, Qt::white);
    colours.setColor(QPalette::Highlight, QColor(200, 80, 0));
    return colours;
}

/// From 1 to 21, as the Web Content Accessibility Guidelines 2.1 define it.
double contrast(const QColor &one, const QColor &other)
{
    const auto luminance = [](const QColor &colour) {
        const auto linear = [](float part) {
            return part <= 0.03928F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [less, more] = std::minmax({luminance(one), luminance(other)});
    return (more + 0.05) / (less + 0.05);
}

} // namespace

/// What of the RCON pane can be copied, the marks around echoed commands, and its colours in other themes.
class PaneCopyingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void theMarksAroundACommandAreInTheTextAndInTheLog()
    {
        ConnectedProgram connected;
        connected.program.prompts.lines = {u"Good night"_s, u"kept.log"_s};
        connected.program.click(u"cmdmessage"_s);
        const QString echo = mark + u"say ^3Molvark ^5(1.0)> ^7RemoteUser Good night"_s + mark;
        QVERIFY2(connected.program.pane().contains(echo + u"\r\n"_s), qPrintable(connected.program.pane()));
        QVERIFY(connected.program.text(u"txtoutput"_s).contains(echo));
        connected.program.trigger(u"savercon"_s);
        QVERIFY(connected.program.file(u"kept.log"_s).contains(echo.toLatin1() + "\r\n"));
    }

    void theMarksAreDrawnAsNothing_data()
    {
        QTest::addColumn<bool>("isSelected");
        QTest::newRow("not selected") << false;
        QTest::newRow("selected") << true;
    }

    void theMarksAreDrawnAsNothing()
    {
        QFETCH(bool, isSelected);
        const QString before = u">>RCON sent [21:07] "_s;
        const QString behind = u"\r\nhostname   HomeServer\r\n"_s;
        const QStringList marked{u"map: mp_toujane\r\n"_s, before + mark + u"clientkick 3"_s + mark + behind, before};
        const QStringList bare{u"map: mp_toujane\r\n"_s, before + u"clientkick 3"_s + behind, before};
        QVERIFY(pictureOf(marked, isSelected) == pictureOf(bare, isSelected));
        // What comes next is seen again.
        QVERIFY(pictureOf({before + mark + u"say"_s + mark, u"next"_s}, isSelected) ==
                pictureOf({before + u"say"_s, u"next"_s}, isSelected));
        QVERIFY(pictureOf({before}, isSelected) != pictureOf({before + u"x"_s}, isSelected));
    }

    void theMarksAreKeptInTheHistory_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("two") << u"a "_s + mark + u"b"_s + mark + u"\r\nc"_s;
        QTest::newRow("one") << u"a "_s + mark + u"\r\nc"_s;
        QTest::newRow("alone") << mark;
        QTest::newRow("many") << (mark + u"x"_s).repeated(3000) + u"\r\n"_s;
        QTest::newRow("side by side") << mark.repeated(5) + u"\r\n"_s + mark;
        QTest::newRow("around a long command")
            << u">>RCON sent [21:07] "_s + mark + QString(4000, u'x') + mark + u"\r\n"_s;
    }

    void theMarksAreKeptInTheHistory()
    {
        QFETCH(QString, text);
        RconPane pane;
        pane.append(text);
        pane.append(u"end"_s);
        QCOMPARE(pane.text(), text + u"end"_s);
    }

    void whatIsCopiedIsWhatIsSeen()
    {
        Pane shown;
        shown.append(u">>RCON sent [21:07] "_s + mark + u"clientkick 3"_s + mark + u"\r\nclient 3 was kicked\r\n"_s);
        shown.pane.selectAll();
        QCOMPARE(copied(shown.pane), u">>RCON sent [21:07] clientkick 3\nclient 3 was kicked\n"_s);
        select(shown.pane, 20, 36);
        QCOMPARE(copied(shown.pane), u"clientkick 3\nc"_s);
        select(shown.pane, 2, 6);
        QCOMPARE(copied(shown.pane), u"RCON"_s);
    }

    void aLongLineIsCopiedAsOne()
    {
        Pane shown;
        const QString line(5000, u'x');
        shown.append(u"first\r\n"_s + line + u"\r\nlast"_s);
        shown.pane.selectAll();
        QCOMPARE(copied(shown.pane), u"first\n"_s + line + u"\nlast"_s);
        select(shown.pane, 6 + 1999, 6 + 1999 + 4);
        QCOMPARE(copied(shown.pane), u"xxx"_s); // and a break between them that is not the line's
    }

    void theMenuCopiesSavesAndClears()
    {
        Program program;
        program.start();
        RconPane &pane = program.output.pane();
        program.output.addrcon(u"one "_s + mark + u"two"_s + mark + u"\r\nthree\r\n"_s);
        QCOMPARE(OpenMenu(pane, {20, 10}).captions(),
                 QStringList({u"Copy"_s, u"Copy all"_s, u"-"_s, u"Save RCON log..."_s, u"Clear RCON log"_s}));
        QVERIFY(!OpenMenu(pane).item(u"Copy"_s)->isEnabled());
        QCOMPARE(copiedBy([&] { OpenMenu(pane).choose(u"Copy all"_s); }), u"one two\nthree\n"_s);
        select(pane, 0, 3);
        QCOMPARE(copiedBy([&] { OpenMenu(pane).choose(u"Copy"_s); }), u"one"_s);

        OpenMenu(pane).choose(u"Save RCON log..."_s);
        QCOMPARE(program.prompts.asked.size(), 1);
        OpenMenu(pane).choose(u"Clear RCON log"_s);
        QCOMPARE(program.prompts.takeBoxes().size(), 1);
        QVERIFY(program.pane().isEmpty());
        QVERIFY(!OpenMenu(pane).item(u"Copy all"_s)->isEnabled());
    }

    void theMenuKeyOpensTheMenuOverThePane()
    {
        Pane shown;
        shown.append(lines(200));
        QTRY_VERIFY(shown.isAtEnd()); // and the text cursor is far above
        const QPoint above(4, -2000);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, above, shown.pane.mapToGlobal(above));
        QApplication::sendEvent(&shown.pane, &event);
        QWidget *menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        QVERIFY(shown.pane.rect().contains(shown.pane.mapFromGlobal(menu->pos())));
        menu->close();
    }

    void theKeysCopyAll()
    {
        Pane shown;
        shown.append(u"one\r\ntwo"_s);
        shown.pane.setFocus();
        QTest::keySequence(&shown.pane, QKeySequence::SelectAll);
        QCOMPARE(copiedBy([&] { QTest::keySequence(&shown.pane, QKeySequence::Copy); }), u"one\ntwo"_s);
    }

    // The desktop's theme changes while the program runs.
    void onlyGroundAndTextStayAsTheyAre()
    {
        Program program;
        program.start();
        const RconPane &pane = program.output.pane();
        const QColor ground = pane.palette().color(QPalette::Base);
        QApplication::setPalette(dark());
        QCoreApplication::processEvents();
        QCOMPARE(pane.palette().color(QPalette::Base), ground);
        QCOMPARE(pane.palette().color(QPalette::Text), QColor(255, 255, 0));
        QCOMPARE(pane.palette().color(QPalette::Window), dark().color(QPalette::Window));
        QCOMPARE(pane.palette().color(QPalette::Button), dark().color(QPalette::Button));
        QCOMPARE(pane.palette().color(QPalette::ButtonText), dark().color(QPalette::ButtonText));
        QCOMPARE(pane.palette().color(QPalette::Highlight), dark().color(QPalette::Highlight));
        QVERIFY(contrast(pane.palette().color(QPalette::PlaceholderText), ground) >= 4.5);
        QApplication::setPalette(QPalette());
        QCoreApplication::processEvents();
        QCOMPARE(pane.palette().color(QPalette::Button), QApplication::palette().color(QPalette::Button));
    }

    void theEdgeOfThePaneIsSeen_data()
    {
        QTest::addColumn<QPalette>("theme");
        QTest::newRow("light") << QPalette();
        QTest::newRow("dark") << dark();
    }

    void theEdgeOfThePaneIsSeen()
    {
        QFETCH(QPalette, theme);
        Program program;
        program.start();
        QApplication::setPalette(theme);
        QCoreApplication::processEvents();
        RconPane &pane = program.output.pane();
        const QImage picture = pane.grab().toImage();
        const QColor ground = pane.palette().color(QPalette::Base);
        for (const QPoint edge : {QPoint(picture.width() / 2, 0), QPoint(picture.width() / 2, picture.height() - 1),
                                  QPoint(0, picture.height() / 2), QPoint(picture.width() - 1, picture.height() / 2)}) {
            const double seen = contrast(picture.pixelColor(edge), ground);
            QVERIFY2(seen >= 3, qPrintable(u"%1 at %2, %3"_s.arg(seen).arg(edge.x()).arg(edge.y())));
        }
    }
};

WINDOW_TEST(PaneCopyingTest)
#include "tst_pane_copying.moc"
