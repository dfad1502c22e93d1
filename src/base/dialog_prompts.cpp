// SPDX-License-Identifier: MIT
#include "dialog_prompts.h"

#include "focus.h"

#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

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

QString DialogPrompts::showTextQuestion(const QString &prompt, const QString &title, const QString &preset)
{
    QInputDialog dialog(programWindow());
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    for (QLabel *label : dialog.findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    dialog.setTextValue(preset);
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
