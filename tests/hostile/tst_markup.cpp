// SPDX-License-Identifier: MIT
#include "victim.h"

#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

const auto picture = u"<img src=hostile.png>"_s;
const auto bold = u"<b>hostile</b>"_s;

bool isHostile(const QString &text)
{
    return text.contains(u"hostile");
}

/// Why this widget could take a hostile text for markup; empty when it does not.
QString danger(const QWidget *widget)
{
    // Whether a tool tip is markup is guessed from its text, so none may come from a server.
    if (isHostile(widget->toolTip()) || isHostile(widget->whatsThis()) || isHostile(widget->statusTip()))
        return u"tool tip"_s;
    if (isHostile(widget->windowTitle()))
        return u"title"_s;
    const auto *label = qobject_cast<const QLabel *>(widget);
    if (label && isHostile(label->text()) && label->textFormat() != Qt::PlainText)
        return u"label"_s;
    const auto *edit = qobject_cast<const QTextEdit *>(widget);
    if (edit && isHostile(edit->toPlainText()))
        return u"rich text"_s;
    const auto *view = qobject_cast<const QAbstractItemView *>(widget);
    const QAbstractItemModel *model = view ? view->model() : nullptr;
    for (int row = 0; model && row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            for (const int role : {Qt::ToolTipRole, Qt::WhatsThisRole, Qt::StatusTipRole}) {
                if (isHostile(model->index(row, column).data(role).toString()))
                    return u"tip of a cell"_s;
            }
        }
    }
    return {};
}

QStringList dangers()
{
    QStringList found;
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (const QString what = danger(widget); !what.isEmpty())
            found.append(widget->objectName() + u": "_s + what);
    }
    return found;
}

} // namespace

/// Names and texts of a server that look like markup are shown as they came.
class MarkupTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aDangerIsSeenWhenThereIsOne()
    {
        QLabel label(bold);
        QCOMPARE(danger(&label), u"label"_s);
        label.setTextFormat(Qt::PlainText);
        QCOMPARE(danger(&label), QString());
        label.setToolTip(picture);
        QCOMPARE(danger(&label), u"tool tip"_s);
        QTextEdit edit;
        edit.setText(bold);
        QCOMPARE(danger(&edit), u"rich text"_s);
    }

    void nothingThatAServerSaysIsTakenForMarkup()
    {
        Victim victim(desertedGame(u"hob"_s));
        Dvars &dvars = victim.server.game.dvars();
        for (const QString &name : {u"sv_hostname"_s, u"mapname"_s, u"g_gametype"_s})
            dvars.set(name, picture);
        for (const QString &name : {u"scr_motd"_s, u"sv_maprotation"_s})
            dvars.set(name, bold);
        victim.put(3, bold);
        victim.put(5, picture);
        victim.server.answers.insert("fdir *.cfg", {printDatagram("---\n/<b>hostile</b>.cfg\n")});
        victim.server.answers.insert("dir maps/mp d3dbsp", {printDatagram("---\n<b>hostile</b>.d3dbsp\n---\n")});
        victim.openHob();
        QStringList found;
        victim.server.beforeAnswer = [&](const QByteArray &) { found += dangers(); };
        victim.program.prompts.whileOpen = [&] { found += dangers(); };
        victim.connect();
        victim.populateAll();
        found += dangers();
        QCOMPARE(found, QStringList());

        QCOMPARE(victim.names(), QStringList({bold, picture}));
        QCOMPARE(victim.program.text(u"txtservername"_s), picture);
        QCOMPARE(victim.program.text(u"txtservermotd"_s), bold);
        QCOMPARE(victim.program.text(u"txtcurmaprot_0"_s), bold);
        QCOMPARE(victim.program.rows(u"lstcfgs"_s), QStringList{u"<b>hostile</b>.cfg"_s});
        const QString shown = u"Server running game mode [%1] on map [%1]"_s.arg(picture);
        QVERIFY(victim.program.pane().contains(shown));
    }

    void aKickedNameIsNotedAsItStands()
    {
        Victim victim;
        victim.put(3, picture);
        victim.connect();
        victim.program.click(u"cmdplypop"_s);
        victim.program.find<QAbstractItemView>(u"msfplayers"_s)
            ->selectionModel()
            ->select(victim.grid()->index(0, 0), QItemSelectionModel::SelectCurrent | QItemSelectionModel::Rows);
        victim.program.click(u"cmdplykick"_s);
        QCOMPARE(victim.program.messages().constLast(), u"Player Kicked >"_s + picture + u'<');
        QCOMPARE(dangers(), QStringList());
    }
};

WINDOW_TEST(MarkupTest)
#include "tst_markup.moc"
