// SPDX-License-Identifier: MIT
#include "input_file.h"

#ifdef Q_OS_WIN

std::unique_ptr<std::FILE, FileCloser> openToRead(const QString &path)
{
    return std::unique_ptr<std::FILE, FileCloser>(_wfopen(path.toStdWString().c_str(), L"rb"));
}

#else

#include <QFile>

std::unique_ptr<std::FILE, FileCloser> openToRead(const QString &path)
{
    return std::unique_ptr<std::FILE, FileCloser>(std::fopen(QFile::encodeName(path).constData(), "rb"));
}

#endif
