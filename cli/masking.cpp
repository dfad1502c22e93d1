// SPDX-License-Identifier: MIT
#include "masking.h"

namespace {

constexpr qsizetype shortest = 4; // of less, what is left would be found by chance

/// What stands of the password around the border, where one of its characters has got lost.
void maskAt(QString &text, qsizetype border, const QString &password)
{
    for (qsizetype lost = 0; lost < password.size(); ++lost) {
        const qsizetype behind = password.size() - lost - 1;
        if (!QStringView(text).first(border).endsWith(QStringView(password).first(lost)) ||
            !QStringView(text).sliced(border).startsWith(QStringView(password).last(behind)))
            continue;
        text.replace(border - lost, password.size() - 1, QString(password.size() - 1, u'*'));
        return;
    }
}

} // namespace

QString withoutPassword(QString text, const QString &password)
{
    return password.isEmpty() ? text : text.replace(password, QString(password.size(), u'*'));
}

QString withoutPassword(const QString &text, const QList<ReplyPiece> &pieces, const QString &password)
{
    QString masked = withoutPassword(text, password);
    for (qsizetype piece = 1; piece < pieces.size() && password.size() >= shortest; ++piece) {
        if (pieces.at(piece - 1).mayLackLast)
            maskAt(masked, pieces.at(piece).begin, password);
    }
    return masked;
}
