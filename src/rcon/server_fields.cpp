// SPDX-License-Identifier: MIT
#include "server_fields.h"

void ServerFields::set(const QString &server, const QString &port, const QString &password)
{
    serverText = server;
    portText = port;
    passwordText = password;
    emit changed();
}
