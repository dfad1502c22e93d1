// SPDX-License-Identifier: MIT
#include "base/dialog_prompts.h"
#include "open_dialog.h"
#include "window_test.h"

#include <QAbstractButton>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const auto markup = u"<b>bold</b> &amp; <img src=\"map.png\"> ^1red"_s;

QLabel *textOf(const QMessageBox &dialog)
{
    return dialog.findChild<QLabel *>(u"qt_msgbox_label"_s);
}

/// How the text of a message box looks.
QImage pictureOf(const QString &text)
{
    DialogPrompts prompts;
    QImage picture;
    onNextDialog<QMessageBox>([&](QMessageBox &dialog) { picture = textOf(dialog)->grab().toImage(); });
    prompts.inform(text, u"Title"_s);
    return picture;
}

} // namespace

Q_DECLARE_METATYPE(BoxIcon)
Q_DECLARE_METATYPE(BoxButtons)
Q_DECLARE_METATYPE(Answer)

/// The message boxes and input boxes that a person sees.
class DialogPromptsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aBoxHasItsTitleAndText()
    {
        DialogPrompts prompts;
        QString title;
        QString text;
        onNextDialog<QMessageBox>([&](QMessageBox &dialog) {
            title = dialog.windowTitle();
            text = textOf(dialog)->text();
        });
        QCOMPARE(prompts.ask({u"Clear"_s, u"Clear the RCON window?"_s, BoxIcon::Question, BoxButtons::YesNo}),
                 Answer::No);
        QCOMPARE(title, u"Clear"_s);
        QCOMPARE(text, u"Clear the RCON window?"_s);
    }

    void aBoxHasItsIcon_data()
    {
        QTest::addColumn<BoxIcon>("asked");
        QTest::addColumn<int>("shown");
        QTest::newRow("none") << BoxIcon::None << static_cast<int>(QMessageBox::NoIcon);
        QTest::newRow("information") << BoxIcon::Information << static_cast<int>(QMessageBox::Information);
        QTest::newRow("exclamation") << BoxIcon::Exclamation << static_cast<int>(QMessageBox::Warning);
        QTest::newRow("question") << BoxIcon::Question << static_cast<int>(QMessageBox::Question);
    }

    void aBoxHasItsIcon()
    {
        QFETCH(BoxIcon, asked);
        DialogPrompts prompts;
        int icon = -1;
        onNextDialog<QMessageBox>([&](QMessageBox &dialog) { icon = dialog.icon(); });
        prompts.ask({u"Title"_s, u"Text"_s, asked, BoxButtons::Ok});
        QTEST(icon, "shown");
    }

    void aBoxHasItsButtons_data()
    {
        QTest::addColumn<BoxButtons>("asked");
        QTest::addColumn<int>("shown");
        QTest::newRow("ok") << BoxButtons::Ok << static_cast<int>(QMessageBox::Ok);
        QTest::newRow("ok, cancel") << BoxButtons::OkCancel << static_cast<int>(QMessageBox::Ok | QMessageBox::Cancel);
        QTest::newRow("yes, no") << BoxButtons::YesNo << static_cast<int>(QMessageBox::Yes | QMessageBox::No);
    }

    void aBoxHasItsButtons()
    {
        QFETCH(BoxButtons, asked);
        DialogPrompts prompts;
        int buttons = 0;
        onNextDialog<QMessageBox>([&](QMessageBox &dialog) { buttons = dialog.standardButtons().toInt(); });
        prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, asked});
        QTEST(buttons, "shown");
    }

    void aPressedButtonIsTheAnswer_data()
    {
        QTest::addColumn<BoxButtons>("asked");
        QTest::addColumn<int>("pressed");
        QTest::addColumn<Answer>("answer");
        const auto row = [](const char *name, BoxButtons asked, QMessageBox::StandardButton pressed, Answer answer) {
            QTest::newRow(name) << asked << static_cast<int>(pressed) << answer;
        };
        row("ok", BoxButtons::Ok, QMessageBox::Ok, Answer::Ok);
        row("ok of two", BoxButtons::OkCancel, QMessageBox::Ok, Answer::Ok);
        row("cancel", BoxButtons::OkCancel, QMessageBox::Cancel, Answer::Cancel);
        row("yes", BoxButtons::YesNo, QMessageBox::Yes, Answer::Yes);
        row("no", BoxButtons::YesNo, QMessageBox::No, Answer::No);
    }

    void aPressedButtonIsTheAnswer()
    {
        QFETCH(BoxButtons, asked);
        QFETCH(int, pressed);
        DialogPrompts prompts;
        onNextDialog<QMessageBox>([=](QMessageBox &dialog) {
            QTest::mouseClick(dialog.button(static_cast<QMessageBox::StandardButton>(pressed)), Qt::LeftButton);
        });
        const Answer answer = prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, asked});
        QTEST(answer, "answer");
    }

    void escapeAnswers_data()
    {
        QTest::addColumn<BoxButtons>("asked");
        QTest::addColumn<Answer>("answer");
        QTest::newRow("ok") << BoxButtons::Ok << Answer::Ok;
        QTest::newRow("ok, cancel") << BoxButtons::OkCancel << Answer::Cancel;
        QTest::newRow("yes, no") << BoxButtons::YesNo << Answer::No;
    }

    void escapeAnswers()
    {
        QFETCH(BoxButtons, asked);
        DialogPrompts prompts;
        bool closed = false;
        onNextDialog<QMessageBox>([&](QMessageBox &dialog) {
            QTest::keyClick(&dialog, Qt::Key_Escape);
            closed = !dialog.isVisible();
        });
        const Answer answer = prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, asked});
        QVERIFY(closed);
        QTEST(answer, "answer");
    }

    void markupIsShownAsItStands()
    {
        DialogPrompts prompts;
        QString text;
        auto format = Qt::AutoText;
        onNextDialog<QMessageBox>([&](QMessageBox &dialog) {
            text = textOf(dialog)->text();
            format = textOf(dialog)->textFormat();
        });
        prompts.refuse(markup, u"Title"_s);
        QCOMPARE(text, markup);
        QCOMPARE(format, Qt::PlainText);
        QCOMPARE(pictureOf(u"one<br>two<br>three"_s).height(), pictureOf(u"one"_s).height());
        QVERIFY(pictureOf(u"<b>x</b>"_s).width() > pictureOf(u"x"_s).width());
    }

    void aLoneCarriageReturnBreaksTheLine()
    {
        const QImage carriageReturn = pictureOf(u"Error writing file, err 21\rRcon log not written"_s);
        const QImage lineFeed = pictureOf(u"Error writing file, err 21\nRcon log not written"_s);
        const QImage oneLine = pictureOf(u"Error writing file, err 21"_s);
        QVERIFY(carriageReturn.height() > oneLine.height());
        QCOMPARE(carriageReturn, lineFeed);
    }

    void anAmpersandIsShown()
    {
        QVERIFY(pictureOf(u"you & me"_s).width() > pictureOf(u"you  me"_s).width());
        QVERIFY(pictureOf(u"you && me"_s).width() > pictureOf(u"you & me"_s).width());
    }

    void closingAnswersAnOpenBoxLikeAPersonWhoDoesNotChoose_data() { escapeAnswers_data(); }

    void closingAnswersAnOpenBoxLikeAPersonWhoDoesNotChoose()
    {
        QFETCH(BoxButtons, asked);
        DialogPrompts prompts;
        bool open = true;
        onNextDialog<QMessageBox>([&](QMessageBox &dialog) {
            prompts.close();
            open = dialog.isVisible();
        });
        const Answer answer = prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, asked});
        QVERIFY(!open);
        QTEST(answer, "answer");
    }

    void closingClosesABoxOverABox()
    {
        DialogPrompts prompts;
        Answer inner = Answer::Ok;
        onNextDialog<QMessageBox>([&](QMessageBox &outer) {
            onNextDialog<QMessageBox>([&](QMessageBox &) { prompts.close(); });
            inner = prompts.ask({u"Inner"_s, u"Text"_s, BoxIcon::None, BoxButtons::OkCancel});
            QVERIFY(!outer.isVisible());
        });
        QCOMPARE(prompts.ask({u"Outer"_s, u"Text"_s, BoxIcon::None, BoxButtons::YesNo}), Answer::No);
        QCOMPARE(inner, Answer::Cancel);
    }

    void afterClosingNoDialogOpens()
    {
        DialogPrompts prompts;
        const DialogGuard guard;
        prompts.close();
        QCOMPARE(prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, BoxButtons::Ok}), Answer::Ok);
        QCOMPARE(prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, BoxButtons::OkCancel}), Answer::Cancel);
        QCOMPARE(prompts.ask({u"Title"_s, u"Text"_s, BoxIcon::None, BoxButtons::YesNo}), Answer::No);
        QCOMPARE(prompts.askText(u"Prompt"_s, u"Title"_s, u"preset"_s), QString());
        QCOMPARE(prompts.askFileName(u"Title"_s, u"preset"_s, u"log"_s), QString());
        QVERIFY(!guard.hasSeenDialog());
    }

    void anInputBoxHasItsTitlePromptAndPreset()
    {
        DialogPrompts prompts;
        QStringList seen;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            seen = {dialog.windowTitle(), dialog.findChild<QLabel *>()->text(),
                    dialog.findChild<QLineEdit *>()->text()};
        });
        QCOMPARE(prompts.askText(u"Type message to send to server"_s, u"Server Message"_s, u"Welcome"_s), QString());
        QCOMPARE(seen, QStringList({u"Server Message"_s, u"Type message to send to server"_s, u"Welcome"_s}));
    }

    void theTypedTextIsTheAnswer()
    {
        DialogPrompts prompts;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            auto *line = dialog.findChild<QLineEdit *>();
            line->selectAll();
            QTest::keyClicks(line, u"last <b>warning</b> "_s);
            QTest::keyClick(line, Qt::Key_Return);
        });
        QCOMPARE(prompts.askText(u"Prompt"_s, u"Title"_s, u"preset"_s), u"last <b>warning</b> "_s);
    }

    void thePresetIsTheAnswerWhenItIsNotChanged()
    {
        DialogPrompts prompts;
        onNextDialog<QInputDialog>([](QInputDialog &dialog) { dialog.accept(); });
        QCOMPARE(prompts.askText(u"Prompt"_s, u"Title"_s, u"You are on a last warning %P%"_s),
                 u"You are on a last warning %P%"_s);
    }

    void aCancelledInputBoxAnswersNothing()
    {
        DialogPrompts prompts;
        onNextDialog<QInputDialog>([](QInputDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(prompts.askText(u"Prompt"_s, u"Title"_s, u"preset"_s), QString());
    }

    void thePromptOfAnInputBoxIsShownAsItStands()
    {
        DialogPrompts prompts;
        QString text;
        auto format = Qt::AutoText;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            text = dialog.findChild<QLabel *>()->text();
            format = dialog.findChild<QLabel *>()->textFormat();
        });
        (void)prompts.askText(markup, u"Title"_s, {});
        QCOMPARE(text, markup);
        QCOMPARE(format, Qt::PlainText);
    }

    void anInputBoxHasRoomForSixtyLetters()
    {
        DialogPrompts prompts;
        int width = 0;
        int letters = 0;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            const auto *line = dialog.findChild<QLineEdit *>();
            width = line->width();
            letters = line->fontMetrics().horizontalAdvance(QString(60, u'n'));
        });
        (void)prompts.askText(u"Prompt"_s, u"Title"_s, u"preset"_s);
        QVERIFY2(width >= letters, qPrintable(u"%1 of %2"_s.arg(width).arg(letters)));
    }

    void anInputBoxIsNoNarrowerThanItsTitle()
    {
        DialogPrompts prompts;
        int width = 0;
        int letters = 0;
        const QString title = u"A rather long title, "_s.repeated(5);
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            width = dialog.width();
            letters = dialog.fontMetrics().horizontalAdvance(title);
        });
        (void)prompts.askText(u"Prompt"_s, title, u"preset"_s);
        QVERIFY2(width >= std::min(letters, QGuiApplication::primaryScreen()->availableGeometry().width() * 9 / 10),
                 qPrintable(u"%1 of %2"_s.arg(width).arg(letters)));
    }

    void aLongPresetIsSeenWhole()
    {
        DialogPrompts prompts;
        const QString preset = u"You are on this server as "_s + QString(50, u'n');
        bool isWhole = false;
        bool isSelected = false;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            const auto *line = dialog.findChild<QLineEdit *>();
            isWhole = line->width() > line->fontMetrics().horizontalAdvance(preset);
            isSelected = line->selectedText() == preset;
        });
        (void)prompts.askText(u"Prompt"_s, u"Title"_s, preset);
        QVERIFY(isWhole);
        QVERIFY(isSelected);
    }

    void aVeryLongPresetStaysOnTheScreen()
    {
        DialogPrompts prompts;
        QRect place;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) { place = dialog.frameGeometry(); });
        (void)prompts.askText(u"Prompt"_s, u"Title"_s, QString(2000, u'n'));
        QVERIFY2(place.width() <= QGuiApplication::primaryScreen()->availableGeometry().width(),
                 qPrintable(QString::number(place.width())));
    }

    void whatBelongsToTheLineStandsBelowIt()
    {
        DialogPrompts prompts;
        bool isBelow = false;
        QString followed;
        onNextDialog<QInputDialog>([&](QInputDialog &dialog) {
            const auto *line = dialog.findChild<QLineEdit *>();
            const auto *below = dialog.findChild<QLabel *>(u"below"_s);
            isBelow = below->isVisible() && below->geometry().top() >= line->geometry().bottom();
            QTest::keyClicks(dialog.focusWidget(), u"typed"_s);
            followed = below->text();
        });
        (void)prompts.askText(u"Prompt"_s, u"Title"_s, u"preset"_s, [](QLineEdit *line) {
            auto *below = new QLabel(line->text());
            below->setObjectName(u"below"_s);
            connect(line, &QLineEdit::textChanged, below, &QLabel::setText);
            return below;
        });
        QVERIFY(isBelow);
        QCOMPARE(followed, u"typed"_s); // in place of the preset, which was selected
    }

    void closingCancelsAnOpenInputBox()
    {
        DialogPrompts prompts;
        onNextDialog<QInputDialog>([&](QInputDialog &) { prompts.close(); });
        QCOMPARE(prompts.askText(u"Prompt"_s, u"Title"_s, u"preset"_s), QString());
    }
};

WINDOW_TEST(DialogPromptsTest)
#include "tst_dialog_prompts.moc"
