// SPDX-License-Identifier: MIT
#include "dialog_prompts.h"

#include "focus.h"

#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QMessageBox::Icon icon(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttons(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

Answer answer(QMessageBox::StandardButton pressed, BoxButtons asked)
{
    switch (pressed) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    default:
        return answerOfClosing(asked);
    }
}

// Room for sixty wide letters, and for all of a longer preset.
int lineWidth(const QLineEdit &line)
{
    const QFontMetrics letters = line.fontMetrics();
    const int edges =
        line.minimumSizeHint().width(); // with room for one letter, as the cursor behind the text needs it
    return edges + std::max(letters.horizontalAdvance(QString(60, u'n')), letters.horizontalAdvance(line.text()));
}

// With what stands in the title bar besides: the program's icon and three buttons, each as wide as the bar is high.
int titleWidth(const QDialog &dialog)
{
    const QFontMetrics letters(QFontDatabase::systemFont(QFontDatabase::TitleFont));
    const int barHeight = std::max(dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight), letters.height());
    return letters.horizontalAdvance(dialog.windowTitle()) + 5 * barHeight;
}

void widen(QInputDialog &dialog, QLineEdit &line)
{
    const int most = dialog.screen()->availableGeometry().width() * 9 / 10;
    line.setMinimumWidth(std::min(std::max(lineWidth(line), titleWidth(dialog)), most));
}

// Between the line and the buttons.
void putBelow(QInputDialog &dialog, QWidget *widget)
{
    (void)dialog.sizeHint(); // lays the dialog out, which would otherwise be done when it is shown
    auto *rows = qobject_cast<QVBoxLayout *>(dialog.layout());
    rows->insertWidget(rows->count() - 1, widget);
}

} // namespace

Answer DialogPrompts::showBox(const Box &box)
{
    QMessageBox dialog(programWindow());
    dialog.setWindowTitle(box.title);
    dialog.setTextFormat(Qt::PlainText);
    // Selectable text can be copied into a report, and shows a lone carriage return as the line break it means.
    dialog.setTextInteractionFlags(Qt::TextSelectableByMouse);
    dialog.setText(box.text);
    dialog.setIcon(icon(box.icon));
    dialog.setStandardButtons(buttons(box.buttons));
    (void)accepted(dialog);
    return answer(dialog.standardButton(dialog.clickedButton()), box.buttons);
}

QString DialogPrompts::showTextQuestion(const QString &prompt, const QString &title, const QString &preset,
                                        const BelowLine &below)
{
    QInputDialog dialog(programWindow());
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    for (QLabel *label : dialog.findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    dialog.setTextValue(preset);
    auto *line = dialog.findChild<QLineEdit *>();
    widen(dialog, *line);
    if (below)
        putBelow(dialog, below(line));
    return accepted(dialog) ? dialog.textValue() : QString();
}

QString DialogPrompts::showFileQuestion(const QString &title, const QString &preset, const QString &suffix)
{
    QFileDialog dialog(programWindow(), title, QDir::currentPath());
    dialog.setObjectName(u"cdobj"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // what is saved is appended, nothing is overwritten
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(preset);
    return accepted(dialog) ? dialog.selectedFiles().value(0) : QString();
}

QString DialogPrompts::showReadQuestion(const QString &title, const QString &filter)
{
    QFileDialog dialog(programWindow(), title, QDir::currentPath(), filter);
    dialog.setObjectName(u"cdobj"_s);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return accepted(dialog) ? dialog.selectedFiles().value(0) : QString();
}

void DialogPrompts::close()
{
    closed = true;
    for (QDialog *dialog : std::as_const(dialogs))
        dialog->reject();
}

bool DialogPrompts::accepted(QDialog &dialog)
{
    if (closed)
        return false;
    dialogs.append(&dialog);
    const int result = dialog.exec();
    dialogs.removeOne(&dialog);
    return result == QDialog::Accepted;
}
