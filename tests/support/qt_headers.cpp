// SPDX-License-Identifier: MIT
// Nothing is compiled here but the headers of Qt, once for all tests.
