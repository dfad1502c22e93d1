// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "leaks_of_qt.h"
#include "scripted_prompts.h"
#include "window_test.h"

#include <QEventLoop>
#include <QPushButton>
#include <QTimer>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const Box overflowBox{u"Molvark"_s, u"Error code 6 Descr: Overflow"_s, BoxIcon::Exclamation, BoxButtons::Ok};

} // namespace

/// Faults that no handler trapped.
class ApplicationTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        failOnWarnings();
        application()->setPrompts(&prompts);
    }

    void cleanup()
    {
        application()->setPrompts(nullptr);
        QCOMPARE(prompts.takeBoxes(), QList<Box>());
    }

    void aFaultInAClickIsShownAndTheProgramGoesOn()
    {
        const LeaksOfQt leaks;
        QPushButton faulty;
        connect(&faulty, &QPushButton::clicked, this, [] { throw Fault(Fault::Overflow); });
        faulty.show();
        QTest::mouseClick(&faulty, Qt::LeftButton);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({overflowBox}));

        QTest::mouseClick(&faulty, Qt::LeftButton);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({overflowBox}));
        QTest::keyClick(&faulty, Qt::Key_Space);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({overflowBox}));
    }

    void aFaultOfATimerIsShownAndTheTimerGoesOn()
    {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (++ticks < 3)
                throw Fault(Fault::Overflow);
            timer.stop();
        });
        timer.start(0);
        QTRY_COMPARE(ticks, 3);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({overflowBox, overflowBox}));
    }

    void aFaultOfAQueuedCallIsShown()
    {
        QMetaObject::invokeMethod(
            this, [] { throw Fault(75, u"Path not found"_s); }, Qt::QueuedConnection);
        QCoreApplication::processEvents();
        QCOMPARE(prompts.takeBoxes(), QList<Box>({{u"Molvark"_s, u"Error code 75 Descr: Path not found"_s,
                                                   BoxIcon::Exclamation, BoxButtons::Ok}}));
    }

    void aFaultInsideAWaitLeavesTheWaitRunning()
    {
        QStringList story;
        QPushButton waiting;
        connect(&waiting, &QPushButton::clicked, this, [&] {
            QEventLoop wait;
            QTimer::singleShot(0, &wait, [&] {
                story.append(u"fault"_s);
                QTimer::singleShot(0, &wait, [&] {
                    story.append(u"end of the wait"_s);
                    wait.quit();
                });
                throw Fault(Fault::Overflow);
            });
            wait.exec();
            story.append(u"after the wait"_s);
        });
        waiting.show();
        QTest::mouseClick(&waiting, Qt::LeftButton);
        QCOMPARE(story, QStringList({u"fault"_s, u"end of the wait"_s, u"after the wait"_s}));
        QCOMPARE(prompts.takeBoxes(), QList<Box>({overflowBox}));
    }

    void aFaultInADirectCallEndsTheCallerToo()
    {
        const LeaksOfQt leaks;
        bool reached = false;
        QPushButton faulty;
        QPushButton caller;
        connect(&faulty, &QPushButton::clicked, this, [] { throw Fault(Fault::Overflow); });
        connect(&caller, &QPushButton::clicked, this, [&] {
            faulty.click();
            reached = true;
        });
        caller.show();
        QTest::mouseClick(&caller, Qt::LeftButton);
        QVERIFY(!reached);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({overflowBox}));
    }

    void aTrappedFaultIsNotShown()
    {
        bool trapped = false;
        QMetaObject::invokeMethod(
            this,
            [&] {
                try {
                    throw Fault(Fault::Overflow);
                } catch (const Fault &) {
                    trapped = true;
                }
            },
            Qt::QueuedConnection);
        QCoreApplication::processEvents();
        QVERIFY(trapped);
    }

    void anyOtherExceptionIsShownByItsText()
    {
        QMetaObject::invokeMethod(
            this, [] { throw std::runtime_error("caf\u00E9 is closed"); }, Qt::QueuedConnection);
        QCoreApplication::processEvents();
        const QList<Box> boxes = prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.first().text.endsWith(u"caf\u00E9 is closed"_s), qPrintable(boxes.first().text));
    }

    void withoutPromptsAFaultIsSilent()
    {
        application()->setPrompts(nullptr);
        bool goesOn = false;
        QMetaObject::invokeMethod(
            this, [] { throw Fault(Fault::Overflow); }, Qt::QueuedConnection);
        QMetaObject::invokeMethod(
            this, [&] { goesOn = true; }, Qt::QueuedConnection);
        QCoreApplication::processEvents();
        QVERIFY(goesOn);
    }

private:
    static Application *application() { return static_cast<Application *>(qApp); }

    ScriptedPrompts prompts;
};

WINDOW_TEST(ApplicationTest)
#include "tst_application.moc"
