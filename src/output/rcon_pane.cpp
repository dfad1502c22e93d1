// SPDX-License-Identifier: MIT
#include "rcon_pane.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>

using namespace Qt::StringLiterals;

RconPane::RconPane(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(WidgetWidth);

    QFont bold = QFontDatabase::systemFont(QFontDatabase::FixedFont); // the server's tables are made of columns
    bold.setPointSize(10);
    bold.setBold(true);
    setFont(bold);

    QPalette colours = palette();
    colours.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    colours.setColor(QPalette::Text, QColor(255, 255, 0));
    setPalette(colours);

    // The range grows only when the new lines have been laid out, some time after they were added.
    QScrollBar *bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar] { following = bar->value() == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar] {
        if (following)
            bar->setValue(bar->maximum());
    });
}

void RconPane::append(const QString &text)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
}

QString RconPane::text() const
{
    // The document's own text keeps the no-break blanks that toPlainText() would turn into plain ones.
    return document()->toRawText().replace(QChar::ParagraphSeparator, u"\r\n"_s);
}
