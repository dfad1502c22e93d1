// SPDX-License-Identifier: MIT
#pragma once

#include "fail_test.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QtTest>

/// A context menu that the test has opened, as a person sees it; it is closed at the end.
class OpenMenu final {
public:
    /// With the right mouse button at `place` of `area`.
    OpenMenu(QAbstractScrollArea &area, QPoint place)
    {
        QTest::mouseClick(area.viewport(), Qt::RightButton, {}, place);
        ask(area.viewport(), QContextMenuEvent::Mouse, place);
    }
    /// With the menu key, which the platform hands to the control with the focus as an event without a place of its
    /// own.
    explicit OpenMenu(QAbstractScrollArea &area)
    {
        area.setFocus();
        ask(&area, QContextMenuEvent::Keyboard, area.rect().center());
    }
    ~OpenMenu()
    {
        if (menu)
            menu->close();
    }
    Q_DISABLE_COPY_MOVE(OpenMenu)

    /// What the items say, without the marks of their keys.
    [[nodiscard]] QStringList captions() const
    {
        QStringList texts;
        for (const QAction *action : menu->actions())
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text().remove(u'&'));
        return texts;
    }
    [[nodiscard]] QAction *item(const QString &caption) const
    {
        for (QAction *action : menu->actions()) {
            if (action->text().remove(u'&') == caption)
                return action;
        }
        failTest(QStringLiteral("no item ") + caption);
    }
    /// Chooses the item with the keyboard: the menu closes first, and the item acts then.
    void choose(const QString &caption)
    {
        menu->setActiveAction(item(caption));
        QTest::keyClick(menu, Qt::Key_Return);
    }
    [[nodiscard]] QPoint place() const { return menu->pos(); }

private:
    void ask(QWidget *widget, QContextMenuEvent::Reason reason, QPoint place)
    {
        QContextMenuEvent event(reason, place, widget->mapToGlobal(place));
        QApplication::sendEvent(widget, &event);
        menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            failTest(QStringLiteral("no menu"));
    }

    QPointer<QMenu> menu;
};

/// What is on the clipboard after `copy`, which must put it there.
template <typename Copy>
QString copiedBy(const Copy &copy)
{
    QApplication::clipboard()->setText(QStringLiteral("nothing has been copied"));
    copy();
    return QApplication::clipboard()->text();
}
