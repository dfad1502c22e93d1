// SPDX-License-Identifier: MIT
#include "base/plain_frames.h"
#include "window_test.h"

#include <QDir>
#include <QGroupBox>
#include <QLineEdit>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 200; // pixels; Qt's own frames take threads from a hundred on

// The colours met in the picture on the way between two places, each once.
QList<QColor> coloursBetween(const QImage &picture, QPoint from, QPoint to)
{
    const QPoint way = to - from;
    const int steps = std::max(std::abs(way.x()), std::abs(way.y()));
    QList<QColor> colours;
    for (int step = 0; step <= steps; ++step) {
        const QColor colour = picture.pixelColor(from + way * step / steps);
        if (colours.isEmpty() || colours.last() != colour)
            colours.append(colour);
    }
    return colours;
}

QImage pictureOf(QWidget &widget)
{
    return widget.grab().toImage();
}

qsizetype threads()
{
    return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

QPalette dark()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(50, 50, 50));
    palette.setColor(QPalette::Button, QColor(60, 60, 60));
    palette.setColor(QPalette::WindowText, QColor(240, 240, 240));
    palette.setColor(QPalette::ButtonText, QColor(240, 240, 240));
    return palette;
}

constexpr QPoint middle(side / 2, side / 2);

} // namespace

class PlainFramesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    // First, while Qt has no threads yet that it could use again.
    void noThreadIsStartedForThem()
    {
        if (threads() == 0)
            QSKIP("the system does not tell a program's threads here");
        PlainFrames style;
        QTabWidget tabs;
        tabs.setStyle(&style);
        auto *group = new QGroupBox(u"Players"_s);
        group->setStyle(&style);
        tabs.addTab(group, u"Players"_s);
        tabs.resize(2 * side, 2 * side);
        tabs.show();
        const qsizetype before = threads();
        (void)tabs.grab();
        QCOMPARE(threads(), before);
    }

    void theyStandInForQtsOwnStyle()
    {
        const QStyle *style = QApplication::style();
        QVERIFY(qobject_cast<const PlainFrames *>(style) || style->name() != u"fusion");
    }

    void aGroupHasALineOnEachSide_data()
    {
        QTest::addColumn<QPoint>("edge");
        QTest::newRow("left") << QPoint(0, side / 2);
        QTest::newRow("right") << QPoint(side - 1, side / 2);
        QTest::newRow("bottom") << QPoint(side / 2, side - 1);
    }

    void aGroupHasALineOnEachSide()
    {
        QFETCH(QPoint, edge);
        PlainFrames style;
        for (const QPalette &palette : {QPalette(), dark()}) {
            QGroupBox group(u"Players"_s);
            group.setStyle(&style);
            group.setPalette(palette);
            group.resize(side, side);
            const QList<QColor> colours = coloursBetween(pictureOf(group), edge, middle);
            QCOMPARE(colours.size(), 2);
            QCOMPARE(colours.last(), palette.window().color());
            QVERIFY(std::abs(colours.first().lightness() - colours.last().lightness()) >= 20);
        }
    }

    void theLineOfAGroupIsSeenOnAPage()
    {
        for (const QPalette &palette : {QPalette(), dark()}) {
            PlainFrames style;
            QGroupBox group(u"Players"_s);
            group.setStyle(&style);
            group.setPalette(palette);
            group.resize(side, side);
            QTabWidget tabs;
            tabs.setStyle(&style);
            tabs.setPalette(palette);
            tabs.addTab(new QWidget, u"Players"_s);
            tabs.resize(side, side);
            tabs.show();
            const int line = pictureOf(group).pixelColor(0, side / 2).lightness();
            QVERIFY(std::abs(line - pictureOf(tabs).pixelColor(middle).lightness()) >= 20);
        }
    }

    void aBoxForTextHasALineOnEachSide_data() { aGroupHasALineOnEachSide_data(); }

    void aBoxForTextHasALineOnEachSide()
    {
        QFETCH(QPoint, edge);
        PlainFrames style;
        QLineEdit box;
        box.setStyle(&style);
        box.resize(side, side);
        const QList<QColor> colours = coloursBetween(pictureOf(box), edge, middle);
        QCOMPARE(colours.size(), 2);
        QCOMPARE(colours.last(), box.palette().base().color());
        QVERIFY(colours.last().lightness() - colours.first().lightness() >= 50);
    }

    void theFrameOfTheBoxThatIsTypedIntoHasAColourOfItsOwn()
    {
        PlainFrames style;
        QLineEdit box;
        box.setStyle(&style);
        box.resize(side, side);
        box.show();
        const QColor before = pictureOf(box).pixelColor(0, side / 2);
        QVERIFY(QTest::qWaitForWindowActive(&box));
        box.setFocus();
        QVERIFY(box.hasFocus());
        const QColor focused = pictureOf(box).pixelColor(0, side / 2);
        QVERIFY(focused.saturation() > before.saturation());
    }

    void theTitleOfAGroupStandsAboveItsFrame_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("a title") << u"Players"_s;
        QTest::newRow("none") << QString();
    }

    void theTitleOfAGroupStandsAboveItsFrame()
    {
        QFETCH(QString, title);
        PlainFrames style;
        QGroupBox group(title);
        group.setStyle(&style);
        group.resize(side, side);
        const QImage picture = pictureOf(group);
        int top = 0;
        while (picture.pixelColor(side - 2, top) == group.palette().window().color())
            ++top;
        const int height = group.fontMetrics().height();
        if (title.isEmpty())
            QVERIFY(top < height);
        else
            QVERIFY(top >= height && top < 2 * height);
    }

    void aTabHasALineOnEachSide_data() { aGroupHasALineOnEachSide_data(); }

    void aTabHasALineOnEachSide()
    {
        QFETCH(QPoint, edge);
        PlainFrames style;
        QTabWidget tabs;
        tabs.setStyle(&style);
        tabs.addTab(new QWidget, u"Players"_s);
        tabs.resize(side, side);
        tabs.show(); // it has no frame before
        const QList<QColor> colours = coloursBetween(pictureOf(tabs), edge, middle);
        QCOMPARE(colours.size(), 2);
        QVERIFY(colours.first().lightness() < tabs.palette().window().color().lightness());
    }

    void thePageHasTheColourOfItsTab()
    {
        if (!qobject_cast<PlainFrames *>(QApplication::style()))
            QSKIP("the style here is not Qt's own");
        for (const QPalette &palette : {QPalette(), dark(), QPalette(QColor(120, 160, 220))}) {
            QTabWidget tabs;
            tabs.setPalette(palette);
            tabs.addTab(new QWidget, u"Players"_s);
            tabs.resize(side, side);
            tabs.show();
            const QImage picture = pictureOf(tabs);
            const QRect tab = tabs.tabBar()->tabRect(0);
            const QColor lower = picture.pixelColor(tab.left() + 8, tab.bottom() - 3);
            const QColor page = picture.pixelColor(middle);
            QVERIFY(std::abs(lower.red() - page.red()) <= 5);
            QVERIFY(std::abs(lower.green() - page.green()) <= 5);
            QVERIFY(std::abs(lower.blue() - page.blue()) <= 5);
        }
    }

    void onlyThePictureOfAMenuBarThatIsTooNarrowIsMissing()
    {
        const PlainFrames style;
        QVERIFY(style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, nullptr).isNull());
        QVERIFY(!style.standardIcon(QStyle::SP_MessageBoxWarning, nullptr, nullptr).isNull());
    }
};

WINDOW_TEST(PlainFramesTest)
#include "tst_plain_frames.moc"
