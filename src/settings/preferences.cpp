// SPDX-License-Identifier: MIT
#include "preferences.h"

#include "base/numbers.h"
#include "ini_text.h"

namespace {

void take(bool &field, const QString &text)
{
    field = text != u'0';
}

void take(qint16 &field, const QString &text)
{
    field = leadingNumber(text);
}

void take(QString &field, const QString &text)
{
    field = text;
}

} // namespace

Preferences loadPreferences(const IniText &ini)
{
    Preferences preferences;
    for (const PreferenceKey &preference : preferenceKeys) {
        const QString text = ini.value(preferenceSection.toString(), preference.key.toString(), preference.buffer);
        if (!text.isEmpty())
            std::visit([&](auto member) { take(preferences.*member, text); }, preference.member);
    }
    return preferences;
}
