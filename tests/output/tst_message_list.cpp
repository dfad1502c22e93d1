// SPDX-License-Identifier: MIT
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
        QCOMPARE(list.visualItemRect(list.item(0)).height(), list.visualItemRect(list.item(1)).height());
        QVERIFY(list.item(0)->toolTip().isEmpty());
    }

    void aLongMessageCanBeReadToItsEndAlsoWhenShortOnesFollow()
    {
        Program program;
        program.start();
        const QListWidget &list = program.output.list();
        program.output.addmessage(u"Connected"_s);
        QCoreApplication::processEvents();
        QCOMPARE(list.horizontalScrollBar()->maximum(), 0);

        const QString text(300, u'W');
        program.output.addmessage(text);
        program.output.addmessage(u"Connected"_s);
        QCoreApplication::processEvents();
        const int width = list.fontMetrics().horizontalAdvance(text);
        QVERIFY(list.visualItemRect(list.item(1)).width() >= width);
        QVERIFY(list.horizontalScrollBar()->maximum() >= width - list.viewport()->width());

        program.output.clearmessages();
        program.output.addmessage(u"Connected"_s);
        QCoreApplication::processEvents();
        QCOMPARE(list.horizontalScrollBar()->maximum(), 0);
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
        QCOMPARE(last.top() - list.visualItemRect(list.item(998)).top(), last.height());
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
