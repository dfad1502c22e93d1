// SPDX-License-Identifier: MIT
#pragma once

#include "book.h"
#include "book_settings.h"

class IniFile;
class Prompts;

/// The player book, open as long as the person wants one to be kept, and what the settings file says of it.
class KeptBook final : public QObject {
    Q_OBJECT

public:
    KeptBook(IniFile &ini_, Prompts &prompts_, QObject *parent = nullptr);

    /// Opens the book when the settings say that one is kept.
    void load(const IniText &text);
    /// Begins or ends keeping it, and has the settings file say so.
    void keep(bool on);
    /// How long sightings are kept; the next time that the book is opened.
    void setDays(int days);

    [[nodiscard]] const BookSettings &settings() const { return kept; }
    [[nodiscard]] Book &book() { return opened; }

private:
    void write();

    IniFile &ini;
    Prompts &prompts;
    BookSettings kept;
    Book opened;
};
