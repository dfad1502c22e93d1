// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QList>
#include <QTime>

class BoundControl;
class Connecting;

/// Stands beside the button that populates a page and says how the page stands to the server: when it was read, or how
/// many of its fields have been changed and not been sent.
class ReadLabel final : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    /// Counts the changes in the fields of `page` from now on.
    void watch(const QWidget &page);
    /// The server has answered all that the page asked, at that time of day.
    void setRead(QTime at);
    /// It has the same width for all that it says, so that what stands behind it stays where it is.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

public slots:
    /// What the page shows has not been read from this server.
    void forget();

private:
    void say();

    QList<const BoundControl *> fields;
    QTime readAt; ///< null before
};

/// What the labels in `window` say of one server is over with its connection: it says nothing about the next.
void forgetWithServer(const Connecting &connecting, const QWidget &window);
