// SPDX-License-Identifier: MIT
#include "book/time_plot.h"
#include "book_hands.h"

#include <QFile>
#include <QImage>
#include <QMouseEvent>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

/// The player book at the page of the servers.
struct Servers final : BookHands {
    Servers() : BookHands(keepsBook)
    {
        open();
        showPage(1);
    }

    void populateWith(int players)
    {
        for (int slot = 0; slot < 8; ++slot) {
            server.game().players().remove(slot);
            if (slot < players)
                put({somebody(slot, u"Player%1"_s.arg(slot))});
        }
        populate();
        if (!QTest::qWaitFor([this] { return !plot()->isEmpty(); }))
            failTest(u"nothing is plotted"_s);
    }
    [[nodiscard]] TimePlot *plot() const { return find<TimePlot>("pltbookserver"); }
    [[nodiscard]] QString figures() const { return plot()->accessibleDescription(); }
    void pointAt(QPoint place) const
    {
        QMouseEvent move(QEvent::MouseMove, place, plot()->mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(plot(), &move);
    }
    void key(Qt::Key key) const { QTest::keyClick(plot(), key); }
};

/// The time zone of this process as long as it lives.
class TimeZone final {
public:
    explicit TimeZone(const QByteArray &name) : before(qgetenv("TZ")) { take(name); }
    ~TimeZone() { take(before); }
    Q_DISABLE_COPY_MOVE(TimeZone)

private:
    static void take(const QByteArray &name)
    {
        if (name.isEmpty())
            qunsetenv("TZ");
        else
            qputenv("TZ", name);
#ifdef Q_OS_UNIX
        tzset();
#endif
    }

    QByteArray before;
};

int differentPixels(const QImage &one, const QImage &other)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += one.pixel(x, y) == other.pixel(x, y) ? 0 : 1;
    }
    return count;
}

} // namespace

/// The page of the servers, and the plots.
class BookServersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void aServerIsThereWhenSomethingIsKnownOfIt()
    {
        Servers it;
        QCOMPARE(it.figures(), u"Nothing is known of this time."_s);
        QVERIFY(!it.button("cmdbookpng")->isEnabled());
        it.populateWith(3);
        QTRY_COMPARE(it.find<QComboBox>("combookserver")->currentText(), it.address());
        QStringList spans;
        for (int row = 0; row < it.find<QComboBox>("combookspan")->count(); ++row)
            spans.append(it.find<QComboBox>("combookspan")->itemText(row));
        QCOMPARE(spans, QStringList({u"24 hours"_s, u"7 days"_s, u"30 days"_s}));
        QTRY_VERIFY2(it.figures().contains(u"at least 3, at most 3, at the end 3 players"), qPrintable(it.figures()));
    }

    void theArrowKeysTellTheFigures()
    {
        Servers it;
        const QString first = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.populateWith(2);
        it.pass(1500);
        const QString second = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.populateWith(5);
        QTRY_VERIFY(it.figures().contains(u"at most 5"));
        it.plot()->setFocus();
        it.key(Qt::Key_Home);
        QVERIFY2(it.figures().startsWith(first + u": 2 players, mp_"_s), qPrintable(it.figures()));
        it.key(Qt::Key_Right);
        QVERIFY2(it.figures().startsWith(second + u": 5 players"_s), qPrintable(it.figures()));
        it.key(Qt::Key_Right);
        QVERIFY2(it.figures().startsWith(second + u": 5 players"_s), "that was the last one");
        it.key(Qt::Key_Left);
        QVERIFY(it.figures().startsWith(first + u": 2 players"_s));
    }

    void soDoesThePointer()
    {
        Servers it;
        it.populateWith(2);
        it.pass(1500);
        it.populateWith(5);
        QTRY_VERIFY(it.figures().contains(u"at most 5"));
        const QPoint right(it.plot()->width() - 5, it.plot()->height() / 2);
        it.pointAt(right);
        QTRY_VERIFY2(it.figures().contains(u": 5 players"), qPrintable(it.figures()));
        it.pointAt(QPoint(40, right.y()));
        QTRY_VERIFY2(it.figures().contains(u": 2 players"), qPrintable(it.figures()));
    }

    void theSpanSaysHowFarBackOneSees()
    {
        Servers it;
        it.populateWith(6);
        it.pass(3 * 86'400);
        it.populateWith(2);
        QTRY_VERIFY2(it.figures().contains(u"at least 2, at most 2,"), qPrintable(it.figures()));
        it.find<QComboBox>("combookspan")->setCurrentIndex(1);
        QTRY_VERIFY2(it.figures().contains(u"at least 2, at most 6,"), qPrintable(it.figures()));
    }

    void thirtyDaysAreTheMost()
    {
        Servers it;
        it.populateWith(7);
        it.pass(3 * 86'400);
        it.populateWith(6);
        it.pass(28 * 86'400);
        it.populateWith(2);
        it.find<QComboBox>("combookspan")->setCurrentIndex(1);
        QTRY_VERIFY2(it.figures().contains(u"at least 2, at most 2,"), qPrintable(it.figures()));
        it.find<QComboBox>("combookspan")->setCurrentIndex(2);
        QTRY_VERIFY2(it.figures().contains(u"at least 2, at most 6,"), qPrintable(it.figures()));
    }

    void anEmptyServerHasNobody()
    {
        Servers it;
        it.populateWith(1);
        it.pass(60);
        it.populateWith(0);
        (void)it.program.prompts.takeBoxes(); // "No players on server"
        QTRY_VERIFY2(it.figures().contains(u"at least 0, at most 1, at the end 0 players"), qPrintable(it.figures()));
    }

    void aChangeOfTheMapIsMarked()
    {
        TimePlot plot;
        plot.resize(400, 200);
        PlotData data;
        data.from = 1000;
        data.to = 9000;
        data.points = {{1000, 5, -1}, {5000, 5, -1}, {9000, 5, -1}};
        data.gap = 100'000;
        plot.setData(data);
        const QImage without = plot.grab().toImage();
        data.marks = {{5000, u"mp_toujane"_s}};
        plot.setData(data);
        const QImage with = plot.grab().toImage();
        QVERIFY2(differentPixels(without, with) > 60, "a line across and its text");
    }

    void theMapOfTheServerIsMarkedWhenItChanges()
    {
        Servers it;
        const auto populateOn = [&it](const QString &map) {
            it.server.game().dvars().set(u"mapname"_s, map);
            it.populateWith(3);
            const QString time = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
            it.pass(600);
            return time;
        };
        populateOn(u"mp_carentan"_s);
        populateOn(u"mp_carentan"_s);
        QTRY_VERIFY2(it.figures().contains(u"at the end 3 players"), qPrintable(it.figures()));
        QVERIFY2(!it.figures().contains(u"mp_"), qPrintable(it.figures()));
        const QString first = populateOn(u"mp_toujane"_s);
        populateOn(u"mp_toujane"_s);
        const QString second = populateOn(u"mp_carentan"_s);
        const QString marks = u" Lines across: %1 mp_toujane, %2 mp_carentan."_s.arg(first, second);
        QTRY_VERIFY2(it.figures().endsWith(marks), qPrintable(it.figures()));
        it.plot()->setFocus();
        it.key(Qt::Key_End);
        QVERIFY2(it.figures().contains(u"3 players, mp_carentan"), qPrintable(it.figures()));
        it.key(Qt::Key_Left);
        QVERIFY2(it.figures().contains(u"3 players, mp_toujane"), qPrintable(it.figures()));
    }

#ifdef Q_OS_UNIX
    void thereAreDaysThatDoNotBeginAtMidnight_data()
    {
        QTest::addColumn<int>("days");
        for (const int days : {1, 7, 30})
            QTest::addRow("%d days", days) << days;
    }

    // In Chile the clock was set from 00:00 to 01:00 on 6 September 2026.
    void thereAreDaysThatDoNotBeginAtMidnight()
    {
        QFETCH(int, days);
        const TimeZone chile("America/Santiago");
        if (QDate(2026, 9, 6).startOfDay().time() == QTime(0, 0))
            QSKIP("this system does not know that zone");
        TimePlot plot;
        plot.resize(400, 200);
        PlotData data;
        data.to = QDateTime(QDate(2026, 9, 7), QTime(12, 0)).toSecsSinceEpoch();
        data.from = data.to - days * 86'400;
        data.points = {{data.from, 5, -1}, {data.to, 5, -1}};
        plot.setData(data);
        QVERIFY(!plot.grab().isNull());
    }
#endif

    void longSilencesAreNotJoined()
    {
        TimePlot plot;
        plot.resize(400, 200);
        PlotData data;
        data.from = 0;
        data.to = 10'000;
        data.points = {{0, 5, -1}, {1000, 5, -1}, {9000, 5, -1}, {10'000, 5, -1}};
        data.gap = 20'000;
        plot.setData(data);
        const QImage joined = plot.grab().toImage();
        data.gap = 2000;
        plot.setData(data);
        QVERIFY(differentPixels(joined, plot.grab().toImage()) > 200);
    }

    void thePlotFollowsTheTheme()
    {
        Servers it;
        it.populateWith(3);
        QTRY_VERIFY(!it.plot()->isEmpty());
        const QColor light = it.plot()->grab().toImage().pixelColor(3, it.plot()->height() / 2);
        QPalette dark;
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::Text, Qt::white);
        QApplication::setPalette(dark);
        QApplication::processEvents();
        const QColor now = it.plot()->grab().toImage().pixelColor(3, it.plot()->height() / 2);
        QCOMPARE(now, QColor(30, 30, 30));
        QVERIFY(light != now);
    }

    void itIsSavedAsAPicture()
    {
        Servers it;
        it.populateWith(3);
        QTRY_VERIFY(it.button("cmdbookpng")->isEnabled());
        it.program.prompts.lines = {u"plot.png"_s};
        it.button("cmdbookpng")->click();
        QImage saved;
        QVERIFY(saved.loadFromData(it.program.file(u"plot.png"_s), "PNG"));
        QImage shown = it.plot()->grab().toImage();
        QCOMPARE(saved.size(), shown.size());
        saved.setDevicePixelRatio(1);
        shown.setDevicePixelRatio(1);
        QCOMPARE(
            differentPixels(saved.convertToFormat(QImage::Format_RGB32), shown.convertToFormat(QImage::Format_RGB32)),
            0);
        it.program.prompts.lines = {u"no/such/folder/plot.png"_s};
        it.button("cmdbookpng")->click();
        QCOMPARE(it.box().title, u"Failed to Save"_s);
    }

    void manyPointsArePaintedQuickly()
    {
        TimePlot plot;
        plot.resize(900, 400);
        PlotData data;
        data.to = 30 * 86'400;
        for (qint64 time = 0; time < data.to; time += 10)
            data.points.append({time, static_cast<int>(time / 1000 % 32), -1});
        plot.setData(data);
        QElapsedTimer timer;
        timer.start();
        (void)plot.grab();
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }
};

WINDOW_TEST(BookServersTest)
#include "tst_book_servers.moc"
