// SPDX-License-Identifier: MIT
#include "player_page_items.h"

#include "book_export.h"
#include "shown_time.h"

#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 1000; // characters of an item; painting a very long one takes seconds

/// A player chooses his name: what looks like a mark-up in it is none.
QString plainTip(const QString &text)
{
    return Qt::convertFromPlainText(text.left(longestText), Qt::WhiteSpaceNormal);
}

QString aliasText(const BookAlias &alias)
{
    return alias.text.left(longestText) +
           u"  (%1 to %2, %3)"_s.arg(shownTime(alias.firstSeen), shownTime(alias.lastSeen),
                                     alias.times == 1 ? u"once"_s : QString::number(alias.times) + u" times"_s);
}

/// What became of an action, as far as the words before do not tell it: the server's verdict and the state of a ban.
QStringList fateOf(const BookAction &action)
{
    QStringList fate;
    if (!action.verdict.isEmpty())
        fate.append(action.verdict);
    const bool isTold = action.state == BookBan::Temporary || action.state == BookBan::Imported;
    if (action.kind != BookAction::Kick && !isTold)
        fate.append(banStateWord(action.state));
    return fate;
}

QString actionText(const BookAction &action)
{
    QString text = shownTime(action.time) + u"  "_s + actionWord(action.kind);
    if (action.isAutomatic)
        text += u", automatic"_s;
    if (action.isMaybe)
        text += u", maybe"_s;
    if (action.isImported)
        text += u", imported"_s;
    if (!action.server.isEmpty())
        text += u" on "_s + action.server;
    if (!action.num.isEmpty())
        text += u", slot "_s + action.num;
    text += u" as "_s + action.name.left(longestText);
    const QStringList fate = fateOf(action);
    if (!fate.isEmpty())
        text += u": "_s + fate.join(u", "_s);
    return action.reason.isEmpty() ? text : text + u" ("_s + action.reason + u')';
}

} // namespace

QVariant NumberedItem::data(int role) const
{
    return role == Qt::EditRole ? QVariant(text) : QListWidgetItem::data(role);
}

void NumberedItem::setData(int role, const QVariant &value)
{
    if (role != Qt::EditRole)
        return QListWidgetItem::setData(role, value);
    text = value.toString().simplified();
    if (listWidget())
        emit listWidget()->itemChanged(this);
}

const NumberedItem *current(const QListWidget &list)
{
    return static_cast<const NumberedItem *>(list.currentItem());
}

void selectNumber(QListWidget &list, qint64 number)
{
    for (int row = 0; row < list.count(); ++row) {
        if (static_cast<const NumberedItem *>(list.item(row))->number == number)
            return list.setCurrentRow(row);
    }
    list.setCurrentRow(-1);
}

QListWidgetItem *newAlias(const BookAlias &alias)
{
    auto *item = new QListWidgetItem(aliasText(alias));
    item->setToolTip(plainTip(aliasText(alias)));
    return item;
}

NumberedItem *newNote(const BookNote &note)
{
    auto *item = new NumberedItem(shownTime(note.time) + u"  "_s + note.text, note.text, note.note);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    item->setToolTip(plainTip(note.text));
    return item;
}

NumberedItem *newAction(const BookAction &action)
{
    auto *item = new NumberedItem(actionText(action), action.reason, action.action);
    item->setToolTip(plainTip(actionText(action)));
    return item;
}

PlotData pingPlot(const QList<BookSighting> &sightings)
{
    PlotData plot;
    plot.unit = u"ms"_s;
    plot.most = 400; // 999 is that of a player who does not answer
    for (const BookSighting &sighting : sightings) {
        if (sighting.ping >= 0)
            plot.points.append({.time = sighting.time, .value = sighting.ping});
    }
    if (!plot.points.isEmpty()) {
        plot.from = plot.points.first().time;
        plot.to = std::max(plot.points.last().time, plot.from + 3600);
    }
    return plot;
}
