// SPDX-License-Identifier: MIT
#include "common_tasks.h"

#include "serverconfig/quick_commands.h"

#include <QAction>
#include <QWidget>

namespace {

struct NumberedTask {
    const char *item;
    void (*task)(const Services &, int);
    int number;
};

// The last three game types do not switch to what their captions say, because they count on from 3. No game type is
// number 5.
constexpr NumberedTask numberedTasks[] = {
    {"commFFOFF", setFriendlyFire, 0},   {"COMMFFON", setFriendlyFire, 1}, {"commFFREFL", setFriendlyFire, 2},
    {"commFFSHARE", setFriendlyFire, 3}, {"gmsd", switchGameType, 0},      {"gmtdm", switchGameType, 2},
    {"gmctf", switchGameType, 3},        {"gmdm", switchGameType, 4},      {"gmhq", switchGameType, 5}};

} // namespace

void wireCommonTasks(QWidget &window, const Services &services)
{
    const auto onItem = [&window](const char *name, const auto &task) {
        QObject::connect(window.findChild<QAction *>(QLatin1StringView(name)), &QAction::triggered, &window, task);
    };
    onItem("commmap_restart", [&services] { restartMap(services); });
    onItem("commmap_rotate", [&services] { rotateMap(services); });
    for (const auto &[item, task, number] : numberedTasks)
        onItem(item, [&services, task = task, number = number] { task(services, number); });
}
