// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/connecting.h"
#include "rcon/known_game.h"

#include <QLabel>
#include <QStatusBar>

class QProgressBar;
struct Wait;

/// A label of one line that ends in dots where it has no room; the whole text is then its tool tip.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(const QString &name, QWidget *parent = nullptr);

    /// Hides itself when the text is empty.
    void display(const QString &text);
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QString shownText() const;
    void tellWhole();
};

/// The coloured dot that says whether the program is connected. It is told in words too.
class StateDot final : public QLabel {
    Q_OBJECT

public:
    explicit StateDot(QWidget *parent = nullptr);

    void display(Connecting::State state_, const QString &description);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Connecting::State state = Connecting::State::NotConnected;
};

/// The red mark that says that traffic is being recorded.
class RecordMark final : public QLabel {
    Q_OBJECT

public:
    explicit RecordMark(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// What the program does, in the window's last line. It only looks on: it is told when something has changed, and asks
/// and measures nothing.
class StatusBar final : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusBar(QWidget *parent = nullptr);

    /// Makes what is not needed before the window has been painted.
    void build();

public slots:
    void showState(Connecting::State state_, const QString &address_);
    /// The game type and the map that the server has told of, if the reply does.
    void takeReply(const QString &reply);
    /// A command is about to be sent. One that changes the game or the map makes what is known of them void.
    void takeCommand(const QString &comm);
    /// `command` as it may be shown.
    void showWait(const Wait &wait, const QString &command);
    void hideWait();
    /// What the message cycler does, and how often the list of players is read; hidden when empty.
    void showCycle(const QString &outlook);
    void showRefresh(int seconds);
    /// What a server said to a checked action, and what came of it; hidden when empty.
    void showAnswer(const QString &answer);
    /// What became of the command of that number; `verdict` is empty when it is good, which hides an earlier one.
    void showVerdict(int number, const QString &verdict, const QString &command);
    void showRecording(bool on);
    /// What is wrong with the player book, or which flagged player has come; hidden when empty.
    void showBook(const QString &text);
    /// How far the words of the server are learned; hidden when empty.
    void showLearning(const QString &progress);
    /// What came of the timetable's last list; hidden when empty.
    void showTimetable(const QString &result);

signals:
    /// The person wants to know more of the command of that number.
    void verdictclicked(int number);
    /// The person wants to know more of what is said about the player book.
    void bookclicked();

private:
    void showState();

    StateDot *lbldot;
    ElidedLabel *lblstate;
    QProgressBar *barwait = nullptr;
    ElidedLabel *lblwait = nullptr;
    ElidedLabel *lblcycle = nullptr;
    ElidedLabel *lblrefresh = nullptr;
    ElidedLabel *lblanswer = nullptr;
    ElidedLabel *lbllearn = nullptr;
    ElidedLabel *lblverdict = nullptr;
    ElidedLabel *lblbook = nullptr;
    ElidedLabel *lbltimetable = nullptr;
    RecordMark *lblrecord = nullptr;
    int verdictNumber = 0;
    Connecting::State state = Connecting::State::NotConnected;
    QString address;
    KnownGame game;
};
