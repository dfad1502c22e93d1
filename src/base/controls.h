// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include <functional>

/// A push button that carries a text of its own for the program's use.
class Button final : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER tag)

public:
    using QPushButton::QPushButton;

    QString tag;
};

/// What is common to the controls that show a variable of the server. One whose value has changed since it was last
/// read or sent has a corner turned down, and tells it to screen readers.
class BoundControl {
public:
    BoundControl() = default;
    virtual ~BoundControl() = default;
    Q_DISABLE_COPY_MOVE(BoundControl)

    /// The text by which the value is sent: of a check box 0 or 1.
    [[nodiscard]] virtual QString value() const = 0;
    /// Shows `value`. A check box takes a 16-bit whole number, of which all but 0 tick it, and throws TypeMismatch or
    /// Overflow for anything else.
    virtual void setValue(const QString &value) = 0;

    /// The value has changed since it was last read or sent, whoever changed it.
    [[nodiscard]] bool dataChanged() const { return changed; }
    void setDataChanged(bool on);
    /// True when it has and there is a server to send it to: other boxes have no variable's name.
    [[nodiscard]] bool isUnsent() const { return changed && !tag.isEmpty(); }

    QString tag; ///< the variable's name

protected:
    /// Shows and tells the mark, which was set or cleared.
    virtual void showDataChanged() = 0;

private:
    bool changed = false;
};

/// `text` with a blank for each line break.
[[nodiscard]] QString oneLine(QString text);

/// A line of text. Line breaks that are pasted into it become blanks.
class TextBox final : public QLineEdit, public BoundControl {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER tag)
    Q_PROPERTY(bool DataChanged READ dataChanged WRITE setDataChanged NOTIFY datachangedset)
    Q_PROPERTY(Content content READ content WRITE setContent)

public:
    /// What the box is for, which says how wide it gets where there is room.
    enum Content { Anything, Number, Name, Sentence };
    Q_ENUM(Content)

    explicit TextBox(QWidget *parent = nullptr);

    [[nodiscard]] QString value() const override { return text(); }
    void setValue(const QString &value) override { setText(value); }
    [[nodiscard]] Content content() const { return kind; }
    void setContent(Content content);
    [[nodiscard]] QSize sizeHint() const override;

signals:
    void datachangedset();

protected:
    void showDataChanged() override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] int widthOf(int digits) const;
    void boundWidth();

    Content kind = Anything;
};

/// A check box whose caption may have a tool tip of its own. Long tool tips are wrapped.
class CheckBox final : public QCheckBox, public BoundControl {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER tag)
    Q_PROPERTY(bool DataChanged READ dataChanged WRITE setDataChanged NOTIFY datachangedset)
    Q_PROPERTY(QString captionToolTip MEMBER captionToolTip)

public:
    explicit CheckBox(QWidget *parent = nullptr);

    [[nodiscard]] QString value() const override;
    void setValue(const QString &value) override;

    QString captionToolTip;

    /// The tool tip at that place of the control.
    [[nodiscard]] QString toolTipAt(QPoint place) const;

signals:
    void datachangedset();

protected:
    void showDataChanged() override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};

/// Locks a line against typing, or unlocks it, and shows that: what is locked has the ground of its window.
void lockLine(QLineEdit *line, bool on);

/// An editable combo box that can be locked: its text is shown and can be set by the program, but not by the person.
/// It neither completes what is typed nor adds it to its list on Return.
class ComboBox final : public QComboBox {
    Q_OBJECT

public:
    explicit ComboBox(QWidget *parent = nullptr);

    /// The texts of the list, in order.
    [[nodiscard]] QStringList entries() const;
    void setLocked(bool on);
    [[nodiscard]] bool isLocked() const;
    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

/// A scroll bar with its largest value at the top: up is more, by whatever means it is moved.
class RisingScrollBar final : public QScrollBar {
    Q_OBJECT

public:
    explicit RisingScrollBar(QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void turnedRound(const std::function<void()> &handle);
    void turn(int action);

    bool turns = false;
};

/// A label that can be clicked, or pressed with the space bar when it has the focus.
class ClickLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ClickLabel(QWidget *parent = nullptr);

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
