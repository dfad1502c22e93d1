// SPDX-License-Identifier: MIT
#pragma once

/// Hands freed memory back to the system, which the C library keeps otherwise. For after something large has gone.
void giveBackMemory();
