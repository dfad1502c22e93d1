// SPDX-License-Identifier: MIT
#include "replaced_file.h"

#include "prompts.h"
#include "system_error.h"

#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

QString askReplacedFile(Prompts &prompts, const FileQuestion &question)
{
    const QString name = prompts.askFileName(question.title, question.preset, question.suffix);
    const QFileInfo info(name);
    if (name.isEmpty() || !info.isFile() || info.size() == 0)
        return name;
    const Answer answer = prompts.ask({question.replaceTitle, u"This file is there already. Replace it?\r"_s + name,
                                       BoxIcon::Question, BoxButtons::YesNo});
    return answer == Answer::Yes ? name : QString();
}

std::optional<Fault> faultOfNoFile(const QString &name)
{
    const QFileInfo info(name);
    if (info.exists() && !info.isFile() && !info.isDir())
        return systemFault(std::errc::not_supported);
    return {};
}

std::optional<Fault> replaceFile(const QString &name, const QByteArray &bytes)
{
    if (const std::optional<Fault> fault = faultOfNoFile(name))
        return fault;
    QSaveFile file(name);
    clearSystemError();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return lastSystemError(file.errorString());
    return {};
}

void tellUnwritten(Prompts &prompts, const Fault &fault, const QString &what)
{
    prompts.refuse(u"Error writing file, err %1\r"_s.arg(fault.number()) + what, u"Failed to Save"_s);
}

std::optional<Fault> replaceTable(const QString &name, const QString &text)
{
    const QByteArray byteOrderMark = "\xEF\xBB\xBF"; // or some tables take the letters for others
    return replaceFile(name, byteOrderMark + text.toUtf8());
}
