// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"

/// The number of the fault that `action` throws; 0 when it throws none.
template <typename Action>
int faultOf(const Action &action)
{
    try {
        action();
        return 0;
    } catch (const Fault &fault) {
        return fault.number();
    }
}
