// Listing a folder of 50,000 files: the time that the system itself needs to tell their names, over ours.
#include "common/folderrows.h"
#include "platform/folderwatch.h"
#include "platform/nativepath.h"
#include "support/ratio.h"
#include "support/tempfolder.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <functional>

namespace
{

constexpr int FileCount = 50'000;
constexpr int Rounds = 41;

const wb::TempFolder &Folder()
{
    static const wb::TempFolder folder;
    static const bool isFilled = [] {
        char name[32];
        // A stride that is prime to the count: the folder is not in the order of its names.
        for (int index = 0; index < FileCount; ++index) {
            const int number = int(std::int64_t(index) * 7919 % FileCount);
            std::snprintf(name, sizeof name, "Frame%05d.%s", number, number % 3 == 0 ? "gi" : "GAI");
            folder.Put(name, "");
        }
        return true;
    }();
    benchmark::DoNotOptimize(isFilled);
    return folder;
}

std::vector<std::string> BareNames(const std::string &path)
{
    std::vector<std::string> names;
    DIR *folder = ::opendir(path.c_str());
    while (const dirent *entry = folder != nullptr ? ::readdir(folder) : nullptr)
        names.emplace_back(entry->d_name);
    if (folder != nullptr)
        ::closedir(folder);
    return names;
}

std::vector<std::string> SortedNames(const std::string &path)
{
    std::vector<std::string> names = BareNames(path);
    std::sort(names.begin(), names.end());
    return names;
}

void Compare(benchmark::State &state, const std::function<std::size_t()> &ours,
             const std::function<std::size_t()> &yardstick)
{
    for ([[maybe_unused]] const auto once : state)
        state.counters["ratio"] = wb::bench::MedianRatio([&] { benchmark::DoNotOptimize(yardstick()); },
                                                         [&] { benchmark::DoNotOptimize(ours()); }, Rounds);
}

std::size_t ListAll(const QString &pattern)
{
    return wb::ListRows(Folder().Path(), pattern, 0).size();
}

void ListAgainstSortedNames(benchmark::State &state)
{
    Compare(
        state, [] { return ListAll(QStringLiteral("*.*")); },
        [] { return SortedNames(Folder().Native()).size(); });
}
BENCHMARK(ListAgainstSortedNames)->Iterations(1);

void ListByPatternsAgainstSortedNames(benchmark::State &state)
{
    Compare(
        state, [] { return ListAll(QStringLiteral("*.gi;*.gai;*.hai;*.aft;*.png")); },
        [] { return SortedNames(Folder().Native()).size(); });
}
BENCHMARK(ListByPatternsAgainstSortedNames)->Iterations(1);

void ListAgainstBareNames(benchmark::State &state)
{
    Compare(
        state, [] { return ListAll(QStringLiteral("*.*")); },
        [] { return BareNames(Folder().Native()).size(); });
}
BENCHMARK(ListAgainstBareNames)->Iterations(1);

void UnchangedRefreshAgainstBareNames(benchmark::State &state)
{
    wb::FolderWatch watch;
    watch.Watch(Folder().Native());
    Compare(
        state, [&watch] { return watch.MayHaveChanged() ? ListAll(QStringLiteral("*.*")) : 0; },
        [] { return BareNames(Folder().Native()).size(); });
}
BENCHMARK(UnchangedRefreshAgainstBareNames)->Iterations(1);

} // namespace

BENCHMARK_MAIN();
