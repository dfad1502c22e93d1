// SPDX-License-Identifier: MIT
#include "other_windows.h"
#include "program.h"
#include "window_test.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

class AboutWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theWindowSaysWhatTheProgramIs()
    {
        Program program;
        program.start();
        program.trigger(u"helpabout"_s);
        const QWidget *about = otherWindow(u"frmAbout"_s);
        QVERIFY(about);
        QCOMPARE(about->windowTitle(), u"About Molvark"_s);
        QVERIFY(!about->isModal());
        const auto text = [about](const QString &label) { return about->findChild<QLabel *>(label)->text(); };
        QCOMPARE(text(u"lblTitle"_s), u"Molvark"_s);
        QCOMPARE(text(u"lblVersion"_s), u"Version 1.4.1 - 10/Mar/05"_s);
        QCOMPARE(text(u"Label1"_s), u"For Bug reports, Comments or Suggestions then please contact me using; "_s);
        for (const QString &word : {u"Call of Duty 2"_s, u"RCON password"_s, u"temporary ban"_s})
            QVERIFY2(text(u"lblDescription"_s).contains(word), qPrintable(word));
        QVERIFY(text(u"Label2"_s).contains(u"molvark.example"_s));
        QVERIFY(text(u"Label3"_s).contains(u"molvark.example"_s));
        QVERIFY(text(u"lblDisclaimer"_s).contains(u"as is"_s));
        QVERIFY(!about->findChild<QLabel *>(u"picIcon"_s)->pixmap().isNull());
        QCOMPARE(about->findChild<QPushButton *>(u"cmdSysInfo"_s)->text(), u"&System Info..."_s);
    }

    void okClosesIt()
    {
        Program program;
        program.start();
        program.trigger(u"helpabout"_s);
        otherWindow(u"frmAbout"_s)->findChild<QPushButton *>(u"cmdOK"_s)->click();
        QVERIFY(!otherWindow(u"frmAbout"_s));
    }

    void withoutASystemInformationToolItSaysSo()
    {
#ifdef Q_OS_WIN
        QSKIP("this system may have one");
#endif
        Program program;
        program.start();
        program.trigger(u"helpabout"_s);
        otherWindow(u"frmAbout"_s)->findChild<QPushButton *>(u"cmdSysInfo"_s)->click();
        QCOMPARE(program.prompts.takeBoxes(),
                 (QList<Box>{{u"Molvark"_s, u"System Information Is Unavailable At This Time"_s, BoxIcon::None,
                              BoxButtons::Ok}}));
    }

    void closingTheMainWindowClosesTheOthers()
    {
        Program program;
        program.start();
        program.trigger(u"helpabout"_s);
        program.trigger(u"mpref"_s);
        program.click(u"cmdhob"_s);
        const QStringList names{u"frmAbout"_s, u"frmpref"_s, u"frmhob"_s};
        for (const QString &name : names)
            QVERIFY2(otherWindow(name), qPrintable(name));
        program.window.close();
        for (const QString &name : names)
            QVERIFY2(!otherWindow(name), qPrintable(name));
    }
};

WINDOW_TEST(AboutWindowTest)
#include "tst_about_window.moc"
