// SPDX-License-Identifier: MIT
#include "activation.h"
#include "base/controls.h"
#include "other_windows.h"
#include "program.h"
#include "window_test.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int sameColumn = 4; // pixels

const QStringList numberBoxes =
    u"txtmaxclients txtmaxping txtmaxrate txtbantime txtdmscorelim txtdmtimelim txttdmscorelim txttdmtimelim "
    "txthqscorelim txthqtimelim txtctfscorelim txtctftimelim txttimelim txtscorelim txtroundlim txtroundlen txtgrace "
    "txtfreesets txtinterval txtrifle txtsup txtsmg txtsniper txtwave txtport txtmesset txtmessint"_s.split(u' ');

QPoint placeOf(const QWidget *widget)
{
    return widget->mapTo(widget->window(), QPoint());
}

QRect areaOf(const QWidget *widget)
{
    return {placeOf(widget), widget->size()};
}

const QWidget *innermostAround(const QWidget *one, const QWidget *other)
{
    const QWidget *around = one->parentWidget();
    while (!around->isAncestorOf(other))
        around = around->parentWidget();
    return around;
}

/// The part of `container` in which `widget` is.
QRect partOf(const QWidget *container, const QWidget *widget)
{
    while (widget->parentWidget() != container)
        widget = widget->parentWidget();
    return areaOf(widget);
}

/// True when one who reads the controls in `before` goes on to `next`: to the right in the same line, to a line below,
/// or to the top of a new column, which is to the right of all that the frame has had so far.
bool readsOn(const QWidgetList &before, const QWidget *next)
{
    const QWidget *last = before.last();
    const QWidget *frame = innermostAround(last, next);
    const QRect from = partOf(frame, last);
    const QRect to = partOf(frame, next);
    const bool isSameLine = to.top() <= from.bottom() && from.top() <= to.bottom();
    if (isSameLine)
        return to.left() > from.left();
    if (to.top() > from.bottom())
        return true;
    return std::ranges::all_of(before, [&](const QWidget *each) {
        return !frame->isAncestorOf(each) || partOf(frame, each).right() < to.left();
    });
}

QString described(const QWidget *widget)
{
    return QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName() + u" in "_s +
           widget->parentWidget()->objectName();
}

bool isControl(const QWidget *widget)
{
    const bool isPart = qobject_cast<const QComboBox *>(widget->parentWidget()) ||
                        qobject_cast<const QAbstractItemView *>(widget->parentWidget()) ||
                        qobject_cast<const QLineEdit *>(widget->parentWidget()) ||
                        widget->objectName().startsWith(u"qt_");
    return !isPart && (qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
                       qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractItemView *>(widget) ||
                       qobject_cast<const QPlainTextEdit *>(widget) || qobject_cast<const QAbstractSlider *>(widget) ||
                       qobject_cast<const ClickLabel *>(widget));
}

/// The controls in `page` at which the Tab key stops, from the first on; `entry` has the focus before.
QWidgetList tabStops(const QWidget *page, QWidget *entry)
{
    entry->setFocus();
    QWidgetList stops;
    for (int presses = 0; presses < 80; ++presses) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget *now = QApplication::focusWidget();
        if (!page->isAncestorOf(now) || stops.contains(now))
            break;
        stops.append(now);
    }
    return stops;
}

void checkReading(const QWidgetList &stops)
{
    for (qsizetype stop = 1; stop < stops.size(); ++stop)
        QVERIFY2(readsOn(stops.first(stop), stops.at(stop)),
                 qPrintable(stops.at(stop - 1)->objectName() + u" -> "_s + stops.at(stop)->objectName()));
}

// A scroll bar beside a box for the same number is left to the mouse; of radio buttons the arrow keys reach the rest.
void checkAllReached(const QWidget *page, const QWidgetList &stops)
{
    for (const QWidget *widget : page->findChildren<QWidget *>()) {
        const bool counts = isControl(widget) && widget->isVisible() && widget->isEnabled() &&
                            !qobject_cast<const QScrollBar *>(widget) && !qobject_cast<const QRadioButton *>(widget) &&
                            widget->focusPolicy() != Qt::ClickFocus;
        if (counts)
            QVERIFY2(stops.contains(widget), qPrintable(described(widget) + u" is not reached"_s));
    }
}

/// True when the field of `label` stands behind it in its line.
bool isBeside(const QLabel *label)
{
    const QRect field = areaOf(label->buddy());
    const QRect caption = areaOf(label);
    return field.left() > caption.right() && field.top() <= caption.bottom() && caption.top() <= field.bottom();
}

void checkColumns(const QWidget *window)
{
    for (const QLabel *one : window->findChildren<QLabel *>()) {
        for (const QLabel *other : window->findChildren<QLabel *>()) {
            const bool isColumn = one->isVisible() && other->isVisible() && one->buddy() && other->buddy() &&
                                  one->parentWidget() == other->parentWidget() && one->x() == other->x() &&
                                  one->y() < other->y() && isBeside(one) && isBeside(other);
            if (isColumn)
                QVERIFY2(std::abs(placeOf(one->buddy()).x() - placeOf(other->buddy()).x()) <= sameColumn,
                         qPrintable(one->buddy()->objectName() + u" and "_s + other->buddy()->objectName()));
        }
    }
}

void checkNumbers(const QWidget *window)
{
    for (const TextBox *box : window->findChildren<TextBox *>()) {
        if (!box->isVisible())
            continue;
        const int digit = box->fontMetrics().horizontalAdvance(u'0');
        if (numberBoxes.contains(box->objectName())) {
            QVERIFY2(box->width() >= 6 * digit, qPrintable(box->objectName() + u" is too narrow"_s));
            QVERIFY2(box->width() <= 10 * digit, qPrintable(box->objectName() + u" is too wide"_s));
        }
    }
}

} // namespace

/// How the forms of the pages and windows lie, and how the keyboard goes through them.
class FormsTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        failOnWarnings();
        usual = QApplication::font();
    }
    void cleanup() { QApplication::setFont(usual); }

    void theTabKeyReadsEveryPage()
    {
        Program program;
        program.start();
        program.find<QWidget>(u"cmdsmrpaste_0"_s)->setEnabled(true);
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            const QWidgetList stops = tabStops(tabs->currentWidget(), tabs->tabBar());
            QVERIFY(!stops.isEmpty());
            checkReading(stops);
            checkAllReached(tabs->currentWidget(), stops);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void theWeaponsAreReadFrameByFrame()
    {
        Program program;
        program.start();
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        tabs->setCurrentIndex(3);
        QStringList names;
        for (const QWidget *stop : tabStops(tabs->currentWidget(), tabs->tabBar()))
            names.append(stop->objectName());
        QCOMPARE(names.first(6).join(u' '),
                 u"cmdpopwep cmdwepsetserv cmdwepselall cmdwepunselall cmdnosnipers cmdriflesonly"_s);
        QCOMPARE(names.sliced(6, 5).join(u' '), u"chkenfield chkenfieldsniper chksten chkbren chkppsh"_s);
        QCOMPARE(names.size(), 6 + 21);
    }

    void theTabKeyReadsTheOtherWindows()
    {
        Program program;
        program.start();
        program.click(u"cmdhob"_s);
        program.trigger(u"mpref"_s);
        program.trigger(u"mledger"_s);
        program.trigger(u"mrotation"_s);
        for (const QString &name : {u"frmhob"_s, u"frmpref"_s, u"frmledger"_s, u"frmrotation"_s}) {
            QWidget *window = otherWindow(name);
            QVERIFY(window);
            window->activateWindow();
            QVERIFY(becomesActive(window));
            for (const QString &box :
                 {u"chkautoplayer"_s, u"chkauto999"_s, u"chkautoconnect"_s, u"chkautomessages"_s}) {
                if (auto *check = window->findChild<QCheckBox *>(box))
                    check->setChecked(true);
            }
            const QString last = name == u"frmledger"     ? u"cmdledgersave"_s
                                 : name == u"frmrotation" ? u"cmdrotconfig"_s
                                                          : u"cmdexit"_s;
            QWidgetList stops = tabStops(window, window->findChild<QWidget *>(last));
            if (name == u"frmhob") // the walk began behind "Exit", which ends the first line
                std::ranges::rotate(stops, std::ranges::find(stops, u"cmdhobpop"_s, &QObject::objectName));
            checkReading(stops);
            checkAllReached(window, stops);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void theTabKeyReadsThePlayerBook()
    {
        Program program;
        program.start();
        program.trigger(u"mbook"_s);
        QWidget *window = otherWindow(u"frmbook"_s);
        QVERIFY(window && becomesActive(window));
        window->findChild<QAbstractButton *>(u"chkbook"_s)->click();
        auto *pages = window->findChild<QTabWidget *>(u"tabbook"_s);
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            const QWidgetList stops = tabStops(pages->currentWidget(), pages->tabBar());
            QVERIFY(!stops.isEmpty());
            checkReading(stops);
            checkAllReached(pages->currentWidget(), stops);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void fieldsStandInColumnsAndNumbersAreNarrow_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("points");
        QTest::newRow("1140 x 760") << QSize(1140, 760) << 0;
        QTest::newRow("1920 x 1040") << QSize(1920, 1040) << 0;
        QTest::newRow("1920 x 1040, 13 pt") << QSize(1920, 1040) << 13;
    }

    void fieldsStandInColumnsAndNumbersAreNarrow()
    {
        QFETCH(QSize, size);
        QFETCH(int, points);
        QFont font = usual;
        if (points > 0)
            font.setPointSize(points);
        QApplication::setFont(font);
        Program program;
        program.start();
        program.window.resize(size);
        program.click(u"cmdhob"_s);
        program.trigger(u"mpref"_s);
        for (const QString &name : {u"frmhob"_s, u"frmpref"_s})
            otherWindow(name)->resize(1400, 700);
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        QWidgetList windows{otherWindow(u"frmhob"_s), otherWindow(u"frmpref"_s)};
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            QApplication::processEvents();
            for (const QWidget *window : QWidgetList{tabs->currentWidget()} + (tab == 0 ? windows : QWidgetList())) {
                checkColumns(window);
                checkNumbers(window);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    void anotherFontMakesTheNumbersWider()
    {
        Program program;
        program.start();
        const auto *box = program.find<TextBox>(u"txtmaxping"_s);
        const int before = box->width();
        QFont font = usual;
        font.setPointSize(2 * usual.pointSize());
        QApplication::setFont(font);
        QTRY_VERIFY(box->width() > before * 3 / 2);
    }

    void emptyListsSayWhatComesThere_data()
    {
        QTest::addColumn<QString>("list");
        for (const QString &list : {u"lstmessages"_s, u"lstservers"_s, u"lstmaps"_s, u"lstmess"_s, u"msfplayers"_s})
            QTest::newRow(qPrintable(list)) << list;
    }

    void emptyListsSayWhatComesThere()
    {
        QFETCH(QString, list);
        Program program;
        program.start();
        auto *view = program.find<QAbstractItemView>(list);
        QVERIFY(!view->property("placeholderText").toString().isEmpty());
        QCOMPARE(view->model()->rowCount(), 0);
        const QImage shown = view->viewport()->grab().toImage();
        view->setProperty("placeholderText", QString());
        QVERIFY2(view->viewport()->grab().toImage() != shown, "the text is seen");
    }

    void aListWithRowsHasNoPlaceholder()
    {
        Program program;
        program.start();
        program.click(u"cmddefmaps"_s);
        auto *view = program.find<QAbstractItemView>(u"lstmaps"_s);
        const QImage shown = view->viewport()->grab().toImage();
        view->setProperty("placeholderText", QString());
        QCOMPARE(view->viewport()->grab().toImage(), shown);
    }

    void thePaneAndTheOrderOfPlayersHavePlaceholders()
    {
        Program program;
        program.start();
        QVERIFY(!program.find<QPlainTextEdit>(u"txtoutput"_s)->placeholderText().isEmpty());
        QCOMPARE(program.pane(), QString());
        const auto *order = program.find<QComboBox>(u"complayersort"_s);
        QVERIFY(!order->placeholderText().isEmpty());
        QCOMPARE(order->currentIndex(), -1);
        QCOMPARE(order->currentText(), QString());
    }

private:
    QFont usual;
};

WINDOW_TEST(FormsTest)
#include "tst_forms.moc"
