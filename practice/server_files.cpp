// SPDX-License-Identifier: MIT
#include "server_files.h"

#include "wildcard.h"

#include <QList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct ConfigurationFile {
    QString name;
    bool inArchive = false;
    QStringList lines;
};

// Unsorted, as a directory on a disk is.
const QStringList maps{u"mp_toujane"_s,  u"mp_breakout"_s,  u"mp_carentan"_s,  u"mp_trainstation"_s,
                       u"mp_matmata"_s,  u"mp_dawnville"_s, u"mp_farmhouse"_s, u"mp_leningrad"_s,
                       u"mp_burgundy"_s, u"mp_downtown"_s,  u"mp_brecourt"_s,  u"mp_decoy"_s};

const QList<ConfigurationFile> &configurationFiles()
{
    static const QList<ConfigurationFile> files{
        {u"server.cfg"_s,
         false,
         {u"set sv_hostname \"Practice ^2server\""_s, u"set scr_motd \"Welcome, mind the snipers\""_s,
          u"set sv_maxclients 32"_s, u"set sv_kickbantime 300"_s}},
        {u"match.cfg"_s,
         false,
         {u"set g_gametype sd"_s, u"set scr_sd_roundlength 2"_s, u"set scr_sd_scorelimit 13"_s, u"set scr_killcam 0"_s,
          u"set scr_friendlyfire 1"_s}},
        {u"default_mp.cfg"_s, true, {u"set scr_killcam 1"_s}},
        {u"public.cfg"_s, false, {u"set g_gametype tdm"_s, u"set scr_killcam 1"_s, u"set scr_friendlyfire 0"_s}},
        {u"old.cfg.bak"_s, false, {u"set sv_hostname \"An older name\""_s}},
        {u"rifles.cfg"_s, false, {u"set scr_allow_mp40 0"_s, u"set scr_allow_thompson 0"_s}},
        {u"config_mp.cfg"_s, true, {}},
        {u"Weekend_Fun.CFG"_s, false, {u"set scr_teambalance 1"_s, u"exec public.cfg"_s}},
    };
    return files;
}

} // namespace

bool isKnownMap(const QString &map)
{
    return maps.contains(map, Qt::CaseInsensitive);
}

QString directoryListing(const QString &directory, const QString &extension, int headLines)
{
    QString text = u"Directory of %1 %2\n"_s.arg(directory, extension) + u"---------------\n"_s;
    if (headLines > 2)
        text += u'\n';
    const bool holdsMaps = directory.compare("maps/mp"_L1, Qt::CaseInsensitive) == 0;
    if (!holdsMaps || (!extension.isEmpty() && extension.compare("d3dbsp"_L1, Qt::CaseInsensitive) != 0))
        return text;
    for (const QString &map : maps)
        text += map + u".d3dbsp\n"_s;
    return text;
}

QString fileListing(const QString &pattern)
{
    QString text = u"---------------\n"_s;
    int count = 0;
    for (const ConfigurationFile &file : configurationFiles()) {
        if (!matchesWildcard(QString(pattern + u'*'), file.name))
            continue;
        text += (file.inArchive ? QString() : u"/"_s) + file.name + u'\n';
        ++count;
    }
    return text + u"%1 files listed\n"_s.arg(count);
}

std::optional<QStringList> configurationFile(const QString &name)
{
    const auto isMeant = [&name](const ConfigurationFile &file) {
        return file.name.compare(name, Qt::CaseInsensitive) == 0 ||
               file.name.compare(QString(name + u".cfg"_s), Qt::CaseInsensitive) == 0;
    };
    const auto found = std::ranges::find_if(configurationFiles(), isMeant);
    if (found == configurationFiles().end())
        return std::nullopt;
    return found->lines;
}
