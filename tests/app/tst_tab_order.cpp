// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

#include <QTabBar>

using namespace Qt::StringLiterals;

class TabOrderTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theTabKeyWalksTheWindowInReadingOrder()
    {
        Program program;
        program.start();
        QStringList names;
        const QWidget *page = program.find<QTabWidget>(u"SSTab"_s)->currentWidget();
        for (int presses = 0; presses < 60 && names.indexOf(u"comserver"_s, 1) < 0; ++presses) {
            if (!page->isAncestorOf(QApplication::focusWidget()))
                names.append(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QVERIFY2(names.takeLast() == u"comserver", qPrintable(names.join(u" "_s)));
        const QStringList expected =
            u"comserver comport txtPWD cmdconnect Label3 qt_tabwidget_tabbar txtoutput comdirect cmdsend cmdstatus "
            "cmsserverinfo lstservers lstmessages txtprefix cmdmessage cmdexit"_s.split(u' ');
        QCOMPARE(names, expected);
    }

    void thePagesFieldsComeBehindTheTabs()
    {
        Program program;
        program.start();
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        tabs->setCurrentIndex(7);
        tabs->tabBar()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(tabs->currentWidget()->isAncestorOf(QApplication::focusWidget()));
    }
};

WINDOW_TEST(TabOrderTest)
#include "tst_tab_order.moc"
