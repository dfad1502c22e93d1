// SPDX-License-Identifier: MIT
#pragma once

#include "rotation_presets.h"

#include <QObject>

#include <functional>

class ComboBox;
class Prompts;
class QPushButton;

/// The presets of the map rotation, as the person chooses, saves and deletes them.
class PresetBox final : public QObject {
    Q_OBJECT

public:
    struct Controls {
        ComboBox *name;
        QPushButton *save;
        QPushButton *remove;
    };
    /// `rotation_` tells what is to be saved.
    PresetBox(const Controls &controls, const QString &path, Prompts &prompts_,
              const std::function<QString()> &rotation_, QObject *parent);

    /// Lists what the file has by now. Says so when it is none that can be used.
    void list();

signals:
    void chosen(const QString &rotation);
    /// What has been done, in a sentence.
    void done(const QString &note);

private:
    void choose(const QString &wanted);
    void save();
    void remove();
    void enableButtons();
    [[nodiscard]] bool isRefused(const QString &fault);
    [[nodiscard]] QString typed() const;

    const Controls on;
    const PresetFile file;
    Prompts &prompts;
    const std::function<QString()> rotation;
};
