// SPDX-License-Identifier: MIT
#include "settings_tab.h"

using namespace Qt::StringLiterals;

namespace {

const Box question{u"Set server"_s, u"Set server with values in display?"_s, BoxIcon::Information,
                   BoxButtons::OkCancel};
const Box overflow{u"Molvark"_s, u"Error code 6 Descr: Overflow"_s, BoxIcon::Exclamation, BoxButtons::Ok};

struct Limit {
    QString box;
    QString complaint;
};

/// In the order in which they are checked and sent.
const QList<Limit> limits{
    {u"txtgrace"_s, u"Grace period has to be a number of seconds"_s},
    {u"txtroundlen"_s, u"Round length has to be a positive number of minutes"_s},
    {u"txtroundlim"_s, u"Round limit has to be a number of round wins (0=unlimited)"_s},
    {u"txtscorelim"_s, u"Score limit has to be a number of round wins"_s},
    {u"txttimelim"_s, u"Time limit has to be a number of minutes (0 - 1440)"_s},
};

Box invalid(const QString &text)
{
    return {u"Invalid value"_s, text, BoxIcon::None, BoxButtons::Ok};
}

QString focused()
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
}

} // namespace

/// The frame of search and destroy on the "COD2 Modes" tab.
class ModesPageSdTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void setAsksAndSendsFiveLimitsASecondApart()
    {
        SettingsTab tab;
        const QStringList values{u"20"_s, u"5"_s, u"12"_s, u"7"_s, u"60"_s};
        for (qsizetype number = 0; number < limits.size(); ++number)
            tab.program.setText(limits.at(number).box, values.at(number));
        tab.startSecond();
        tab.program.click(u"cmdsetsd"_s);
        QCOMPARE(tab.boxes(), QList<Box>{question});
        const QList<QByteArray> commands{"scr_sd_graceperiod 20", "scr_sd_roundlength 5", "scr_sd_roundlimit 12",
                                         "scr_sd_scorelimit 7", "scr_sd_timelimit 60"};
        QCOMPARE(tab.commands(), commands);
        QCOMPARE(tab.echoed(), commands);
        // The line about the round length shows the round limit.
        const QStringList lines{u"S&D Grace period updated to 20"_s, u"S&D Round length updated to 12"_s,
                                u"S&D Round limit updated to 12"_s, u"S&D Score limit updated to 7"_s,
                                u"S&D Time limit updated to 60"_s};
        QCOMPARE(tab.messages(), lines);
        QCOMPARE(tab.asked.size(), 5);
        for (qsizetype number = 0; number < 5; ++number)
            QCOMPARE(tab.asked.at(number).messages, lines.first(number));
        QVERIFY(tab.smallestGap() > 1.4);
        for (const QByteArray &command : commands) {
            const QList<QByteArray> words = command.split(' ');
            QCOMPARE(tab.server.game().dvars().value(QString::fromLatin1(words.at(0))),
                     QString::fromLatin1(words.at(1)));
        }
    }

    void theStockRoundLengthIsToldAsZero()
    {
        SettingsTab tab;
        tab.program.click(u"cmdsetsd"_s);
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands().at(1), "scr_sd_roundlength 4");
        QCOMPARE(tab.messages().at(1), u"S&D Round length updated to 0"_s);
    }

    void cancelSendsNothing()
    {
        SettingsTab tab;
        tab.program.prompts.answers = {Answer::Cancel};
        tab.program.click(u"cmdsetsd"_s);
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
    }

    void theFirstBoxThatIsNoNumberIsRefused_data()
    {
        QTest::addColumn<qsizetype>("number");
        QTest::addColumn<QString>("text");
        for (qsizetype number = 0; number < limits.size(); ++number) {
            QTest::newRow(qPrintable(limits.at(number).box)) << number << u"abc"_s;
            QTest::newRow(qPrintable(limits.at(number).box + u" is empty"_s)) << number << u""_s;
        }
    }

    void theFirstBoxThatIsNoNumberIsRefused()
    {
        QFETCH(qsizetype, number);
        QFETCH(QString, text);
        SettingsTab tab;
        showTabOf(tab.program, u"cmdsetsd"_s);
        for (const Limit &limit : limits.sliced(number))
            tab.program.setText(limit.box, text); // what comes later in the order is wrong as well
        tab.program.click(u"cmdsetsd"_s);
        QCOMPARE(tab.boxes(), QList<Box>{invalid(limits.at(number).complaint)});
        QCOMPARE(focused(), limits.at(number).box);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
    }

    void aTimeOutsideTheDayIsRefused()
    {
        SettingsTab tab;
        showTabOf(tab.program, u"cmdsetsd"_s);
        for (const QString &time : {u"1441"_s, u"-1"_s, u"1440.6"_s, u"-0.6"_s, u"32767"_s, u"abc"_s}) {
            tab.program.setText(u"txttimelim"_s, time);
            tab.program.find<QWidget>(u"txtgrace"_s)->setFocus();
            tab.program.click(u"cmdsetsd"_s);
            QCOMPARE(tab.boxes(), QList<Box>{invalid(u"Time limit has to be a number of minutes (0 - 1440)"_s)});
            QCOMPARE(focused(), u"txttimelim"_s);
        }
        QCOMPARE(tab.commands(), QList<QByteArray>());
    }

    void aTimeInsideTheDayIsSentAsTyped()
    {
        SettingsTab tab;
        for (const QString &time : {u"1440"_s, u"1440.5"_s, u"-0.5"_s, u"12.5"_s}) {
            tab.forget();
            tab.program.setText(u"txttimelim"_s, time);
            tab.program.click(u"cmdsetsd"_s);
            QCOMPARE(tab.boxes(), QList<Box>{question});
            QCOMPARE(tab.commands().constLast(), "scr_sd_timelimit " + time.toLatin1());
            QCOMPARE(tab.messages().constLast(), u"S&D Time limit updated to "_s + time);
        }
    }

    void aTimeBeyond16BitsOverflowsBeforeAnyQuestion()
    {
        SettingsTab tab;
        for (const QString &time : {u"32768"_s, u"-32769"_s, u"1e400"_s}) {
            tab.program.setText(u"txttimelim"_s, time);
            tab.program.click(u"cmdsetsd"_s);
            QCOMPARE(tab.boxes(), QList<Box>{overflow});
        }
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        tab.program.click(u"cmdsddefaults"_s);
        tab.program.click(u"cmdsetsd"_s);
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands().size(), 5);
    }

    void theOtherLimitsHaveNoRange()
    {
        SettingsTab tab;
        for (const Limit &limit : limits.first(4))
            tab.program.setText(limit.box, u"-99999.5"_s);
        tab.program.click(u"cmdsetsd"_s);
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands().first(4),
                 (QList<QByteArray>{"scr_sd_graceperiod -99999.5", "scr_sd_roundlength -99999.5",
                                    "scr_sd_roundlimit -99999.5", "scr_sd_scorelimit -99999.5"}));
    }

    void defaultsAreThoseOfTheFrameAndNothingIsSent()
    {
        SettingsTab tab;
        for (const Limit &limit : limits)
            tab.program.setText(limit.box, u"edited"_s);
        tab.program.setText(u"txtdmscorelim"_s, u"edited"_s);
        tab.program.click(u"cmdsddefaults"_s);
        const QStringList defaults{u"15"_s, u"4"_s, u"0"_s, u"10"_s, u"0"_s};
        for (qsizetype number = 0; number < limits.size(); ++number)
            QCOMPARE(tab.program.text(limits.at(number).box), defaults.at(number));
        QCOMPARE(tab.program.text(u"txtdmscorelim"_s), u"edited"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
    }

    void unconnectedEachCommandIsRefused()
    {
        Program program;
        program.start();
        program.click(u"cmdsetsd"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{question} + QList<Box>(5, notConnectedBox()));
        QCOMPARE(program.messages().size(), 5);
    }
};

WINDOW_TEST(ModesPageSdTest)
#include "tst_modes_page_sd.moc"
