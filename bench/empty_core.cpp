// SPDX-License-Identifier: MIT
#include <QCoreApplication>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>

/// What any Qt Core program needs before it does something: the yardstick for the start of the one without a window.
/// It sends a datagram, by the system's own means, to the port of this machine that is its argument.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<in_port_t>(argc > 1 ? std::atoi(argv[1]) : 0));
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    const bool isSent = sendto(socket, "started", 7, 0, reinterpret_cast<const sockaddr *>(&to), sizeof to) == 7;
    close(socket);
    return isSent ? EXIT_SUCCESS : EXIT_FAILURE;
}
