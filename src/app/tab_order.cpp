// SPDX-License-Identifier: MIT
#include "tab_order.h"

#include <QTabBar>
#include <QTabWidget>

namespace {

// Combo boxes and tab widgets pass the focus on to their inner parts.
bool isPart(const QWidget &widget)
{
    const auto *tabs = widget.parentWidget() ? qobject_cast<const QTabWidget *>(widget.parentWidget()) : nullptr;
    return (tabs && tabs->tabBar() == &widget) || (widget.focusProxy() && widget.focusProxy()->isAncestorOf(&widget));
}

QWidgetList stopsOf(QWidget &window)
{
    QWidgetList stops;
    for (QWidget *next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && !isPart(*next))
            stops.append(next);
    }
    return stops;
}

} // namespace

void orderTabs(QWidget &window, const QList<const QWidget *> &areas)
{
    const QWidgetList stops = stopsOf(window);
    QWidgetList ordered;
    for (const QWidget *area : areas) {
        if (!area)
            continue;
        for (QWidget *stop : stops) {
            if ((stop == area || area->isAncestorOf(stop)) && !ordered.contains(stop))
                ordered.append(stop);
        }
    }
    for (qsizetype stop = 1; stop < ordered.size(); ++stop)
        QWidget::setTabOrder(ordered.at(stop - 1), ordered.at(stop));
}
