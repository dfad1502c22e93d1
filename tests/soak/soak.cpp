// SPDX-License-Identifier: MIT
// Lets the program read a full server's list of players many thousand times over a bad line, and tells how much memory
// it has after the first tenth and at the end. Usage: soak [POPULATES], which are ten at
// least. Ends with 1 when they differ too much.
#include "app/composition.h"
#include "base/application.h"
#include "base/clock.h"
#include "practice/practice_server.h"
#include "resident_memory.h"
#include "scripted_prompts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr double mostGrowth = 5; // percent

/// A clock that goes on by a twentieth of a second at each reading: a second is twenty turns of the event loop.
class SoakClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override
    {
        milliseconds += 50;
        return start.addMSecs(milliseconds % (12 * 3'600'000)); // never past midnight
    }
    void rest(double) const override { QCoreApplication::processEvents(); }

private:
    QDateTime start{QDate(2006, 3, 5), QTime(6, 0)};
    mutable qint64 milliseconds = 0;
};

PracticeOptions fullServer()
{
    PracticeOptions options;
    options.players = 64;
    options.quirks = true;
    options.mapLoadMs = 0;
    return options;
}

QByteArray settings()
{
    // Unwatched: a list with rows that were torn on the way is given up after some tries, without boxes.
    return "[options]\r\nautoqplayer=1\r\nautokick999=0\r\n";
}

class Soak final {
public:
    Soak() : parts(prompts, clock, QDir::currentPath() + u"/molvark.ini"_s)
    {
        if (!server.listen())
            qFatal("no port for the server");
        static_cast<Application *>(qApp)->setPrompts(&prompts);
        parts.window.show();
        parts.window.Form_Load();
        find<QComboBox>(u"comserver"_s)->setEditText(u"127.0.0.1"_s);
        find<QComboBox>(u"comport"_s)->setEditText(QString::number(server.port()));
        find<QLineEdit>(u"txtPWD"_s)->setText(u"practice"_s);
        find<QAbstractButton>(u"cmdconnect"_s)->click();
        if (!parts.session.connected)
            qFatal("no connection");
        timer->setInterval(3'600'000);
        fill();
    }
    ~Soak()
    {
        parts.session.closing = true;
        static_cast<Application *>(qApp)->setPrompts(nullptr);
    }
    Q_DISABLE_COPY_MOVE(Soak)

    /// Reads the list once; returns the number of its rows.
    int populate(int round)
    {
        server.setDatagramSize(QList<int>{400, 700, 1000, 1400}.at(round % 4));
        server.setLoss(round % 3 == 0 ? 10 : 0);
        server.setReorder(round % 5 == 0);
        server.game().tick();
        fill();
        find<QAbstractButton>(u"chkremcol"_s)->setChecked(round % 2 == 0);
        const bool query = round % 7 == 0;
        find<QAbstractButton>(u"chkplyq"_s)->setChecked(query);
        find<QComboBox>(u"complayersort"_s)->setCurrentIndex(round % 8);
        server.forgetRequests();
        QMetaObject::invokeMethod(timer, "timeout");
        if (!server.commands().contains(query ? "getstatus" : "status"))
            qFatal("populate %d did not ask the server", round); // and the rows are those of an earlier one
        prompts.takeBoxes();
        return view->model()->rowCount();
    }

    /// Some went meanwhile; others take their places, so that the server stays full.
    void fill()
    {
        for (int slot = 0; slot < 64; ++slot) {
            if (server.game().players().at(slot))
                continue;
            Player player;
            player.slot = slot;
            player.guid = QString::number(100'000 + slot);
            player.name = u"^%1Guest in slot %2"_s.arg(slot % 10).arg(slot);
            player.address = u"10.0.0.%1:28960"_s.arg(slot);
            server.game().players().put(player);
        }
    }

private:
    template <typename Object>
    [[nodiscard]] Object *find(const QString &name)
    {
        return parts.window.findChild<Object *>(name);
    }

    PracticeServer server{fullServer()};
    SoakClock clock;
    ScriptedPrompts prompts;
    Composition parts;
    QTimer *timer = find<QTimer>(u"tmrplayer"_s);
    QTableView *view = find<QTableView>(u"msfplayers"_s);
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const int populates = argc > 1 ? QByteArray(argv[1]).toInt() : 10'000;
    const int tenth = populates / 10;
    if (tenth < 1) {
        std::fputs("Usage: soak [POPULATES], which are ten at least\n", stderr);
        return 2;
    }
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    QFile ini(u"molvark.ini"_s);
    if (!ini.open(QIODevice::WriteOnly) || ini.write(settings()) < 0)
        qFatal("the settings file cannot be prepared");
    ini.close();

    Soak soak;
    qint64 first = 0;
    qint64 rows = 0;
    int whole = 0;
    for (int round = 1; round <= populates; ++round) {
        const int listed = soak.populate(round);
        rows += listed;
        whole += listed == 64 ? 1 : 0;
        if (round == tenth)
            first = residentKiB();
        if (round % tenth == 0)
            std::printf("%6d populates: %lld KiB\n", round, static_cast<long long>(residentKiB()));
        std::fflush(stdout);
    }
    const qint64 last = residentKiB();
    const double growth = 100.0 * static_cast<double>(last - first) / static_cast<double>(first);
    std::printf("%lld rows; %d lists were whole, %d torn or lost on the way\n", static_cast<long long>(rows), whole,
                populates - whole);
    std::printf("%+.2f %% after the first %d (at most %.0f %%)\n", growth, tenth, mostGrowth);
    return growth < mostGrowth && growth > -mostGrowth && whole > populates / 4 ? 0 : 1;
}
