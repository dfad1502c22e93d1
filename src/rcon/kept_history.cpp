// SPDX-License-Identifier: MIT
#include "kept_history.h"

#include "base/controls.h"
#include "console_words.h"
#include "server_fields.h"
#include "shown_command.h"

#include <QContextMenuEvent>
#include <QMenu>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int secretRole = Qt::UserRole;   // the line held a password when it was sent
constexpr int keptRole = Qt::UserRole + 1; // the file has had it

} // namespace

KeptHistory::KeptHistory(ComboBox &line_, ConsoleWords &words_, const ServerFields &fields_)
    : QObject(&line_), line(line_), words(words_), fields(fields_)
{
    line.installEventFilter(this);
    line.lineEdit()->installEventFilter(this);
    connect(line.model(), &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) { markSecrets(first, last); });
}

// The password can be another one by the time at which the lines are written.
void KeptHistory::markSecrets(int first, int last)
{
    for (int row = first; row <= last; ++row) {
        if (holdsPassword(line.itemText(row), fields.password()))
            line.setItemData(row, true, secretRole);
    }
}

QStringList KeptHistory::lines() const
{
    return linesWithout({secretRole});
}

QStringList KeptHistory::linesWithout(const QList<int> &roles) const
{
    QStringList found;
    for (int row = 0; row < line.count(); ++row) {
        const QString text = line.itemText(row);
        const bool has = std::ranges::any_of(roles, [&](int role) { return line.itemData(row, role).toBool(); });
        if (!has && !holdsPassword(text, fields.password()))
            found.append(text);
    }
    return found;
}

void KeptHistory::markKept(int count, bool areKept)
{
    for (int row = 0; row < count; ++row)
        line.setItemData(row, areKept, keptRole);
}

QString KeptHistory::text() const
{
    return isOn ? u"1"_s : u"0"_s;
}

bool KeptHistory::restore(const QString &text)
{
    if (text != u"0" && text != u"1")
        return false;
    if (text == u"1" && !isOn)
        bringBack(words.keptHistory());
    setOn(text == u"1");
    return true;
}

// What stands in the line, typed while the program started, stays: the list would put its first line there.
void KeptHistory::bringBack(const QStringList &before)
{
    const QString typed = line.currentText();
    line.insertItems(0, before);
    markKept(static_cast<int>(before.size()), true);
    line.setCurrentIndex(-1);
    line.setEditText(typed);
}

void KeptHistory::setOn(bool on)
{
    const bool wasOn = std::exchange(isOn, on);
    if (!wasOn || on)
        return;
    words.forgetHistory();
    markKept(line.count(), false);
}

void KeptHistory::save()
{
    if (!isOn)
        return;
    words.addHistory(linesWithout({secretRole, keptRole}),
                     [this](const QString &text) { return holdsPassword(text, fields.password()); });
    markKept(line.count(), true);
}

bool KeptHistory::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ContextMenu)
        return QObject::eventFilter(watched, event);
    showMenu(*static_cast<QContextMenuEvent *>(event));
    return true;
}

void KeptHistory::showMenu(const QContextMenuEvent &event)
{
    QMenu *menu = line.lineEdit()->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    QAction *keep = menu->addAction(u"&Keep history between runs"_s);
    keep->setObjectName(u"mconsolehistory"_s);
    keep->setCheckable(true);
    keep->setChecked(isOn);
    connect(keep, &QAction::triggered, this, &KeptHistory::setOn);
    menu->popup(event.globalPos());
}
