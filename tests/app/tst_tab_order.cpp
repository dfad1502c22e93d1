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
        const QStringList expected{u"comserver"_s,   u"comport"_s,   u"txtPWD"_s,
                                   u"cmdconnect"_s,  u"Label3"_s,    u"qt_tabwidget_tabbar"_s,
                                   u"lstservers"_s,  u"txtoutput"_s, u"comdirect"_s,
                                   u"cmdsend"_s,     u"cmdstatus"_s, u"cmsserverinfo"_s,
                                   u"lstmessages"_s, u"txtprefix"_s, u"cmdmessage"_s,
                                   u"cmdexit"_s};
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
