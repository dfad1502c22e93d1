// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <functional>

class Fault;
class QLineEdit;
class QWidget;

enum class BoxIcon { None, Information, Exclamation, Question };
enum class BoxButtons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No };

/// One modal message box: fixed wording, shown as plain text.
struct Box {
    QString title;
    QString text;
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;

    bool operator==(const Box &) const = default;
};

/// What a box comes from: something that a person has done, or the tick of a timer, at which perhaps nobody is there.
enum class BroughtBy { Person, Tick };

/// The answer that a box closed without a choice gives: Ok, Cancel or No.
[[nodiscard]] Answer answerOfClosing(BoxButtons buttons);

/// Makes what is to be seen below the line into which a text is typed; the box owns it.
using BelowLine = std::function<QWidget *(QLineEdit *line)>;

/// The one door through which the program asks or tells the person something that must be answered.
class Prompts {
public:
    Prompts() = default;
    virtual ~Prompts() = default;
    Q_DISABLE_COPY_MOVE(Prompts)

    /// Shows the box and waits for the answer, yielding to the event loop.
    Answer ask(const Box &box);
    /// Asks for one line of text; empty when cancelled.
    QString askText(const QString &prompt, const QString &title, const QString &preset, const BelowLine &below = {});
    /// Asks under which name to save; empty when cancelled. `suffix` is added to a name without one.
    QString askFileName(const QString &title, const QString &preset, const QString &suffix);
    /// Asks for a file that is to be read; empty when cancelled. `filter` is what Qt's file dialog takes.
    QString askFileToRead(const QString &title, const QString &filter);
    /// Closes what is open as if it had been cancelled, and shows nothing from now on.
    virtual void close() = 0;
    /// How many boxes and questions are open, one over the other.
    [[nodiscard]] qsizetype openCount() const { return open.size(); }

    /// A box with OK and the exclamation icon: a refusal or a failure. A tick brings no second one of a title that is
    /// still open.
    void refuse(const QString &text, const QString &title, BroughtBy by = BroughtBy::Person);
    /// A box with OK and the information icon, likewise.
    void inform(const QString &text, const QString &title, BroughtBy by = BroughtBy::Person);
    /// The box of a failed write to the settings file; `what` completes "Failed to write new ...".
    void showWriteFailure(const QString &what, const Fault &fault);
    /// The general box of a fault that no handler trapped.
    void showFault(const Fault &fault, BroughtBy by = BroughtBy::Person);

protected:
    virtual Answer showBox(const Box &box) = 0;
    virtual QString showTextQuestion(const QString &prompt, const QString &title, const QString &preset,
                                     const BelowLine &below) = 0;
    virtual QString showFileQuestion(const QString &title, const QString &preset, const QString &suffix) = 0;
    virtual QString showReadQuestion(const QString &title, const QString &filter) = 0;

private:
    void notify(const Box &box, BroughtBy by);

    QList<Box> open; ///< of questions only the title
};
