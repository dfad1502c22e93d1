// SPDX-License-Identifier: MIT
#include "manual.h"

#include "base/prompts.h"
#include "web_links.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString page = u"/manual.html"_s;

/// Of the folder of a program that is unpacked, and of one that is installed.
QStringList homes(const QString &programFolder)
{
    return {programFolder, programFolder + u'/' + QStringLiteral(MOLVARK_WAY_TO_MANUAL)};
}

QStringList pagesIn(const QStringList &folders)
{
    QStringList pages;
    for (const QString &folder : folders)
        pages.append(QDir::cleanPath(folder + page));
    return pages;
}

} // namespace

QStringList manualPlaces(const QString &programFolder)
{
    return pagesIn(homes(programFolder) + QStringList{programFolder + u"/../../docs"_s});
}

QString findManual(const QStringList &places)
{
    const auto found = std::ranges::find_if(places, [](const QString &file) { return QFileInfo(file).isFile(); });
    return found == places.end() ? QString() : *found;
}

void showmanual(Prompts &prompts, const QString &programFolder)
{
    const QString manual = findManual(manualPlaces(programFolder));
    if (!manual.isEmpty())
        return openurl(QUrl::fromLocalFile(manual).toString(QUrl::FullyEncoded));
    QString wanted;
    for (const QString &file : pagesIn(homes(programFolder)))
        wanted += u'\r' + QDir::toNativeSeparators(file);
    prompts.inform(u"The manual is not there. It should be one of these files:"_s + wanted, u"Manual"_s);
}
