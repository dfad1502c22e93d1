// SPDX-License-Identifier: MIT
#include "activation.h"
#include "connected_program.h"
#include "other_windows.h"
#include "window_test.h"

#include <QAccessible>
#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

QLineEdit *fieldOf(const Program &program, const QString &name)
{
    if (name != u"txtpass")
        return program.find<QLineEdit>(name);
    program.trigger(u"mpref"_s);
    return otherWindow(u"frmpref"_s)->findChild<QLineEdit *>(name);
}

/// It comes when the field has been painted.
QAction *eyeOf(const QLineEdit *line)
{
    if (!QTest::qWaitFor([line] { return line->findChild<QAction *>(u"acteye"_s) != nullptr; }))
        failTest(u"no eye in "_s + line->objectName());
    return line->findChild<QAction *>(u"acteye"_s);
}

QToolButton *buttonOf(const QLineEdit *line)
{
    (void)eyeOf(line);
    return line->findChild<QToolButton *>(u"cmdeye"_s);
}

/// Opens the line's menu as the menu key does.
QMenu *openMenu(QLineEdit *line)
{
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, line->rect().center(),
                            line->mapToGlobal(line->rect().center()));
    QApplication::sendEvent(line, &asked);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        failTest(u"no menu opens"_s);
    return menu;
}

const QByteArray autoConnecting = "[options]\r\nautoconnect=1\r\nautoconnectserv=x\r\n";

} // namespace

/// The three fields into which passwords are typed.
class PasswordEyesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void everyPasswordIsDots_data()
    {
        QTest::addColumn<QString>("field");
        for (const QString &field : {u"txtPWD"_s, u"txtservpass"_s, u"txtpass"_s})
            QTest::newRow(qPrintable(field)) << field;
    }

    void everyPasswordIsDots()
    {
        QFETCH(QString, field);
        Program program(autoConnecting);
        program.start();
        const QLineEdit *line = fieldOf(program, field);
        QCOMPARE(line->echoMode(), QLineEdit::Password);
        QVERIFY(eyeOf(line)->isCheckable());
        QVERIFY2(!eyeOf(line)->isChecked(), "off at the start");
        QCOMPARE(line->echoMode(), QLineEdit::Password);
    }

    void theEyeShowsAndHidesThem_data() { everyPasswordIsDots_data(); }

    void theEyeShowsAndHidesThem()
    {
        QFETCH(QString, field);
        Program program(autoConnecting);
        program.start();
        QLineEdit *line = fieldOf(program, field);
        line->setText(u"geheim"_s);
        QVERIFY(!line->displayText().contains(u'g'));
        QTest::mouseClick(buttonOf(line), Qt::LeftButton);
        QCOMPARE(line->displayText(), u"geheim"_s);
        QVERIFY(eyeOf(line)->isChecked());
        QTest::mouseClick(buttonOf(line), Qt::LeftButton);
        QVERIFY(!line->displayText().contains(u'g'));
        QCOMPARE(line->text(), u"geheim"_s);
    }

    void theKeyboardReachesIt_data() { everyPasswordIsDots_data(); }

    void theKeyboardReachesIt()
    {
        QFETCH(QString, field);
        Program program(autoConnecting);
        program.start();
        QLineEdit *line = fieldOf(program, field);
        QVERIFY(becomesActive(line->window()));
        (void)eyeOf(line);
        line->setFocus();
        line->setText(u"geheim"_s);
        QTest::keyClick(line, Qt::Key_H, Qt::ControlModifier);
        QCOMPARE(line->displayText(), u"geheim"_s);
        QTest::keyClick(line, Qt::Key_H, Qt::ControlModifier);
        QVERIFY(!line->displayText().contains(u'g'));
        QMenu *menu = openMenu(line);
        QVERIFY(menu->actions().contains(eyeOf(line)));
        QVERIFY2(menu->actions().size() > 2, "what a field's menu has is there too");
        QTest::keyClick(menu, Qt::Key_Up); // the last item
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(line->displayText(), u"geheim"_s);
    }

    void itIsReadAloud_data() { everyPasswordIsDots_data(); }

    void itIsReadAloud()
    {
        QFETCH(QString, field);
        Program program(autoConnecting);
        program.start();
        QAccessibleInterface *eye = QAccessible::queryAccessibleInterface(buttonOf(fieldOf(program, field)));
        QCOMPARE(eye->text(QAccessible::Name), u"Show password"_s);
        QVERIFY(eye->state().checkable);
    }

    void thePreferencesAreDotsAgainWhenOpenedAgain()
    {
        Program program;
        program.start();
        eyeOf(fieldOf(program, u"txtpass"_s))->trigger();
        otherWindow(u"frmpref"_s)->close();
        QVERIFY(!eyeOf(fieldOf(program, u"txtpass"_s))->isChecked());
    }

    void theJoinPasswordIsSentAsItIs()
    {
        ConnectedProgram connected;
        auto *line = connected.program.find<QLineEdit>(u"txtservpass"_s);
        QTest::keyClicks(line, u"let me in"_s);
        connected.program.click(u"cmdservsetpass"_s);
        QVERIFY(connected.server.commands().contains("g_password \"let me in\""));
    }

    void aLockedPasswordCanBeLookedAt()
    {
        ConnectedProgram connected;
        auto *line = connected.program.find<QLineEdit>(u"txtPWD"_s);
        QVERIFY(line->isReadOnly());
        QTest::mouseClick(buttonOf(line), Qt::LeftButton);
        QCOMPARE(line->displayText(), u"practice"_s);
    }

    void theEyeIsSeenInLightAndDark_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(255, 255, 255) << QColor(0, 0, 0);
        QTest::newRow("dark") << QColor(30, 30, 30) << QColor(240, 240, 240);
    }

    void theEyeIsSeenInLightAndDark()
    {
        QFETCH(QColor, ground);
        QFETCH(QColor, text);
        Program program;
        program.start();
        QPalette palette; // set while the program runs
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Text, text);
        QApplication::setPalette(palette);
        QApplication::processEvents();
        const QLineEdit *line = fieldOf(program, u"txtPWD"_s);
        for (const int size : {16, 32, 64}) {
            const QImage shown = eyeOf(line)->icon().pixmap(QSize(size, size), 1.0).toImage();
            QCOMPARE(shown.size(), QSize(size, size));
            QVERIFY2(qAlpha(shown.pixel(0, 0)) == 0, "around it the field is seen");
            QCOMPARE(shown.pixelColor(size / 2, size / 2), text); // the pupil
        }
        const QImage hidden = eyeOf(line)->icon().pixmap(QSize(32, 32), 1.0).toImage();
        eyeOf(line)->trigger();
        QCOMPARE_NE(eyeOf(line)->icon().pixmap(QSize(32, 32), 1.0).toImage(), hidden);
    }
};

WINDOW_TEST(PasswordEyesTest)
#include "tst_password_eyes.moc"
