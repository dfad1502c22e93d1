// SPDX-License-Identifier: MIT
#include "replaced_file.h"

#include "base/prompts.h"
#include "base/system_error.h"

#include <QFileInfo>

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
