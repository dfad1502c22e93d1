// SPDX-License-Identifier: MIT
#include "base/plain_frames.h"
#include "window_test.h"

#include <QGroupBox>
#include <QTabWidget>

namespace {

// The colours met from the left edge to the middle, at half the height, each once.
QList<QColor> coloursInwards(QWidget &widget)
{
    const QImage picture = widget.grab().toImage();
    QList<QColor> colours;
    for (int column = 0; column < picture.width() / 2; ++column) {
        const QColor colour = picture.pixelColor(column, picture.height() / 2);
        if (colours.isEmpty() || colours.last() != colour)
            colours.append(colour);
    }
    return colours;
}

} // namespace

class PlainFramesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theyStandForQtsOwnStyleOnly()
    {
        const QStyle *style = QApplication::style();
        QVERIFY(qobject_cast<const PlainFrames *>(style) || style->name() != u"fusion");
    }

    void aGroupHasALineAroundIt()
    {
        PlainFrames style;
        QGroupBox group(QStringLiteral("Players"));
        group.setStyle(&style);
        group.resize(200, 200);
        const QList<QColor> colours = coloursInwards(group);
        QCOMPARE(colours.size(), 2);
        QVERIFY(colours.first().lightness() < colours.last().lightness());
        QCOMPARE(colours.last(), group.palette().window().color());
    }

    void theTitleOfAGroupStandsAboveItsFrame()
    {
        PlainFrames style;
        QGroupBox group(QStringLiteral("Players"));
        group.setStyle(&style);
        group.resize(200, 200);
        const QImage picture = group.grab().toImage();
        int top = 0;
        while (picture.pixelColor(0, top) == group.palette().window().color())
            ++top;
        QVERIFY(top >= group.fontMetrics().height());
        QVERIFY(top < group.fontMetrics().height() * 2);
    }

    void aTabHasALineAroundItAndALighterGround()
    {
        PlainFrames style;
        QTabWidget tabs;
        tabs.setStyle(&style);
        tabs.addTab(new QWidget, QStringLiteral("Players"));
        tabs.resize(200, 200);
        tabs.show(); // it has no frame before
        const QList<QColor> colours = coloursInwards(tabs);
        const QColor ground = tabs.palette().window().color();
        QCOMPARE(colours.size(), 2);
        QVERIFY(colours.first().lightness() < ground.lightness());
        QVERIFY(colours.last().lightness() > ground.lightness());
    }
};

WINDOW_TEST_MAIN(PlainFramesTest)
#include "tst_plain_frames.moc"
