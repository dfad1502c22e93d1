// SPDX-License-Identifier: MIT
#include "first_paint.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace {

class FirstPaint final : public QObject {
public:
    FirstPaint(QWidget *widget, std::chrono::milliseconds atMost, std::function<void()> action_)
        : QObject(widget), action(std::move(action_))
    {
        widget->installEventFilter(this);
        QTimer::singleShot(atMost, this, [this] { act(); });
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The event comes before the painting, but the whole window is painted before the event loop gets to the timer.
        if (action && event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, [this] { act(); });
        return QObject::eventFilter(watched, event);
    }

private:
    // The action may run an event loop of its own. The timer or another painting may then call this again.
    void act()
    {
        if (const auto once = std::exchange(action, {})) {
            deleteLater();
            once();
        }
    }

    std::function<void()> action;
};

} // namespace

void afterFirstPaint(QWidget *widget, std::chrono::milliseconds atMost, std::function<void()> action)
{
    new FirstPaint(widget, atMost, std::move(action));
}
