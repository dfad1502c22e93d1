// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class MessagesPage;
}

/// The "Messages" tab. So far it holds only the buttons that the connection and the end of the program act on: those
/// of the cycler, and the one whose enabled state marks unsaved message sets. The page shows them once they do more.
class MessagesPage final : public QWidget {
    Q_OBJECT

public:
    explicit MessagesPage(QWidget *parent = nullptr);
    ~MessagesPage() override;

    [[nodiscard]] bool hasUnsavedSets() const;

public slots:
    /// Stops the message cycler if it runs.
    void endCycle();

private:
    std::unique_ptr<Ui::MessagesPage> ui;
    QTimer tmrmessage;
};
