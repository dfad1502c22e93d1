// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "rcon/udp_client.h"
#include "test_class.h"

#include <QNetworkDatagram>
#include <QRegularExpression>
#include <QUdpSocket>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A bare socket in the server's place.
struct FarEnd final {
    explicit FarEnd(const QHostAddress &address = QHostAddress::LocalHost, quint16 port = 0)
    {
        isBound = socket.bind(address, port, QAbstractSocket::DontShareAddress);
    }

    [[nodiscard]] quint16 port() const { return socket.localPort(); }

    QNetworkDatagram receive()
    {
        return QTest::qWaitFor([&] { return socket.hasPendingDatagrams(); }) ? socket.receiveDatagram()
                                                                             : QNetworkDatagram();
    }

    void send(const QByteArray &bytes, quint16 nearPort, const QHostAddress &to = QHostAddress::LocalHost)
    {
        QCOMPARE(socket.writeDatagram(bytes, to, nearPort), bytes.size());
    }

    QUdpSocket socket;
    bool isBound = false;
};

/// The client, bound to that far end, and the texts that arrive there.
struct NearEnd final {
    explicit NearEnd(quint16 farPort, const QString &host = u"127.0.0.1"_s)
    {
        client.setRemoteHost(host);
        client.setRemotePort(farPort);
        QObject::connect(&client, &UDPClient::DataArrival, &client, [this] {
            QByteArray text;
            client.GetData(text);
            texts.append(text);
        });
        client.Bind();
    }

    /// The port that the client is bound to, as the far end sees it.
    [[nodiscard]] quint16 portSeenBy(FarEnd &far)
    {
        client.SendData("hello");
        return static_cast<quint16>(far.receive().senderPort());
    }

    UDPClient client;
    QList<QByteArray> texts;
};

int faultOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const Fault &fault) {
        return fault.number();
    }
    return 0;
}

} // namespace

class UdpClientTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void statesAreNumberedAsTheControlsOwn()
    {
        QCOMPARE(static_cast<int>(UDPClient::Closed), 0);
        QCOMPARE(static_cast<int>(UDPClient::Open), 1);
        QCOMPARE(static_cast<int>(UDPClient::Connected), 7);
    }

    void itIsOpenFromBindToClose()
    {
        UDPClient client;
        client.setRemoteHost(u"127.0.0.1"_s);
        client.setRemotePort(28960);
        QCOMPARE(client.State(), UDPClient::Closed);
        client.Close();
        client.Bind();
        QCOMPARE(client.State(), UDPClient::Open);
        client.Close();
        client.Close();
        QCOMPARE(client.State(), UDPClient::Closed);
    }

    void sendingThroughAClosedSocketIsAFault()
    {
        UDPClient client;
        QCOMPARE(faultOf([&] { client.SendData("hello"); }), 10057);
    }

    void oneSendIsOneDatagram()
    {
        FarEnd far;
        NearEnd near(far.port());
        near.client.SendData("\xFF\x80one");
        near.client.SendData("two");
        QCOMPARE(far.receive().data(), QByteArray("\xFF\x80one"));
        QCOMPARE(far.receive().data(), QByteArray("two"));
    }

    void aDatagramThatIsTooLargeToSendIsAFault()
    {
        FarEnd far;
        NearEnd near(far.port());
        QCOMPARE(faultOf([&] { near.client.SendData(QByteArray(65508, 'x')); }), 10040);
        near.client.SendData(QByteArray(60000, 'x'));
        QCOMPARE(far.receive().data().size(), 60000);
    }

    void datagramsArriveInOrderAndWhole()
    {
        FarEnd far;
        NearEnd near(far.port());
        const quint16 port = near.portSeenBy(far);
        QList<QByteArray> expected;
        for (int number = 0; number < 200; ++number) {
            expected.append(QByteArray::number(number));
            far.send(QByteArray::number(number), port);
        }
        QTRY_COMPARE(near.texts, expected);

        // More of them than are read in one go, so that a notification has come for nothing; the next one is heard.
        far.send("another", port);
        QTRY_COMPARE(near.texts.size(), 201);
    }

    void nothingArrivesFromInsideASend()
    {
        FarEnd far;
        NearEnd near(far.port());
        far.send("early", near.portSeenBy(far));
        near.client.SendData("more");
        QCOMPARE(near.texts, QList<QByteArray>());
        QTRY_COMPARE(near.texts, QList<QByteArray>{"early"});
    }

    void aLargerDatagramGivesItsFirstPartAndAFault()
    {
        FarEnd far;
        UDPClient client;
        client.setRemoteHost(u"127.0.0.1"_s);
        client.setRemotePort(far.port());
        client.Bind();
        QList<int> faults;
        QList<QByteArray> texts;
        connect(&client, &UDPClient::DataArrival, this, [&] {
            QByteArray text;
            faults.append(faultOf([&] { client.GetData(text); }));
            texts.append(text);
        });
        client.SendData("hello");
        const auto port = static_cast<quint16>(far.receive().senderPort());
        far.send(QByteArray(8192, 'a'), port);
        far.send(QByteArray(8192, 'b') + 'c', port);
        far.send("d", port);
        QTRY_COMPARE(texts, QList<QByteArray>({QByteArray(8192, 'a'), QByteArray(8192, 'b'), "d"}));
        QCOMPARE(faults, QList<int>({0, 10040, 0}));
    }

    void datagramsFromAnotherPortAreDropped()
    {
        FarEnd far;
        FarEnd stranger;
        NearEnd near(far.port());
        const quint16 port = near.portSeenBy(far);
        stranger.send("forged", port);
        far.send("genuine", port);
        stranger.send("forged", port);
        far.send("the end", port);
        QTRY_COMPARE(near.texts, QList<QByteArray>({"genuine", "the end"}));
    }

    void datagramsFromAnotherAddressAreDropped()
    {
        FarEnd far;
        FarEnd stranger(QHostAddress(u"127.0.0.2"_s), far.port());
        if (!stranger.isBound)
            QSKIP("this system has no address 127.0.0.2");
        NearEnd near(far.port());
        const quint16 port = near.portSeenBy(far);
        stranger.send("forged", port);
        far.send("genuine", port);
        QTRY_COMPARE(near.texts, QList<QByteArray>{"genuine"});
    }

    void aClosedFarPortIsNoFault()
    {
        auto far = std::make_unique<FarEnd>();
        NearEnd near(far->port());
        const quint16 farPort = far->port();
        const quint16 nearPort = near.portSeenBy(*far);
        far.reset();
        for (int send = 0; send < 3; ++send) {
            QCOMPARE(faultOf([&] { near.client.SendData("anybody there?"); }), 0);
            QCoreApplication::processEvents();
        }
        QCOMPARE(near.client.State(), UDPClient::Open);
        QCOMPARE(near.texts, QList<QByteArray>());

        FarEnd reopened(QHostAddress::LocalHost, farPort);
        QVERIFY(reopened.isBound);
        reopened.send("here again", nearPort);
        QTRY_COMPARE(near.texts, QList<QByteArray>{"here again"});
    }

    void aDatagramArrivesInsideTheArrivalOfAnother()
    {
        FarEnd far;
        NearEnd near(far.port());
        const quint16 port = near.portSeenBy(far);
        bool cameMeanwhile = false;
        connect(
            &near.client, &UDPClient::DataArrival, this,
            [&] {
                far.send("second", port);
                cameMeanwhile = QTest::qWaitFor([&] { return near.texts.size() == 2; });
            },
            Qt::SingleShotConnection);
        far.send("first", port);
        QTRY_COMPARE(near.texts, QList<QByteArray>({"first", "second"}));
        QVERIFY(cameMeanwhile);
    }

    void closingInsideAnArrivalDropsWhatIsPending()
    {
        FarEnd far;
        NearEnd near(far.port());
        const quint16 port = near.portSeenBy(far);
        connect(&near.client, &UDPClient::DataArrival, &near.client, &UDPClient::Close, Qt::SingleShotConnection);
        far.send("first", port);
        far.send("second", port);
        QTRY_COMPARE(near.client.State(), UDPClient::Closed);

        near.client.Bind();
        far.send("anew", near.portSeenBy(far));
        QTRY_COMPARE(near.texts, QList<QByteArray>({"first", "anew"}));
    }

    void bindingAgainServesTheNewFarEndAlone()
    {
        FarEnd old;
        FarEnd far;
        NearEnd near(old.port());
        near.client.setRemotePort(far.port());
        near.client.Bind();
        const quint16 port = near.portSeenBy(far);
        old.send("old", port);
        far.send("new", port);
        QTRY_COMPARE(near.texts, QList<QByteArray>{"new"});
    }

    void aHostNameIsLookedUp()
    {
        FarEnd far;
        NearEnd near(far.port(), u"localhost"_s);
        far.send("from the local host", near.portSeenBy(far));
        QTRY_COMPARE(near.texts, QList<QByteArray>{"from the local host"});
    }

    void anAddressOfTheNewerKindWorksToo()
    {
        FarEnd far(QHostAddress::LocalHostIPv6);
        if (!far.isBound)
            QSKIP("this system has no address ::1");
        NearEnd near(far.port(), u"::1"_s);
        near.client.SendData("hello");
        const QNetworkDatagram hello = far.receive();
        QCOMPARE(hello.data(), QByteArray("hello"));
        far.send("hello yourself", static_cast<quint16>(hello.senderPort()), QHostAddress::LocalHostIPv6);
        QTRY_COMPARE(near.texts, QList<QByteArray>{"hello yourself"});
    }

    void anUnknownHostNameIsAFaultOfBinding()
    {
        UDPClient client;
        client.setRemoteHost(u"no-such-server.invalid"_s);
        client.setRemotePort(28960);
        QCOMPARE(faultOf([&] { client.Bind(); }), 11001);
        QCOMPARE(client.State(), UDPClient::Closed);
    }

    void aPortThatIsNoneIsAFaultOfBinding_data()
    {
        QTest::addColumn<qint32>("port");
        QTest::addColumn<int>("fault");
        QTest::newRow("0") << 0 << 10049;
        QTest::newRow("the first") << 1 << 0;
        QTest::newRow("the last") << 65535 << 0;
        QTest::newRow("beyond the last") << 65536 << 10049;
        QTest::newRow("negative") << -1 << 10049;
    }

    void aPortThatIsNoneIsAFaultOfBinding()
    {
        QFETCH(qint32, port);
        QFETCH(int, fault);
        UDPClient client;
        client.setRemoteHost(u"127.0.0.1"_s);
        client.setRemotePort(port);
        QCOMPARE(faultOf([&] { client.Bind(); }), fault);
        QCOMPARE(client.State(), fault == 0 ? UDPClient::Open : UDPClient::Closed);
    }
};

GUILESS_TEST(UdpClientTest)
#include "tst_udp_client.moc"
