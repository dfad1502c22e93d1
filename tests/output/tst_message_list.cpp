// SPDX-License-Identifier: MIT
#include "cpu_time.h"
#include "menus.h"
#include "output/message_list.h"
#include "program.h"
#include "window_test.h"

#include <QListWidget>
#include <QLocale>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

void setTime(Program &program, QTime time)
{
    program.clock.set({QDate(2006, 3, 5), time});
}

/// Puts the list on the screen, with some messages of one line and some of more.
void fill(MessageList &list, int count = 5)
{
    list.resize(300, 300);
    for (int message = 0; message < count; ++message)
        list.append(u"message %1 "_s.arg(message) + u"word "_s.repeated(message % 2 * 20));
    list.show();
    list.activateWindow();
    if (!QTest::qWaitForWindowActive(&list))
        failTest(u"the list does not show"_s);
}

QList<int> selected(const MessageList &list)
{
    QList<int> rows;
    for (int row = 0; row < list.count(); ++row) {
        if (list.item(row)->isSelected())
            rows.append(row);
    }
    return rows;
}

/// The processor time that it takes to show three hundred messages, one by one, below `history` others.
double costOfAppending(int history)
{
    MessageList list;
    fill(list, history);
    return cpuTimeOf([&] {
        for (int message = 0; message < 300; ++message) {
            list.append(u"word "_s.repeated(30));
            list.scrollToBottom();
        }
    });
}

bool hasGermanTime()
{
    return QLocale::system().timeFormat(QLocale::ShortFormat) == u"HH:mm"_s;
}

} // namespace

class MessageListTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aMessageCarriesTheTimeInTheShortFormatOfTheSystem()
    {
        if (!hasGermanTime())
            QSKIP("the system has another short form of the time");
        Program program;
        setTime(program, {15, 4});
        program.output.addmessage(u"Server name updated."_s);
        setTime(program, {9, 5});
        program.output.addmessage(u"Connected"_s);
        QCOMPARE(program.rows(u"lstmessages"_s),
                 QStringList({u"Time: 15:04 Server name updated."_s, u"Time: 09:05 Connected"_s}));
    }

    void aMessageIsNeitherTrimmedNorSqueezed()
    {
        if (!hasGermanTime())
            QSKIP("the system has another short form of the time");
        Program program;
        setTime(program, {15, 4});
        program.output.addmessage(u"  a   b  "_s);
        program.output.addmessage({});
        QCOMPARE(program.rows(u"lstmessages"_s), QStringList({u"Time: 15:04   a   b  "_s, u"Time: 15:04 "_s}));
    }

    void markupShowsAsTyped()
    {
        if (!hasGermanTime())
            QSKIP("the system has another short form of the time");
        Program program;
        program.start();
        setTime(program, {15, 4});
        program.output.addmessage(u"<b>Bob</b> &amp; <img src=\"map.png\"><br><br>two"_s);
        program.output.addmessage(u"Bob"_s);
        QCOMPARE(program.rows(u"lstmessages"_s).first(),
                 u"Time: 15:04 <b>Bob</b> &amp; <img src=\"map.png\"><br><br>two"_s);
        const QListWidget &list = program.output.list();
        program.window.resize(1900, 800);
        QCoreApplication::processEvents();
        QCOMPARE(list.visualItemRect(list.item(0)).height(), list.visualItemRect(list.item(1)).height());
        QVERIFY(list.item(0)->toolTip().isEmpty());
    }

    void aLongMessageIsWrapped()
    {
        Program program;
        program.start();
        const QListWidget &list = program.output.list();
        program.output.addmessage(u"Connected"_s);
        program.output.addmessage(u"word "_s.repeated(100));
        program.output.addmessage(QString(300, u'W')); // has no blank to break at
        program.output.addmessage(u"Connected"_s);
        QCoreApplication::processEvents();
        QCOMPARE(list.horizontalScrollBar()->maximum(), 0);
        QVERIFY(!list.horizontalScrollBar()->isVisible());

        const int line = list.visualItemRect(list.item(0)).height();
        const int room = list.viewport()->width();
        const int words = list.fontMetrics().horizontalAdvance(list.item(1)->text());
        QVERIFY(list.visualItemRect(list.item(1)).height() > (line - 4) * words / room);
        const int letters = list.fontMetrics().horizontalAdvance(QString(300, u'W'));
        QVERIFY(list.visualItemRect(list.item(2)).height() > (line - 4) * letters / room);
        QCOMPARE(list.visualItemRect(list.item(3)).height(), line);
        for (int row = 1; row < 4; ++row)
            QCOMPARE(list.visualItemRect(list.item(row)).top(), list.visualItemRect(list.item(row - 1)).bottom() + 1);
    }

    // Nothing is painted beyond the edge, and every word is painted.
    void aWrappedMessageIsPaintedWhole()
    {
        MessageList list;
        list.resize(200, 400);
        list.append(u"one two three four five six seven eight nine ten eleven twelve"_s);
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        QImage picture(list.viewport()->size(), QImage::Format_RGB32);
        list.viewport()->render(&picture);
        const QRect row = list.visualItemRect(list.item(0));
        QVERIFY(row.height() > 2 * list.fontMetrics().height());
        const QRgb ground = picture.pixel(picture.width() - 1, picture.height() - 1);
        const auto inkOf = [&](QRect area) {
            int ink = 0;
            for (int y = area.top(); y <= area.bottom(); ++y)
                for (int x = area.left(); x <= area.right(); ++x)
                    ink += picture.pixel(x, y) != ground ? 1 : 0;
            return ink;
        };
        const int line = list.fontMetrics().height();
        for (int top = row.top() + 1; top + line <= row.bottom() + 1; top += line)
            QVERIFY2(inkOf(QRect(0, top, picture.width(), line)) > 30, qPrintable(u"the line at %1"_s.arg(top)));
        QCOMPARE(inkOf(QRect(picture.width() - 2, 0, 2, row.bottom())), 0);
        QCOMPARE(inkOf(QRect(0, row.bottom() + 1, picture.width(), 30)), 0);
    }

    void messagesAreWrappedAnewWhenTheListGetsWider()
    {
        MessageList list;
        list.resize(200, 300);
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        for (int message = 0; message < 100; ++message)
            list.append(u"%1 "_s.arg(message) + u"word "_s.repeated(message % 20));
        list.scrollToBottom();
        const int narrow = list.visualItemRect(list.item(19)).height();
        list.resize(600, 300);
        QVERIFY(list.visualItemRect(list.item(19)).height() < narrow);
        QCOMPARE(list.verticalScrollBar()->value(), list.verticalScrollBar()->maximum()); // still at the end
        QVERIFY(list.viewport()->rect().contains(list.visualItemRect(list.item(99)).bottomLeft()));

        list.scrollToItem(list.item(40), QAbstractItemView::PositionAtTop);
        QCOMPARE(list.visualItemRect(list.item(40)).top(), 0);
        list.resize(200, 300);
        QCOMPARE(list.visualItemRect(list.item(40)).top(), 0); // still the first that is seen
        QCOMPARE(list.itemAt(5, 5), list.item(40));
    }

    void aLargerFontMakesHigherMessages()
    {
        MessageList list;
        list.resize(300, 300);
        list.append(u"word "_s.repeated(50));
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        const int before = list.visualItemRect(list.item(0)).height();
        QFont larger = list.font();
        larger.setPointSizeF(larger.pointSizeF() * 2);
        list.setFont(larger);
        QVERIFY(list.visualItemRect(list.item(0)).height() > 3 * before);
    }

    void severalMessagesAreSelectedWithTheMouse()
    {
        MessageList list;
        fill(list);
        const auto click = [&](int row, Qt::KeyboardModifiers keys) {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, list.visualItemRect(list.item(row)).center());
        };
        click(1, {});
        QCOMPARE(selected(list), QList<int>{1});
        click(3, Qt::ShiftModifier);
        QCOMPARE(selected(list), QList<int>({1, 2, 3}));
        click(0, Qt::ControlModifier);
        QCOMPARE(selected(list), QList<int>({0, 1, 2, 3}));
        click(2, Qt::ControlModifier);
        QCOMPARE(selected(list), QList<int>({0, 1, 3}));
        click(4, {});
        QCOMPARE(selected(list), QList<int>{4});
    }

    void severalMessagesAreSelectedWithTheKeys()
    {
        MessageList list;
        fill(list);
        list.setFocus();
        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(&list, key, keys); };
        press(Qt::Key_Down);
        press(Qt::Key_Home);
        QCOMPARE(selected(list), QList<int>{0});
        press(Qt::Key_Down);
        press(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(selected(list), QList<int>({1, 2}));
        press(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(selected(list), QList<int>{1});
        press(Qt::Key_End);
        QCOMPARE(selected(list), QList<int>{4});
        press(Qt::Key_PageUp);
        QCOMPARE(selected(list), QList<int>{0});
        press(Qt::Key_PageDown);
        QCOMPARE(selected(list), QList<int>{4});
        press(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(selected(list).size(), 5);
    }

    void aKeyBringsItsMessageIntoView()
    {
        MessageList list;
        fill(list, 200);
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_End);
        QVERIFY(list.viewport()->rect().contains(list.visualItemRect(list.item(199))));
        QTest::keyClick(&list, Qt::Key_PageUp);
        QVERIFY(list.currentRow() < 199 && list.currentRow() > 100);
        QVERIFY(list.viewport()->rect().contains(list.visualItemRect(list.currentItem())));
        QTest::keyClick(&list, Qt::Key_Home);
        QCOMPARE(list.verticalScrollBar()->value(), 0);
    }

    void whatIsSelectedIsPaintedSo()
    {
        MessageList list;
        fill(list);
        const auto countHighlight = [&](int row) {
            const QImage picture = list.viewport()->grab(list.visualItemRect(list.item(row))).toImage();
            const QRgb wanted = list.palette().color(QPalette::Highlight).rgb();
            int pixels = 0;
            for (int y = 0; y < picture.height(); ++y)
                for (int x = 0; x < picture.width(); ++x)
                    pixels += picture.pixel(x, y) == wanted ? 1 : 0;
            return pixels;
        };
        QCOMPARE(countHighlight(2), 0);
        list.setCurrentRow(2);
        QVERIFY(countHighlight(2) > 500);
        QCOMPARE(countHighlight(3), 0);
    }

    void whatIsSelectedIsCopiedInTheOrderOfTheList()
    {
        MessageList list;
        fill(list);
        list.item(3)->setSelected(true);
        list.item(0)->setSelected(true);
        list.setFocus();
        QCOMPARE(copiedBy([&] { QTest::keySequence(&list, QKeySequence::Copy); }),
                 list.item(0)->text() + u'\n' + list.item(3)->text());
        list.clearSelection();
        QCOMPARE(copiedBy([&] { QTest::keySequence(&list, QKeySequence::Copy); }), u"nothing has been copied"_s);
    }

    void theMenuCopiesSavesAndClears()
    {
        Program program;
        program.start();
        program.output.addmessage(u"one"_s);
        program.output.addmessage(u"two"_s);
        MessageList &list = program.output.list();
        const QStringList all{list.item(0)->text(), list.item(1)->text()};
        QCoreApplication::processEvents();
        const QPoint second = list.visualItemRect(list.item(1)).center();
        QCOMPARE(OpenMenu(list, second).captions(),
                 QStringList({u"Copy"_s, u"Copy all"_s, u"-"_s, u"Save message log..."_s, u"Clear Message log"_s}));
        QCOMPARE(copiedBy([&] { OpenMenu(list, second).choose(u"Copy"_s); }), all[1]);
        QCOMPARE(copiedBy([&] { OpenMenu(list).choose(u"Copy all"_s); }), all.join(u'\n'));

        OpenMenu(list, second).choose(u"Save message log..."_s);
        QCOMPARE(program.prompts.asked.size(), 1);
        OpenMenu(list, second).choose(u"Clear Message log"_s);
        QCOMPARE(program.prompts.takeBoxes().size(), 1);
        QCOMPARE(list.count(), 0);
        const OpenMenu empty(list);
        QVERIFY(!empty.item(u"Copy"_s)->isEnabled());
        QVERIFY(!empty.item(u"Copy all"_s)->isEnabled());
    }

    void aLongListMakesAppendingNoDearer()
    {
        const double atStart = costOfAppending(100);
        const double later = costOfAppending(20'000);
        QVERIFY2(later < 5 * atStart, qPrintable(u"%1 s and %2 s"_s.arg(later).arg(atStart)));
    }

    void theLastOfManyMessagesIsSeen()
    {
        Program program;
        program.start();
        const QListWidget &list = program.output.list();
        for (int message = 0; message < 1000; ++message)
            program.output.addmessage(QString(message % 50, u'x'));
        QCoreApplication::processEvents();
        const QRect last = list.visualItemRect(list.item(999));
        QVERIFY(list.viewport()->rect().contains(last.bottomLeft()));
        QCOMPARE(last.top(), list.visualItemRect(list.item(998)).bottom() + 1);
    }
};

static int runWhereTimesAreGerman(int argc, char *argv[])
{
    // The system is a German one, whose short time has no seconds; it need not be installed, because Qt brings its own
    // tables. They are asked for once, before the application sets the locale of the C library.
    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", "de_DE.UTF-8");
    (void)QLocale::system().timeFormat(QLocale::ShortFormat);
    qputenv("LC_ALL", before);

    return runTests<WindowApplication, MessageListTest>(argc, argv);
}

static const TestClass testClass(__FILE__, runWhereTimesAreGerman);

#include "tst_message_list.moc"
