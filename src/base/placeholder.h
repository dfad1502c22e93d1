// SPDX-License-Identifier: MIT
#pragma once

class QAbstractItemView;

/// Shows the text of the property `placeholderText`, which the form sets, in `view` while it has no rows. Some of Qt's
/// controls do this by themselves, lists and tables do not.
void showPlaceholder(QAbstractItemView *view);
