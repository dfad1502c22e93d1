// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

class QWidget;

/// Lets the Tab key go through `window` from area to area in their order, and within each as it went before. An area is
/// a control or what holds some; null ones are passed over.
void orderTabs(QWidget &window, const QList<const QWidget *> &areas);
