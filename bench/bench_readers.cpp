// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "players/status_table.h"
#include "row.h"
#include "serverconfig/dvar_reply.h"

#include <QStringList>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>

using namespace Qt::StringLiterals;

namespace {

const QString heading = u"map: mp_villa\n"
                        "num score ping guid name lastmsg address qport rate\n"
                        "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"_s;

/// A full server, as its table arrives: 64 rows of usual length.
QString fullServer()
{
    QString reply = heading;
    for (int slot = 0; slot < 64; ++slot)
        reply += u" %1 %2 %3 %4 ^1Big ^7Bob %1^7 50 192.168.100.%1:28960 %5 25000\n"_s.arg(slot)
                     .arg(slot * 7 % 40 - 5)
                     .arg(25 + slot * 11 % 115)
                     .arg(63'281'996 + slot)
                     .arg(65'535 - slot);
    return reply + u'\n';
}

/// Short rows, so that a thousand of them end before position 32,767, where the reader stops.
QString shortRows(int count)
{
    QString reply = heading;
    for (int slot = 0; slot < count; ++slot)
        reply += u" %1 %2 50 1 n%1 0 bot 1 5000\n"_s.arg(slot % 100).arg(slot * 7 % 100);
    return reply + u'\n';
}

/// As the game pads it: the flags in a column of their own.
QString variables(int count)
{
    QString reply;
    for (int number = 0; number < count; ++number)
        reply += u"S  R    scr_variable_%1 \"%2\"\n"_s.arg(number, 4).arg(number * 31);
    return reply + u"\n%1 total dvars\n"_s.arg(count);
}

QString padded(int words)
{
    QString text;
    for (int word = 0; word < words; ++word)
        text += u"word%1      "_s.arg(word);
    return text;
}

void readTable(benchmark::State &state, const QString &reply, qsizetype count)
{
    for ([[maybe_unused]] auto round : state) {
        StatusTable table;
        QList<StatusRow> rows;
        if (table.skipHeading(reply)) {
            while (!table.ended(reply))
                rows.append(table.next(reply));
        }
        benchmark::DoNotOptimize(rows.constData());
        if (rows.size() != count)
            qFatal("%d rows were read, not %d", static_cast<int>(rows.size()), static_cast<int>(count));
    }
}

void splitTable(benchmark::State &state, const QString &reply)
{
    for ([[maybe_unused]] auto round : state) {
        QList<QStringList> rows;
        for (const QString &line : reply.split(u'\n'))
            rows.append(line.split(u' ', Qt::SkipEmptyParts));
        benchmark::DoNotOptimize(rows.constData());
    }
}

void findVariable(benchmark::State &state, const QString &reply, const QString &name)
{
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(getdvar(reply, name).size());
}

void findText(benchmark::State &state, const QString &reply, const QString &name)
{
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(QStringView(reply).indexOf(name, 0, Qt::CaseInsensitive));
}

void findPage(benchmark::State &state, const QString &reply)
{
    QStringList names;
    for (int number = 1987; number < 2000; ++number)
        names.append(u"scr_variable_%1"_s.arg(number));
    for ([[maybe_unused]] auto round : state) {
        for (const QString &name : names)
            benchmark::DoNotOptimize(getdvar(reply, name).size());
    }
}

void squeeze(benchmark::State &state, const QString &text)
{
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(squeezeBlanks(text).size());
}

void simplify(benchmark::State &state, const QString &text)
{
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(text.simplified().size());
}

const QString last = u"scr_variable_1999"_s;
BENCHMARK_CAPTURE(readTable, full, fullServer(), 64);
BENCHMARK_CAPTURE(splitTable, full, fullServer());
BENCHMARK_CAPTURE(readTable, 100, shortRows(100), 100);
BENCHMARK_CAPTURE(readTable, 1000, shortRows(1000), 1000);
BENCHMARK_CAPTURE(findVariable, last, variables(2000), last);
BENCHMARK_CAPTURE(findText, last, variables(2000), last);
BENCHMARK_CAPTURE(findPage, last, variables(2000));
BENCHMARK_CAPTURE(squeeze, padded, padded(600));
BENCHMARK_CAPTURE(simplify, padded, padded(600));
BENCHMARK_CAPTURE(squeeze, blanks, QString(8192, u' '));
BENCHMARK_CAPTURE(simplify, blanks, QString(8192, u' '));
BENCHMARK_CAPTURE(squeeze, fewBlanks, QString(819, u' '));

/// Keeps the least time of each benchmark, in nanoseconds: on a busy machine the least says most.
class LeastTimes final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context & /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const auto [known, isNew] = times.try_emplace(run.run_name.str(), run.GetAdjustedCPUTime());
            if (!isNew)
                known->second = std::min(known->second, run.GetAdjustedCPUTime());
        }
    }

    [[nodiscard]] double ratio(const char *one, const char *other) const { return times.at(one) / times.at(other); }

    std::map<std::string, double> times;
};

} // namespace

int main(int argc, char *argv[])
{
    std::string repeat = "--benchmark_repetitions=5";
    std::array<char *, 2> arguments{argv[0], repeat.data()};
    argc = static_cast<int>(arguments.size());
    benchmark::Initialize(&argc, arguments.data());
    LeastTimes least;
    benchmark::RunSpecifiedBenchmarks(&least);

    const std::array kept{
        row("a player table of 64 rows, against splitting it into words",
            least.ratio("readTable/full", "splitTable/full"), 1.5),
        row("a row of 1,000, against a row of 100", least.ratio("readTable/1000", "readTable/100") / 10, 1.2),
        row("the last of 2,000 variables, against one search for its name",
            least.ratio("findVariable/last", "findText/last"), 1.2),
        row("the 13 variables of a page, all at the end of 2,000", least.times.at("findPage/last") / 1e6, 5, " ms"),
        row("squeezing blanks, against QString::simplified", least.ratio("squeeze/padded", "simplify/padded"), 3),
        row("squeezing nothing but blanks, against the same", least.ratio("squeeze/blanks", "simplify/blanks"), 3),
        row("squeezing ten times as many blanks, by ten", least.ratio("squeeze/blanks", "squeeze/fewBlanks") / 10,
            1.2)};
    return std::ranges::all_of(kept, [](bool each) { return each; }) ? EXIT_SUCCESS : EXIT_FAILURE;
}
