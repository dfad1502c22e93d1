// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

#include <QScreen>
#include <QSplitter>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

const QByteArray otherSections = "[options]\r\nclearrconnew=0\r\n\r\n; mine\r\n";

/// Starts the program with these settings, has something done, and closes it. Returns the settings afterwards.
QByteArray run(const QByteArray &settings, const std::function<void(Program &)> &action = {})
{
    Program program(settings);
    program.start();
    QApplication::processEvents();
    if (action)
        action(program);
    QApplication::processEvents();
    program.window.close();
    return program.file(u"molvark.ini"_s);
}

QByteArray valueOf(const QByteArray &settings, const QByteArray &key)
{
    const QList<QByteArray> lines = settings.mid(settings.indexOf("[window]")).split('\n');
    const auto line = std::ranges::find_if(lines, [&](const QByteArray &each) { return each.startsWith(key + '='); });
    return line == lines.end() ? "missing" : line->mid(key.size() + 1).trimmed();
}

QString looks(const Program &program)
{
    QString text;
    QDebug(&text) << program.window.geometry() << program.window.isMaximized()
                  << program.find<QTabWidget>(u"SSTab"_s)->currentIndex()
                  << program.find<QSplitter>(u"splitter"_s)->sizes()
                  << program.find<QSplitter>(u"lowerSplitter"_s)->sizes()
                  << program.find<QSplitter>(u"rightSplitter"_s)->sizes();
    return text;
}

QRect screenRoom()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

} // namespace

/// What the window keeps between runs, and where it stands at first.
class WindowStateTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theWindowLiesWithinTheScreen()
    {
        Program program;
        program.start();
        QVERIFY2(screenRoom().contains(program.window.frameGeometry()), "with its frame");
    }

    void aRunThatChangedNothingWritesNothing()
    {
        QCOMPARE(run({}), QByteArray());
        QCOMPARE(run(otherSections), otherSections);
        const QByteArray kept = run(otherSections, [](Program &program) { program.window.resize(600, 500); });
        QVERIFY(kept.contains("[window]"));
        QCOMPARE(run(kept), kept);
    }

    void whatIsChangedIsThereAgain()
    {
        QRect place;
        QList<int> sizes;
        const QByteArray kept = run(otherSections, [&](Program &program) {
            program.window.setGeometry(40, 50, 620, 640);
            QApplication::processEvents();
            program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(4);
            program.find<QSplitter>(u"splitter"_s)->setSizes({200, 400});
            program.find<QSplitter>(u"lowerSplitter"_s)->setSizes({200, 400});
            program.find<QSplitter>(u"rightSplitter"_s)->setSizes({150, 100});
            place = program.window.geometry();
            for (const QString &name : {u"splitter"_s, u"lowerSplitter"_s, u"rightSplitter"_s})
                sizes += program.find<QSplitter>(name)->sizes();
        });
        QVERIFY2(kept.startsWith(otherSections), kept);

        Program program(kept);
        program.start();
        QCOMPARE(program.window.geometry(), place);
        QCOMPARE(program.find<QTabWidget>(u"SSTab"_s)->currentIndex(), 4);
        QList<int> sizesAgain;
        for (const QString &name : {u"splitter"_s, u"lowerSplitter"_s, u"rightSplitter"_s})
            sizesAgain += program.find<QSplitter>(name)->sizes();
        QCOMPARE(sizesAgain, sizes);
    }

    void theTableOfPlayersIsThereAgain()
    {
        const auto widthOf = [](const Program &program) {
            return program.find<QTableView>(u"msfplayers"_s)->columnWidth(2);
        };
        int width = 0;
        const QByteArray kept = run({}, [&](Program &program) {
            auto *players = program.find<QTableView>(u"msfplayers"_s);
            width = widthOf(program) + 31;
            players->setColumnWidth(2, width);
            players->horizontalHeader()->moveSection(4, 1);
        });
        Program program(kept);
        program.start();
        QCOMPARE(widthOf(program), width);
        QCOMPARE(program.find<QTableView>(u"msfplayers"_s)->horizontalHeader()->logicalIndex(1), 4);
    }

    void onlyWhatIsDifferentIsWritten()
    {
        const QByteArray kept =
            run({}, [](Program &program) { program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(2); });
        QCOMPARE(kept, "[window]\r\ntab=2\r\n");
        const QByteArray again =
            run(kept, [](Program &program) { program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(0); });
        QCOMPARE(again, "[window]\r\ntab=0\r\n");
    }

    void whatIsBrokenIsTheDefault_data()
    {
        QTest::addColumn<QByteArray>("line");
        for (const char *line : {"place=abc",
                                 "place=1,2,3",
                                 "place=1,2,3,4,5",
                                 "place=10,10,0,-5",
                                 "place=99999999999,1,2,3",
                                 "place=5000,5000,600,400",
                                 "place=10,-300,600,400",
                                 "place=2147483647,2147483647,2147483647,2147483647",
                                 "tab=9",
                                 "tab=-1",
                                 "tab=x",
                                 "maximized=2",
                                 "splitter=1",
                                 "splitter=a,b",
                                 "splitter=-5,0",
                                 "splitter=2147483647,2147483647",
                                 "splitter=1,2147483647",
                                 "lowerSplitter=,",
                                 "rightSplitter=99999999999999,1",
                                 "columns=;;;",
                                 "columns=77:5"})
            QTest::newRow(line) << QByteArray(line);
    }

    void whatIsBrokenIsTheDefault()
    {
        QFETCH(QByteArray, line);
        QString usual;
        run({}, [&](Program &program) { usual = looks(program); });
        const QByteArray settings = "[window]\r\n" + line + "\r\n";
        QString found;
        QCOMPARE(run(settings, [&](Program &program) { found = looks(program); }), settings);
        QCOMPARE(found, usual);
    }

    void resetPutsTheDefaultBackAtOnce()
    {
        QRect usual;
        QString look;
        run({}, [&](Program &program) {
            usual = program.window.geometry();
            look = looks(program);
        });
        const QByteArray kept = run(otherSections, [](Program &program) {
            program.window.setGeometry(30, 40, 620, 610);
            program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(4);
            for (const QString &name : {u"splitter"_s, u"lowerSplitter"_s, u"rightSplitter"_s})
                program.find<QSplitter>(name)->setSizes({150, 300});
            program.find<QTableView>(u"msfplayers"_s)->horizontalHeader()->moveSection(4, 1);
        });
        Program program(kept + "[Remoteuser]\r\nuser=Ann\r\n[WINDOW]\r\ntab=1\r\n");
        program.start();
        QVERIFY(program.window.geometry() != usual);
        for (const Qt::WindowState state : {Qt::WindowNoState, Qt::WindowMaximized}) {
            program.window.setWindowState(state);
            program.trigger(u"resetwindow"_s);
            QApplication::processEvents();
            QCOMPARE(looks(program), look);
            QCOMPARE(program.find<QTableView>(u"msfplayers"_s)->horizontalHeader()->logicalIndex(1), 1);
        }
        const QByteArray cleared = otherSections + "[Remoteuser]\r\nuser=Ann\r\n";
        QCOMPARE(program.file(u"molvark.ini"_s), cleared);
        QApplication::processEvents();
        program.window.close();
        QCOMPARE(program.file(u"molvark.ini"_s), cleared);
    }

    void resetIsInTheMenuOfTheStatusBar()
    {
        Program program;
        program.start();
        const auto *bar = program.find<QStatusBar>(u"statusbar"_s);
        QCOMPARE(bar->contextMenuPolicy(), Qt::ActionsContextMenu);
        QCOMPARE(bar->actions().size(), 1);
        QCOMPARE(bar->actions().constFirst()->text(), u"Reset window"_s);
    }

    void aMaximizedWindowComesBackMaximized()
    {
        const QByteArray kept = run({}, [](Program &program) { program.window.showMaximized(); });
        QCOMPARE(valueOf(kept, "maximized"), "1");
        Program program(kept);
        program.start();
        QVERIFY(program.window.isMaximized());
    }

    void theLowerColumnsEdgesAreLevel()
    {
        Program program;
        program.start();
        const auto edges = [&program](const QString &upper, const QString &lower) {
            const auto *first = program.find<QWidget>(upper);
            const auto *last = program.find<QWidget>(lower);
            return std::pair(first->mapTo(&program.window, QPoint()).y(),
                             last->mapTo(&program.window, QPoint(0, last->height())).y());
        };
        const auto left = edges(u"txtoutput"_s, u"cmdsend"_s);
        const auto right = edges(u"lstservers"_s, u"cmdmessage"_s);
        QVERIFY2(std::abs(left.first - right.first) <= 4 && std::abs(left.second - right.second) <= 4,
                 qPrintable(u"%1 %2 %3 %4"_s.arg(left.first).arg(right.first).arg(left.second).arg(right.second)));
        const auto *splitter = program.find<QSplitter>(u"rightSplitter"_s);
        QVERIFY(splitter->widget(0)->isAncestorOf(program.find<QWidget>(u"lstservers"_s)));
        QVERIFY(splitter->widget(1)->isAncestorOf(program.find<QWidget>(u"lstmessages"_s)));
    }

    void allColumnsOfThePlayersAreSeen()
    {
        Program program;
        program.start();
        program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(4);
        const auto *players = program.find<QTableView>(u"msfplayers"_s);
        for (const int width : {program.window.width(), 1016}) {
            program.window.resize(width, program.window.height());
            QApplication::processEvents();
            QVERIFY2(
                players->horizontalHeader()->length() <= players->viewport()->width(),
                qPrintable(u"%1 in %2"_s.arg(players->horizontalHeader()->length()).arg(players->viewport()->width())));
        }
    }

    void whatDoesNotFitScrolls()
    {
        const QFont usual = QApplication::font();
        QFont large = usual;
        large.setPointSize(13);
        QApplication::setFont(large);
        const auto restored = qScopeGuard([&] { QApplication::setFont(usual); });
        Program program;
        program.start();
        program.window.resize(1024, 600);
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            QApplication::processEvents();
            const auto *area = tabs->currentWidget()->findChild<QScrollArea *>();
            QVERIFY(area);
            const QSize needed = area->widget()->minimumSizeHint();
            QVERIFY2(area->widget()->width() >= needed.width() && area->widget()->height() >= needed.height(),
                     qPrintable(tabs->tabText(tab)));
        }
        QVERIFY2(program.window.width() == 1024 && program.window.height() == 600, "the window stays as small");
    }
};

WINDOW_TEST(WindowStateTest)
#include "tst_window_state.moc"
