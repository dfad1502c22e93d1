// SPDX-License-Identifier: MIT
#pragma once

#include "connected_program.h"
#include "window_hands.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

/// A server that tells `rotation` when it is connected.
inline Beginning telling(const QByteArray &rotation)
{
    return {.prepare = [rotation](PracticeServer &server) {
        answerBriefly(server);
        server.answer("dvarlist sv_maprotation", {"sv_mapRotation \"" + rotation + "\"\n"});
    }};
}

/// The window in which a rotation is put together, as a person uses it.
struct RotationHands : WindowHands {
    explicit RotationHands(const Beginning &beginning = telling("gametype sd map mp_decoy map mp_toujane"),
                           const QByteArray &presets = {})
        : on(beginning)
    {
        if (!presets.isEmpty())
            on.program.write(QStringLiteral("molvark-rotations.json"), presets);
        open();
    }

    void open() { WindowHands::open(on.program, QStringLiteral("mrotation"), QStringLiteral("frmrotation")); }
    [[nodiscard]] QPushButton *button(const QString &name) const { return find<QPushButton>(name); }
    void click(const QString &name) const { button(name)->click(); }
    [[nodiscard]] QTreeView *list() const { return find<QTreeView>(QStringLiteral("lstrotation")); }
    /// The lines, each with its number, game type and map.
    [[nodiscard]] QStringList lines() const
    {
        const QAbstractItemModel *model = list()->model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells.append(model->index(row, column).data().toString());
            texts.append(cells.join(u' '));
        }
        return texts;
    }
    [[nodiscard]] QStringList chosen() const
    {
        QStringList texts;
        for (const QModelIndex &index : list()->selectionModel()->selectedRows())
            texts.append(lines().at(index.row()));
        texts.sort();
        return texts;
    }
    /// With the mouse, the later ones with Ctrl.
    void choose(const QList<int> &rows) const
    {
        list()->clearSelection();
        for (const int row : rows) {
            const QPoint place = list()->visualRect(list()->model()->index(row, 2)).center();
            QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
        }
    }
    void setText(const QString &combo, const QString &text) const { find<QComboBox>(combo)->setEditText(text); }
    [[nodiscard]] QString text(const QString &combo) const { return find<QComboBox>(combo)->currentText(); }
    [[nodiscard]] QStringList entries(const QString &combo) const
    {
        QStringList texts;
        const auto *box = find<QComboBox>(combo);
        for (int entry = 0; entry < box->count(); ++entry)
            texts.append(box->itemText(entry));
        return texts;
    }
    [[nodiscard]] QString label(const QString &name) const { return find<QLabel>(name)->text(); }
    /// The box of the page, into which "Copy to EDIT" puts the rotation.
    [[nodiscard]] QPlainTextEdit *edit() const
    {
        return on.program.find<QPlainTextEdit>(QStringLiteral("txtcurmaprot_1"));
    }
    void read(const QString &rotation) const
    {
        edit()->setPlainText(rotation);
        click(QStringLiteral("cmdrotedit"));
    }

    ConnectedProgram on;
};
