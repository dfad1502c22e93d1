// SPDX-License-Identifier: MIT
#include "base/dialog_prompts.h"
#include "open_dialog.h"
#include "window_test.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Asks where to save a log, in a folder of its own that is the current one.
class SaveQuestion final {
public:
    SaveQuestion() : before(QDir::currentPath()) { QDir::setCurrent(folder.path()); }
    ~SaveQuestion() { QDir::setCurrent(before); }
    Q_DISABLE_COPY_MOVE(SaveQuestion)

    [[nodiscard]] QString ask()
    {
        return prompts.askFileName(u"Save file as..."_s, u"molvark_rcon_050306"_s, u"log"_s);
    }
    /// The person types `name` and presses "Save".
    [[nodiscard]] QString answer(const QString &name)
    {
        onNextDialog<QFileDialog>([=](QFileDialog &dialog) {
            nameOf(dialog)->setText(name);
            QTest::keyClick(nameOf(dialog), Qt::Key_Return);
        });
        return ask();
    }
    static QLineEdit *nameOf(const QFileDialog &dialog) { return dialog.findChild<QLineEdit *>(u"fileNameEdit"_s); }
    /// The file of that name in the current folder.
    [[nodiscard]] static QString path(const QString &name) { return QDir::currentPath() + u'/' + name; }

    QTemporaryDir folder;
    DialogPrompts prompts;

private:
    QString before;
};

} // namespace

class SaveFileDialogTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itHasItsTitleAndPreset()
    {
        SaveQuestion question;
        QString objectName;
        QString title;
        QString name;
        QString suffix;
        auto mode = QFileDialog::AcceptOpen;
        onNextDialog<QFileDialog>([&](QFileDialog &dialog) {
            objectName = dialog.objectName();
            title = dialog.windowTitle();
            name = SaveQuestion::nameOf(dialog)->text();
            suffix = dialog.defaultSuffix();
            mode = dialog.acceptMode();
        });
        QCOMPARE(question.ask(), QString());
        QCOMPARE(objectName, u"cdobj"_s);
        QCOMPARE(title, u"Save file as..."_s);
        QCOMPARE(name, u"molvark_rcon_050306"_s);
        QCOMPARE(suffix, u"log"_s);
        QCOMPARE(mode, QFileDialog::AcceptSave);
    }

    void thePresetIsSavedInTheCurrentFolderWithTheSuffix()
    {
        SaveQuestion question;
        QCOMPARE(question.answer(u"molvark_rcon_050306"_s), SaveQuestion::path(u"molvark_rcon_050306.log"_s));
    }

    void aNameWithASuffixKeepsIt()
    {
        SaveQuestion question;
        QCOMPARE(question.answer(u"today.txt"_s), SaveQuestion::path(u"today.txt"_s));
    }

    void aFileThatIsThereIsTakenWithoutAQuestion()
    {
        SaveQuestion question;
        QFile old(u"today.log"_s);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.close();

        bool askedMore = false;
        onNextDialog<QFileDialog>([&](QFileDialog &dialog) {
            QTimer::singleShot(0, &dialog, [&] {
                QWidget *open = QApplication::activeModalWidget();
                askedMore = open && open != &dialog;
                if (askedMore)
                    open->close();
            });
            SaveQuestion::nameOf(dialog)->setText(u"today.log"_s);
            QTest::keyClick(SaveQuestion::nameOf(dialog), Qt::Key_Return);
            QCoreApplication::processEvents();
        });
        QCOMPARE(question.ask(), SaveQuestion::path(u"today.log"_s));
        QVERIFY(!askedMore);
    }

    void aCancelledDialogAnswersNothing()
    {
        SaveQuestion question;
        onNextDialog<QFileDialog>([](QFileDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(question.ask(), QString());
    }

    void closingCancelsAnOpenDialog()
    {
        SaveQuestion question;
        onNextDialog<QFileDialog>([&](QFileDialog &) { question.prompts.close(); });
        QCOMPARE(question.ask(), QString());
    }
};

WINDOW_TEST(SaveFileDialogTest)
#include "tst_save_file_dialog.moc"
