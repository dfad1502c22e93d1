// SPDX-License-Identifier: MIT
#include "read_label.h"

#include "base/controls.h"
#include "connecting.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void ReadLabel::watch(const QWidget &page)
{
    const auto watchEach = [this](const auto &controls) {
        for (const auto *control : controls) {
            // What has a button of its own is not sent with the page, and a populate leaves it alone.
            if (control->tag.isEmpty() || control->property("hasOwnButton").toBool())
                continue;
            fields.append(control);
            connect(control, &std::remove_pointer_t<decltype(control)>::datachangedset, this, &ReadLabel::say);
        }
    };
    watchEach(page.findChildren<TextBox *>());
    watchEach(page.findChildren<CheckBox *>());
    say();
}

void ReadLabel::setRead(QTime at)
{
    readAt = at;
    say();
}

void ReadLabel::forget()
{
    readAt = {};
    say();
}

void ReadLabel::say()
{
    const auto unsent = std::ranges::count_if(fields, &BoundControl::isUnsent);
    if (unsent == 1)
        setText(u"1 change not sent"_s);
    else if (unsent > 1)
        setText(u"%1 changes not sent"_s.arg(unsent));
    else
        setText(readAt.isNull() ? u"not read yet"_s : u"read "_s + readAt.toString(u"HH:mm"));
}

QSize ReadLabel::sizeHint() const
{
    const QSize hint = QLabel::sizeHint();
    return {std::max(hint.width(), fontMetrics().horizontalAdvance(u"00 changes not sent"_s)), hint.height()};
}

void forgetWithServer(const Connecting &connecting, const QWidget &window)
{
    for (const ReadLabel *label : window.findChildren<ReadLabel *>()) {
        QObject::connect(&connecting, &Connecting::connected, label, &ReadLabel::forget);
        QObject::connect(&connecting, &Connecting::disconnected, label, &ReadLabel::forget);
    }
}
