// SPDX-License-Identifier: MIT
#include "messages_tab.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const Box noSetBox{u"No set selected"_s, u"No message set selected in Message Set field"_s, BoxIcon::Information,
                   BoxButtons::Ok};

Box deleteBox(const QString &name)
{
    return question(u"Confirm Delete"_s, u"Are you sure you want to delete the set named:\r"_s + name);
}

/// How bright a colour is to the eye, from 0 to 1.
double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const double bright = std::max(luminance(one), luminance(other));
    const double dark = std::min(luminance(one), luminance(other));
    return (bright + 0.05) / (dark + 0.05);
}

QByteArray tenSets()
{
    QByteArray text;
    for (int number = 0; number < 10; ++number)
        text += "[set" + QByteArray::number(number) + "]\r\nname=S" + QByteArray::number(number) + "\r\n";
    return text;
}

} // namespace

/// What the tab shows, and its sets: choosing, creating and deleting them.
class MessagesPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theControlsHaveTheirTexts_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("caption"); ///< of a button
        QTest::addColumn<QString>("toolTip");
        QTest::newRow("the sets") << u"commessset"_s << QString() << u"Lists messages sets"_s;
        QTest::newRow("the messages") << u"lstmess"_s << QString()
                                      << u"Click entry to select for Move or Delete. Double Click to edit entry"_s;
        QTest::newRow("save") << u"cmdsetsave"_s << u"Save Sets"_s << u"Save new list to INI file"_s;
        QTest::newRow("delete a set") << u"cmdsetdel"_s << u"Delete Set"_s << u"Deletes current Set"_s;
        QTest::newRow("discard") << u"cmdsetdis"_s << u"Discard change"_s << u"Save new list to INI file"_s;
        QTest::newRow("up") << u"imgup"_s << QString() << u"Move up in list"_s;
        QTest::newRow("down") << u"imgdown"_s << QString() << u"Move down in list"_s;
        QTest::newRow("delete") << u"imgdel"_s << QString() << u"Removes selected item"_s;
        QTest::newRow("free sets") << u"txtfreesets"_s << QString() << u"Number of Free Set slots"_s;
        QTest::newRow("start") << u"cmdmessstart"_s << u"Start"_s << u"Start the message cycle on active server"_s;
        QTest::newRow("stop") << u"cmdmessstop"_s << u"Stop"_s << u"Stop the message cycle on server"_s;
        QTest::newRow("interval") << u"txtinterval"_s << QString() << u"Number of minutes between messages (1 -10)"_s;
    }

    void theControlsHaveTheirTexts()
    {
        QFETCH(QString, control);
        QFETCH(QString, caption);
        Program program;
        program.start();
        QTEST(program.find<QWidget>(control)->toolTip(), "toolTip");
        if (!caption.isEmpty())
            QCOMPARE(program.text(control), caption);
    }

    void theLabelsHaveTheirTexts()
    {
        Program program;
        program.start();
        QStringList texts;
        for (const QLabel *label : program.find<QWidget>(u"MessagesPage"_s)->findChildren<QLabel *>()) {
            texts.append(label->text());
            if (label->text() == u"Message set")
                QCOMPARE(label->toolTip(), u"Message Sets allow more than one group of messages (e.g. 1 per server)"_s);
        }
        for (const QString &text :
             {u"Message set"_s, u"Message"_s, u"Sets free"_s, u"Colour Codes>"_s, u"Message Interval"_s,
              u"%IP% for IP number & port, %SN% for server name, %FF% Friendlyfire status"_s})
            QVERIFY2(texts.contains(text), qPrintable(text));
    }

    void theColourCodesShowTheirColours_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("the default") << u"^0"_s << QGuiApplication::palette().color(QPalette::WindowText);
        QTest::newRow("red") << u"^1"_s << QColor(255, 0, 0);
        QTest::newRow("green") << u"^2"_s << QColor(0, 192, 0);
        QTest::newRow("yellow") << u"^3"_s << QColor(255, 255, 0);
        QTest::newRow("blue") << u"^4"_s << QColor(0, 0, 255);
        QTest::newRow("cyan") << u"^5"_s << QColor(0, 255, 255);
        QTest::newRow("pink") << u"^6"_s << QColor(255, 128, 255);
        QTest::newRow("white") << u"^7"_s << QColor(255, 255, 255);
    }

    void theColourCodesShowTheirColours()
    {
        QFETCH(QString, code);
        QFETCH(QColor, colour);
        Program program;
        program.start();
        const QLabel *found = nullptr;
        for (const QLabel *label : program.find<QWidget>(u"MessagesPage"_s)->findChildren<QLabel *>()) {
            if (label->text() == code)
                found = label;
        }
        QVERIFY(found);
        QCOMPARE(found->palette().color(found->foregroundRole()), colour);
        QVERIFY(found->autoFillBackground());
        QVERIFY2(contrast(colour, found->palette().color(found->backgroundRole())) >= 4.5, "it can be read");
    }

    void thePicturesAreThere()
    {
        Program program;
        program.start();
        for (const QString &name : {u"imgup"_s, u"imgdown"_s, u"imgdel"_s}) {
            const auto *button = program.find<QAbstractButton>(name);
            QVERIFY(!button->icon().pixmap(button->iconSize()).isNull());
            QVERIFY2((button->focusPolicy() & Qt::TabFocus) != 0, "the keyboard reaches it");
            QVERIFY(!button->accessibleName().isEmpty());
        }
    }

    void withoutSettingsThereAreNoSets()
    {
        MessagesTab tab;
        QCOMPARE(tab.sets(), QStringList());
        QCOMPARE(tab.set(), QString());
        QCOMPARE(tab.messages(), QStringList());
        QCOMPARE(tab.free(), u" 10"_s);
        QVERIFY(!tab.isPending());
    }

    void theFirstSetIsShownAtStart()
    {
        MessagesTab tab(threeSets());
        QCOMPARE(tab.sets(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s}));
        QCOMPARE(tab.set(), u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        QCOMPARE(tab.free(), u" 7"_s);
        QVERIFY(!tab.isPending());
    }

    void theNameOfASetChoosesIt()
    {
        MessagesTab tab(threeSets());
        tab.choose(u"Ben"_s);
        QCOMPARE(tab.messages(), QStringList{u"b0"_s});
        tab.choose(u"Cem"_s);
        QCOMPARE(tab.messages(), QStringList());
        tab.choose(u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        tab.choose({});
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        QVERIFY(!tab.isPending());
    }

    void returnChoosesTheSetToo()
    {
        MessagesTab tab(threeSets());
        tab.program.setText(u"comdirect"_s, u"kick all"_s);
        auto *combo = tab.program.find<QComboBox>(u"commessset"_s);
        combo->setFocus();
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo, u"Ben"_s);
        QTest::keyClick(combo, Qt::Key_Return);
        QVERIFY(QApplication::focusWidget() != combo);
        QCOMPARE(tab.messages(), QStringList{u"b0"_s});
        QVERIFY2(tab.program.messages().isEmpty(), "the console line is not sent");
    }

    void anotherNameMakesASetWhenThePersonAgrees()
    {
        MessagesTab tab(threeSets());
        tab.program.prompts.answers = {Answer::Cancel};
        tab.choose(u"ann"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{newSetBox()});
        QCOMPARE(tab.sets().size(), 3);
        QCOMPARE(tab.free(), u" 7"_s);
        QVERIFY(!tab.isPending());

        tab.choose(u"ann"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{newSetBox()});
        QCOMPARE(tab.sets(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s, u"ann"_s}));
        QCOMPARE(tab.set(), u"ann"_s);
        QCOMPARE(tab.messages(), QStringList());
        QCOMPARE(tab.free(), u" 6"_s);
        QVERIFY(tab.isPending());
        QCOMPARE(tab.saved(u"set3"_s, u"name"_s), QString());
    }

    // A number has a place for its sign, hence the two blanks.
    void anEleventhSetFindsNoPlace()
    {
        MessagesTab tab(tenSets());
        QCOMPARE(tab.free(), u" 0"_s);
        tab.choose(u"S4"_s);
        tab.choose(u"Eleven"_s);
        const Box full{u"No Free Slots"_s, u"No free sets left,  10 in use\rTo add new you must remove an old one"_s,
                       BoxIcon::Information, BoxButtons::Ok};
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{full});
        QCOMPARE(tab.sets().size(), 10);
        QVERIFY(!tab.isPending());
    }

    void aDeletedSetGivesWayToTheOneBefore_data()
    {
        QTest::addColumn<QString>("deleted");
        QTest::addColumn<QStringList>("left");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("the first") << u"Ann"_s << QStringList{u"Ben"_s, u"Cem"_s} << u"Ben"_s << QStringList{u"b0"_s};
        QTest::newRow("the middle one") << u"Ben"_s << QStringList{u"Ann"_s, u"Cem"_s} << u"Ann"_s
                                        << QStringList{u"a0"_s, u"a1"_s, u"a2"_s};
        QTest::newRow("the last") << u"Cem"_s << QStringList{u"Ann"_s, u"Ben"_s} << u"Ben"_s << QStringList{u"b0"_s};
        QTest::newRow("none selected takes the last")
            << QString() << QStringList{u"Ann"_s, u"Ben"_s} << u"Ben"_s << QStringList{u"b0"_s};
    }

    void aDeletedSetGivesWayToTheOneBefore()
    {
        QFETCH(QString, deleted);
        MessagesTab tab(threeSets());
        tab.choose(deleted);
        tab.program.find<QComboBox>(u"commessset"_s)->setCurrentIndex(static_cast<int>(tab.sets().indexOf(deleted)));
        const QString name = deleted.isEmpty() ? u"Cem"_s : deleted;
        tab.click(u"cmdsetdel"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{deleteBox(name)});
        QTEST(tab.sets(), "left");
        QTEST(tab.set(), "shown");
        QTEST(tab.messages(), "messages");
        QCOMPARE(tab.free(), u"8"_s);
        QCOMPARE(tab.program.messages(), QStringList{u"Set named "_s + name + u" removed."_s});
        QVERIFY(tab.isPending());
        QVERIFY(QApplication::focusWidget() != tab.program.find<QComboBox>(u"commessset"_s));
        QCOMPARE(tab.saved(u"set2"_s, u"name"_s), u"Cem"_s);
        tab.add(u"new"_s);
        tab.choose(tab.set());
        QCOMPARE(tab.messages().constLast(), u"new"_s);
    }

    void theLastSetLeavesNothing()
    {
        MessagesTab tab(setsFile({{"Ann", {"a0"}}}));
        tab.click(u"cmdsetdel"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{deleteBox(u"Ann"_s)});
        QCOMPARE(tab.sets(), QStringList());
        QCOMPARE(tab.set(), QString());
        QCOMPARE(tab.messages(), QStringList());
        QCOMPARE(tab.free(), u"10"_s);
        tab.click(u"cmdsetdel"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noSetBox});
    }

    void deletingCanBeCancelled()
    {
        MessagesTab tab(threeSets());
        tab.program.prompts.answers = {Answer::Cancel};
        tab.click(u"cmdsetdel"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{deleteBox(u"Ann"_s)});
        QCOMPARE(tab.sets().size(), 3);
        QCOMPARE(tab.messages().size(), 3);
        QCOMPARE(tab.free(), u" 7"_s);
        QVERIFY(!tab.isPending());
        QVERIFY(tab.program.messages().isEmpty());
    }
};

WINDOW_TEST(MessagesPageTest)
#include "tst_messages_page.moc"
