// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#ifdef LEAKS_ARE_CHECKED
#include <sanitizer/lsan_interface.h>
#endif

/// Qt is built without the code that frees what a function holds when an exception leaves it: each fault that passes
/// through it on the way to the application costs a few bytes. While this object lives such bytes are no finding.
class LeaksOfQt final {
public:
    LeaksOfQt() = default;
    ~LeaksOfQt() {}
    Q_DISABLE_COPY_MOVE(LeaksOfQt)

private:
#ifdef LEAKS_ARE_CHECKED
    __lsan::ScopedDisabler disabler;
#endif
};
