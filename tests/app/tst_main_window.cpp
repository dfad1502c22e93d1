// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

struct Control {
    const char *name;
    const char *kind; ///< the class of Qt that it is or inherits
    const char *text; ///< its caption or default text
};

constexpr Control controls[]{
    {"lblmain", "QLabel", "Molvark"},
    {"Label1", "QLabel", "server address"},
    {"comserver", "QComboBox", "127.0.0.1"},
    {"Label2", "QLabel", "port"},
    {"comport", "QComboBox", "28960"},
    {"Label3", "QLabel", "rcon password"},
    {"txtPWD", "QLineEdit", ""},
    {"cmdconnect", "QPushButton", "Connect"},
    {"lbldirect", "QLabel", "Rcon Direct"},
    {"comdirect", "QComboBox", ""},
    {"cmdsend", "QPushButton", "&Send"},
    {"cmdstatus", "QPushButton", "Get Status"},
    {"cmsserverinfo", "QPushButton", "Get Server Info"},
    {"lblouttitle", "QLabel", "Responses from server"},
    {"txtoutput", "QPlainTextEdit", ""},
    {"lblmessages", "QLabel", "Messages:"},
    {"lstmessages", "QListWidget", ""},
    {"lblprefix", "QLabel", "User Prefix for message"},
    {"txtprefix", "QLineEdit", "RemoteUser"},
    {"cmdmessage", "QPushButton", "Send Message"},
    {"lblsavedlist", "QLabel", "Saved List"},
    {"lstservers", "QListWidget", ""},
    {"cmdexit", "QPushButton", "Exit"},
};

QString shownText(const QWidget *control)
{
    for (const char *property : {"currentText", "plainText", "text"}) {
        if (control->metaObject()->indexOfProperty(property) >= 0)
            return control->property(property).toString();
    }
    return {};
}

bool liesWithin(const QWidget *control, const QWidget *window)
{
    return window->rect().contains(QRect(control->mapTo(window, QPoint()), control->size()));
}

} // namespace

class MainWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theWindowIsCaptioned()
    {
        Program program;
        program.start();
        QCOMPARE(program.window.windowTitle(), u"Molvark"_s);
        QCOMPARE(program.window.objectName(), u"Main"_s);
    }

    void eachControlOutsideTheTabsStandsThere_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("text");
        for (const Control &control : controls)
            QTest::newRow(control.name) << QString::fromLatin1(control.kind) << QString::fromLatin1(control.text);
    }

    void eachControlOutsideTheTabsStandsThere()
    {
        QFETCH(QString, kind);
        QFETCH(QString, text);
        Program program;
        program.start();
        const auto *control = program.find<QWidget>(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY2(control->inherits(qPrintable(kind)), control->metaObject()->className());
        QCOMPARE(shownText(control), text);
        QVERIFY(control->isVisible());
        QVERIFY(!program.find<QTabWidget>(u"SSTab"_s)->isAncestorOf(control));
    }

    void theTabsAreInOrder()
    {
        Program program;
        program.start();
        const auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        const QList<std::pair<QString, QString>> captionsAndControls{
            {u"Server"_s, u"cmdservpop"_s},   {u"COD2 Modes"_s, u"cmdsetdm"_s}, {u"Maps"_s, u"cmdmapload"_s},
            {u"Weapons"_s, u"cmdpopwep"_s},   {u"Players"_s, u"cmdplypop"_s},   {u"Mods"_s, u"cmdhob"_s},
            {u"Messages"_s, u"cmdsetsave"_s}, {u"Misc"_s, u"cmdcfgexec"_s},     {u"COD2 other"_s, u"cmdCodOther_0"_s}};
        QCOMPARE(tabs->count(), captionsAndControls.size());
        for (int tab = 0; tab < tabs->count(); ++tab) {
            const auto &[caption, control] = captionsAndControls.at(tab);
            QCOMPARE(tabs->tabText(tab), caption);
            QVERIFY2(tabs->widget(tab)->isAncestorOf(program.find<QWidget>(control)), qPrintable(caption));
        }
        QCOMPARE(tabs->currentIndex(), 0);
    }

    void theConnectButtonCarriesItsStateFromTheStart()
    {
        Program program;
        QCOMPARE(program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString(), u"NO"_s);
    }

    void theConnectionAndTheConsoleBoxesCanBeTypedInto()
    {
        Program program;
        program.start();
        for (const QString &name : {u"comserver"_s, u"comport"_s, u"comdirect"_s}) {
            auto *combo = program.find<QComboBox>(name);
            QVERIFY(combo->isEditable());
            QVERIFY(program.rows(name).isEmpty());
            combo->clearEditText();
            QTest::keyClicks(combo, u"abc"_s);
            QCOMPARE(combo->currentText(), u"abc"_s);
        }
    }

    void theOutputIsNotTypedInto()
    {
        Program program;
        program.start();
        QVERIFY(program.find<QPlainTextEdit>(u"txtoutput"_s)->isReadOnly());
    }

    void thePasswordIsShownAsDots()
    {
        Program program;
        program.start();
        const auto *password = program.find<QLineEdit>(u"txtPWD"_s);
        program.setText(u"txtPWD"_s, u"secret"_s);
        QCOMPARE(password->echoMode(), QLineEdit::Password);
        QVERIFY(!password->displayText().contains(u's'));
        QCOMPARE(password->displayText().size(), 6);
    }

    void theSavedPasswordsAreNotShown()
    {
        Program program("[servers]\r\nserver1=10.0.0.1\r\n[ports]\r\nport1=1\r\n[rcon]\r\nrcon1=secret\r\n");
        program.start();
        QCOMPARE(program.find<QWidget>(u"lstservers"_s)->toolTip(), u"List of saved server/Port/Rcon passwords"_s);
        QCOMPARE(program.rows(u"lstrcon"_s), QStringList{u"secret"_s});
        QVERIFY(program.find<QWidget>(u"lstrcon"_s)->isHidden());
        QCOMPARE(program.rows(u"lstservers"_s), QStringList{u"10.0.0.1:1"_s});
    }

    void everythingFitsIntoASmallScreen()
    {
        Program program;
        program.start();
        program.window.resize(1024, 700);
        QCoreApplication::processEvents();
        QCOMPARE(program.window.size(), QSize(1024, 700));
        for (const Control &control : controls) {
            const auto *widget = program.find<QWidget>(QString::fromLatin1(control.name));
            QVERIFY2(liesWithin(widget, &program.window), control.name);
            QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), control.name);
        }
    }

    void theTabKeyReachesEveryControl()
    {
        Program program;
        program.start();
        QStringList reached;
        for (int key = 0; key < 60; ++key) {
            QWidget *focus = QApplication::focusWidget();
            QVERIFY(focus);
            reached.append(focus->objectName());
            QTest::keyClick(focus, Qt::Key_Tab);
        }
        for (const Control &control : controls) {
            const QString name = QString::fromLatin1(control.name);
            const bool takesFocus = !name.startsWith(u"l") || name.startsWith(u"lst");
            if (takesFocus && name != u"Label1" && name != u"Label2")
                QVERIFY2(reached.contains(name), qPrintable(name + u" is not among: "_s + reached.join(u' ')));
        }
    }

    void theTabKeyGoesFromTheServerToTheConnectButton()
    {
        Program program;
        program.start();
        QStringList order;
        for (int key = 0; key < 4; ++key) {
            order.append(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, QStringList({u"comserver"_s, u"comport"_s, u"txtPWD"_s, u"cmdconnect"_s}));
    }
};

WINDOW_TEST(MainWindowTest)
#include "tst_main_window.moc"
