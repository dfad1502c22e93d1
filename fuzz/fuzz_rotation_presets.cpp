// SPDX-License-Identifier: MIT
#include "fuzz.h"
#include "serverconfig/rotation_presets.h"

void fuzz(const QByteArray &input)
{
    const PresetList list = presetsIn(input);
    require(list.fault.isEmpty() || list.presets.isEmpty(), "a file is taken whole or not at all");
    for (qsizetype index = 0; index < list.presets.size(); ++index) {
        require(!list.presets.at(index).name.trimmed().isEmpty(), "each preset has a name");
        require(list.indexOf(list.presets.at(index).name) == index, "which no other has");
    }
}
