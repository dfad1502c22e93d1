// SPDX-License-Identifier: MIT
#pragma once

#include "progress_window.h"

#include <QTimer>

#include <functional>

class Clock;
class MessageList;
class Prompts;
class RconPane;

enum class Progress { Replace, Add };

/// The three places in which the program says what it does: the RCON pane, the message list and the progress window;
/// and their log files.
class Output final {
public:
    Output(Prompts &prompts, const Clock &clock);
    Q_DISABLE_COPY_MOVE(Output)

    /// Writes into these two from now on. Before this only the progress window can be used.
    void attach(RconPane &pane, MessageList &list);
    [[nodiscard]] RconPane &pane() const { return *txtoutput; }
    [[nodiscard]] MessageList &list() const { return *lstmessages; }

    /// Appends `text` to the RCON pane; the caller supplies the line ends.
    void addrcon(const QString &text);
    /// Adds one line to the message list, with the time of day before it.
    void addmessage(const QString &text);
    /// Replaces or extends the note of the progress window and shows it; an empty text empties the note and hides the
    /// window. A note that comes while the program is minimised is dropped. What is added to a note that the person has
    /// closed is not seen.
    void showprogress(const QString &text, Progress mode);
    /// While it lives, the note is about something that is going on.
    class Work final {
    public:
        explicit Work(Output &output_) : output(output_) { ++output.works; }
        ~Work() { --output.works; }
        Q_DISABLE_COPY_MOVE(Work)

    private:
        Output &output;
    };
    /// Closes a note that has stayed behind. False when there is none.
    bool closeNote();
    /// Does so in three seconds, unless another note comes before.
    void closeNoteSoon();
    /// The note that the progress window holds; empty when there is none.
    [[nodiscard]] QString progressnote() const { return frmprogress.note(); }

    void clearrcon_Click();
    void clearmessage_Click();
    void clearrcon();
    void clearmessages();

    /// Appends the RCON pane to a log file: of the day when `autoaction`, else of the name that the person chooses.
    void savercon_Click(bool autoaction);
    /// Appends the message list to a log file, likewise.
    void savemessages_Click(bool autoaction);

private:
    struct Log {
        QString prefix;
        QString note;
        QString failure;
        std::function<QString()> text;
    };

    void saveLog(const Log &log, bool autoaction);
    [[nodiscard]] QString messages() const;

    Prompts &prompts;
    const Clock &clock;
    RconPane *txtoutput = nullptr;
    MessageList *lstmessages = nullptr;
    ProgressWindow frmprogress;
    bool isFailure = false;   ///< the note is about a log that could not be saved
    bool isDismissed = false; ///< the person has closed the window
    int works = 0;
    QTimer tmrnote{&frmprogress}; ///< closes a note that has stayed behind
    QTimer toBottom;              ///< scrolls the message list once in the window's turn, however many lines have come
};
