// SPDX-License-Identifier: MIT
#include "player_text.h"

#include "base/colour_codes.h"
#include "base/csv_record.h"
#include "masking.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Field {
    QLatin1StringView key;
    QString StatusRow::*text;
    bool isNumber = true;
};

constexpr std::array<Field, 8> fields{{{"num"_L1, &StatusRow::num},
                                       {"score"_L1, &StatusRow::score},
                                       {"ping"_L1, &StatusRow::ping},
                                       {"guid"_L1, &StatusRow::guid},
                                       {"name"_L1, &StatusRow::name, false},
                                       {"address"_L1, &StatusRow::address, false},
                                       {"qport"_L1, &StatusRow::qport},
                                       {"rate"_L1, &StatusRow::rate}}};

QStringList keys()
{
    QStringList texts;
    for (const Field &field : fields)
        texts.append(field.key);
    return texts;
}

QString quotedJson(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.sliced(1, array.size() - 2));
}

/// Larger numbers would lose digits in most readers of JSON.
bool isExactNumber(const QString &text)
{
    constexpr qint64 largest = qint64{1} << 53;
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber && number >= -largest && number <= largest && QString::number(number) == text;
}

QString valueJson(const Field &field, const QString &text)
{
    return field.isNumber && isExactNumber(text) ? text : quotedJson(text);
}

QString playerJson(const StatusRow &player, const QString &password)
{
    QStringList members;
    for (const Field &field : fields)
        members.append(u"\"%1\":"_s.arg(field.key) + valueJson(field, maskedText(player.*field.text, password)));
    return u'{' + members.join(u',') + u'}';
}

QString arrayJson(const QList<StatusRow> &players, const QString &password)
{
    QStringList elements;
    for (const StatusRow &player : players)
        elements.append(playerJson(player, password));
    return u'[' + elements.join(u',') + u']';
}

QString cell(const QString &text, const QString &password)
{
    QString shown = maskedText(stripcolour(maskedText(text, password)), password);
    std::ranges::replace_if(
        shown, [](QChar each) { return each.category() == QChar::Other_Control; }, QChar(u'?'));
    return shown;
}

QString padded(const Field &field, const QString &text, qsizetype width)
{
    return field.isNumber ? text.rightJustified(width) : text.leftJustified(width);
}

} // namespace

QString playersTable(const QList<StatusRow> &players, const QString &password)
{
    QList<QStringList> lines{keys()};
    for (const StatusRow &player : players) {
        QStringList cells;
        for (const Field &field : fields)
            cells.append(cell(player.*field.text, password));
        lines.append(cells);
    }
    QList<qsizetype> widths(static_cast<qsizetype>(fields.size()));
    for (const QStringList &line : std::as_const(lines)) {
        for (qsizetype column = 0; column < line.size(); ++column)
            widths[column] = std::max(widths.at(column), line.at(column).size());
    }
    QString table;
    for (const QStringList &line : std::as_const(lines)) {
        QStringList cells;
        for (qsizetype column = 0; column < line.size(); ++column)
            cells.append(padded(fields.at(static_cast<std::size_t>(column)), line.at(column), widths.at(column)));
        table += cells.join(u"  "_s) + u'\n';
    }
    return table;
}

QString playersJson(const QList<StatusRow> &players, const QString &password)
{
    return arrayJson(players, password) + u'\n';
}

QString playersCsv(const QList<StatusRow> &players, const QString &password)
{
    QString records = csvRecord(keys(), CsvQuotes::WhereNeeded);
    for (const StatusRow &player : players) {
        QStringList texts;
        for (const Field &field : fields)
            texts.append(maskedText(player.*field.text, password));
        records += csvRecord(texts, CsvQuotes::WhereNeeded);
    }
    return records;
}

QString sampleJson(const QDateTime &time, const QList<StatusRow> &players, const QString &password)
{
    return u"{\"time\":\"%1\",\"players\":"_s.arg(time.toUTC().toString(Qt::ISODate)) + arrayJson(players, password) +
           u"}\n"_s;
}
