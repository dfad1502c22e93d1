// SPDX-License-Identifier: MIT
#include "dvar_table.h"

#include "practice_options.h"

#include <QStringList>
#include <QStringView>

using namespace Qt::StringLiterals;

namespace {

// One variable a line: flags, name, lowest..highest ("-" for any text), and the rest of the line is its value. "%1"
// stands for the slots of the largest server.
const QString gameTable = uR"(A ai_showNodes 0..1 0
C aim_accel_turnrate_enabled 0..1 1
C aim_automelee_range - 128
C aim_lockon_enabled 0..1 1
C aim_slowdown_enabled 0..1 1
C aim_target_sentient_radius - 10
C aim_turnrate_pitch - 90
C aim_turnrate_yaw - 260
R arch - linux-i386
C bg_aimSpreadMoveSpeedThreshold - 11
C bg_bobAmplitudeDucked - 0.0075
C bg_bobAmplitudeProne - 0.03
C bg_bobAmplitudeStanding - 0.007
C bg_bobMax - 8
C bg_debugWeaponAnim 0..1 0
C bg_fallDamageMaxHeight - 480
C bg_fallDamageMinHeight - 256
C bg_foliagesnd_fastinterval - 500
C bg_foliagesnd_maxspeed - 180
C bg_foliagesnd_minspeed - 40
C bg_foliagesnd_resetinterval - 500
C bg_foliagesnd_slowinterval - 1500
C bg_ladder_yawcap - 100
C bg_maxGrenadeIndicatorSpeed - 20
C bg_prone_softyawedge 0..1 1
C bg_prone_yawcap - 85
C bg_swingSpeed - 0.2
C bg_viewKickMax - 90
C bg_viewKickMin - 5
C bg_viewKickRandom - 0.4
C bg_viewKickScale - 0.2
R bot_enabled 0..1 0
A cg_brass 0..1 1
A cg_chatHeight 0..8 8
A cg_chatTime - 12000
A cg_crosshairAlpha - 1
A cg_crosshairDynamic 0..1 0
A cg_crosshairEnemyColor 0..1 1
A cg_cursorHints 0..4 4
C cg_debug_overlay_viewport 0..1 0
A cg_descriptiveText 0..1 1
A cg_drawCrosshair 0..1 1
A cg_drawCrosshairNames 0..1 1
A cg_drawFPS 0..4 0
A cg_drawGun 0..1 1
A cg_drawHealth 0..1 0
A cg_drawLagometer 0..1 0
A cg_drawMantleHint 0..1 1
A cg_drawShellshock 0..1 1
A cg_drawTurretCrosshair 0..1 1
C cg_errorDecay - 100
C cg_fov - 80
C cg_fovMin - 10
C cg_fovScale - 1
A cg_gameBoldMessageWidth - 390
A cg_gameMessageWidth - 455
A cg_headIconMinScreenRadius - 0.015
A cg_hintFadeTime - 100
A cg_hudChatPosition - 5 204
A cg_hudCompassSize - 1
A cg_hudDamageIconHeight - 64
A cg_hudDamageIconTime - 2000
A cg_hudDamageIconWidth - 128
A cg_hudGrenadeIconHeight - 25
A cg_hudGrenadeIconMaxRange - 256
A cg_hudGrenadeIconWidth - 25
A cg_hudStanceHintPrints 0..1 0
A cg_hudVotePosition - 5 220
A cg_invalidCmdHintBlinkInterval - 600
A cg_marks_ents_player_only 0..1 1
A cg_nopredict 0..1 0
U cg_predictItems 0..1 1
A cg_scoreboardBannerHeight - 35
A cg_scoreboardHeight - 435
A cg_scoreboardItemHeight - 18
A cg_scoreboardPingText 0..1 0
A cg_scoreboardWidth - 500
A cg_subtitles 0..1 1
A cg_teamChatsOnly 0..1 0
A cg_tracerChance - 0.2
A cg_tracerLength - 160
A cg_tracerSpeed - 7500
A cg_tracerWidth - 4
A cg_voiceIconSize - 0
A cg_weaponCycleDelay - 0
A cg_youInKillCamSize - 8
A cl_allowDownload 0..1 1
A cl_anglespeedkey - 1.5
R cl_anonymous 0..1 0
A cl_avidemo - 0
C cl_bypassMouseInput 0..1 0
A cl_connectTimeout - 200
A cl_debugMessageKey 0..1 0
A cl_forceavidemo 0..1 0
A cl_freelook 0..1 1
R cl_ingame 0..1 0
A cl_maxpackets 15..100 30
A cl_maxppf - 5
A cl_motd 0..1 1
A cl_mouseAccel - 0
C cl_nodelta 0..1 0
A cl_packetdup 0..5 1
R cl_paused 0..1 0
A cl_pitchspeed - 140
R cl_punkbuster 0..1 0
R cl_running 0..1 0
A cl_serverStatusResendTime - 750
A cl_showmouserate 0..1 0
A cl_showServerCommands 0..1 0
A cl_showTimeDelta 0..1 0
A cl_talking 0..1 0
A cl_timeout - 40
A cl_voice 0..1 1
A cl_wwwDownload 0..1 1
A cl_yawspeed - 140
C com_animCheck 0..1 0
A com_hunkMegs 1..512 160
A com_introPlayed 0..1 0
A com_maxfps 0..1000 85
R com_playerProfile - practice
A com_recommendedSet 0..1 0
A con_default_console_filter - *
A con_errormessagetime - 8
A con_gameMsgWindow0FadeInTime - 0.25
A con_gameMsgWindow0FadeOutTime - 0.5
A con_gameMsgWindow0LineCount 1..9 4
A con_gameMsgWindow0MsgTime - 5
A con_gameMsgWindow1FadeInTime - 0.25
A con_gameMsgWindow1FadeOutTime - 0.5
A con_gameMsgWindow1LineCount 1..9 5
A con_gameMsgWindow1MsgTime - 8
A con_minicon 0..1 0
A con_miniconlines 0..100 5
A con_miniconTime - 4
A con_typewriterColorBase - 1 1 1
A con_typewriterPrintSpeed - 50
I dedicated 0..2 2
A developer 0..2 0
A developer_script 0..1 0
A dynEnt_active 0..1 1
A fixedtime - 0
I fs_basepath - /srv/cod2
I fs_cdpath -
I fs_copyfiles 0..1 0
A fs_debug 0..2 0
SI fs_game -
I fs_homepath - /home/cod2/.callofduty2
A fs_ignoreLocalized 0..1 0
I fs_restrict 0..1 0
SA g_allowVote 0..1 1
SA g_antilag 0..1 1
A g_banIPs -
C g_clonePlayerMaxVelocity - 80
A g_deadChat 0..1 0
C g_debugBullets 0..6 0
C g_debugDamage 0..1 0
C g_dropForwardSpeed - 10
C g_dropHorzSpeedBase - 100
C g_dropUpSpeedBase - 10
C g_dumpAnims - -1
A g_friendlyfireDist - 256
A g_friendlyNameDist - 15000
SL g_gametype - dm
C g_gravity - 800
A g_inactivity - 0
C g_knockback - 1000
A g_listEntity 0..1 0
A g_log - games_mp.log
A g_logSync 0..1 0
C g_mantleBlockTimeBuffer - 500
C g_maxDroppedWeapons 2..32 16
A g_motd -
A g_no_script_spam 0..1 0
C g_objectiveTimeLimit - 0
A g_oldVoting 0..1 1
A g_password -
C g_playerCollisionEjectSpeed - 25
A g_ScoresBanner_Allies - mpflag_american
A g_ScoresBanner_Axis - mpflag_german
A g_ScoresBanner_None - mpflag_none
A g_ScoresBanner_Spectators - mpflag_spectator
C g_smoothClients 0..1 1
C g_speed - 190
C g_synchronousClients 0..1 0
A g_TeamColor_Allies - 0.5 0.5 1
A g_TeamColor_Axis - 1 0.5 0.5
A g_TeamName_Allies - GAME_ALLIES
A g_TeamName_Axis - GAME_AXIS
C g_useholdspawndelay - 500
C g_useholdtime - 0
A g_voiceChatTalkingDuration - 500
A g_voteAbstainWeight - 0.5
A g_weaponAmmoPools 0..1 0
R gamedate - May 1 2006
SR gamename - Call of Duty 2
C inertiaAngle - 0
C inertiaDebug 0..1 0
C inertiaMax - 50
C jump_height - 39
C jump_ladderPushVel - 128
C jump_slowdownEnable 0..1 1
C jump_spreadAdd - 64
C jump_stepSize - 18
A loc_forceEnglish 0..1 0
A loc_language 0..14 0
A loc_translate 0..1 1
A loc_warnings 0..1 0
A loc_warningsAsErrors 0..1 0
A logfile 0..2 0
C m_filter 0..1 0
C mantle_check_angle - 60
C mantle_check_radius - 0.1
C mantle_check_range - 20
C mantle_debug 0..1 0
C mantle_enable 0..1 1
C mantle_view_yawcap - 60
SR mapname - mp_toujane
R monkeytoy 0..1 1
C motionTrackerSweepAngle - 90
U name - Practice Server
I net_ip - localhost
A net_lanauthorize 0..1 0
I net_noipx 0..1 0
I net_noudp 0..1 0
I net_port 0..65535 28960
A net_profile 0..2 0
A net_qport - 0
A net_showprofile 0..3 0
I net_socksEnabled 0..1 0
I net_socksPassword -
I net_socksPort 0..65535 1080
I net_socksServer -
I net_socksUsername -
A nextmap -
C nightVisionDisableEffects 0..1 0
A packetDebug 0..1 0
C player_adsExitDelay - 0
C player_backSpeedScale - 0.7
C player_breath_fire_delay - 0
C player_breath_gasp_lerp - 6
C player_breath_hold_time - 4.5
C player_breath_snd_delay - 1
C player_dmgtimer_flinchTime - 500
C player_dmgtimer_maxTime - 750
C player_dmgtimer_minScale - 0
C player_dmgtimer_stumbleTime - 500
C player_dmgtimer_timePerPoint - 100
C player_footstepsThreshhold - 0
C player_meleeHeight - 10
C player_meleeRange - 64
C player_meleeWidth - 10
C player_moveThreshhold - 10
C player_scopeExitOnDamage 0..1 0
C player_spectateSpeedScale - 1
C player_strafeAnimCosAngle - 0.5
C player_strafeSpeedScale - 0.8
C player_toggleBinoculars 0..1 1
C player_turnAnims 0..1 0
C player_view_pitch_down - 85
C player_view_pitch_up - 85
C player_viewRateScale - 1
SR protocol 0..999 118
A r_autopriority 0..1 0
A r_dedicated 0..1 1
A rate 1000..25000 5000
A rcon_address -
A rcon_password -
A scr_allow_bar - 1
A scr_allow_bren - 1
A scr_allow_enfield - 1
A scr_allow_enfieldsniper - 1
A scr_allow_fraggrenades - 1
A scr_allow_g43 - 1
A scr_allow_greasegun - 1
A scr_allow_kar98k - 1
A scr_allow_kar98ksniper - 1
A scr_allow_m1carbine - 1
A scr_allow_m1garand - 1
A scr_allow_mp40 - 1
A scr_allow_mp44 - 1
A scr_allow_nagant - 1
A scr_allow_nagantscoped - 1
A scr_allow_nagantsniper - 1
A scr_allow_pps42 - 1
A scr_allow_ppsh - 1
A scr_allow_shotgun - 1
A scr_allow_smokegrenades - 1
A scr_allow_springfield - 1
A scr_allow_sten - 1
A scr_allow_svt40 - 1
A scr_allow_thompson - 1
A scr_allow_vote - 1
A scr_bel_scorelimit - 100
A scr_bel_timelimit - 30
A scr_ctf_scorelimit - 5
A scr_ctf_timelimit - 30
A scr_dm_scorelimit - 50
A scr_dm_timelimit - 30
A scr_drawfriend - 1
A scr_forcerespawn - 0
A scr_freelook - 1
SA scr_friendlyfire - 0
A scr_hq_scorelimit - 450
A scr_hq_timelimit - 30
SA scr_killcam - 1
A scr_motd -
A scr_sd_bombtimer - 60
A scr_sd_graceperiod - 15
A scr_sd_roundlength - 4
A scr_sd_roundlimit - 0
A scr_sd_scorelimit - 10
A scr_sd_timelimit - 0
A scr_spectateenemy - 1
A scr_spectatefree - 0
A scr_tdm_scorelimit - 100
A scr_tdm_timelimit - 30
A scr_teambalance - 0
A sensitivity - 5
SR shortversion - 1.3
A showdrop 0..1 0
A showpackets 0..1 0
C stopspeed - 100
SA sv_allowAnonymous 0..1 0
A sv_allowDownload 0..1 1
A sv_cheats 0..1 0
A sv_connectTimeout 0..1800 200
A sv_debugRate 0..1 0
A sv_debugReliableCmds 0..1 0
SA sv_floodProtect 0..1 1
A sv_fps 10..1000 20
SA sv_hostname - CoD2Host
R sv_keywords -
A sv_kickBanTime 0..3600 300
A sv_mapRotation -
A sv_mapRotationCurrent -
SAL sv_maxclients 1..%1 20
SA sv_maxPing 0..999 0
SA sv_maxRate 0..25000 0
SA sv_minPing 0..999 0
A sv_packet_info 0..1 0
A sv_padPackets 0..1000 0
R sv_paused 0..1 0
SA sv_privateClients 0..64 0
A sv_privatePassword -
SR sv_punkbuster 0..1 0
SA sv_pure 0..1 1
A sv_reconnectlimit 0..1800 3
R sv_referencedIwdNames - main/iw_13 main/iw_12 main/localized_english_iw11
R sv_referencedIwds - -1840931034 1204736914 -1471002583
R sv_running 0..1 1
R sv_serverid 0..99999 1
A sv_showAverageBPS 0..1 0
A sv_showCommands 0..1 0
A sv_timeout 0..1800 40
SA sv_voice 0..1 0
A sv_voiceQuality 0..9 1
A sv_wwwBaseURL -
A sv_wwwDlDisconnected 0..1 0
A sv_wwwDownload 0..1 0
A sv_zombietime 0..1800 2
A sys_configureGHz - 2.39981
R sys_cpuGHz - 2.39981
R sys_cpuName - GenuineIntel
R sys_SSE 0..1 1
R sys_sysMB 128..16384 4096
R systemtime - 0
C timescale - 1
A ui_allow_classchange 0..1 0
A ui_allowvote 0..1 1
A ui_ctf_scorelimit - 5
A ui_ctf_timelimit - 30
A ui_dm_scorelimit - 50
A ui_dm_timelimit - 30
A ui_friendlyfire 0..3 0
A ui_hq_scorelimit - 450
A ui_hq_timelimit - 30
A ui_killcam 0..1 1
A ui_maxclients 1..%1 32
A ui_netGametypeName - dm
A ui_sd_roundlimit - 0
A ui_sd_scorelimit - 10
A ui_spectateenemy 0..1 1
A ui_tdm_scorelimit - 100
A ui_tdm_timelimit - 30
A ui_teambalance 0..1 0
R username - cod2
R version - CoD2 MP 1.3 build pc_1.3_1_1 Mon May 01 2006 05:05:43PM linux-i386
A voice_deadChat 0..1 0
A voice_global 0..1 0
A voice_localEcho 0..1 0
A winvoice_mic_reclevel - 65535
A winvoice_mic_scaler - 1
)"_s;

const QString hobTable = uR"(A scr_hob_announceSpawnCampers - 1
A scr_hob_dropWeapon - 1
A scr_hob_dynamicLimitBombs - 0
A scr_hob_dynamicLimitFlags - 0
A scr_hob_dynamicLimitWeapons - 0
A scr_hob_enableSpawnProtection - 1
A scr_hob_respawntime - 15
A scr_hob_riflePercentage - 100
A scr_hob_scorelimit - 200
A scr_hob_shellshock - 1
A scr_hob_showObituary - 1
A scr_hob_smgPercentage - 50
A scr_hob_sniperPercentage - 10
A scr_hob_supportPercentage - 20
A scr_hob_timelimit - 30
A scr_hob_trip - 1
)"_s;

std::optional<Dvar::Range> readRange(const QString &text)
{
    const QStringList bounds = text.split(u".."_s);
    if (bounds.size() != 2)
        return std::nullopt;
    return Dvar::Range{bounds.at(0).toInt(), bounds.at(1).toInt()};
}

Dvar readDvar(const QString &line)
{
    const QString value = line.section(u' ', 3);
    return {line.section(u' ', 1, 1), line.section(u' ', 0, 0), value, value, readRange(line.section(u' ', 2, 2))};
}

QList<Dvar> readTable(const QString &table)
{
    QList<Dvar> dvars;
    for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts))
        dvars.append(readDvar(line));
    return dvars;
}

} // namespace

QList<Dvar> gameDvars()
{
    return readTable(gameTable.arg(PracticeOptions::playerLimits.highest));
}

QList<Dvar> hobDvars()
{
    return readTable(hobTable);
}
