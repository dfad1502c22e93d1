// SPDX-License-Identifier: MIT
#include "app/composition.h"
#include "base/dialog_prompts.h"
#include "messages/chat_preview.h"
#include "messages_tab.h"
#include "open_dialog.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QInputDialog>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isNear(const QColor &one, const QColor &other)
{
    const auto differ = [](int a, int b) { return std::abs(a - b) > 60; };
    return !differ(one.red(), other.red()) && !differ(one.green(), other.green()) && !differ(one.blue(), other.blue());
}

/// How many pixels of `picture` have about that colour.
int count(const QImage &picture, const QColor &colour)
{
    int found = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            found += isNear(picture.pixelColor(x, y), colour) ? 1 : 0;
    }
    return found;
}

/// A preview with large letters, of which the strokes have the colour itself.
QImage pictureOf(const QString &line)
{
    ChatPreview preview;
    QFont font = preview.font();
    font.setPointSize(20);
    font.setBold(true);
    preview.setFont(font);
    preview.showLine(line);
    preview.resize(500, 40);
    return preview.grab().toImage();
}

/// The program with its real boxes.
struct ProgramWithBoxes {
    ProgramWithBoxes()
    {
        parts.window.show();
        parts.window.Form_Load();
    }

    QTemporaryDir folder;
    FastClock clock;
    DialogPrompts prompts;
    Composition parts{prompts, clock, folder.filePath(QStringLiteral("molvark.ini"))};
};

} // namespace

/// The line below a message that shows what the players will read.
class ChatPreviewTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itShowsWhatIsTypedBehindThePrefix()
    {
        const MessagesTab tab;
        const auto *preview = tab.program.find<ChatPreview>(u"lblpreview"_s);
        QVERIFY(preview->isVisible());
        QCOMPARE(preview->text(), u"Molvark (1.0)> "_s);
        tab.type(u"^1Be ^2fair, %IP% <b>now</b>"_s);
        QCOMPARE(preview->text(), u"Molvark (1.0)> Be fair, %IP% <b>now</b>"_s);
        QCOMPARE(preview->textFormat(), Qt::PlainText);
        tab.message()->clear();
        QCOMPARE(preview->text(), u"Molvark (1.0)> "_s);
    }

    void theListKeepsTheCodes()
    {
        MessagesTab tab(threeSets());
        tab.add(u"^1Be ^2fair"_s);
        QCOMPARE(tab.messages().constLast(), u"^1Be ^2fair"_s);
        QCOMPARE(tab.program.find<ChatPreview>(u"lblpreview"_s)->text(), u"Molvark (1.0)> "_s);
        tab.doubleClick(static_cast<int>(tab.messages().size()) - 1);
        QCOMPARE(tab.message()->text(), u"^1Be ^2fair"_s);
        QCOMPARE(tab.program.find<ChatPreview>(u"lblpreview"_s)->text(), u"Molvark (1.0)> Be fair"_s);
    }

    void itStandsBelowTheLine()
    {
        const MessagesTab tab;
        const auto *preview = tab.program.find<ChatPreview>(u"lblpreview"_s);
        QApplication::processEvents();
        const auto topOf = [&](const QWidget *widget) { return widget->mapTo(&tab.program.window, QPoint()).y(); };
        QVERIFY(topOf(preview) > topOf(tab.message()));
        QVERIFY(topOf(preview) < topOf(tab.program.find<QLabel>(u"lblcolour_0"_s)));
        QVERIFY(preview->width() >= tab.message()->width());
    }

    void eachStretchHasItsColour_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QList<QColor>>("there");
        QTest::addColumn<QList<QColor>>("absent");
        const QColor dark(16, 16, 16);
        const QColor light(240, 240, 240);
        const QColor red(255, 0, 0);
        const QColor green(0, 192, 0);
        const QColor blue(0, 0, 255);
        QTest::newRow("red and green") << u"^1HHHH ^2HHHH"_s << QList{dark, red, green} << QList{light, blue};
        QTest::newRow("only red") << u"^1HHHH"_s << QList{dark, red} << QList{green, light, blue};
        QTest::newRow("white") << u"HHHH"_s << QList{dark, light} << QList{red, green, blue};
        QTest::newRow("black has a light ground") << u"^0    "_s << QList{dark, light} << QList{red};
        QTest::newRow("blue has a light ground") << u"^4HHHH"_s << QList{dark, light, blue} << QList{red};
    }

    void eachStretchHasItsColour()
    {
        QFETCH(QString, line);
        QFETCH(QList<QColor>, there);
        QFETCH(QList<QColor>, absent);
        const QImage picture = pictureOf(line);
        for (const QColor &colour : there)
            QVERIFY2(count(picture, colour) > 20, qPrintable(colour.name()));
        for (const QColor &colour : absent)
            QCOMPARE(count(picture, colour), 0);
    }

    void blackIsDrawnOnItsLightGround()
    {
        const QImage blanks = pictureOf(u"^0HHHH"_s);
        int black = 0; // on the rows in the middle, between the letters' ground
        for (int x = 8; x < 40; ++x)
            black += isNear(blanks.pixelColor(x, blanks.height() / 2), Qt::black) ? 1 : 0;
        QVERIFY2(black > 4, qPrintable(QString::number(black)));
        QVERIFY(count(blanks, QColor(240, 240, 240)) > 100);
    }

    void markupIsDrawnAsItStands()
    {
        QCOMPARE_NE(pictureOf(u"<b>x</b>"_s), pictureOf(u"x"_s));
        QVERIFY(count(pictureOf(u"<font color=red>HHHH</font>"_s), QColor(255, 0, 0)) == 0);
    }

    void aLongLineIsWrapped()
    {
        ChatPreview preview;
        preview.showLine(u"short"_s);
        const int one = preview.heightForWidth(300);
        QCOMPARE(one, preview.minimumSizeHint().height());
        preview.showLine(QString(60, u'm'));
        QVERIFY2(preview.heightForWidth(300) > one, "a word that is wider than the line is broken");
        preview.showLine(u"word "_s.repeated(400));
        QCOMPARE(preview.heightForWidth(300) - one, 2 * preview.fontMetrics().height());
        QVERIFY2(preview.minimumSizeHint().width() < 300, "it widens no window");
    }

    void ofAVeryLongLineTheEndIsSeen()
    {
        ChatPreview preview;
        preview.showLine(u"word "_s.repeated(400) + u"^1HHHHHHHH"_s);
        preview.resize(300, preview.heightForWidth(300));
        QVERIFY(count(preview.grab().toImage(), QColor(255, 0, 0)) > 0);
    }

    void aLongMessageDoesNotWidenTheWindow()
    {
        const MessagesTab tab;
        QApplication::processEvents();
        const int before = tab.program.window.minimumSizeHint().width();
        tab.message()->setText(u"word "_s.repeated(400));
        QApplication::processEvents();
        QCOMPARE(tab.program.window.minimumSizeHint().width(), before);
    }

    void aLongMessageIsReadWhole()
    {
        const MessagesTab tab;
        const auto *preview = tab.program.find<ChatPreview>(u"lblpreview"_s);
        QApplication::processEvents();
        const int one = preview->height();
        tab.message()->setText(u"word "_s.repeated(60));
        QVERIFY(preview->heightForWidth(preview->width()) > one);
        QTRY_COMPARE(preview->height(), preview->heightForWidth(preview->width()));
        tab.message()->clear();
        QTRY_COMPARE(preview->height(), one);
    }

    void itIsReadAloud()
    {
        const MessagesTab tab;
        tab.type(u"^1Be ^2fair"_s);
        QAccessibleInterface *interface =
            QAccessible::queryAccessibleInterface(tab.program.find<ChatPreview>(u"lblpreview"_s));
        QCOMPARE(interface->text(QAccessible::Name), u"Players will read: Molvark (1.0)> Be fair"_s);
    }

    void theOneOffMessageIsShownWithItsSignature()
    {
        ProgramWithBoxes program;
        program.parts.window.findChild<QLineEdit *>(u"txtprefix"_s)->setText(u"^5Ann"_s);
        QStringList seen;
        bool isBetween = false;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            const auto *preview = dialog.findChild<ChatPreview *>(u"lblpreview"_s);
            auto *line = dialog.findChild<QLineEdit *>();
            seen.append(preview->text());
            line->setText(u"^1Be <i>fair</i> %SN%"_s);
            seen.append(preview->text());
            isBetween = preview->isVisible() && preview->geometry().top() >= line->geometry().bottom() &&
                        preview->geometry().bottom() <= dialog.findChild<QDialogButtonBox *>()->geometry().top() &&
                        preview->width() >= line->width();
        });
        program.parts.window.findChild<QPushButton *>(u"cmdmessage"_s)->click();
        QCOMPARE(seen, QStringList({u"Molvark (1.0)> Ann Welcome to our server, enjoy your stay"_s,
                                    u"Molvark (1.0)> Ann Be <i>fair</i> %SN%"_s}));
        QVERIFY(isBetween);
    }

    void aLongOneOffMessageIsReadWhole()
    {
        ProgramWithBoxes program;
        int room = 0;
        int wanted = 0;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            const auto *preview = dialog.findChild<ChatPreview *>(u"lblpreview"_s);
            dialog.findChild<QLineEdit *>()->setText(u"word "_s.repeated(40));
            room = preview->height();
            wanted = preview->heightForWidth(preview->width());
        });
        program.parts.window.findChild<QPushButton *>(u"cmdmessage"_s)->click();
        QVERIFY(wanted > 0);
        QVERIFY2(room >= wanted, qPrintable(u"%1 of %2"_s.arg(room).arg(wanted)));
    }
};

WINDOW_TEST(ChatPreviewTest)
#include "tst_chat_preview.moc"
