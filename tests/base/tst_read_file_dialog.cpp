// SPDX-License-Identifier: MIT
#include "base/dialog_prompts.h"
#include "fail_test.h"
#include "open_dialog.h"
#include "window_test.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Asks which file to read, in a folder of its own that is the current one and has the file "server.cfg".
class ReadQuestion final {
public:
    ReadQuestion() : before(QDir::currentPath())
    {
        QDir::setCurrent(folder.path());
        QFile file(u"server.cfg"_s);
        if (!file.open(QIODevice::WriteOnly))
            failTest(u"no file can be made"_s);
    }
    ~ReadQuestion() { QDir::setCurrent(before); }
    Q_DISABLE_COPY_MOVE(ReadQuestion)

    [[nodiscard]] QString ask() { return prompts.askFileToRead(u"Read from..."_s, u"CFG files (*.cfg)"_s); }
    /// The person types `name` and presses Return.
    static void type(const QFileDialog &dialog, const QString &name)
    {
        auto *line = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
        line->setText(name);
        QTest::keyClick(line, Qt::Key_Return);
    }

    QTemporaryDir folder;
    DialogPrompts prompts;

private:
    QString before;
};

} // namespace

class ReadFileDialogTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itAsksForAFileThatIsThere()
    {
        ReadQuestion question;
        QString title;
        QStringList filters;
        auto mode = QFileDialog::AcceptSave;
        onNextDialog<QFileDialog>([&](QFileDialog &dialog) {
            title = dialog.windowTitle();
            filters = dialog.nameFilters();
            mode = dialog.acceptMode();
            ReadQuestion::type(dialog, u"server.cfg"_s);
        });
        QCOMPARE(question.ask(), QDir::currentPath() + u"/server.cfg"_s);
        QCOMPARE(title, u"Read from..."_s);
        QCOMPARE(filters, QStringList{u"CFG files (*.cfg)"_s});
        QCOMPARE(mode, QFileDialog::AcceptOpen);
    }

    void aCancelledDialogAnswersNothing()
    {
        ReadQuestion question;
        onNextDialog<QFileDialog>([](QFileDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(question.ask(), QString());
    }

    void closingCancelsAnOpenDialog()
    {
        ReadQuestion question;
        onNextDialog<QFileDialog>([&](QFileDialog &) { question.prompts.close(); });
        QCOMPARE(question.ask(), QString());
    }
};

WINDOW_TEST(ReadFileDialogTest)
#include "tst_read_file_dialog.moc"
