// SPDX-License-Identifier: MIT
#include "program.h"

#include "base/application.h"
#include "output/rcon_pane.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QString enter(const QTemporaryDir &folder, const QByteArray &settings)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    if (!settings.isEmpty()) {
        QFile file(u"molvark.ini"_s);
        if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size())
            failTest(u"the settings file cannot be prepared"_s);
    }
    return before;
}

void setPrompts(Prompts *prompts)
{
    static_cast<Application *>(qApp)->setPrompts(prompts);
}

} // namespace

Program::Program(const QByteArray &settings)
    : before(enter(folder, settings)), parts(prompts, clock, QDir::currentPath() + u"/molvark.ini"_s)
{
    setPrompts(&prompts);
}

Program::~Program()
{
    session.closing = true;
    setPrompts(nullptr);
    for (const Box &box : prompts.takeBoxes())
        QTest::qFail(qPrintable(u"a box that nobody expected: %1: %2"_s.arg(box.title, box.text)), __FILE__, __LINE__);
    QDir::setCurrent(before);
}

void Program::start()
{
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        failTest(u"the window does not become active"_s);
    window.Form_Load();
}

void Program::connectTo(const PracticeServer &server, const QString &password)
{
    setText(u"comserver"_s, u"127.0.0.1"_s);
    setText(u"comport"_s, QString::number(server.port()));
    setText(u"txtPWD"_s, password);
    click(u"cmdconnect"_s);
}

void Program::click(const QString &button) const
{
    find<QAbstractButton>(button)->click();
}

void Program::trigger(const QString &action) const
{
    find<QAction>(action)->trigger();
}

void Program::setText(const QString &box, const QString &text) const
{
    if (auto *combo = window.findChild<QComboBox *>(box))
        combo->setEditText(text);
    else
        find<QLineEdit>(box)->setText(text);
}

QString Program::text(const QString &box) const
{
    if (const auto *combo = window.findChild<QComboBox *>(box))
        return combo->currentText();
    if (const auto *edit = window.findChild<QPlainTextEdit *>(box))
        return edit->toPlainText();
    if (const auto *button = window.findChild<QAbstractButton *>(box))
        return button->text();
    return find<QLineEdit>(box)->text();
}

QStringList Program::rows(const QString &list) const
{
    QStringList texts;
    if (const auto *combo = window.findChild<QComboBox *>(list)) {
        for (int row = 0; row < combo->count(); ++row)
            texts.append(combo->itemText(row));
        return texts;
    }
    const auto *box = find<QListWidget>(list);
    for (int row = 0; row < box->count(); ++row)
        texts.append(box->item(row)->text());
    return texts;
}

QString Program::pane() const
{
    return output.pane().text();
}

QStringList Program::messages() const
{
    static const QRegularExpression stamp(uR"(\ATime: [0-9:.]+( [AP]M)? )"_s);
    QStringList lines = rows(u"lstmessages"_s);
    return lines.replaceInStrings(stamp, {});
}

QWidget *Program::progress() const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(windows, [](auto *each) { return each->objectName() == u"frmprogress"; });
    return found == windows.end() ? nullptr : *found;
}

QString Program::note() const
{
    return progress()->findChild<QPlainTextEdit *>(u"txtprogress"_s)->toPlainText();
}

bool Program::isConnected() const
{
    return text(u"cmdconnect"_s) == u"Disconnect";
}

bool Program::showsRepliesOf(PracticeServer &server) const
{
    const QString reply = u"shown unless it is gathered"_s;
    const QByteArray command = "serverinfo";
    const qsizetype requestsBefore = server.requests().size();
    const qsizetype shownBefore = pane().count(reply);
    server.answer(command, {reply.toLatin1()});
    click(u"cmsserverinfo"_s);
    server.answerAsUsual(command);
    if (!server.commands().sliced(requestsBefore).contains(command))
        failTest(u"the server is not asked"_s); // a server that does not answer has brought up a box
    return pane().count(reply) > shownBefore;
}

bool Program::isRefreshingFrom(const PracticeServer &server) const
{
    const qsizetype requestsBefore = server.requests().size();
    QMetaObject::invokeMethod(find<QTimer>(u"tmrplayer"_s), "timeout");
    return server.requests().size() > requestsBefore;
}

QByteArray Program::file(const QString &name) const
{
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Program::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        failTest(name + u" cannot be written"_s);
}
