// SPDX-License-Identifier: MIT
#include "message_list.h"

#include "base/context_menu.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <QStyleOptionViewItem>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 3;  // pixels at both sides of the text
constexpr int padding = 1; // above and below it

} // namespace

MessageList::MessageList(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void MessageList::append(const QString &line)
{
    addItem(line);
}

void MessageList::reset()
{
    bottoms = {};
    QListWidget::reset();
}

// The list's own layout would go through all rows each time.
void MessageList::doItemsLayout()
{
    QAbstractItemView::doItemsLayout();
}

void MessageList::updateGeometries()
{
    const int room = viewport()->height();
    verticalScrollBar()->setSingleStep(lineHeight());
    verticalScrollBar()->setPageStep(room);
    verticalScrollBar()->setRange(0, std::max(topOf(count()) - room, 0));
}

void MessageList::measure() const
{
    if (bottoms.size() == count())
        return;
    if (!breaks)
        breaks.emplace(font());
    const int width = textWidth();
    for (int row = static_cast<int>(bottoms.size()); row < count(); ++row) {
        const int text = breaks->count(item(row)->text(), width) * lineHeight();
        bottoms.append((row > 0 ? bottoms.last() : 0) + text + 2 * padding);
    }
}

// Who was at the end stays there; else the row at the top does.
void MessageList::wrapAnew()
{
    const bool wasAtEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    const int first = rowAt(verticalScrollBar()->value());
    bottoms.clear();
    updateGeometries();
    verticalScrollBar()->setValue(wasAtEnd ? verticalScrollBar()->maximum() : topOf(first));
    viewport()->update();
}

int MessageList::lineHeight() const
{
    return fontMetrics().height();
}

int MessageList::textWidth() const
{
    return viewport()->width() - 2 * margin;
}

/// Counted from the top of the first row; that of the row behind the last is where the list ends.
int MessageList::topOf(int row) const
{
    measure();
    return row > 0 && !bottoms.isEmpty() ? bottoms.at(std::min(row, count()) - 1) : 0;
}

/// The row at that height; the first or the last one above and below all rows.
int MessageList::rowAt(int height) const
{
    measure();
    const auto row = std::ranges::upper_bound(bottoms, height);
    return std::clamp(static_cast<int>(row - bottoms.begin()), 0, std::max(count() - 1, 0));
}

QRect MessageList::visualRect(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    const int top = topOf(index.row());
    return {0, top - verticalScrollBar()->value(), viewport()->width(), topOf(index.row() + 1) - top};
}

QModelIndex MessageList::indexAt(const QPoint &place) const
{
    const int height = place.y() + verticalScrollBar()->value();
    return height < 0 || height >= topOf(count()) ? QModelIndex() : model()->index(rowAt(height), 0);
}

void MessageList::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const QRect row = visualRect(index);
    const int below = row.bottom() - viewport()->rect().bottom();
    QScrollBar *bar = verticalScrollBar();
    if (hint == PositionAtTop || row.top() < 0)
        bar->setValue(bar->value() + row.top());
    else if (hint == PositionAtBottom || below > 0)
        bar->setValue(bar->value() + std::min(below, row.top())); // of a row higher than the list, the beginning
}

QModelIndex MessageList::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int row = currentIndex().isValid() ? currentIndex().row() : 0;
    const int page = viewport()->height();
    const auto target = [&] {
        switch (action) {
        case MoveUp:
        case MovePrevious:
            return currentIndex().isValid() ? row - 1 : 0;
        case MoveDown:
        case MoveNext:
            return currentIndex().isValid() ? row + 1 : 0;
        case MovePageUp:
            return std::min(rowAt(topOf(row) - page), row - 1);
        case MovePageDown:
            return std::max(rowAt(topOf(row) + page), row + 1);
        case MoveHome:
            return 0;
        case MoveEnd:
            return count() - 1;
        default:
            return row;
        }
    };
    return model()->index(std::clamp(target(), 0, std::max(count() - 1, 0)), 0);
}

void MessageList::setSelection(const QRect &area, QItemSelectionModel::SelectionFlags command)
{
    const QRect rows = area.normalized().translated(0, verticalScrollBar()->value());
    QItemSelection selection;
    if (rows.bottom() >= 0 && rows.top() < topOf(count()))
        selection.select(model()->index(rowAt(rows.top()), 0), model()->index(rowAt(rows.bottom()), 0));
    selectionModel()->select(selection, command);
}

QRegion MessageList::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    for (const QItemSelectionRange &range : selection)
        region += visualRect(range.topLeft()) | visualRect(range.bottomRight());
    return region & viewport()->rect();
}

void MessageList::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QRect &area = event->rect();
    for (QModelIndex index = indexAt(area.topLeft()); index.isValid(); index = index.siblingAtRow(index.row() + 1)) {
        option.rect = visualRect(index);
        if (option.rect.top() > area.bottom())
            break;
        paintRow(painter, option, index, area);
    }
}

void MessageList::paintRow(QPainter &painter, QStyleOptionViewItem &option, const QModelIndex &index,
                           const QRect &area) const
{
    const bool isSelected = selectionModel()->isSelected(index);
    const bool isCurrent = hasFocus() && index == currentIndex();
    option.state.setFlag(QStyle::State_Selected, isSelected);
    option.state.setFlag(QStyle::State_HasFocus, isCurrent);
    style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, this);

    const bool isActive = option.state.testFlag(QStyle::State_Active);
    const QPalette::ColorGroup usual = isActive ? QPalette::Active : QPalette::Inactive;
    painter.setPen(option.palette.color(isEnabled() ? usual : QPalette::Disabled,
                                        isSelected ? QPalette::HighlightedText : QPalette::Text));
    paintText(painter, option.rect, index.data().toString(), area);
    if (!isCurrent)
        return;
    QStyleOptionFocusRect mark;
    mark.QStyleOption::operator=(option);
    mark.backgroundColor = option.palette.color(isSelected ? QPalette::Highlight : QPalette::Base);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &mark, &painter, this);
}

void MessageList::paintText(QPainter &painter, const QRect &row, const QString &text, const QRect &area) const
{
    int top = row.top() + padding;
    for (QStringView rest = text; !rest.isEmpty() && top <= area.bottom(); top += lineHeight()) {
        QStringView line = breaks->firstLine(rest, textWidth());
        rest = rest.sliced(line.size());
        if (line.endsWith(u'\n'))
            line.chop(1);
        if (top + lineHeight() >= area.top())
            painter.drawText(QPoint(row.left() + margin, top + fontMetrics().ascent()), line.toString());
    }
}

void MessageList::resizeEvent(QResizeEvent *event)
{
    if (event->size().width() != event->oldSize().width())
        wrapAnew();
    else
        updateGeometries();
}

bool MessageList::event(QEvent *event)
{
    const bool handled = QListWidget::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        breaks.reset();
        wrapAnew();
    }
    return handled;
}

void MessageList::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copySelected();
    else
        QListWidget::keyPressEvent(event);
}

void MessageList::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = newContextMenu(this);
    addMenuItem(menu, u"actcopy"_s, u"&Copy"_s, selectionModel()->hasSelection(), [this] { copySelected(); });
    addMenuItem(menu, u"actcopyall"_s, u"Copy &all"_s, count() > 0, [this] { copyAll(); });
    menu->addSeparator();
    menu->addActions(menuActions);
    menu->popup(menuPlace(*event, *this, currentIndex()));
}

void MessageList::copySelected() const
{
    QModelIndexList rows = selectedIndexes(); // in the order in which they were selected
    std::ranges::sort(rows, {}, &QModelIndex::row);
    QStringList lines;
    for (const QModelIndex &row : std::as_const(rows))
        lines.append(row.data().toString());
    if (!lines.isEmpty())
        copyText(lines.join(u'\n'));
}

void MessageList::copyAll() const
{
    QStringList lines;
    for (int row = 0; row < count(); ++row)
        lines.append(item(row)->text());
    copyText(lines.join(u'\n'));
}
