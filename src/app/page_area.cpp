// SPDX-License-Identifier: MIT
#include "page_area.h"

#include <QApplication>
#include <QLayout>
#include <QResizeEvent>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/// Lets a page shrink as far as it can before it scrolls. By itself the scroll area keeps a page with wrapped texts as
/// high as it would like to be.
class PageFrame final : public QWidget {
public:
    explicit PageFrame(QWidget &page_) : page(page_) { page.setParent(this); }

    [[nodiscard]] QSize sizeHint() const override { return page.sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        const QSize least = page.minimumSizeHint();
        const QLayout *layout = page.layout();
        if (!layout || !layout->hasHeightForWidth())
            return least;
        return {least.width(), layout->totalMinimumHeightForWidth(std::max(width(), least.width()))};
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        page.setGeometry(rect());
        if (event->size().width() != event->oldSize().width())
            QApplication::postEvent(this, new QEvent(QEvent::LayoutRequest)); // its texts are wrapped anew
    }

private:
    QWidget &page;
};

} // namespace

PageArea::PageArea(QWidget *parent) : QWidget(parent)
{
    (new QVBoxLayout(this))->setContentsMargins({});
}

void PageArea::setPage(QWidget &page)
{
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // it scrolls to the control that has the focus
    area->setWidgetResizable(true);
    auto *frame = new PageFrame(page);
    area->setWidget(frame);
    // The ground is the tab's, not the window's.
    frame->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    layout()->addWidget(area);
}
