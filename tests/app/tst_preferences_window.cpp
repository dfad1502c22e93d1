// SPDX-License-Identifier: MIT
#include "window_hands.h"
#include "window_test.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

using namespace Qt::StringLiterals;

namespace {

const Box saveQuestion{u"Save Changes"_s, u"Save any changes made"_s, BoxIcon::Question, BoxButtons::OkCancel};
const Box savedBox{u"Saved"_s, u"Preferences saved."_s, BoxIcon::Information, BoxButtons::Ok};
const Box exitQuestion{u"Have you Saved?"_s,
                       u"Exit preferences?\r\rThis will cancel any changes made\r\r"
                       "Please select Save first if any changes"_s,
                       BoxIcon::Information, BoxButtons::OkCancel};

/// The started program with its preferences window open.
class Preferring final : public WindowHands {
public:
    explicit Preferring(const QByteArray &options = {}) : program("[options]\r\n" + options)
    {
        program.start();
        open();
    }

    void open() { WindowHands::open(program, u"mpref"_s, u"frmpref"_s); }
    void tick(const QString &box, bool on = true) const { find<QCheckBox>(box)->setChecked(on); }
    void type(const QString &box, const QString &text) const { find<QLineEdit>(box)->setText(text); }
    void click(const QString &button) const { find<QPushButton>(button)->click(); }
    [[nodiscard]] QByteArray file() const { return program.file(u"molvark.ini"_s); }
    [[nodiscard]] bool isOpen() const { return window->isVisible(); }

    Program program;
};

} // namespace

class PreferencesWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theWindowSaysWhatItIs()
    {
        const Preferring preferring;
        QCOMPARE(preferring.window->windowTitle(), u"Molvar - Preferences"_s);
        QVERIFY(!preferring.window->isModal());
        QCOMPARE(preferring.find<QGroupBox>(u"frmsaves"_s)->title(), u"General Options"_s);
        QCOMPARE(preferring.find<QGroupBox>(u"Frame1"_s)->title(), u"Player Options"_s);
        QCOMPARE(preferring.find<QGroupBox>(u"Frame2"_s)->title(), u"Auto Server Options"_s);
        const QList<std::pair<QString, QString>> captions{{u"moptsr"_s, u"Auto save RCON window on exit"_s},
                                                          {u"moptsm"_s, u"Auto save Messages on exit"_s},
                                                          {u"chkclearRnews"_s, u"Clear RCON window on new server"_s},
                                                          {u"chkclearMnews"_s, u"Clear Messages on new server"_s},
                                                          {u"moptrc"_s, u"Remove Colour ID's"_s},
                                                          {u"moptqp"_s, u"Use Query mode for populate"_s},
                                                          {u"chkautoplayer"_s, u"Auto Update player list"_s},
                                                          {u"chkauto999"_s, u"Auto Kick 999 players"_s},
                                                          {u"chkautoconnect"_s, u"Auto connect on startup"_s},
                                                          {u"chkautomessages"_s, u"Start messages on startup"_s}};
        for (const auto &[box, caption] : captions)
            QCOMPARE(preferring.find<QCheckBox>(box)->text(), caption);
        QCOMPARE(preferring.find<QPushButton>(u"cmdsave"_s)->text(), u"Save Changes"_s);
        QCOMPARE(preferring.find<QPushButton>(u"cmdexit"_s)->text(), u"Exit"_s);
    }

    void theSlidersHaveTheirRanges()
    {
        const Preferring preferring;
        const auto *refresh = preferring.find<QSlider>(u"sldautoplayer"_s);
        QCOMPARE(refresh->toolTip(), u"Number of seconds between refreshes"_s);
        QCOMPARE(QList<int>({refresh->minimum(), refresh->maximum(), refresh->singleStep(), refresh->pageStep()}),
                 QList<int>({5, 40, 5, 10}));
        const auto *kick = preferring.find<QSlider>(u"sldauto999"_s);
        QCOMPARE(kick->toolTip(), u"Number of checks before kick"_s);
        QCOMPARE(QList<int>({kick->minimum(), kick->maximum(), kick->singleStep(), kick->pageStep()}),
                 QList<int>({1, 5, 1, 2}));
    }

    void theControlsShowThePreferences()
    {
        const Preferring preferring(
            "savercon=0\r\nclearmessnew=0\r\nusequery=1\r\nautoqplayer=1\r\nautoqplayerint=8\r\n"
            "autokick999=0\r\nautokick999int=4\r\nautoconnectserv=1.2.3.4\r\n"
            "autoconnectport=28960\r\nautoconnectrcon=secret\r\nmessageset=7\r\n"
            "messagetime=9\r\n");
        QStringList ticked;
        for (const QCheckBox *box : preferring.window->findChildren<QCheckBox *>()) {
            if (box->isChecked())
                ticked.append(box->objectName());
        }
        ticked.sort();
        QCOMPARE(ticked, QStringList({u"chkautoplayer"_s, u"chkclearRnews"_s, u"moptqp"_s, u"moptrc"_s, u"moptsm"_s}));
        QCOMPARE(preferring.find<QSlider>(u"sldautoplayer"_s)->value(), 8);
        QVERIFY(preferring.find<QSlider>(u"sldautoplayer"_s)->isEnabled());
        QCOMPARE(preferring.find<QSlider>(u"sldauto999"_s)->value(), 4);
        QVERIFY(!preferring.find<QSlider>(u"sldauto999"_s)->isEnabled());
        QCOMPARE(preferring.find<QLineEdit>(u"txtserv"_s)->text(), u"1.2.3.4"_s);
        QVERIFY(!preferring.find<QLineEdit>(u"txtserv"_s)->isEnabled());
        QCOMPARE(preferring.find<QLineEdit>(u"txtport"_s)->text(), u"28960"_s);
        QCOMPARE(preferring.find<QLineEdit>(u"txtpass"_s)->text(), u"secret"_s);
        QCOMPARE(preferring.find<QLineEdit>(u"txtmesset"_s)->text(), u"7"_s);
        QVERIFY(!preferring.find<QLineEdit>(u"txtmesset"_s)->isEnabled());
        QCOMPARE(preferring.find<QLineEdit>(u"txtmessint"_s)->text(), u"9"_s);
    }

    void uncheckingGreysOutAndKeepsTheTexts_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QStringList>("dependents");
        QTest::newRow("connect") << u"chkautoconnect"_s << QStringList{u"txtserv"_s, u"txtport"_s, u"txtpass"_s};
        QTest::newRow("messages") << u"chkautomessages"_s << QStringList{u"txtmesset"_s, u"txtmessint"_s};
        QTest::newRow("refresh") << u"chkautoplayer"_s << QStringList{u"sldautoplayer"_s};
        QTest::newRow("kick") << u"chkauto999"_s << QStringList{u"sldauto999"_s};
    }

    void uncheckingGreysOutAndKeepsTheTexts()
    {
        QFETCH(QString, box);
        QFETCH(QStringList, dependents);
        const Preferring preferring("autoconnectserv=1.2.3.4\r\n");
        for (const bool on : {true, false, true}) {
            preferring.tick(box, on);
            for (const QString &dependent : dependents)
                QCOMPARE(preferring.find<QWidget>(dependent)->isEnabled(), on);
        }
        QCOMPARE(preferring.find<QLineEdit>(u"txtserv"_s)->text(), u"1.2.3.4"_s);
    }

    void everythingThatChangedIsSavedAndInForceAtOnce()
    {
        Preferring preferring;
        preferring.tick(u"moptsr"_s, false);
        preferring.tick(u"moptqp"_s);
        preferring.tick(u"chkautoplayer"_s);
        preferring.find<QSlider>(u"sldautoplayer"_s)->setValue(15);
        preferring.tick(u"chkauto999"_s);
        preferring.find<QSlider>(u"sldauto999"_s)->setValue(5);
        preferring.tick(u"chkautoconnect"_s);
        preferring.type(u"txtserv"_s, u"game.example"_s);
        preferring.type(u"txtport"_s, u"28961"_s);
        preferring.type(u"txtpass"_s, u"secret"_s);
        preferring.tick(u"chkautomessages"_s);
        preferring.type(u"txtmesset"_s, u"4"_s);
        preferring.type(u"txtmessint"_s, u"2.5"_s);
        preferring.click(u"cmdsave"_s);
        QCOMPARE(preferring.program.prompts.takeBoxes(), QList<Box>({saveQuestion, savedBox}));
        QVERIFY(!preferring.isOpen());
        QCOMPARE(preferring.file(), QByteArray("[options]\r\nsavercon=0\r\nusequery=1\r\nautoqplayer=1\r\n"
                                               "autoqplayerint=15\r\nautokick999=1\r\nautokick999int=5\r\n"
                                               "autoconnect=1\r\nautoconnectserv=game.example\r\n"
                                               "autoconnectport=28961\r\nautoconnectrcon=secret\r\n"
                                               "automessage=1\r\nmessageset=4\r\nmessagetime=2.5\r\n"));
        const Preferences &options = preferring.program.session.options;
        QVERIFY(!options.savercon && options.usequery && options.autoqplayer && options.autokick999);
        QCOMPARE(options.autoqplayerint, 15);
        QCOMPARE(options.autokick999int, 5);
        QCOMPARE(options.autoconnectserv, u"game.example"_s);
        QCOMPARE(options.messageset, 4);
        QCOMPARE(options.messagetime, 2); // a half goes to the even neighbour
    }

    void aSliderAloneSavesNothing()
    {
        Preferring preferring("autoqplayer=1\r\nautokick999=1\r\n");
        preferring.find<QSlider>(u"sldautoplayer"_s)->setValue(25);
        preferring.find<QSlider>(u"sldauto999"_s)->setValue(5);
        preferring.click(u"cmdsave"_s);
        QCOMPARE(preferring.program.prompts.takeBoxes(), QList<Box>({saveQuestion, savedBox}));
        QCOMPARE(preferring.file(), QByteArray("[options]\r\nautoqplayer=1\r\nautokick999=1\r\n"));
        QCOMPARE(preferring.program.session.options.autoqplayerint, 10);
    }

    void anIntervalOfFifteenSecondsIsReadBackAsOneAndShownAsTheLeast()
    {
        Preferring preferring("autoqplayer=1\r\nautoqplayerint=15\r\n");
        QCOMPARE(preferring.program.session.options.autoqplayerint, 1);
        QCOMPARE(preferring.find<QSlider>(u"sldautoplayer"_s)->value(), 5);
    }

    void cancelKeepsTheWindowAndAllEdits()
    {
        Preferring preferring;
        preferring.tick(u"moptsr"_s, false);
        for (const QString &button : {u"cmdsave"_s, u"cmdexit"_s}) {
            preferring.program.prompts.answers = {Answer::Cancel};
            preferring.click(button);
            QCOMPARE(preferring.program.prompts.takeBoxes().size(), 1);
            QVERIFY(preferring.isOpen());
            QVERIFY(!preferring.find<QCheckBox>(u"moptsr"_s)->isChecked());
        }
        QCOMPARE(preferring.file(), QByteArray("[options]\r\n"));
        QVERIFY(preferring.program.session.options.savercon);
    }

    void exitLeavesWithoutSaving()
    {
        Preferring preferring;
        preferring.tick(u"moptsr"_s, false);
        preferring.click(u"cmdexit"_s);
        QCOMPARE(preferring.program.prompts.takeBoxes(), QList<Box>{exitQuestion});
        QVERIFY(!preferring.isOpen());
        QCOMPARE(preferring.file(), QByteArray("[options]\r\n"));
        preferring.open();
        QVERIFY2(preferring.find<QCheckBox>(u"moptsr"_s)->isChecked(), "the edit is forgotten");
    }

    void aMessageNumberThatIsNoneIsAFaultAndWhatCameBeforeIsSaved()
    {
        Preferring preferring;
        preferring.tick(u"moptsr"_s, false);
        preferring.tick(u"chkautomessages"_s);
        preferring.type(u"txtmesset"_s, u"first"_s);
        preferring.type(u"txtmessint"_s, u"5"_s);
        preferring.click(u"cmdsave"_s);
        QCOMPARE(preferring.program.prompts.takeBoxes(),
                 QList<Box>(
                     {saveQuestion,
                      {u"Molvark"_s, u"Error code 13 Descr: Type mismatch"_s, BoxIcon::Exclamation, BoxButtons::Ok}}));
        QCOMPARE(preferring.file(), QByteArray("[options]\r\nsavercon=0\r\nautomessage=1\r\n"));
        QVERIFY(preferring.isOpen());
    }

    void onlyAFailureOfTheFirstKeyIsTold_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("isTold");
        QTest::newRow("savercon") << u"moptsr"_s << true;
        QTest::newRow("savemessages") << u"moptsm"_s << false;
    }

    void onlyAFailureOfTheFirstKeyIsTold()
    {
        QFETCH(QString, box);
        QFETCH(bool, isTold);
        Preferring preferring;
        QVERIFY(QFile::remove(u"molvark.ini"_s) && QDir().mkdir(u"molvark.ini"_s));
        preferring.tick(box, false);
        preferring.tick(u"moptsm"_s, false);
        preferring.click(u"cmdsave"_s);
        const QList<Box> boxes = preferring.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 2);
        if (isTold) {
            QCOMPARE(boxes[1].title, u"INI Write Fail"_s);
            static const QRegularExpression text(
                uR"(\AFailed to write new save rcon to INI file\rError code [0-9]+ Descr: .+\z)"_s);
            QVERIFY2(text.match(boxes[1].text).hasMatch(), qPrintable(boxes[1].text));
            QCOMPARE(boxes[1].icon, BoxIcon::Exclamation);
            QVERIFY2(preferring.program.session.options.savemessages, "what follows is not saved");
        } else {
            QCOMPARE(boxes[1], savedBox);
        }
        QVERIFY(!preferring.isOpen());
    }
};

WINDOW_TEST(PreferencesWindowTest)
#include "tst_preferences_window.moc"
