// SPDX-License-Identifier: MIT
#include "program_icon.h"

// The resources of a static library are not found without this. It stands at global scope, because the function of
// the resource does.
static void loadPictures()
{
    Q_INIT_RESOURCE(app);
}

QIcon programIcon()
{
    loadPictures();
    return QIcon(QStringLiteral(":/app/molvark.png"));
}
