// SPDX-License-Identifier: MIT
#pragma once

/// Lets the standard output and error of a program with windows reach the console in which it was started. Windows
/// starts such programs without one; elsewhere nothing needs to be done.
void joinConsole();

/// For a program whose output is read by others: what is written goes out byte for byte, also on Windows, and writing
/// to a pipe that nobody reads is an error instead of the end. Of the standard streams that were closed when the
/// program began, none becomes a file or a socket of its own.
void prepareStandardStreams();

/// Why writing to such a stream has just failed: nobody reads it any more.
[[nodiscard]] bool isOutputClosed();
