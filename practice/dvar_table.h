// SPDX-License-Identifier: MIT
#pragma once

#include "dvars.h"

#include <QList>

/// The variables of the plain game as a dedicated server has them right after its start.
[[nodiscard]] QList<Dvar> gameDvars();

/// Those that the Heat of Battle mod adds.
[[nodiscard]] QList<Dvar> hobDvars();
