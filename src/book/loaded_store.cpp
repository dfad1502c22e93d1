// SPDX-License-Identifier: MIT
#include "book_fault.h"
#include "store_module.h"

#include <QCoreApplication>
#include <QLibrary>

using namespace Qt::StringLiterals;

namespace {

/// Where the module is when the program is installed, and where it is built.
OpenBookStore *loadModule(const QString &path)
{
    const QString folder = QCoreApplication::applicationDirPath();
    QString fault;
    for (const QString &home : {folder + u'/' + QStringLiteral(MOLVARK_WAY_TO_MODULES), folder}) {
        QLibrary module(home + u"/molvark-book.so"_s);
        const auto version = reinterpret_cast<BookModuleVersion *>(module.resolve("molvarkBookVersion"));
        if (version && QLatin1StringView(version()) == QLatin1StringView(MOLVARK_VERSION))
            return reinterpret_cast<OpenBookStore *>(module.resolve("molvarkOpenBookStore"));
        if (version)
            fault = u"molvark-book.so is that of another version of the program; start the program anew."_s;
        else if (fault.isEmpty())
            fault = module.errorString();
    }
    throw bookFault(BookFault::Unusable, path, fault);
}

} // namespace

std::unique_ptr<BookStore> openBookStore(const QString &path, qint64 oldest, const BookStore::Patience &patience,
                                         bool doubt)
{
    return std::unique_ptr<BookStore>(loadModule(path)(path, oldest, patience, doubt));
}
