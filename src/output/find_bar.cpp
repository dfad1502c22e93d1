// SPDX-License-Identifier: MIT
#include "find_bar.h"

#include "rcon_pane.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 shortestPause = 250; // milliseconds between two counts; they are a tenth of the time at most

QPushButton *button(const QString &name, const QString &text, QWidget *parent)
{
    auto *made = new QPushButton(text, parent);
    made->setObjectName(name);
    return made;
}

} // namespace

FindBar::FindBar(RconPane &pane_, QWidget *parent)
    : QWidget(parent), pane(pane_), txtfind(new QLineEdit(this)), lblfound(new QLabel(this))
{
    setObjectName(u"frmfind"_s);
    txtfind->setObjectName(u"txtfind"_s);
    txtfind->setAccessibleName(u"Find in the responses"_s);
    txtfind->setPlaceholderText(u"Find"_s);
    lblfound->setObjectName(u"lblfound"_s);
    auto *cmdfindnext = button(u"cmdfindnext"_s, u"Next"_s, this);
    auto *cmdfindprev = button(u"cmdfindprev"_s, u"Previous"_s, this);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->addWidget(txtfind, 1);
    line->addWidget(cmdfindnext);
    line->addWidget(cmdfindprev);
    line->addWidget(lblfound);

    connect(txtfind, &QLineEdit::textChanged, this, &FindBar::search);
    connect(txtfind, &QLineEdit::returnPressed, this, &FindBar::findNext);
    connect(cmdfindnext, &QPushButton::clicked, this, &FindBar::findNext);
    connect(cmdfindprev, &QPushButton::clicked, this, &FindBar::findPrevious);
    recount.setSingleShot(true);
    connect(&recount, &QTimer::timeout, this, &FindBar::count);
    connect(&pane, &QPlainTextEdit::textChanged, this, [this] {
        if (isVisible() && !txtfind->text().isEmpty() && !recount.isActive())
            recount.start();
    });
}

void FindBar::open()
{
    show();
    txtfind->setFocus(Qt::ShortcutFocusReason);
    txtfind->selectAll();
    count();
}

void FindBar::leave()
{
    hide();
    pane.setFocus();
}

void FindBar::search()
{
    count();
    if (matches.isEmpty())
        return;
    // What is selected stays while it still fits; so the text that is being typed does not run away.
    const auto from = std::ranges::lower_bound(matches, pane.textCursor().selectionStart());
    select(from == matches.end() ? 0 : from - matches.begin());
}

void FindBar::count()
{
    QElapsedTimer duration;
    duration.start();
    matches = pane.occurrences(txtfind->text());
    recount.setInterval(static_cast<int>(std::max<qint64>(shortestPause, 10 * duration.elapsed())));
    const qsizetype number = matches.size();
    lblfound->setText(txtfind->text().isEmpty() ? QString() : number == 1 ? u"1 match"_s : u"%1 matches"_s.arg(number));
}

void FindBar::findNext()
{
    count();
    const auto from = std::ranges::upper_bound(matches, pane.textCursor().selectionStart());
    select(from == matches.end() ? 0 : from - matches.begin());
}

void FindBar::findPrevious()
{
    count();
    const auto from = std::ranges::lower_bound(matches, pane.textCursor().selectionStart());
    select(from == matches.begin() ? matches.size() - 1 : from - matches.begin() - 1);
}

void FindBar::select(qsizetype match)
{
    if (matches.isEmpty())
        return;
    pane.selectText(matches.at(match), static_cast<int>(txtfind->text().size()));
}
