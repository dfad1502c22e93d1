// SPDX-License-Identifier: MIT
#pragma once

#include "settings/preferences.h"

#include <QWidget>

#include <array>
#include <memory>

class BoundControl;
class QSlider;
struct Services;

namespace Ui {
class PreferencesWindow;
}

/// The window `frmpref`: shows the preferences and saves those that were changed, in the file and for this run.
class PreferencesWindow final : public QWidget {
    Q_OBJECT

public:
    explicit PreferencesWindow(Services &services_, QWidget *parent = nullptr);
    ~PreferencesWindow() override;

signals:
    /// A preference has been changed for this run.
    void changed();

private:
    /// How one preference is shown: by a box, or by a slider that is saved when the box of its switch has changed.
    struct Field {
        PreferenceKey::Member member;
        BoundControl *box = nullptr;
        QSlider *slider = nullptr;
    };

    [[nodiscard]] const Field &fieldOf(const PreferenceKey &preference) const;
    void Form_Load();
    void chkautoplayer_Click();
    void chkauto999_Click();
    void chkautoconnect_Click();
    void chkautomessages_Click();
    void cmdsave_Click();
    [[nodiscard]] bool save();
    void cmdexit_Click();

    Services &services;
    std::unique_ptr<Ui::PreferencesWindow> ui;
    std::array<Field, preferenceKeys.size()> fields; ///< one for each key, in any order
};
