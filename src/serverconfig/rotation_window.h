// SPDX-License-Identifier: MIT
#pragma once

#include "rotation_model.h"

#include <QWidget>

#include <functional>
#include <memory>

class KnownServer;
class MiscPage;
class PresetBox;
struct Services;

namespace Ui {
class RotationWindow;
}

/// The window `frmrotation`: puts a map rotation together, line by line, and says what the game would make of it. It
/// sends nothing; the "Misc" tab does.
class RotationWindow final : public QWidget {
    Q_OBJECT

public:
    RotationWindow(const Services &services_, MiscPage &misc_, const KnownServer &known_, QWidget *parent = nullptr);
    ~RotationWindow() override;

    /// Begins with the server's rotation, if it has told one. What stood there before can be brought back.
    void begin();

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpList();
    void wireButtons();
    void onListKey(const QKeySequence &keys, const std::function<void()> &handler);
    /// A text that cannot be a rotation is refused.
    void takeText(const QString &rotation);
    void cmdrotserver_Click();
    void cmdrotfile_Click();
    void cmdrotadd_Click();
    void cmdrotcopy_Click();
    void cmdrotconfig_Click();
    void moveLines(int by);
    void showMenu(QPoint place);
    void showKnown();
    void showMaps();
    void showRotation();
    void showProblems();
    void showLength();
    void enableButtons();
    void choose(int first, int count);
    [[nodiscard]] QList<int> chosenLines() const;

    const Services &services;
    MiscPage &misc;
    const KnownServer &known;
    std::unique_ptr<Ui::RotationWindow> ui;
    RotationModel model;
    PresetBox *presets;
    QString shownText; ///< about which the notes are
    QList<RotationProblem> shownProblems;
};
