// SPDX-License-Identifier: MIT
#include "program_icon.h"

// At global scope, where the resource's own function is; a static library's resources are not found without it.
static void loadPictures()
{
    Q_INIT_RESOURCE(app);
}

QIcon programIcon()
{
    loadPictures();
    return QIcon(QStringLiteral(":/app/molvark.png"));
}
