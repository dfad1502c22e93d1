// SPDX-License-Identifier: MIT
#pragma once

#include "timed_list.h"

#include <QWidget>

#include <array>
#include <memory>

class Prompts;
class QCheckBox;
class Timetable;

namespace Ui {
class TimetableWindow;
}

/// The window `frmtimetable`: the lists of commands, when each is sent, and what came of it.
class TimetableWindow final : public QWidget {
    Q_OBJECT

public:
    TimetableWindow(Timetable &timetable_, Prompts &prompts_, QWidget *parent = nullptr);
    ~TimetableWindow() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void wireFields();
    void showLists();
    void showList();
    void showResults();
    void showState();
    void offerFields();
    bool take();
    void showAnew();
    void showTheirs();
    [[nodiscard]] TimedList typed() const;
    [[nodiscard]] QString complaint() const;
    void cmdttadd_Click();
    void cmdttremove_Click();
    void cmdttrun_Click();

    Timetable &timetable;
    Prompts &prompts;
    std::unique_ptr<Ui::TimetableWindow> ui;
    std::array<QCheckBox *, 7> days{};
    int shown = -1; ///< the list whose fields are seen
    bool isShowing = false;
};
