// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Fault;

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

/// The answer that a box closed without a choice gives: Ok, Cancel or No.
[[nodiscard]] Answer answerOfClosing(BoxButtons buttons);

/// The one door through which the program asks or tells the person something that must be answered.
class Prompts {
public:
    Prompts() = default;
    virtual ~Prompts() = default;
    Q_DISABLE_COPY_MOVE(Prompts)

    /// Shows the box and waits for the answer, yielding to the event loop.
    virtual Answer ask(const Box &box) = 0;
    /// Asks for one line of text; empty when cancelled.
    virtual QString askText(const QString &prompt, const QString &title, const QString &preset) = 0;
    /// Asks under which name to save; empty when cancelled. `suffix` is added to a name without one.
    virtual QString askFileName(const QString &title, const QString &preset, const QString &suffix) = 0;
    /// Closes what is open as if it had been cancelled, and shows nothing from now on.
    virtual void close() = 0;

    /// A box with OK and the exclamation icon: a refusal or a failure.
    void refuse(const QString &text, const QString &title);
    /// A box with OK and the information icon.
    void inform(const QString &text, const QString &title);
    /// The box of a failed write to the settings file; `what` completes "Failed to write new ...".
    void showWriteFailure(const QString &what, const Fault &fault);
    /// The general box of a fault that no handler trapped.
    void showFault(const Fault &fault);
};
