// SPDX-License-Identifier: MIT
#include "preset_box.h"

#include "base/controls.h"
#include "base/prompts.h"

using namespace Qt::StringLiterals;

PresetBox::PresetBox(const Controls &controls, const QString &path, Prompts &prompts_,
                     const std::function<QString()> &rotation_, QObject *parent)
    : QObject(parent), on(controls), file(path), prompts(prompts_), rotation(rotation_)
{
    connect(on.name, &QComboBox::textActivated, this, &PresetBox::choose);
    connect(on.name, &QComboBox::editTextChanged, this, &PresetBox::enableButtons);
    connect(on.save, &QPushButton::clicked, this, &PresetBox::save);
    connect(on.remove, &QPushButton::clicked, this, &PresetBox::remove);
}

void PresetBox::list()
{
    const QString shown = typed();
    const PresetList all = file.contents();
    on.name->clear();
    for (const RotationPreset &preset : all.presets)
        on.name->addItem(preset.name);
    on.name->setCurrentIndex(-1);
    on.name->setEditText(all.indexOf(shown) >= 0 ? shown : QString());
    enableButtons();
    (void)isRefused(all.fault);
}

void PresetBox::choose(const QString &wanted)
{
    const PresetList all = file.contents();
    if (isRefused(all.fault))
        return;
    if (const qsizetype index = all.indexOf(wanted); index >= 0)
        emit chosen(all.presets.at(index).rotation);
}

void PresetBox::save()
{
    const QString name = typed();
    if (name.isEmpty()) {
        prompts.inform(u"Type a name for the preset first"_s, u"Map rotation"_s);
        return;
    }
    const PresetList all = file.contents();
    if (isRefused(all.fault))
        return;
    if (const qsizetype index = all.indexOf(name); index >= 0) {
        const Answer answer =
            prompts.ask({u"Replace preset"_s,
                         u"There is a preset of this name already. Replace it?\r"_s + all.presets.at(index).name,
                         BoxIcon::Question, BoxButtons::YesNo});
        if (answer != Answer::Yes)
            return;
    }
    if (isRefused(file.put({name, rotation()})))
        return;
    list();
    on.name->setEditText(name);
    emit done(u"Saved as "_s + name);
}

void PresetBox::remove()
{
    const QString name = typed();
    const Answer answer =
        prompts.ask({u"Delete preset"_s, u"Delete this preset?\r"_s + name, BoxIcon::Question, BoxButtons::YesNo});
    if (answer != Answer::Yes || isRefused(file.remove(name)))
        return;
    list();
    emit done(name + u" is deleted; its maps stay here until you close the window"_s);
}

void PresetBox::enableButtons()
{
    on.remove->setEnabled(on.name->findText(typed(), Qt::MatchFixedString) >= 0);
}

bool PresetBox::isRefused(const QString &fault)
{
    if (!fault.isEmpty())
        prompts.refuse(u"The presets cannot be used: %1\rThe file is left as it is:\r%2"_s.arg(fault, file.path()),
                       u"Map rotation"_s);
    return !fault.isEmpty();
}

QString PresetBox::typed() const
{
    return on.name->currentText().trimmed();
}
