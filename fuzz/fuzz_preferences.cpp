// SPDX-License-Identifier: MIT
#include "fuzz.h"
#include "settings/ini_text.h"
#include "settings/preferences.h"

namespace {

void compare(bool field, bool preset, const QString &text)
{
    require(field == (text.isEmpty() ? preset : text != u'0'), "a Boolean is true unless it is 0");
}

void compare(qint16 field, qint16 preset, const QString &text)
{
    const QChar digit = text.isEmpty() ? QChar(u'0') : text.front();
    const int number = digit >= u'0' && digit <= u'9' ? digit.unicode() - u'0' : 0;
    require(field == (text.isEmpty() ? preset : number), "a number is its first digit");
}

void compare(const QString &field, const QString &preset, const QString &text)
{
    require(field == (text.isEmpty() ? preset : text), "a text is as it stands");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const IniText ini(input);
    const Preferences presets;
    const Preferences loaded = loadPreferences(ini);
    for (const PreferenceKey &preference : preferenceKeys) {
        const QString text = ini.value(preferenceSection.toString(), preference.key.toString(), preference.buffer);
        require(text.size() < preference.buffer, "no value fills its buffer");
        std::visit([&](auto member) { compare(loaded.*member, presets.*member, text); }, preference.member);
    }
}
