// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QGroupBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// One of the four frames with two boxes.
struct Mode {
    QString stem; ///< of the names of its controls
    QString confirmed;
    QString score;
    QString time;

    [[nodiscard]] QString scoreBox() const { return u"txt"_s + stem + u"scorelim"_s; }
    [[nodiscard]] QString timeBox() const { return u"txt"_s + stem + u"timelim"_s; }
    [[nodiscard]] QString setButton() const { return u"cmdset"_s + stem; }
    [[nodiscard]] QString defaultButton() const { return u"cmd"_s + stem + u"default"_s; }
};

const QList<Mode> modes{{u"dm"_s, u"DM"_s, u"50"_s, u"30"_s},
                        {u"tdm"_s, u"TDM"_s, u"100"_s, u"30"_s},
                        {u"hq"_s, u"HQ"_s, u"450"_s, u"30"_s},
                        {u"ctf"_s, u"CTF"_s, u"5"_s, u"30"_s}};

void addModes()
{
    QTest::addColumn<qsizetype>("number");
    for (qsizetype number = 0; number < modes.size(); ++number)
        QTest::newRow(qPrintable(modes.at(number).confirmed)) << number;
}

Box invalid(const QString &text)
{
    return {u"Invalid value"_s, text, BoxIcon::None, BoxButtons::Ok};
}

const QString scoreComplaint = u"Score limit has to be a number"_s;
const QString timeComplaint = u"Time limit has to be a positive number of minutes"_s;
const QString rangeComplaint = u"Time limit has to be a number of minutes (0 - 1440)"_s;
const Box overflow{u"Molvark"_s, u"Error code 6 Descr: Overflow"_s, BoxIcon::Exclamation, BoxButtons::Ok};

QString focused()
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
}

} // namespace

/// The form of the "COD2 Modes" tab and its frames with two boxes.
class ModesPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aLimitIsMarkedUntilItIsSet()
    {
        SettingsTab tab;
        TextBox *score = tab.text(u"txtdmscorelim"_s);
        TextBox *time = tab.text(u"txtdmtimelim"_s);
        for (const TextBox *box : tab.program.window.findChildren<TextBox *>())
            QVERIFY2(box->tag.isEmpty() || !box->dataChanged(), qPrintable(box->objectName()));
        score->setText(u"70"_s);
        time->setText(u"20"_s);
        QVERIFY(score->dataChanged() && time->dataChanged());
        QCOMPARE(score->accessibleDescription(), u"Map score limit. Change not sent"_s);
        tab.program.click(u"cmdsetdm"_s);
        QVERIFY(!score->dataChanged() && !time->dataChanged());
        QCOMPARE(score->accessibleDescription(), QString());
        tab.program.click(u"cmddmdefault"_s);
        QVERIFY2(score->dataChanged() && time->dataChanged(), "the defaults are not sent by themselves");
    }

    void aLimitThatIsEditedWhileItIsSentStaysMarked()
    {
        SettingsTab tab;
        TextBox *time = tab.text(u"txtdmtimelim"_s);
        time->setText(u"20"_s);
        atRequest(tab.server, "scr_dm_scorelimit 50", [&] { time->setText(u"25"_s); });
        tab.program.click(u"cmdsetdm"_s);
        QVERIFY(tab.commands().contains("scr_dm_timelimit 20"));
        QVERIFY(time->dataChanged());
    }

    void aLimitIsBoundToItsVariable_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("labelTip");
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("initial");
        QTest::addColumn<QString>("frame");
        const auto row = [](const char *name, const QString &label, const QString &labelTip, const QString &tag,
                            const QString &initial, const QString &frame) {
            QTest::newRow(name) << label << labelTip << tag << initial << frame;
        };
        const QString score = u"Map score limit"_s;
        const QString time = u"Time limit"_s;
        const QString dm = u"Deathmatch settings"_s;
        const QString tdm = u"Team deathmatch settings"_s;
        const QString hq = u"Headquarters settings"_s;
        const QString ctf = u"Capture the Flag settings"_s;
        const QString sd = u"Search && Destroy settings"_s;
        row("txtdmscorelim", score, u"scr_dm_scorelimit (Default 50)"_s, u"scr_dm_scorelimit"_s, u"50"_s, dm);
        row("txtdmtimelim", time, u"scr_dm_timelimit (Default 30 minutes)"_s, u"scr_dm_timelimit"_s, u"30"_s, dm);
        row("txttdmscorelim", score, u"scr_tdm_scorelimit (Default 100)"_s, u"scr_tdm_scorelimit"_s, u"100"_s, tdm);
        row("txttdmtimelim", time, u"scr_tdm_timelimit (Default 30 minutes)"_s, u"scr_tdm_timelimit"_s, u"30"_s, tdm);
        row("txthqscorelim", score, u"scr_hq_scorelimit (Default 450)"_s, u"scr_hq_scorelimit"_s, u"450"_s, hq);
        row("txthqtimelim", time, u"scr_hq_timelimit (Default 30 minutes)"_s, u"scr_hq_timelimit"_s, u"30"_s, hq);
        // These three tool tips name other variables than their boxes.
        row("txtctfscorelim", score, u"scr_bel_scorelimit (Default 100)"_s, u"scr_ctf_scorelimit"_s, u"5"_s, ctf);
        row("txtctftimelim", time, u"scr_bel_timelimit (Default 30 minutes)"_s, u"scr_ctf_timelimit"_s, u"30"_s, ctf);
        row("txttimelim", u"Map Time limit"_s, u"scr_sd_scorelimit (Default 10)"_s, u"scr_sd_timelimit"_s, u"0"_s, sd);
        row("txtscorelim", u"Score Limit"_s, u"scr_sd_scorelimit (Default 10"_s, u"scr_sd_scorelimit"_s, u"10"_s, sd);
        row("txtroundlim", u"Round Limit"_s, u"scr_sd_roundlimit (Default 0"_s, u"scr_sd_roundlimit"_s, u"0"_s, sd);
        row("txtroundlen", u"Round Length"_s, u"scr_sd_roundlength (Default 4"_s, u"scr_sd_roundlength"_s, u"4"_s, sd);
        row("txtgrace", u"Grace Period"_s, u"scr_sd_graceperiod (Default 15"_s, u"scr_sd_graceperiod"_s, u"15"_s, sd);
    }

    void aLimitIsBoundToItsVariable()
    {
        QFETCH(QString, label);
        QFETCH(QString, labelTip);
        QFETCH(QString, tag);
        QFETCH(QString, initial);
        QFETCH(QString, frame);
        Program program;
        program.start();
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        const auto *box = program.find<TextBox>(name);
        QCOMPARE(labelOf(program, name)->text(), label);
        QVERIFY2(labelOf(program, name)->toolTip().startsWith(labelTip), qPrintable(labelOf(program, name)->toolTip()));
        QCOMPARE(box->tag, tag);
        QCOMPARE(box->text(), initial);
        QCOMPARE(qobject_cast<const QGroupBox *>(box->parentWidget())->title(), frame);
    }

    void theBoxesHaveToolTips()
    {
        Program program;
        program.start();
        for (const QString &stem : {u"dm"_s, u"tdm"_s, u"hq"_s}) {
            QCOMPARE(program.find<QWidget>(u"txt"_s + stem + u"scorelim"_s)->toolTip(), u"Map score limit"_s);
            QCOMPARE(program.find<QWidget>(u"txt"_s + stem + u"timelim"_s)->toolTip(), u"Time limit in minutes"_s);
        }
        QCOMPARE(program.find<QWidget>(u"txtctfscorelim"_s)->toolTip(), u"CTF score limit"_s);
        QCOMPARE(program.find<QWidget>(u"txtctftimelim"_s)->toolTip(), u"Time limit in minutes"_s);
        QCOMPARE(program.find<QWidget>(u"txttimelim"_s)->toolTip(), u"Number of minutes (0 - 1440) 0 is unlimited"_s);
    }

    void theButtonsAreCaptioned()
    {
        Program program;
        program.start();
        for (const QString &button : {u"cmdsetdm"_s, u"cmdsettdm"_s, u"cmdsethq"_s, u"cmdsetctf"_s, u"cmdsetsd"_s})
            QCOMPARE(program.text(button), u"Set"_s);
        for (const QString &button :
             {u"cmddmdefault"_s, u"cmdtdmdefault"_s, u"cmdhqdefault"_s, u"cmdctfdefault"_s, u"cmdsddefaults"_s})
            QCOMPARE(program.text(button), u"Defaults"_s);
        QCOMPARE(program.find<QGroupBox>(u"frmgamemode"_s)->title(), u"COD2 Instant game mode switch"_s);
        const QStringList switches{u"Search && Destroy"_s, u"Capture the Flag"_s, u"Team Death Match"_s,
                                   u"Death Match"_s, u"Headquarters"_s};
        for (int index = 0; index < 5; ++index)
            QCOMPARE(program.text(u"cmdcod_"_s + QString::number(index)), switches.at(index));
    }

    void setSendsBothLimitsASecondApart_data() { addModes(); }

    void setSendsBothLimitsASecondApart()
    {
        QFETCH(qsizetype, number);
        const Mode &mode = modes.at(number);
        SettingsTab tab;
        tab.program.setText(mode.scoreBox(), u"77"_s);
        tab.program.setText(mode.timeBox(), u"88"_s);
        tab.startSecond();
        tab.program.click(mode.setButton());
        const QByteArray prefix = "scr_" + mode.stem.toLatin1();
        const QList<QByteArray> commands{prefix + "_scorelimit 77", prefix + "_timelimit 88"};
        QCOMPARE(tab.commands(), commands);
        QCOMPARE(tab.echoed(), commands);
        QCOMPARE(tab.messages(), QStringList({mode.confirmed + u" score limit updated to 77"_s,
                                              mode.confirmed + u" time limit updated to 88"_s}));
        QCOMPARE(tab.asked.at(1).messages, tab.messages().first(1));
        QVERIFY(tab.smallestGap() > 1.4);
        QVERIFY(tab.boxes().isEmpty());
        QCOMPARE(tab.server.game().dvars().value(u"scr_"_s + mode.stem + u"_scorelimit"_s), u"77"_s);
        QCOMPARE(tab.server.game().dvars().value(u"scr_"_s + mode.stem + u"_timelimit"_s), u"88"_s);
    }

    void whatIsNoLimitIsRefused_data()
    {
        QTest::addColumn<QString>("score");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("complaint");
        QTest::addColumn<bool>("aboutScore");
        const auto row = [](const char *name, const QString &score, const QString &time, const QString &complaint) {
            QTest::newRow(name) << score << time << complaint << (complaint == scoreComplaint);
        };
        row("a word for the score", u"abc"_s, u"30"_s, scoreComplaint);
        row("no score", u""_s, u"30"_s, scoreComplaint);
        row("both are words", u"abc"_s, u"abc"_s, scoreComplaint);
        row("a word for the score and too long a time", u"abc"_s, u"1441"_s, scoreComplaint);
        row("a word for the time", u"50"_s, u"abc"_s, timeComplaint);
        row("no time", u"50"_s, u""_s, timeComplaint);
        row("1441", u"50"_s, u"1441"_s, rangeComplaint);
        row("-1", u"50"_s, u"-1"_s, rangeComplaint);
        row("1440.6", u"50"_s, u"1440.6"_s, rangeComplaint);
        row("1441.5", u"50"_s, u"1441.5"_s, rangeComplaint);
        row("-0.6", u"50"_s, u"-0.6"_s, rangeComplaint);
        row("32767", u"50"_s, u"32767"_s, rangeComplaint);
        row("-32768", u"50"_s, u"-32768"_s, rangeComplaint);
    }

    void whatIsNoLimitIsRefused()
    {
        QFETCH(QString, score);
        QFETCH(QString, time);
        QFETCH(QString, complaint);
        QFETCH(bool, aboutScore);
        SettingsTab tab;
        for (const Mode &mode : modes) {
            showTabOf(tab.program, mode.setButton());
            tab.program.setText(mode.scoreBox(), score);
            tab.program.setText(mode.timeBox(), time);
            tab.program.find<QPushButton>(mode.setButton())->setFocus();
            tab.program.click(mode.setButton());
            QCOMPARE(tab.boxes(), QList<Box>{invalid(complaint)});
            QCOMPARE(focused(), aboutScore ? mode.scoreBox() : mode.timeBox());
        }
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
    }

    void whatIsALimitIsSentAsTyped_data()
    {
        QTest::addColumn<QByteArray>("score");
        QTest::addColumn<QByteArray>("time");
        QTest::newRow("1440") << QByteArray("50") << QByteArray("1440");
        QTest::newRow("0") << QByteArray("0") << QByteArray("0");
        QTest::newRow("12.5") << QByteArray("50") << QByteArray("12.5");
        QTest::newRow("1440.5") << QByteArray("50") << QByteArray("1440.5");
        QTest::newRow("-0.5") << QByteArray("50") << QByteArray("-0.5");
        QTest::newRow("any score") << QByteArray("-70000.25") << QByteArray("30");
        QTest::newRow("blanks and an exponent") << QByteArray(" 5e1 ") << QByteArray(" 1e3 ");
    }

    void whatIsALimitIsSentAsTyped()
    {
        QFETCH(QByteArray, score);
        QFETCH(QByteArray, time);
        SettingsTab tab;
        tab.program.setText(u"txtdmscorelim"_s, QString::fromLatin1(score));
        tab.program.setText(u"txtdmtimelim"_s, QString::fromLatin1(time));
        tab.program.click(u"cmdsetdm"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_dm_scorelimit " + score, "scr_dm_timelimit " + time}));
        QCOMPARE(tab.messages(), QStringList({u"DM score limit updated to "_s + QString::fromLatin1(score),
                                              u"DM time limit updated to "_s + QString::fromLatin1(time)}));
        QVERIFY(tab.boxes().isEmpty());
    }

    void aTimeBeyond16BitsOverflowsAndTheProgramGoesOn()
    {
        SettingsTab tab;
        for (const Mode &mode : modes) {
            for (const QString &time : {u"32768"_s, u"32767.5"_s, u"-32769"_s, u"99999"_s, u"1e400"_s}) {
                tab.program.setText(mode.timeBox(), time);
                tab.program.click(mode.setButton());
                QCOMPARE(tab.boxes(), QList<Box>{overflow});
            }
        }
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        tab.program.click(u"cmddmdefault"_s);
        tab.program.click(u"cmdsetdm"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_dm_scorelimit 50", "scr_dm_timelimit 30"}));
    }

    void defaultsAreThoseOfTheFrameAndNothingIsSent_data() { addModes(); }

    void defaultsAreThoseOfTheFrameAndNothingIsSent()
    {
        QFETCH(qsizetype, number);
        SettingsTab tab;
        for (const Mode &mode : modes) {
            tab.program.setText(mode.scoreBox(), u"edited"_s);
            tab.program.setText(mode.timeBox(), u"edited"_s);
        }
        tab.program.click(modes.at(number).defaultButton());
        for (const Mode &mode : modes) {
            const bool own = &mode == &modes.at(number);
            QCOMPARE(tab.program.text(mode.scoreBox()), own ? mode.score : u"edited"_s);
            QCOMPARE(tab.program.text(mode.timeBox()), own ? mode.time : u"edited"_s);
        }
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
    }

    void unconnectedEachCommandIsRefused()
    {
        Program program;
        program.start();
        program.click(u"cmdsetctf"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>(2, notConnectedBox()));
        QCOMPARE(program.messages(),
                 QStringList({u"CTF score limit updated to 5"_s, u"CTF time limit updated to 30"_s}));
    }
};

WINDOW_TEST(ModesPageTest)
#include "tst_modes_page.moc"
