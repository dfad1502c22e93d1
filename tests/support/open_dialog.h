// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QDialog>
#include <QtTest>

#include <functional>

/// Runs `act` on the dialog that opens next, when it is open and active, and closes the dialog after that if it is
/// still open, so that a failing test never waits for a person.
template <typename Dialog>
void onNextDialog(const std::function<void(Dialog &)> &act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog) {
            if (auto *other = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                other->reject();
            return QTest::qFail("no such dialog is open", __FILE__, __LINE__);
        }
        // Qt calls the window below an open dialog active as well, so qWaitForWindowActive() would not wait.
        if (QTest::qWaitFor([&] { return QApplication::activeWindow() == dialog; }))
            act(*dialog);
        else
            QTest::qFail("the dialog does not become active", __FILE__, __LINE__);
        if (dialog->isVisible())
            dialog->reject();
    });
}

/// Closes each dialog that opens during its life, and notes that there was one.
class DialogGuard final {
public:
    DialogGuard()
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                sawDialog = true;
                dialog->reject();
            }
        });
        timer.start(0);
    }

    [[nodiscard]] bool hasSeenDialog() const { return sawDialog; }

private:
    QTimer timer;
    bool sawDialog = false;
};
