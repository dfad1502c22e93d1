// SPDX-License-Identifier: MIT
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

const QString settingsFile = u"molvark.ini"_s;

/// A person writes over the name and goes to another control.
void sign(const Program &program, const QString &name)
{
    auto *box = program.find<QLineEdit>(u"txtprefix"_s);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, name);
}

void goOn(const Program &program)
{
    program.find<QLineEdit>(u"txtPWD"_s)->setFocus();
}

} // namespace

class MessagePanelTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theMessageIsAskedForAndSaidWithItsSignature()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program;
        program.start();
        program.connectTo(server);
        server.forgetRequests();
        program.setText(u"txtprefix"_s, u"Ann"_s);
        program.prompts.lines = {u"Be fair"_s};
        const QString pane = program.pane();
        QStringList before;
        connect(&server, &PracticeServer::requested, this, [&] { before = program.messages(); });
        program.click(u"cmdmessage"_s);

        QCOMPARE(program.prompts.asked, QList<QStringList>({{u"Server Message"_s, u"Type message to send to server"_s,
                                                             u"Welcome to our server, enjoy your stay"_s}}));
        const QByteArray say = "say ^3Molvark ^5(1.0)> ^7Ann Be fair";
        QCOMPARE(server.requests(), QList<QByteArray>{QByteArray(4, '\xFF') + "rcon practice " + say});
        QCOMPARE(before.size(), 1);
        QCOMPARE(program.messages().mid(1), QStringList{u"Message to server>> Ann Be fair"_s});
        const QString echo = program.pane().mid(pane.size());
        QVERIFY(echo.startsWith(u">>RCON sent ["));
        QVERIFY(echo.endsWith(u"] \x18"_s + QString::fromLatin1(say) + u"\x18\r\n"_s));
    }

    void cancelSaysNothing()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        server.forgetRequests();
        program.prompts.lines = {QString()};
        program.click(u"cmdmessage"_s);
        QCOMPARE(program.prompts.asked.size(), 1);
        QVERIFY(server.requests().isEmpty());
        QCOMPARE(program.messages().size(), 1);
    }

    void anEmptySignatureKeepsItsBlank()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        program.setText(u"txtprefix"_s, u""_s);
        program.prompts.lines = {u"Hello"_s};
        program.click(u"cmdmessage"_s);
        QCOMPARE(server.commands().constLast(), "say ^3Molvark ^5(1.0)> ^7 Hello");
        QCOMPARE(program.messages().constLast(), u"Message to server>>  Hello"_s);
    }

    void placeholdersAreSaidAsTheyStand()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        program.prompts.lines = {u"%IP% %SN% %FF% %1"_s};
        program.click(u"cmdmessage"_s);
        QCOMPARE(server.commands().constLast(), "say ^3Molvark ^5(1.0)> ^7RemoteUser %IP% %SN% %FF% %1");
    }

    void whileDisconnectedTheMessageIsStillNoted()
    {
        Program program;
        program.start();
        program.prompts.lines = {u"Hello"_s};
        program.click(u"cmdmessage"_s);
        const Box box{u"Not connected"_s, u"Please connect to a server first!"_s, BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{box});
        QCOMPARE(program.messages(), QStringList{u"Message to server>> RemoteUser Hello"_s});
    }

    void theSignatureIsReadAtStart_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QString>("shown");
        QTest::newRow("no file") << QByteArray() << u"RemoteUser"_s;
        QTest::newRow("no key") << QByteArray("[Remoteuser]\r\nother=x\r\n") << u"RemoteUser"_s;
        QTest::newRow("empty key") << QByteArray("[Remoteuser]\r\nuser=\r\n") << u"RemoteUser"_s;
        QTest::newRow("a name") << QByteArray("[Remoteuser]\r\nuser=Big Ann\r\n") << u"Big Ann"_s;
        QTest::newRow("49 characters of a long name")
            << QByteArray("[Remoteuser]\r\nuser=" + QByteArray(60, 'a') + "\r\n") << QString(49, u'a');
    }

    void theSignatureIsReadAtStart()
    {
        QFETCH(QByteArray, settings);
        Program program(settings);
        program.start();
        QTEST(program.text(u"txtprefix"_s), "shown");
    }

    void aChangedSignatureIsSavedWhenItsBoxIsLeft()
    {
        Program program("[options]\r\nsavercon=0\r\n");
        program.start();
        sign(program, u"Ann"_s);
        QCOMPARE(program.file(settingsFile), "[options]\r\nsavercon=0\r\n");
        goOn(program);
        QCOMPARE(program.services.ini.read(u"Remoteuser"_s, u"user"_s, 50), u"Ann"_s);
        QVERIFY2(program.file(settingsFile).startsWith("[options]\r\nsavercon=0\r\n"), "the rest is kept");
    }

    void anUnchangedSignatureIsNotSaved()
    {
        Program program;
        program.start();
        program.find<QLineEdit>(u"txtprefix"_s)->setFocus();
        goOn(program);
        QVERIFY(!QFile::exists(settingsFile));

        sign(program, u"Ann"_s);
        goOn(program);
        QVERIFY(QFile::remove(settingsFile));
        program.find<QLineEdit>(u"txtprefix"_s)->setFocus();
        goOn(program);
        QVERIFY2(!QFile::exists(settingsFile), "saved a second time without a change");
    }

    void theSameTextTypedAgainIsAChange()
    {
        Program program;
        program.start();
        sign(program, u"RemoteUser"_s);
        goOn(program);
        QCOMPARE(program.services.ini.read(u"Remoteuser"_s, u"user"_s, 50), u"RemoteUser"_s);
    }

    void onlyAnotherControlTakesTheFocusAway()
    {
        Program program;
        program.start();
        sign(program, u"Ann"_s);

        QTimer::singleShot(0, &program.window, [] { QApplication::activeModalWidget()->close(); });
        QMessageBox(QMessageBox::Information, u"A title"_s, u"A text"_s, QMessageBox::Ok, &program.window).exec();
        QVERIFY2(!QFile::exists(settingsFile), "a box came up");

        auto *combo = program.find<QComboBox>(u"comport"_s);
        combo->addItem(u"28960"_s);
        combo->showPopup();
        QCoreApplication::processEvents();
        combo->hidePopup();
        QVERIFY2(!QFile::exists(settingsFile), "a list was opened");

        {
            QWindow elsewhere; // no window of widgets: as if another program were active
            elsewhere.show();
            elsewhere.requestActivate();
            QTRY_VERIFY(!QApplication::activeWindow());
            QVERIFY2(!QFile::exists(settingsFile), "the program was deactivated");
        }
        program.window.activateWindow();
        QTRY_COMPARE(QApplication::focusWidget(), program.find<QWidget>(u"txtprefix"_s));
        QVERIFY(!QFile::exists(settingsFile));
        goOn(program);
        QCOMPARE(program.services.ini.read(u"Remoteuser"_s, u"user"_s, 50), u"Ann"_s);
    }

    void aSignatureThatCannotBeSavedIsTold()
    {
        Program program;
        program.start();
        QVERIFY(QDir().mkdir(settingsFile));
        sign(program, u"Ann"_s);
        goOn(program);
        const QList<Box> boxes = program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().title, u"INI Write Fail"_s);
        QCOMPARE(boxes.first().icon, BoxIcon::Exclamation);
        QCOMPARE(boxes.first().buttons, BoxButtons::Ok);
        QVERIFY(boxes.first().text.startsWith(u"Failed to write new "));
        const QString error = u" to INI file\rError code %1 Descr: "_s.arg(EISDIR);
        QVERIFY(boxes.first().text.endsWith(error + QString::fromLocal8Bit(strerror(EISDIR))));
    }
};

WINDOW_TEST(MessagePanelTest)
#include "tst_message_panel.moc"
