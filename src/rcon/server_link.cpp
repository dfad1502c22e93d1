// SPDX-License-Identifier: MIT
#include "server_link.h"

#include "base/clock.h"
#include "udp_client.h"

ServerLink::Epoch ServerLink::epoch(const Clock &clock) const
{
    return {clock.now().date(), udpclient.generation()};
}
