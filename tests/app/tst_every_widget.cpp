// SPDX-License-Identifier: MIT
#include "other_windows.h"
#include "program.h"
#include "window_test.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

// Their captions are meant for the message list only; what they switch stands beside them.
const QStringList croppedOnPurpose{u"chkCodOther_0"_s, u"chkCodOther_1"_s};

bool isPartOfAnother(const QWidget *widget)
{
    for (const QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        if (qobject_cast<const QComboBox *>(parent) || qobject_cast<const QAbstractItemView *>(parent) ||
            qobject_cast<const QPlainTextEdit *>(parent) || qobject_cast<const QTabBar *>(parent) ||
            qobject_cast<const QMenuBar *>(parent))
            return true;
    }
    return widget->objectName().startsWith(u"qt_");
}

bool isControl(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractItemView *>(widget) ||
           qobject_cast<const QPlainTextEdit *>(widget) || qobject_cast<const QAbstractSlider *>(widget);
}

/// Buttons, fields and labels that can be seen in `window`, without their inner parts.
QWidgetList shownWidgets(const QWidget *window)
{
    QWidgetList shown;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        const bool counts = isControl(widget) || qobject_cast<QLabel *>(widget) || qobject_cast<QGroupBox *>(widget);
        if (counts && widget->isVisible() && widget->window() == window && !isPartOfAnother(widget))
            shown.append(widget);
    }
    return shown;
}

QString described(const QWidget *widget)
{
    return QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName();
}

QString accessibleName(QWidget *widget)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

QString mnemonic(const QWidget *widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->shortcut().toString();
    const auto *label = qobject_cast<const QLabel *>(widget);
    return label && label->buddy() ? QKeySequence::mnemonic(label->text()).toString() : QString();
}

bool fits(const QWidget *widget)
{
    const auto *label = qobject_cast<const QLabel *>(widget);
    if (qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget))
        return widget->height() >= widget->minimumSizeHint().height();
    if (!label && !qobject_cast<const QAbstractButton *>(widget))
        return true;
    if (croppedOnPurpose.contains(widget->objectName()))
        return true;
    if (label && label->wordWrap())
        return widget->height() >= widget->heightForWidth(widget->width());
    return widget->width() >= widget->minimumSizeHint().width() &&
           widget->height() >= widget->minimumSizeHint().height();
}

void checkWindow(const QWidget *window)
{
    QHash<QString, QString> keys;
    if (const auto *bar = window->findChild<QMenuBar *>()) {
        for (const QAction *menu : bar->actions()) {
            const QString key = QKeySequence::mnemonic(menu->text()).toString();
            QVERIFY2(key.isEmpty() || !keys.contains(key), qPrintable(menu->text()));
            keys.insert(key, menu->text());
        }
    }
    keys.remove(QString());
    for (QWidget *widget : shownWidgets(window)) {
        const QString who = described(widget) + u" in "_s + window->objectName();
        QVERIFY2(!widget->objectName().isEmpty(), qPrintable(who + u": no name"_s));
        if (isControl(widget))
            QVERIFY2(!accessibleName(widget).isEmpty(), qPrintable(who + u": no accessible name"_s));
        QVERIFY2(fits(widget), qPrintable(who + u": %1 x %2 does not fit %3 x %4"_s.arg(widget->width())
                                                    .arg(widget->height())
                                                    .arg(widget->minimumSizeHint().width())
                                                    .arg(widget->minimumSizeHint().height())));
        const QString key = mnemonic(widget);
        QVERIFY2(key.isEmpty() || !keys.contains(key), qPrintable(who + u": key of "_s + keys.value(key)));
        if (!key.isEmpty())
            keys.insert(key, who);
    }
}

} // namespace

/// What every control of every window has to have.
class EveryWidgetTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void everyTabOfTheMainWindow_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("1024 x 700") << QSize(1024, 700);
        QTest::newRow("1440 x 900") << QSize(1440, 900);
    }

    void everyTabOfTheMainWindow()
    {
        QFETCH(QSize, size);
        Program program;
        program.start();
        program.window.resize(size);
        QTRY_COMPARE(program.window.size(), size);
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            QApplication::processEvents();
            checkWindow(&program.window);
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY2(tabs->tabBar()->width() <= tabs->width(), "all tabs can be seen");
    }

    void everyOtherWindow()
    {
        Program program;
        program.start();
        program.trigger(u"mpref"_s);
        program.trigger(u"helpabout"_s);
        program.click(u"cmdhob"_s);
        program.output.showprogress(u"Working"_s, Progress::Replace);
        for (const QString &name : {u"frmpref"_s, u"frmAbout"_s, u"frmhob"_s, u"frmprogress"_s}) {
            const QWidget *window = otherWindow(name);
            QVERIFY2(window, qPrintable(name));
            QApplication::processEvents();
            checkWindow(window);
        }
        program.output.showprogress({}, Progress::Replace);
    }
};

WINDOW_TEST_MAIN(EveryWidgetTest)
#include "tst_every_widget.moc"
