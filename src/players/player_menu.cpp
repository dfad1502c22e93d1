// SPDX-License-Identifier: MIT
#include "player_menu.h"

#include "base/context_menu.h"
#include "checked_deeds.h"
#include "player_table.h"
#include "player_view.h"

#include <QAbstractButton>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

// About him who is selected now, whoever stands there when the item is chosen: he is looked for by what he is.
void addCheckedItems(QMenu *menu, const PlayerTable &players, int row, const CheckAndAct &checkAndAct)
{
    const bool isPlayer = row >= 0 && !players.text(row, PlayerColumn::Num).isEmpty();
    const WantedPlayer wanted = isPlayer ? players.wanted(row) : WantedPlayer();
    const auto addDeed = [&](const CheckedDeed &deed) {
        addMenuItem(menu, deed.item, deed.caption, isPlayer,
                    [checkAndAct, &deed, wanted] { checkAndAct(deed, wanted); });
    };
    for (const CheckedDeed &deed : checkedDismissals)
        addDeed(deed);
    addDeed(checkedMessage);
}

// A row of Query Mode tells of nobody who could be looked up.
void addWho(QMenu *menu, const PlayerTable &players, int row, const AskWho &askWho)
{
    const bool isPlayer = row >= 0 && !players.text(row, PlayerColumn::Guid).isEmpty();
    const WantedPlayer wanted = isPlayer ? players.wanted(row) : WantedPlayer();
    addMenuItem(menu, u"mwho"_s, u"&Who is this?"_s, isPlayer, [askWho, wanted] { askWho(wanted); });
}

} // namespace

void showPlayerMenu(PlayerView &view, const PlayerTable &players, const PlayerButtons &buttons,
                    const CheckAndAct &checkAndAct, const AskWho &askWho, QPoint place)
{
    const int row = view.selectedRow();
    const bool isRow = row >= 0;
    QMenu *menu = newContextMenu(&view);
    // Whom it hits is looked up when it is clicked: the list may be read anew while the menu is open.
    const auto addButton = [menu, isRow](const QString &name, const QString &caption, QAbstractButton *button) {
        addMenuItem(menu, name, caption, isRow && button->isEnabled(), [button] { button->click(); });
    };
    const auto addCopy = [&](const QString &name, const QString &caption, PlayerColumn::Column column) {
        const QString text = isRow ? players.text(row, column) : QString();
        addMenuItem(menu, name, caption, !text.isEmpty(), [text] { copyText(text); });
    };

    addButton(u"actkick"_s, u"&Kick"_s, buttons.kick);
    addButton(u"actban"_s, u"&Ban"_s, buttons.ban);
    addButton(u"acttempban"_s, u"&Temp Ban"_s, buttons.temporaryBan);
    menu->addSeparator();
    addButton(u"actmessage"_s, u"Send &message"_s, buttons.message);
    menu->addSeparator();
    addCheckedItems(menu, players, row, checkAndAct);
    menu->addSeparator();
    addWho(menu, players, row, askWho);
    menu->addSeparator();
    addCopy(u"actcopyguid"_s, u"Copy &GUID"_s, PlayerColumn::Guid);
    addCopy(u"actcopyaddress"_s, u"Copy &address"_s, PlayerColumn::Address);
    addMenuItem(menu, u"actcopyrow"_s, u"Copy &row"_s, isRow, [&view] { view.copyRow(); });
    addMenuItem(menu, u"actcopylist"_s, u"Copy &list"_s, players.rowCount() > 0, [&view] { view.copyList(); });
    menu->popup(place);
}
