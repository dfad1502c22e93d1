// SPDX-License-Identifier: MIT
#include "test_class.h"

#include <cstdio>
#include <map>
#include <string>

namespace {

std::map<std::string, TestClass::Run> &testClasses()
{
    static std::map<std::string, TestClass::Run> all;
    return all;
}

} // namespace

TestClass::TestClass(const char *file, Run run)
{
    testClasses().emplace(QFileInfo(QString::fromUtf8(file)).baseName().remove(QStringLiteral("tst_")).toStdString(),
                          run);
}

// The first argument says what is tested; Qt Test gets the others.
int main(int argc, char *argv[])
{
    const auto named = argc > 1 ? testClasses().find(argv[1]) : testClasses().end();
    if (named == testClasses().end()) {
        std::fprintf(stderr, "Usage: %s NAME [ARGUMENT OF QT TEST]..., where NAME is one of:\n", argv[0]);
        for (const auto &each : testClasses())
            std::fprintf(stderr, "%s\n", each.first.c_str());
        return 2;
    }
    argv[1] = argv[0];
    return named->second(argc - 1, argv + 1);
}
