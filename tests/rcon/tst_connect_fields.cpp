// SPDX-License-Identifier: MIT
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

const Box missingField{u"Error..."_s, u"Please provide all fields, Server, Port and password"_s, BoxIcon::Exclamation,
                       BoxButtons::Ok};

QStringList fields(const Program &program)
{
    return {program.text(u"comserver"_s), program.text(u"comport"_s), program.text(u"txtPWD"_s)};
}

void fill(const Program &program, const QStringList &texts)
{
    program.setText(u"comserver"_s, texts.at(0));
    program.setText(u"comport"_s, texts.at(1));
    program.setText(u"txtPWD"_s, texts.at(2));
}

/// Everything a person may try on a field: letters, the keys that choose from a list, and the wheel.
void tamperWith(const Program &program)
{
    for (const QString &name : {u"comserver"_s, u"comport"_s}) {
        auto *combo = program.find<QComboBox>(name);
        combo->setFocus();
        for (const Qt::Key key : {Qt::Key_9, Qt::Key_Backspace, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Up})
            QTest::keyClick(combo, key);
        QWheelEvent wheel(QPointF(5, 5), combo->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo, &wheel);
        QTest::keyClick(combo, Qt::Key_F4);
        if (combo->view()->isVisible())
            QTest::keyClick(combo->view(), Qt::Key_Return);
    }
    auto *password = program.find<QLineEdit>(u"txtPWD"_s);
    password->setFocus();
    QTest::keyClicks(password, u"9"_s);
}

QByteArray preferences(const QByteArray &first, bool firstOn, const QByteArray &second, bool secondOn)
{
    return "[options]\r\n" + first + (firstOn ? "=1\r\n" : "=0\r\n") + second + (secondOn ? "=1\r\n" : "=0\r\n");
}

/// Saving and clearing come before the test for empty fields, so no server is needed to see them.
void tryToConnect(Program &program)
{
    program.start();
    program.output.addrcon(u"old answers\r\n"_s);
    program.output.addmessage(u"old message"_s);
    program.click(u"cmdconnect"_s);
    QCOMPARE(program.prompts.takeBoxes(), QList<Box>{missingField});
    QVERIFY2(program.prompts.asked.isEmpty(), "nobody is asked for a file name");
}

void preferenceRows()
{
    QTest::addColumn<bool>("clear");
    QTest::addColumn<bool>("save");
    QTest::newRow("clears and saves") << true << true;
    QTest::newRow("clears only") << true << false;
    QTest::newRow("saves nothing that it does not clear") << false << true;
    QTest::newRow("does neither") << false << false;
}

void clickRow(const Program &program, int row)
{
    auto *list = program.find<QListWidget>(u"lstservers"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

} // namespace

class ConnectFieldsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void blanksAroundTheFieldsAreTakenAway()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        const QString port = QString::number(server.port());
        fill(program, {u"  127.0.0.1 "_s, u" %1  "_s.arg(port), u"   practice  "_s});
        program.click(u"cmdconnect"_s);
        QCOMPARE(fields(program), QStringList({u"127.0.0.1"_s, port, u"practice"_s}));
        QCOMPARE(server.requests().value(0), QByteArray(4, '\xFF') + "rcon practice status");
        QCOMPARE(program.messages(), QStringList{u"Connected to server 127.0.0.1:"_s + port});
    }

    void aBlankInsideThePasswordStays()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setPassword(u"two"_s);
        Program program;
        program.start();
        fill(program, {u"127.0.0.1"_s, QString::number(server.port()), u" two words "_s});
        program.click(u"cmdconnect"_s);
        QCOMPARE(fields(program).last(), u"two words"_s);
        QCOMPARE(server.requests().value(0), QByteArray(4, '\xFF') + "rcon two words status");
    }

    void eachFieldIsNeeded_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QStringList>("left");
        const QStringList whole{u"127.0.0.1"_s, u"28960"_s, u"practice"_s};
        for (int missing = 0; missing < 3; ++missing) {
            QStringList texts = whole;
            texts[missing].clear();
            QTest::addRow("field %d is empty", missing) << texts << texts;
            QStringList blanks = whole;
            blanks[missing] = u"   "_s;
            QTest::addRow("field %d is blank", missing) << blanks << texts;
        }
    }

    void eachFieldIsNeeded()
    {
        QFETCH(QStringList, texts);
        QFETCH(QStringList, left);
        Program program;
        program.start();
        fill(program, texts);
        program.click(u"cmdconnect"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{missingField});
        QCOMPARE(fields(program), left);
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Connect"_s);
    }

    void theOutputIsSavedAndClearedBeforeAnEmptyFieldIsTold()
    {
        Program program;
        program.start();
        program.output.addrcon(u"old answers\r\n"_s);
        program.output.addmessage(u"old message"_s);
        fill(program, {u" 127.0.0.1"_s, u"28960"_s, u""_s});
        QStringList whileTold;
        program.prompts.whileOpen = [&] {
            whileTold = program.messages() + QStringList{program.pane(), program.text(u"comserver"_s), program.note()};
        };
        program.click(u"cmdconnect"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{missingField});
        QCOMPARE(whileTold,
                 QStringList({u""_s, u"127.0.0.1"_s, u"\nSaving RCON output...\nSaving Message output..."_s}));
        QCOMPARE(program.file(u"molvark_rcon_050306.log"_s), "old answers\r\n\r\n");
        QVERIFY(program.file(u"molvar_messages_050306.log"_s).endsWith(" old message\r\n"));
    }

    void theFieldsAreTrimmedAfterTheOutputIsSaved()
    {
        Program program;
        program.start();
        QVERIFY(QDir().mkdir(u"molvark_rcon_050306.log"_s));
        fill(program, {u" 127.0.0.1"_s, u"28960"_s, u""_s});
        QStringList whileTold;
        program.prompts.whileOpen = [&] { whileTold.append(program.text(u"comserver"_s)); };
        program.click(u"cmdconnect"_s);
        const QList<Box> boxes = program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 2);
        QCOMPARE(boxes.first().title, u"Failed to Save"_s);
        QCOMPARE(boxes.last(), missingField);
        QCOMPARE(whileTold, QStringList({u" 127.0.0.1"_s, u"127.0.0.1"_s}));
    }

    void thePaneIsClearedAndSavedAsPreferred_data() { preferenceRows(); }

    void thePaneIsClearedAndSavedAsPreferred()
    {
        QFETCH(bool, clear);
        QFETCH(bool, save);
        Program program(preferences("clearrconnew", clear, "savercon", save) + "clearmessnew=0\r\n");
        tryToConnect(program);
        QCOMPARE(program.pane(), clear ? QString() : u"old answers\r\n"_s);
        QCOMPARE(program.messages(), QStringList{u"old message"_s});
        QCOMPARE(program.file(u"molvark_rcon_050306.log"_s), clear && save ? "old answers\r\n\r\n" : "");
        QCOMPARE(program.file(u"molvar_messages_050306.log"_s), "");
    }

    void theMessagesAreClearedAndSavedAsPreferred_data() { preferenceRows(); }

    void theMessagesAreClearedAndSavedAsPreferred()
    {
        QFETCH(bool, clear);
        QFETCH(bool, save);
        Program program(preferences("clearmessnew", clear, "savemessages", save) + "clearrconnew=0\r\n");
        tryToConnect(program);
        QCOMPARE(program.messages(), clear ? QStringList() : QStringList{u"old message"_s});
        QCOMPARE(program.pane(), u"old answers\r\n"_s);
        const QByteArray log = program.file(u"molvar_messages_050306.log"_s);
        QCOMPARE(log.startsWith("Time: ") && log.endsWith(" old message\r\n"), clear && save);
        QCOMPARE(log.isEmpty(), !(clear && save));
        QCOMPARE(program.file(u"molvark_rcon_050306.log"_s), "");
    }

    void theFieldsAreLockedWhileConnected()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.find<QComboBox>(u"comserver"_s)->addItems({u"10.0.0.1"_s, u"10.0.0.2"_s, u"10.0.0.3"_s});
        program.find<QComboBox>(u"comport"_s)->addItems({u"1"_s, u"2"_s, u"3"_s});
        program.connectTo(server);
        const QStringList connected = fields(program);
        tamperWith(program);
        QCOMPARE(fields(program), connected);
        QVERIFY(!program.find<QComboBox>(u"comserver"_s)->view()->isVisible());
        QVERIFY(!program.find<QComboBox>(u"comport"_s)->view()->isVisible());

        program.click(u"cmdconnect"_s);
        tamperWith(program);
        for (int field = 0; field < 3; ++field)
            QVERIFY2(fields(program).at(field) != connected.at(field), "the field is still locked");
    }

    void aSavedRowFillsLockedFieldsAndTheSocketKeepsItsServer()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        PracticeServer other;
        QVERIFY(other.listen());
        Program program("[servers]\r\nserver1=127.0.0.1\r\n[ports]\r\nport1=" + QByteArray::number(other.port()) +
                        "\r\n[rcon]\r\nrcon1=otherword\r\n");
        program.start();
        program.connectTo(server);
        server.forgetRequests();
        clickRow(program, 0);
        QCOMPARE(fields(program), QStringList({u"127.0.0.1"_s, QString::number(other.port()), u"otherword"_s}));

        program.click(u"cmdstatus"_s);
        QCOMPARE(server.requests(), QList<QByteArray>{QByteArray(4, '\xFF') + "rcon otherword Status"});
        QVERIFY(other.requests().isEmpty());
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
    }
};

WINDOW_TEST(ConnectFieldsTest)
#include "tst_connect_fields.moc"
