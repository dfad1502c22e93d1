// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class ProgressWindow;
}

/// The small window that says what is going on. It takes neither the focus nor the keyboard from the main window.
class ProgressWindow final : public QWidget {
    Q_OBJECT

public:
    ProgressWindow();
    ~ProgressWindow() override;

    [[nodiscard]] QString note() const;
    void setNote(const QString &note);
    /// Shows the window over `owner`, which keeps the focus.
    void showOver(QWidget *owner);

signals:
    /// The person has closed it.
    void dismissed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    std::unique_ptr<Ui::ProgressWindow> ui;
};
