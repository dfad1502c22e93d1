// SPDX-License-Identifier: MIT
#include "placeholder.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>

namespace {

class Placeholder final : public QObject {
public:
    explicit Placeholder(QAbstractItemView *view_) : QObject(view_), view(view_)
    {
        view->viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && isEmpty())
            paint();
        return QObject::eventFilter(watched, event);
    }

private:
    [[nodiscard]] bool isEmpty() const
    {
        const QAbstractItemModel *model = view->model();
        return !model || model->rowCount() == 0;
    }

    // The view paints nothing over it, having no rows.
    void paint() const
    {
        constexpr int margin = 4;
        constexpr int faint = 150; // of 255
        QPainter painter(view->viewport());
        QColor colour = view->palette().text().color(); // not every dark theme gives a colour for placeholders
        colour.setAlpha(faint);
        painter.setPen(colour);
        painter.drawText(view->viewport()->rect().marginsRemoved({margin, margin, margin, margin}),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, view->property("placeholderText").toString());
    }

    QAbstractItemView *view;
};

} // namespace

void showPlaceholder(QAbstractItemView *view)
{
    new Placeholder(view);
}
