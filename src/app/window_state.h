// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"
#include "settings/ini_text.h"

#include <QMainWindow>
#include <QMap>

#include <functional>
#include <optional>

class IniFile;
class Prompts;
class QSplitter;
class QTabWidget;

/// The place of the main window, its splitters, the chosen tab and what else of its looks is kept between runs, in the
/// section `window` of the settings file. What is missing or broken there, or lies on no screen, is as it is at first.
class WindowState final : public QObject {
    Q_OBJECT

public:
    /// `divide_` gives the splitters of the window, which has its size by then, their usual sizes.
    WindowState(QMainWindow &window_, IniFile &ini_, std::function<void()> divide_);

    /// Something of the window that is kept as one text, under its key.
    struct Part {
        QString key;
        std::function<QString()> text;
        /// False when the text is broken; the part stays as it was.
        std::function<bool(const QString &text)> show;
    };
    void keep(const Part &part);
    void keep(QSplitter &splitter);
    void keep(QTabWidget &tabs);

    /// Puts the window in the middle of the screen, in its usual size for the font, or as large as there is room.
    void placeWithinScreen();
    /// Puts the window and the parts that are known so far where they were; before the first showing.
    void restore();
    /// Restores the parts that have become known since, and takes note of how all are from the next turn of the event
    /// loop on: what is different at the end has been changed by the person.
    void restoreRest();
    /// Puts all back as it is at first, at once, and empties the section. Nothing on success, else the fault of
    /// writing.
    [[nodiscard]] std::optional<Fault> reset();
    /// Writes what is no more as it was. Nothing is written, and the file not touched, when all is.
    void save();

private:
    [[nodiscard]] QMap<QString, QString> texts() const;
    void restoreParts();
    void takeNote();

    QMainWindow &window;
    IniFile &ini;
    const std::function<void()> divide;
    QList<Part> parts;
    qsizetype restored = 0; ///< parts that have been put back
    IniText stored;         ///< the settings file at the start
    QMap<QString, QString> defaults;
    QMap<QString, QString> before; ///< as the person found them; empty until that is known
};
