// SPDX-License-Identifier: MIT
#include "base/window_place.h"
#include "test_class.h"

class WindowPlaceTest final : public QObject {
    Q_OBJECT

private slots:
    void aWindowWithItsFrameLiesWithinTheScreen_data()
    {
        QTest::addColumn<QRect>("wanted");
        QTest::addColumn<QRect>("available");
        QTest::addColumn<QRect>("expected");
        const QRect desk(0, 0, 1024, 740); // with a panel below
        QTest::newRow("it fits") << QRect(100, 50, 800, 600) << desk << QRect(100, 50, 800, 600);
        QTest::newRow("too large") << QRect(0, 0, 1140, 760) << desk << QRect(4, 24, 1016, 712);
        QTest::newRow("beyond the right and the bottom")
            << QRect(900, 700, 400, 300) << desk << QRect(620, 436, 400, 300);
        QTest::newRow("beyond the left and the top") << QRect(-50, -50, 400, 300) << desk << QRect(4, 24, 400, 300);
        QTest::newRow("on the second screen")
            << QRect(900, 10, 1140, 760) << QRect(1024, 0, 1280, 720) << QRect(1028, 24, 1140, 692);
    }

    void aWindowWithItsFrameLiesWithinTheScreen()
    {
        QFETCH(QRect, wanted);
        QFETCH(QRect, available);
        QTEST(withinScreen(wanted, available, {4, 24, 4, 4}), "expected");
    }

    void aWindowIsReachedByItsUpperEdge_data()
    {
        QTest::addColumn<QRect>("window");
        QTest::addColumn<bool>("reached");
        QTest::newRow("on the first") << QRect(10, 10, 400, 300) << true;
        QTest::newRow("on the second") << QRect(1500, 10, 400, 300) << true;
        QTest::newRow("across both") << QRect(900, 10, 400, 300) << true;
        QTest::newRow("60 pixels of it") << QRect(-340, 10, 400, 300) << true;
        QTest::newRow("59 pixels of it") << QRect(-341, 10, 400, 300) << false;
        QTest::newRow("above") << QRect(10, -5, 400, 300) << false;
        QTest::newRow("below") << QRect(10, 768, 400, 300) << false;
        QTest::newRow("on a screen that is gone") << QRect(5000, 10, 400, 300) << false;
        QTest::newRow("smaller than a handle") << QRect(10, 10, 30, 30) << true;
    }

    void aWindowIsReachedByItsUpperEdge()
    {
        QFETCH(QRect, window);
        QTEST(canBeReached(window, {QRect(0, 0, 1024, 768), QRect(1024, 0, 1280, 720)}), "reached");
    }
};

GUILESS_TEST(WindowPlaceTest)
#include "tst_window_place.moc"
