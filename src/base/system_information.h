// SPDX-License-Identifier: MIT
#pragma once

/// Starts the system's information tool, as Windows names it in its registry. False when there is none.
[[nodiscard]] bool startSystemInformation();
