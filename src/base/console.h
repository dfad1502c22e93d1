// SPDX-License-Identifier: MIT
#pragma once

/// Lets the standard output and error of a program with windows reach the console in which it was started. Windows
/// starts such programs without one; elsewhere nothing needs to be done.
void joinConsole();
