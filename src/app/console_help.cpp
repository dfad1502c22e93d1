// SPDX-License-Identifier: MIT
#include "console_help.h"

#include "base/controls.h"
#include "output/output.h"
#include "rcon/console_completion.h"
#include "rcon/console_words.h"
#include "rcon/exchange.h"
#include "rcon/kept_history.h"
#include "rcon/learning.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "settings/ini_file.h"
#include "status_bar.h"

#include <QAction>

using namespace Qt::StringLiterals;

ConsoleHelp::ConsoleHelp(const Services &services, const Exchange &exchange, const Connecting &connecting,
                         QWidget &window)
    : QObject(&window),
      words(new ConsoleWords(services.fields, services.clock, services.ini.beside(u"molvark-words.json"_s), this)),
      learning(new Learning(services, exchange, *words, this))
{
    auto &line = *window.findChild<ComboBox *>(u"comdirect"_s);
    kept = new KeptHistory(line, *words, services.fields);
    new ConsoleCompletion(line, *words, [history = kept] { return history->lines(); });

    connect(&exchange, &Exchange::datagramcame, words, &ConsoleWords::takeDatagram);
    connect(&exchange, &Exchange::sending, words, &ConsoleWords::beginReply);
    connect(&connecting, &Connecting::statechanged, words, &ConsoleWords::takeState);
    connect(words, &ConsoleWords::told, this,
            [&output = services.output](const QString &text) { output.addmessage(text); });
    wireLearning(connecting, window);
}

void ConsoleHelp::wireLearning(const Connecting &connecting, QWidget &window)
{
    auto *item = window.findChild<QAction *>(u"mlearn"_s);
    item->setEnabled(false);
    connect(item, &QAction::triggered, learning, &Learning::mlearn_Click);
    connect(&connecting, &Connecting::connected, item, [item] { item->setEnabled(true); });
    connect(&connecting, &Connecting::disconnected, item, [item] { item->setEnabled(false); });
    connect(&connecting, &Connecting::disconnected, learning, &Learning::stop);
    connect(learning, &Learning::runningchanged, item,
            [item](bool isRunning) { item->setText(isRunning ? u"Stop l&earning"_s : u"L&earn from this server"_s); });
}

void ConsoleHelp::end()
{
    learning->stop();
}

void ConsoleHelp::tell(StatusBar &statusBar)
{
    connect(learning, &Learning::progressed, &statusBar, &StatusBar::showLearning);
}
