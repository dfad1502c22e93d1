// SPDX-License-Identifier: MIT
#include "log_line.h"

using namespace Qt::StringLiterals;

QString logLine(const QTime &time, const QString &text)
{
    QString line = time.toString(u"hh:mm:ss"_s) + u' ';
    for (const QChar character : text) {
        if (character.category() == QChar::Other_Control)
            line += u"\\x%1"_s.arg(QString::number(character.unicode(), 16).toUpper().rightJustified(2, u'0'));
        else
            line += character;
    }
    return line;
}
