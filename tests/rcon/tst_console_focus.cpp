// SPDX-License-Identifier: MIT
#include "console_hands.h"
#include "window_test.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

// Presses Alt+S and lets the button come up again.
void pressSendKey(const Program &program)
{
    QSignalSpy pressed(program.find<QPushButton>(u"cmdsend"_s), &QPushButton::clicked);
    press(Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(pressed.count(), 1);
}

// The control to which a Tab leads from this one.
QString nextControl(const Program &program, const QString &control)
{
    focus(program, control);
    press(Qt::Key_Tab);
    return focused();
}

} // namespace

/// Which key sends the console line, in which control, and where the focus is afterwards.
class ConsoleFocusTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void inThePasswordBoxTheSendKeysLeadOnAndSendNothing_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Alt+S") << Qt::Key_S;
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void inThePasswordBoxTheSendKeysLeadOnAndSendNothing()
    {
        QFETCH(Qt::Key, key);
        Link link;
        type(link, u"kick all"_s);
        const QString next = nextControl(link.program, u"txtPWD"_s);
        QVERIFY(next != u"txtPWD"_s && next != u"comdirect"_s);

        focus(link.program, u"txtPWD"_s);
        if (key == Qt::Key_S)
            pressSendKey(link.program);
        else
            press(key);
        QCOMPARE(focused(), next);
        QCOMPARE(link.program.text(u"txtPWD"_s), u"practice"_s);
        QCOMPARE(link.program.messages(), QStringList());
        QCOMPARE(link.program.rows(u"comdirect"_s), QStringList());
        QVERIFY(!link.session.rconnowait);
        QCOMPARE(commandsSoFar(link), QList<QByteArray>());
    }

    void inTheMessageBoxesTheButtonsKeyLeadsOnAndSendsNothing_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isTabbed");
        QTest::newRow("the message") << u"txtmess"_s << true;
        QTest::newRow("the message set") << u"commessset"_s << true;
        QTest::newRow("another box") << u"txtmess2"_s << false;
        QTest::newRow("in another case") << u"txtpwd"_s << false;
    }

    void inTheMessageBoxesTheButtonsKeyLeadsOnAndSendsNothing()
    {
        QFETCH(QString, name);
        QFETCH(bool, isTabbed);
        Link link;
        type(link, u"kick all"_s);
        if (!isTabbed) {
            auto *other = new QLineEdit(link.program.find<QWidget>(u"central"_s));
            other->setObjectName(name);
            other->show();
        }
        focus(link.program, name);
        const QWidget *box = QApplication::focusWidget();

        link.program.click(u"cmdsend"_s);
        QVERIFY(QApplication::focusWidget() != box);
        QCOMPARE(focused() == u"comdirect"_s, !isTabbed);
        QCOMPARE(link.program.messages(), isTabbed ? QStringList() : QStringList{u"kick all"_s});
        QCOMPARE(commandsSoFar(link), isTabbed ? QList<QByteArray>() : QList<QByteArray>{"kick all"});
    }

    void inTheHintLineOfTheModsWindowTheButtonLeadsOnToo()
    {
        Link link;
        type(link, u"kick all"_s);
        link.program.window.showhob();
        QTRY_COMPARE(QApplication::activeWindow()->objectName(), u"frmhob"_s);
        auto *hint = QApplication::activeWindow()->findChild<QLineEdit *>(u"txtmess"_s);
        hint->setFocus();
        QCOMPARE(QApplication::focusWidget(), hint);

        link.program.click(u"cmdsend"_s);
        QVERIFY(QApplication::focusWidget() != hint);
        QCOMPARE(QApplication::activeWindow()->objectName(), u"frmhob"_s);
        QCOMPARE(link.program.messages(), QStringList());
        QCOMPARE(commandsSoFar(link), QList<QByteArray>());
    }

    void theMousePressesSendEvenFromThePasswordBox()
    {
        Link link;
        type(link, u"say hello"_s);
        focus(link.program, u"txtPWD"_s);
        QTest::mouseClick(link.program.find<QPushButton>(u"cmdsend"_s), Qt::LeftButton);
        QCOMPARE(link.program.messages(), QStringList{u"say hello"_s});
        QCOMPARE(commandsSoFar(link), QList<QByteArray>{"say hello"});
    }

    void altSSendsFromAnywhereElse_data()
    {
        otherControls();
        QTest::newRow("comdirect") << u"comdirect"_s;
    }

    void altSSendsFromAnywhereElse()
    {
        QFETCH(QString, control);
        Link link;
        type(link, u"say hello"_s);
        focus(link.program, control);
        QStringList ways;
        QObject during;
        connect(qApp, &QApplication::focusChanged, &during, [&](QWidget *, QWidget *now) {
            if (now)
                ways.append(now->objectName());
        });
        pressSendKey(link.program);
        // The focus never goes to the button: it stays where it is, and the console line takes it in the end.
        QCOMPARE(ways, control == u"comdirect"_s ? QStringList() : QStringList{u"comdirect"_s});
        QCOMPARE(focused(), u"comdirect"_s);
        const QLineEdit *line = link.program.find<QComboBox>(u"comdirect"_s)->lineEdit();
        QCOMPARE(line->selectedText(), u"say hello"_s);
        QCOMPARE(link.program.messages(), QStringList{u"say hello"_s});
        QCOMPARE(commandsSoFar(link), QList<QByteArray>{"say hello"});
    }

    void altSOnAnEmptyLineLeavesTheFocus()
    {
        Link link;
        focus(link.program, u"txtprefix"_s);
        pressSendKey(link.program);
        QCOMPARE(focused(), u"txtprefix"_s);
        QCOMPARE(commandsSoFar(link), QList<QByteArray>());
    }

    void returnInAnyOtherFieldSendsNothing_data() { otherControls(); }

    void returnInAnyOtherFieldSendsNothing()
    {
        QFETCH(QString, control);
        Link link;
        type(link, u"kick all"_s);
        focus(link.program, control);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            press(key);
            QVERIFY(!link.program.find<QPushButton>(u"cmdsend"_s)->isDown());
            QCOMPARE(focused(), control);
        }
        QCOMPARE(link.program.messages(), QStringList());
        QCOMPARE(commandsSoFar(link), QList<QByteArray>());
    }

private:
    static void otherControls()
    {
        QTest::addColumn<QString>("control");
        for (const char *control : {"comserver", "comport", "txtprefix", "lstservers", "lstmessages", "lstcfgs",
                                    "txtcurmaprot_1", "txtoutput"})
            QTest::newRow(control) << QString::fromLatin1(control);
    }
};

WINDOW_TEST(ConsoleFocusTest)
#include "tst_console_focus.moc"
