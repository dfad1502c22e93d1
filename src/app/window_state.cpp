// SPDX-License-Identifier: MIT
#include "window_state.h"

#include "base/window_place.h"
#include "settings/ini_file.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString section = u"window"_s;
constexpr int buffer = 1000;

QString textOf(const QList<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(u',');
}

/// The numbers of a text that has exactly so many; else nothing.
std::optional<QList<int>> numbersIn(const QString &text, qsizetype count)
{
    QList<int> numbers;
    for (const QStringView each : QStringView(text).split(u',')) {
        bool isNumber = false;
        numbers.append(each.toInt(&isNumber));
        if (!isNumber)
            return {};
    }
    return numbers.size() == count ? std::optional(numbers) : std::nullopt;
}

QList<QRect> screenRooms()
{
    QList<QRect> rooms;
    for (const QScreen *screen : QGuiApplication::screens())
        rooms.append(screen->availableGeometry());
    return rooms;
}

/// The free part of the screen on which most of the upper edge of `window` lies, the first for a draw.
QRect roomFor(QRect window)
{
    const QList<QRect> rooms = screenRooms();
    const QRect edge(window.left(), window.top(), window.width(), 1);
    return *std::ranges::max_element(rooms, {}, [edge](QRect room) { return (room & edge).width(); });
}

QString placeOf(const QMainWindow &window)
{
    const QRect place = window.isMaximized() || window.isFullScreen() ? window.normalGeometry() : window.geometry();
    return textOf({place.x(), place.y(), place.width(), place.height()});
}

bool putTo(QMainWindow &window, const QString &text)
{
    const auto numbers = numbersIn(text, 4);
    if (!numbers || numbers->at(2) < 1 || numbers->at(3) < 1)
        return false;
    constexpr int farthest = 1'000'000; // beyond any desktop, and sums of it are still numbers
    if (std::ranges::any_of(*numbers, [](int each) { return each < -farthest || each > farthest; }))
        return false;
    const QRect place(numbers->at(0), numbers->at(1), numbers->at(2), numbers->at(3));
    if (!canBeReached(place, screenRooms()))
        return false;
    window.setGeometry(withinScreen(place, roomFor(place), frameOf(window)));
    return true;
}

// The frame that the desktop has given to the window may be wider than its estimate.
void keepWithinScreen(QMainWindow &window)
{
    const QRect place = window.geometry();
    const QRect within = withinScreen(place, roomFor(place), frameOf(window));
    if (window.isVisible() && !(window.windowState() & ~Qt::WindowActive) && within != place)
        window.setGeometry(within);
}

bool maximize(QMainWindow &window, const QString &text)
{
    if (text != u"0" && text != u"1")
        return false;
    window.setWindowState(window.windowState().setFlag(Qt::WindowMaximized, text == u"1"));
    return true;
}

bool setSizes(QSplitter &splitter, const QString &text)
{
    const auto sizes = numbersIn(text, splitter.count());
    constexpr int largest = 100'000; // pixels, beyond any desktop
    if (!sizes || std::ranges::any_of(*sizes, [](int size) { return size < 1 || size > largest; }))
        return false;
    splitter.setSizes(*sizes);
    return true;
}

bool choose(QTabWidget &tabs, const QString &text)
{
    const auto tab = numbersIn(text, 1);
    if (!tab || tab->first() < 0 || tab->first() >= tabs.count())
        return false;
    tabs.setCurrentIndex(tab->first());
    return true;
}

} // namespace

WindowState::WindowState(QMainWindow &window_, IniFile &ini_, std::function<void()> divide_)
    : QObject(&window_), window(window_), ini(ini_), divide(std::move(divide_))
{
    keep({u"maximized"_s, [this] { return QString::number(static_cast<int>(window.isMaximized())); },
          [this](const QString &text) { return maximize(window, text); }});
    keep({u"place"_s, [this] { return placeOf(window); }, [this](const QString &text) { return putTo(window, text); }});
}

void WindowState::keep(const Part &part)
{
    parts.append(part);
}

void WindowState::keep(QSplitter &splitter)
{
    keep({splitter.objectName(), [&splitter] { return textOf(splitter.sizes()); },
          [&splitter](const QString &text) { return setSizes(splitter, text); }});
}

void WindowState::keep(QTabWidget &tabs)
{
    keep({u"tab"_s, [&tabs] { return QString::number(tabs.currentIndex()); },
          [&tabs](const QString &text) { return choose(tabs, text); }});
}

void WindowState::placeWithinScreen()
{
    constexpr double usualPoints = 9;
    const double larger = std::max(window.font().pointSizeF() / usualPoints, 1.0);
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    QRect place(QPoint(), window.size() * larger);
    place.moveCenter(room.center());
    window.setGeometry(withinScreen(place, room, frameOf(window)));
    divide();
}

void WindowState::restore()
{
    stored = ini.contents();
    restoreParts();
}

void WindowState::restoreParts()
{
    for (; restored < parts.size(); ++restored) {
        const Part &part = parts.at(restored);
        defaults.insert(part.key, part.text());
        (void)part.show(stored.value(section, part.key, buffer)); // what is broken stays as it is at first
    }
}

void WindowState::restoreRest()
{
    restoreParts();
    takeNote();
}

std::optional<Fault> WindowState::reset()
{
    for (const Part &part : std::as_const(parts))
        (void)part.show(defaults.value(part.key));
    divide();
    takeNote();
    return ini.removeSection(section);
}

void WindowState::takeNote()
{
    before.clear();
    // The layouts move what has been added or changed only when the event loop gets to it.
    QTimer::singleShot(0, this, [this] {
        keepWithinScreen(window);
        before = texts();
    });
}

void WindowState::save()
{
    QList<IniEntry> changed;
    if (!before.isEmpty()) {
        const QMap<QString, QString> now = texts();
        for (auto text = now.cbegin(); text != now.cend(); ++text) {
            if (text.value() != before.value(text.key()))
                changed.append({section, text.key(), text.value()});
        }
    }
    if (!changed.isEmpty())
        (void)ini.write(changed); // where a window stood is not worth a box when the program ends
}

QMap<QString, QString> WindowState::texts() const
{
    QMap<QString, QString> all;
    for (const Part &part : parts)
        all.insert(part.key, part.text());
    return all;
}
