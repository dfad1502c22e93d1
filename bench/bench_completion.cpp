// SPDX-License-Identifier: MIT
#include "app/composition.h"
#include "base/application.h"
#include "base/clock.h"
#include "base/dialog_prompts.h"
#include "median.h"
#include "rcon/words_file.h"
#include "row.h"

#include <QComboBox>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int listed = 5000; // words of the server; those of the game come to them
constexpr int windows = 7;
constexpr int rounds = 20;          // in each window
constexpr qint64 patience = 10'000; // milliseconds
constexpr double frame = 16;        // milliseconds that one picture of a screen lasts

/// The console line with its list: a key goes in, and the time runs until the list has been painted.
class Line final : public QObject {
public:
    explicit Line(const QWidget &window_) : window(window_), line(window_.findChild<QComboBox *>(u"comdirect"_s))
    {
        line->setFocus();
        qApp->installEventFilter(this);
    }

    /// In milliseconds.
    double press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QElapsedTimer time;
        time.start();
        isPainted = false;
        QTest::keyClick(line, key, modifiers);
        const QDeadlineTimer end(patience);
        while (!isPainted) {
            if (end.hasExpired())
                qFatal("the list does not appear");
            QApplication::processEvents();
        }
        return static_cast<double>(time.nsecsElapsed()) / 1e6;
    }
    void type(const QString &text) { QTest::keyClicks(line, text); }
    void clear()
    {
        QTest::keyClick(line, Qt::Key_Escape);
        line->clearEditText();
        QApplication::processEvents();
    }
    [[nodiscard]] qsizetype rows() const { return list()->model()->rowCount(); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && list() && watched == list()->viewport())
            isPainted = true; // it is, in the same turn
        return QObject::eventFilter(watched, event);
    }

private:
    [[nodiscard]] QListView *list() const { return window.findChild<QListView *>(u"lstcomplete"_s); }

    const QWidget &window;
    QComboBox *line;
    bool isPainted = false;
};

void keepWords(const QString &folder)
{
    ServerWords words;
    for (int number = 0; number < listed; ++number)
        words.variables.append(u"scr_variable_%1"_s.arg(number));
    WordsFile(folder + u"/molvark-words.json"_s).keepWords(u"127.0.0.1:28960"_s, words);
}

struct Times {
    QList<double> first;  ///< the words are read and the list is built
    QList<double> asked;  ///< by Ctrl+Space in an empty line, for all words
    QList<double> letter; ///< the third, which nearly all words hold
};

void measure(const QString &folder, Times &times)
{
    DialogPrompts prompts;
    const Clock clock;
    Composition program(prompts, clock, folder + u"/molvark.ini"_s);
    program.window.show();
    if (!QTest::qWaitForWindowExposed(&program.window))
        qFatal("the window does not appear");
    program.window.Form_Load();
    QApplication::processEvents();
    Line line(program.window);
    times.first.append(line.press(Qt::Key_Space, Qt::ControlModifier));
    if (line.rows() < listed)
        qFatal("the words are not offered");
    for (int round = 0; round < rounds; ++round) {
        line.clear();
        times.asked.append(line.press(Qt::Key_Space, Qt::ControlModifier));
        line.clear();
        line.type(u"sc"_s);
        times.letter.append(line.press(Qt::Key_R));
        if (line.rows() < listed)
            qFatal("the words are not offered");
    }
}

} // namespace

int main(int argc, char *argv[])
{
    Application application(argc, argv);
    const QTemporaryDir folder;
    keepWords(folder.path());
    Times times;
    for (int window = 0; window < windows; ++window)
        measure(folder.path(), times);
    bool kept = row("Completion, 5,000 words: the first time, with reading them", median(times.first), frame, " ms");
    kept &= row("Completion: all words, until the list is painted", median(times.asked), frame, " ms");
    kept &= row("Completion: at the third letter", median(times.letter), frame, " ms");
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
