// SPDX-License-Identifier: MIT
// Floods the program with datagrams of its own server and of a stranger, clicks into its window meanwhile, and tells
// how long each click took to be answered and what became of the memory. Usage: flood [SECONDS]. Ends with 1 when a
// bound is broken.
#include "resident_memory.h"
#include "victim.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <atomic>
#include <cstdio>
#include <future>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int perSecond = 50'000;
constexpr qint64 longestAnswer = 200; // milliseconds
constexpr qint64 mostLeft = 10;       // percent of the memory before

/// A hostile server in a thread of its own, which can flood whoever asked it last.
class FloodingServer final {
public:
    FloodingServer() : thread(QThread::create([this] { serve(); })) { thread->start(); }
    ~FloodingServer()
    {
        thread->quit();
        thread->wait();
    }
    Q_DISABLE_COPY_MOVE(FloodingServer)

    [[nodiscard]] quint16 port() { return ready.get_future().get(); }
    /// Floods for so long, then stops by itself.
    void flood(const QByteArray &datagram_, HostileServer::Sender sender_, qint64 milliseconds)
    {
        datagram = datagram_;
        sender = sender_;
        sent = 0;
        duration = milliseconds;
    }
    [[nodiscard]] bool isFlooding() const { return duration > 0; }

    std::atomic<qint64> sent = 0;

private:
    void serve()
    {
        HostileServer server;
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        QElapsedTimer elapsed;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            if (duration <= 0) {
                elapsed.invalidate();
                return;
            }
            if (!elapsed.isValid())
                elapsed.start();
            for (const qint64 due = elapsed.elapsed() * perSecond / 1000; sent < due; ++sent)
                server.send(datagram, sender);
            if (elapsed.elapsed() >= duration)
                duration = 0;
        });
        timer.start(1);
        ready.set_value(server.port());
        QEventLoop().exec();
    }

    std::promise<quint16> ready;
    QByteArray datagram;
    HostileServer::Sender sender = HostileServer::Sender::Itself;
    std::atomic<qint64> duration = 0; ///< of the flood that is going on
    std::unique_ptr<QThread> thread;  ///< last, because it uses the others
};

/// Clicks a check box every tenth of a second and notes the milliseconds until the box has been painted anew. As when a
/// person clicks, it is the window system that has the click until the thread of the windows takes it from there.
class Clicker final : public QObject {
public:
    explicit Clicker(QAbstractButton *box)
        : window(box->window()->windowHandle()),
          place(box->mapTo(box->window(), QPoint(10, box->height() / 2))),
          thread(QThread::create([this] { work(); }))
    {
        box->installEventFilter(this);
        clock.start();
        thread->start();
    }
    ~Clicker() override { end(); }
    Q_DISABLE_COPY_MOVE(Clicker)

    /// Clicks no more; returns how long each answer took, and how long a click has been waiting that has none.
    QList<qint64> end()
    {
        thread->quit();
        while (!thread->isFinished())
            QCoreApplication::processEvents(); // the last click must be taken, or the thread would wait for ever
        if (clickedAt >= 0)
            answers.append(clock.elapsed() - clickedAt);
        return answers;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonRelease)
            released = true;
        if (event->type() == QEvent::Paint && released.exchange(false)) {
            answers.append(clock.elapsed() - clickedAt);
            clickedAt = -1;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void work()
    {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
            if (clickedAt >= 0)
                return; // the last one has not been answered yet
            clickedAt = clock.elapsed();
            QTest::mouseClick(window, Qt::LeftButton, {}, place); // from another thread: queued by the window system
        });
        timer.start(100);
        QEventLoop().exec();
    }

    QWindow *window;
    QPoint place;
    QList<qint64> answers;
    QElapsedTimer clock;
    std::atomic<qint64> clickedAt = -1;
    std::atomic_bool released = false;
    std::unique_ptr<QThread> thread;
};

void passMilliseconds(qint64 milliseconds)
{
    QTimer end;
    end.setSingleShot(true);
    end.start(static_cast<int>(milliseconds));
    while (end.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

struct Flood {
    const char *what;
    QByteArray text;       ///< of each datagram
    bool gathered = false; ///< or shown in the pane
    HostileServer::Sender sender = HostileServer::Sender::Itself;
};

/// One flood; true when all bounds were kept.
bool endure(const Flood &flood, qint64 seconds)
{
    FloodingServer server;
    Program program(keepsOutput);
    program.start();
    program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(4); // the box is painted only where it is seen
    program.setText(u"comserver"_s, u"127.0.0.1"_s);
    program.setText(u"comport"_s, QString::number(server.port()));
    program.setText(u"txtPWD"_s, u"practice"_s);
    program.click(u"cmdconnect"_s);
    if (!program.session.connected)
        qFatal("no connection");
    program.session.rconcollect = flood.gathered;
    qint64 arrived = 0;
    const qint64 before = residentKiB();

    qint64 most = before;
    QList<qint64> answers;
    {
        Clicker clicker(program.find<QAbstractButton>(u"chkremcol"_s));
        QObject::connect(&program.udpclient, &UDPClient::DataArrival, &clicker, [&] { ++arrived; });
        server.flood(printDatagram(flood.text), flood.sender, seconds * 1000);
        while (server.isFlooding()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            most = std::max(most, residentKiB());
        }
        passMilliseconds(500);
        answers = clicker.end();
    }
    program.session.rconcollect = true;
    program.exchange.sendinfo(u"status"_s, true); // begins a new reply
    program.output.clearrcon();
    passMilliseconds(500);
    const qint64 after = residentKiB();

    const qint64 slowest = answers.isEmpty() ? -1 : *std::ranges::max_element(answers);
    const auto number = [](qint64 value) { return static_cast<long long>(value); };
    std::printf("%-28s %7lld sent, %7lld read; %3lld clicks, slowest %4lld ms; KiB: %lld before, %lld at most, %lld "
                "cleared\n",
                flood.what, number(server.sent), number(arrived), number(answers.size()), number(slowest),
                number(before), number(most), number(after));
    std::fflush(stdout);
    const bool enough = server.sent >= perSecond * seconds * 9 / 10 && answers.size() >= 2 * seconds;
    const bool isStranger = flood.sender != HostileServer::Sender::Itself;
    return enough && (arrived == 0) == isStranger && slowest <= longestAnswer &&
           after * 100 <= before * (100 + mostLeft);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const qint64 seconds = argc > 1 ? QByteArray(argv[1]).toLongLong() : 5;
    const QByteArray row = "  3     7   48 123456 Ann            50 10.0.0.1:28960 1234 25000\n";
    const QByteArray page = row.repeated(20);
    bool kept = true;
    for (const Flood &flood : {Flood{"rows, gathered", row, true}, Flood{"rows, in the RCON pane", row},
                               Flood{"pages of rows, gathered", page, true}, Flood{"pages of rows, in the pane", page},
                               Flood{"rows, from a stranger", row, false, HostileServer::Sender::AnotherPort}})
        kept = endure(flood, seconds) && kept;
    return kept ? 0 : 1;
}
