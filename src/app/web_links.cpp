// SPDX-License-Identifier: MIT
#include "web_links.h"

#include <QDesktopServices>
#include <QUrl>

void openurl(QStringView address)
{
    QDesktopServices::openUrl(QUrl(address.toString()));
}
