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
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// Their captions are meant for the message list only; what they switch stands beside them.
const QStringList croppedOnPurpose{u"chkCodOther_0"_s, u"chkCodOther_1"_s};

bool isPartOfAnother(const QWidget *widget)
{
    for (const QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        if (qobject_cast<const QComboBox *>(parent) || qobject_cast<const QAbstractItemView *>(parent) ||
            qobject_cast<const QPlainTextEdit *>(parent) || qobject_cast<const QTabBar *>(parent) ||
            qobject_cast<const QMenuBar *>(parent) || qobject_cast<const QLineEdit *>(parent))
            return true;
        const auto *area = qobject_cast<const QScrollArea *>(parent);
        if (area && !area->widget()->isAncestorOf(widget))
            return true; // its scroll bars
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

double luminance(const QColor &colour)
{
    const auto linear = [](float part) {
        return part <= 0.03928F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// From 1 to 21, as the Web Content Accessibility Guidelines 2.1 define it.
double contrast(const QColor &one, const QColor &other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

/// Of the text on its ground. Grounds are opaque colours of the palette in all of the program's controls.
double contrast(const QWidget *widget)
{
    const QPalette palette = widget->palette();
    const auto of = [&palette](QPalette::ColorRole text, QPalette::ColorRole ground) {
        return contrast(palette.color(QPalette::Active, text), palette.color(QPalette::Active, ground));
    };
    if (qobject_cast<const QPushButton *>(widget))
        return of(QPalette::ButtonText, QPalette::Button);
    if (qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QAbstractItemView *>(widget) ||
        qobject_cast<const QPlainTextEdit *>(widget) || qobject_cast<const QComboBox *>(widget))
        return of(QPalette::Text, QPalette::Base);
    return of(QPalette::WindowText, QPalette::Window);
}

QPalette darkPalette()
{
    QPalette dark;
    for (const auto role : {QPalette::Window, QPalette::Button})
        dark.setColor(role, QColor(53, 53, 53));
    for (const auto role : {QPalette::Base, QPalette::ToolTipBase})
        dark.setColor(role, QColor(35, 35, 35));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text, QPalette::ToolTipText})
        dark.setColor(role, Qt::white);
    dark.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
    return dark;
}

/// The keys of `actions`, which are unique among themselves. Every item has a name.
void checkMenu(const QString &menu, const QList<QAction *> &actions, QHash<QString, QString> *keys)
{
    for (const QAction *action : actions) {
        if (action->isSeparator())
            continue;
        const QString who = menu + u" > "_s + action->text();
        const QString name = action->menu() ? action->menu()->objectName() : action->objectName();
        QVERIFY2(!name.isEmpty(), qPrintable(who + u": no name"_s));
        const QString key = QKeySequence::mnemonic(action->text()).toString();
        QVERIFY2(key.isEmpty() || !keys->contains(key), qPrintable(who + u": key of "_s + keys->value(key)));
        if (!key.isEmpty())
            keys->insert(key, who);
        QHash<QString, QString> keysInside;
        if (action->menu())
            checkMenu(who, action->menu()->actions(), &keysInside);
    }
}

void checkTitles(const QWidget *window)
{
    QVERIFY2(!window->windowTitle().isEmpty(), qPrintable(window->objectName()));
    for (const QTabBar *bar : window->findChildren<QTabBar *>()) {
        for (int tab = 0; tab < bar->count(); ++tab)
            QVERIFY2(bar->tabRect(tab).width() > bar->fontMetrics().horizontalAdvance(bar->tabText(tab)),
                     qPrintable(bar->tabText(tab)));
    }
    for (const QGroupBox *group : window->findChildren<QGroupBox *>()) {
        if (group->isVisible())
            QVERIFY2(group->width() > group->fontMetrics().horizontalAdvance(group->title()),
                     qPrintable(group->title()));
    }
}

void checkWindow(const QWidget *window)
{
    QHash<QString, QString> keys;
    if (const auto *bar = window->findChild<QMenuBar *>())
        checkMenu(window->objectName(), bar->actions(), &keys);
    checkTitles(window);
    for (QWidget *widget : shownWidgets(window)) {
        if (QTest::currentTestFailed())
            return;
        const QString who = described(widget) + u" in "_s + window->objectName();
        QVERIFY2(!widget->objectName().isEmpty(), qPrintable(who + u": no name"_s));
        if (isControl(widget))
            QVERIFY2(!accessibleName(widget).isEmpty(), qPrintable(who + u": no accessible name"_s));
        QVERIFY2(fits(widget), qPrintable(who + u": %1 x %2 does not fit %3 x %4"_s.arg(widget->width())
                                                    .arg(widget->height())
                                                    .arg(widget->minimumSizeHint().width())
                                                    .arg(widget->minimumSizeHint().height())));
        QVERIFY2(contrast(widget) >= 4.5, qPrintable(who + u": contrast %1"_s.arg(contrast(widget))));
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
    void cleanup()
    {
        QApplication::setPalette(QPalette());
        setPoints(9);
    }

    void everyTabOfTheMainWindow_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<int>("points");
        QTest::newRow("1024 x 700, light") << QSize(1024, 700) << QPalette() << 9;
        QTest::newRow("1024 x 700, dark") << QSize(1024, 700) << darkPalette() << 9;
        QTest::newRow("1440 x 900, light") << QSize(1440, 900) << QPalette() << 9;
        QTest::newRow("1366 x 700, large letters") << QSize(1366, 700) << QPalette() << 13;
    }

    void everyTabOfTheMainWindow()
    {
        QFETCH(QSize, size);
        QFETCH(QPalette, palette);
        QFETCH(int, points);
        QApplication::setPalette(palette);
        setPoints(points);
        Program program;
        program.start();
        program.window.resize(size);
        QTRY_COMPARE(program.window.size(), size);
        walkTabs(program, points <= 9 && size.height() > 700);
    }

    void theListOfTheConsoleLine_data() { everyOtherWindow_data(); }

    void theListOfTheConsoleLine()
    {
        QFETCH(QPalette, palette);
        QFETCH(int, points);
        QApplication::setPalette(palette);
        setPoints(points);
        Program program;
        program.start();
        program.window.resize(1024, 700);
        auto *line = program.find<QComboBox>(u"comdirect"_s);
        line->setFocus();
        QTest::keyClicks(line, u"sv_mapr"_s);
        QApplication::processEvents();
        const auto *list = program.find<QAbstractItemView>(u"lstcomplete"_s);
        QVERIFY(list->isVisible());
        checkWindow(&program.window);
        const QPalette colours = list->palette();
        QVERIFY(contrast(colours.color(QPalette::Active, QPalette::HighlightedText),
                         colours.color(QPalette::Active, QPalette::Highlight)) >= 3);
        const auto *popup = program.find<QWidget>(u"frmcomplete"_s);
        QVERIFY(popup->autoFillBackground()); // nothing of the window is seen through it
        QVERIFY(program.window.rect().contains(popup->geometry()));
    }

    void everyTabAfterAChangeOfThePalette()
    {
        Program program;
        program.start();
        for (const QPalette &palette : {darkPalette(), QPalette()}) {
            QApplication::setPalette(palette);
            QApplication::processEvents();
            walkTabs(program, true);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void theWindowOnASmallScreenHasAllInReach()
    {
        Program program;
        program.start();
        const QRect room = program.window.screen()->availableGeometry();
        QVERIFY(room.contains(program.window.frameGeometry()));
        walkTabs(program, true);
    }

private:
    static void setPoints(int points)
    {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }

    /// `isWhole`: no page needs to be scrolled.
    static void walkTabs(const Program &program, bool isWhole)
    {
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            QApplication::processEvents();
            checkWindow(&program.window);
            if (QTest::currentTestFailed())
                return;
            const auto *area = tabs->currentWidget()->findChild<QScrollArea *>();
            const bool scrolls = area->verticalScrollBar()->isVisible() || area->horizontalScrollBar()->isVisible();
            const QSize least = area->widget()->minimumSizeHint();
            QVERIFY2(!scrolls || !isWhole, qPrintable(u"%1 scrolls: %2 x %3 in %4 x %5"_s.arg(tabs->tabText(tab))
                                                          .arg(least.width())
                                                          .arg(least.height())
                                                          .arg(area->width())
                                                          .arg(area->height())));
        }
        QVERIFY2(tabs->tabBar()->width() <= tabs->width(), "all tabs can be seen");
    }

private slots:
    void everyOtherWindow_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<int>("points");
        QTest::newRow("light") << QPalette() << 9;
        QTest::newRow("dark") << darkPalette() << 9;
        QTest::newRow("large letters") << QPalette() << 13;
    }

    void everyOtherWindow()
    {
        QFETCH(QPalette, palette);
        QFETCH(int, points);
        QApplication::setPalette(palette);
        setPoints(points);
        Program program;
        program.start();
        program.trigger(u"mpref"_s);
        program.trigger(u"helpabout"_s);
        program.trigger(u"mledger"_s);
        program.click(u"cmdhob"_s);
        program.trigger(u"mcheck"_s);
        program.trigger(u"mrotation"_s);
        program.trigger(u"mtimetable"_s);
        program.trigger(u"mbook"_s);
        program.output.showprogress(u"Working"_s, Progress::Replace);
        for (const QString &name : {u"frmpref"_s, u"frmAbout"_s, u"frmhob"_s, u"frmledger"_s, u"frmcheck"_s,
                                    u"frmrotation"_s, u"frmtimetable"_s, u"frmbook"_s, u"frmprogress"_s}) {
            const QWidget *window = otherWindow(name);
            QVERIFY2(window, qPrintable(name));
            QApplication::processEvents();
            checkWindow(window);
            if (QTest::currentTestFailed())
                break;
        }
        program.output.showprogress({}, Progress::Replace);
    }

    void everyPageOfThePlayerBook_data() { everyOtherWindow_data(); }

    void everyPageOfThePlayerBook()
    {
        QFETCH(QPalette, palette);
        QFETCH(int, points);
        QApplication::setPalette(palette);
        setPoints(points);
        Program program;
        program.start();
        program.trigger(u"mbook"_s);
        QWidget *window = otherWindow(u"frmbook"_s);
        QVERIFY(window);
        checkWindow(window);
        window->findChild<QAbstractButton *>(u"chkbook"_s)->click();
        auto *pages = window->findChild<QTabWidget *>(u"tabbook"_s);
        if (points <= 9)
            window->resize(1024, 660); // with its frame 700
        for (int page = 0; page < pages->count() && !QTest::currentTestFailed(); ++page) {
            pages->setCurrentIndex(page);
            QApplication::processEvents();
            checkWindow(window);
        }
        const QSize least = window->minimumSizeHint();
        QVERIFY2(points > 9 || (least.width() <= 1024 && least.height() <= 660),
                 qPrintable(u"%1 x %2"_s.arg(least.width()).arg(least.height())));
    }
};

WINDOW_TEST(EveryWidgetTest)
#include "tst_every_widget.moc"
