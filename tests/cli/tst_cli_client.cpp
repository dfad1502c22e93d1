// SPDX-License-Identifier: MIT
#include "cli/rcon_client.h"
#include "practice/practice_server.h"
#include "test_class.h"

#include <QTimer>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The road to the server of the program without a window.
class CliClientTest final : public QObject {
    Q_OBJECT

private slots:
    // The last datagram that comes is a bare header, of which nothing was left out.
    void whatWasLeftOutIsNotForgotten()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answer("foo", {});
        int batches = 80; // of 64,000 characters, of which 4 MB are kept
        QTimer flood;
        connect(&flood, &QTimer::timeout, &server, [&] {
            for (int datagram = 0; datagram < 8; ++datagram)
                server.sendRaw("\xFF\xFF\xFF\xFFprint\n" + QByteArray(8000, 'x'));
            server.sendRaw("\xFF\xFF\xFF\xFFprint\n");
            if (--batches == 0)
                flood.stop();
        });
        connect(&server, &PracticeServer::requested, &flood, [&flood] { flood.start(0); });

        RconClient client;
        std::optional<RconReply> reply;
        connect(&client, &RconClient::answered, this, [&reply](const RconReply &come) { reply = come; });
        client.open(u"127.0.0.1"_s, server.port());
        client.ask(rconQuestion(u"foo"_s, u"practice"_s, 1, 3000ms));
        QTRY_VERIFY_WITH_TIMEOUT(reply.has_value(), 30'000);
        QCOMPARE(reply->text.size(), 4 * 1024 * 1024);
        QVERIFY(reply->isEndless);
    }
};

GUILESS_TEST(CliClientTest)
#include "tst_cli_client.moc"
