// SPDX-License-Identifier: MIT
#include "base/controls.h"
#include "base/wire_text.h"
#include "fuzz.h"
#include "server_side.h"
#include "serverconfig/dvar_reply.h"
#include "serverconfig/file_listing.h"
#include "serverconfig/misc_page.h"

#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

struct MiscTab {
    ServerSide server;
    MiscPage page{server.services};
    QPlainTextEdit *rotation = page.findChild<QPlainTextEdit *>(u"txtcurmaprot_0"_s);
    QPushButton *paste = page.findChild<QPushButton *>(u"cmdsmrpaste_0"_s);
    QComboBox *files = page.findChild<QComboBox *>(u"lstcfgs"_s);
};

/// As a field for several lines shows it: line ends become line feeds, and blanks that do not break become blanks.
QString shown(QString value)
{
    return value.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(QChar::Nbsp, u' ');
}

QStringList entries(const QComboBox &box)
{
    QStringList texts;
    for (int row = 0; row < box.count(); ++row)
        texts.append(box.itemText(row));
    return texts;
}

} // namespace

void fuzz(const QByteArray &input)
{
    static MiscTab tab;
    const QString reply = squeezeBlanks(fromAnsi(input));
    tab.page.forgetServer();
    tab.page.awaitServer();
    tab.page.showRotation(reply);
    QString value;
    if (faultOf([&] { value = getdvar(reply, u"sv_maprotation"); }) != 0)
        value = u"Server did not give rotation."_s;
    require(tab.rotation->toPlainText() == shown(value), "the rotation is shown as plain text");

    tab.page.showCfgFiles(reply);
    require(entries(*tab.files) == cfgFiles(reply), "the files are listed as the server names them");
    require(tab.server.prompts.takeBoxes().isEmpty(), "nothing is asked");
    tab.server.output.clearmessages();
}
