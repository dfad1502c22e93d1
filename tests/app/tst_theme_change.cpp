// SPDX-License-Identifier: MIT
#include "connected_program.h"
#include "output/rcon_pane.h"
#include "window_test.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QPalette theme(const QColor &window, const QColor &base, const QColor &text)
{
    QPalette theme;
    for (const auto role : {QPalette::Window, QPalette::Button})
        theme.setColor(role, window);
    theme.setColor(QPalette::Base, base);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        theme.setColor(role, text);
    return theme;
}

const QPalette light = theme(QColor(240, 240, 240), Qt::white, Qt::black);
const QPalette dark = theme(QColor(50, 50, 50), QColor(30, 30, 30), Qt::white);

void changeTo(const QPalette &theme)
{
    QApplication::setPalette(theme);
    QApplication::processEvents();
}

/// The colour of most of what is drawn of a widget.
QColor groundOf(QWidget *widget)
{
    const QImage picture = widget->grab().toImage();
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QRgb most = 0;
    for (const auto &[colour, count] : counts.asKeyValueRange())
        most = count > counts.value(most) ? colour : most;
    return QColor(most);
}

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

/// The desktop changes its colours while the program runs.
class ThemeChangeTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        failOnWarnings();
        QApplication::setPalette(light);
    }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void aLockedFieldTakesTheNewColours_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tab");
        QTest::newRow("address") << u"comserver"_s << 0;
        QTest::newRow("port") << u"comport"_s << 0;
        QTest::newRow("password") << u"txtPWD"_s << 0;
        QTest::newRow("free sets") << u"txtfreesets"_s << 6;
    }

    void aLockedFieldTakesTheNewColours()
    {
        QFETCH(QString, name);
        QFETCH(int, tab);
        ConnectedProgram connected({.tab = tab});
        auto *field = connected.program.find<QWidget>(name);
        for (const QPalette &next : {light, dark, light}) {
            changeTo(next);
            QCOMPARE(groundOf(field), next.color(QPalette::Window));
            const auto *combo = qobject_cast<const QComboBox *>(field);
            const QWidget *line = combo ? combo->lineEdit() : field;
            QCOMPARE(line->palette().color(QPalette::Text), next.color(QPalette::Text));
            QCOMPARE(line->palette().color(QPalette::Base), next.color(QPalette::Window));
        }
    }

    void anUnlockedFieldTakesThemToo()
    {
        ConnectedProgram connected;
        connected.program.click(u"cmdconnect"_s); // disconnects
        changeTo(dark);
        for (const QString &name : {u"comserver"_s, u"comport"_s, u"txtPWD"_s})
            QCOMPARE(groundOf(connected.program.find<QWidget>(name)), dark.color(QPalette::Base));
    }

    void aFieldThatIsLockedLaterTakesTheColoursOfThatTime()
    {
        Program program;
        program.start();
        changeTo(dark);
        PracticeServer server;
        listenOrFail(server);
        answerBriefly(server);
        program.connectTo(server);
        QCOMPARE(groundOf(program.find<QWidget>(u"txtPWD"_s)), dark.color(QPalette::Window));
    }

    void theColourCodesStayReadable()
    {
        Program program;
        program.start();
        for (const QPalette &next : {dark, light}) {
            changeTo(next);
            for (int code = 0; code <= 7; ++code) {
                const auto *label = program.find<QLabel>(u"lblcolour_%1"_s.arg(code));
                const QColor text = label->palette().color(QPalette::WindowText);
                QVERIFY2(contrast(text, label->palette().color(QPalette::Window)) >= 4.5, qPrintable(label->text()));
                if (code == 0)
                    QCOMPARE(text, next.color(QPalette::WindowText));
            }
        }
    }

    void thePreviewKeepsTheColoursOfTheGame()
    {
        ConnectedProgram connected({.tab = 6, .connects = false});
        auto *preview = connected.program.find<QWidget>(u"lblpreview"_s);
        const QColor before = groundOf(preview);
        QVERIFY(contrast(before, Qt::white) > 10);
        for (const QPalette &next : {dark, light}) {
            changeTo(next);
            QCOMPARE(groundOf(preview), before);
        }
    }

    void everyTextOfTheWindowStaysReadable()
    {
        ConnectedProgram connected;
        for (const QPalette &next : {dark, light}) {
            changeTo(next);
            for (const QWidget *widget : connected.program.window.findChildren<QWidget *>()) {
                const QPalette shown = widget->palette();
                const QString who =
                    widget->objectName() + u' ' + QString::fromLatin1(widget->metaObject()->className());
                QVERIFY2(contrast(shown.color(QPalette::Text), shown.color(QPalette::Base)) >= 4.5, qPrintable(who));
                const QWidget &pane = connected.program.output.pane();
                if (widget == &pane || pane.isAncestorOf(widget))
                    continue; // this is the colour of its edge
                QVERIFY2(contrast(shown.color(QPalette::WindowText), shown.color(QPalette::Window)) >= 4.5,
                         qPrintable(who));
            }
        }
    }
};

WINDOW_TEST(ThemeChangeTest)
#include "tst_theme_change.moc"
