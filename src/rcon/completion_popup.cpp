// SPDX-License-Identifier: MIT
#include "completion_popup.h"

#include <QAbstractListModel>
#include <QLabel>
#include <QListView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 8; // that are seen at once
constexpr int descriptionLines = 2;
constexpr int leastWidth = 60; // characters, so that the description has room
constexpr int margin = 3;

} // namespace

class CompletionModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void setWords(const QList<Completion> &words_)
    {
        beginResetModel();
        words = words_;
        endResetModel();
    }
    [[nodiscard]] const Completion &word(int row) const { return words.at(row); }
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(words.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(word(index.row()).text) : QVariant();
    }

private:
    QList<Completion> words;
};

CompletionPopup::CompletionPopup(QWidget &window_, Describe describe_)
    : QFrame(&window_),
      describe(std::move(describe_)),
      model(new CompletionModel(this)),
      lstcomplete(new QListView(this)),
      lblcomplete(new QLabel(this))
{
    setObjectName(u"frmcomplete"_s);
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    lstcomplete->setObjectName(u"lstcomplete"_s);
    lstcomplete->setAccessibleName(u"Completions of the console line"_s);
    lstcomplete->setFocusPolicy(Qt::NoFocus);
    lstcomplete->setFrameShape(QFrame::NoFrame);
    lstcomplete->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstcomplete->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstcomplete->setUniformItemSizes(true);
    lstcomplete->setModel(model);
    lblcomplete->setObjectName(u"lblcomplete"_s);
    lblcomplete->setTextFormat(Qt::PlainText);
    lblcomplete->setMargin(margin);
    lblcomplete->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    rows->addWidget(lstcomplete, 1);
    rows->addWidget(lblcomplete);
    hide();

    connect(lstcomplete, &QListView::clicked, this,
            [this](const QModelIndex &index) { emit clicked(model->word(index.row())); });
    connect(lstcomplete->selectionModel(), &QItemSelectionModel::currentChanged, this, &CompletionPopup::describeRow);
}

CompletionPopup::~CompletionPopup() = default;

void CompletionPopup::open(const QList<Completion> &words, const QRect &line)
{
    model->setWords(words);
    lstcomplete->scrollToTop();
    place(line);
    describeRow();
    raise();
    show();
}

void CompletionPopup::step(int rows)
{
    const int last = model->rowCount() - 1;
    const QModelIndex current = lstcomplete->currentIndex();
    int row = rows > 0 ? 0 : last; // also from the other end
    if (current.isValid() && current.row() != (rows > 0 ? last : 0))
        row = std::clamp(current.row() + rows, 0, last);
    lstcomplete->setCurrentIndex(model->index(row));
}

void CompletionPopup::stepPages(int pages)
{
    step(pages * std::max(1, lstcomplete->viewport()->height() / rowHeight()));
}

std::optional<Completion> CompletionPopup::chosen() const
{
    const QModelIndex current = lstcomplete->currentIndex();
    return current.isValid() ? std::optional(model->word(current.row())) : std::nullopt;
}

int CompletionPopup::rowHeight() const
{
    return std::max(1, lstcomplete->sizeHintForRow(0));
}

void CompletionPopup::place(const QRect &line)
{
    const QSize room = parentWidget()->size();
    const int width = std::min(std::max(line.width(), leastWidth * fontMetrics().averageCharWidth()), room.width());
    const int description = descriptionLines * lblcomplete->fontMetrics().lineSpacing() + 2 * margin;
    lblcomplete->setFixedHeight(description);
    const int wanted = std::min(mostRows, model->rowCount()) * rowHeight() + description + 2 * frameWidth();
    const int above = line.top();
    const int below = room.height() - line.bottom() - 1;
    const int height = std::min(wanted, std::max(above, below));
    const int left = std::clamp(line.left(), 0, room.width() - width);
    setGeometry(left, above >= below ? line.top() - height : line.bottom() + 1, width, height);
}

void CompletionPopup::describeRow()
{
    if (model->rowCount() == 0)
        return;
    const int width = this->width() - 2 * (frameWidth() + margin);
    QStringList lines = describe(chosen().value_or(model->word(0))).split(u'\n');
    for (QString &line : lines)
        line = lblcomplete->fontMetrics().elidedText(line, Qt::ElideRight, width);
    lblcomplete->setText(lines.join(u'\n'));
}
