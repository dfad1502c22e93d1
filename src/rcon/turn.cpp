// SPDX-License-Identifier: MIT
#include "turn.h"

#include "exchange.h"
#include "server_link.h"
#include "services.h"

qint64 Turn::left() const
{
    return services.link.exchange.untilTurn();
}

void Turn::taken() const
{
    services.link.exchange.sentBeside();
}
