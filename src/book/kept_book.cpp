// SPDX-License-Identifier: MIT
#include "kept_book.h"

#include "base/prompts.h"
#include "settings/ini_file.h"

using namespace Qt::StringLiterals;

KeptBook::KeptBook(IniFile &ini_, Prompts &prompts_, QObject *parent) : QObject(parent), ini(ini_), prompts(prompts_) {}

void KeptBook::load(const IniText &text)
{
    kept = BookSettings::read(text);
    if (kept.isKept)
        opened.open(kept.days);
}

void KeptBook::keep(bool on)
{
    if (on == kept.isKept)
        return;
    kept.isKept = on;
    if (on)
        opened.open(kept.days);
    else
        opened.close();
    write();
}

void KeptBook::setDays(int days)
{
    kept.days = days;
    write();
}

void KeptBook::write()
{
    if (const std::optional<Fault> fault = ini.write(kept.entries()))
        prompts.showWriteFailure(u"player book settings to INI file"_s, *fault);
}
