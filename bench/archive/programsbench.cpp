// The whole of workbench-cli against zip and unzip, on the same files in the same run.
//
//   pack    the time of "zip -r -6" over that of "workbench-cli pack"
//   unpack  the time of "unzip" over that of "workbench-cli unpack"
//   size    the bytes of our archive over those of zip's
//   pack_peak_mb, unpack_peak_mb  the most memory that our program held
//
// Every sample writes into a new folder, and nothing is deleted before the end: files are made slowly for a
// while where many were deleted.
#include "archive/corpus.h"
#include "platform/programfolder.h"
#include "support/ratio.h"
#include "support/tempfolder.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <malloc.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace wb;
using namespace wb::bench;

// Runs a program in a folder, without its output; gives the most megabytes it held. It has to end well.
double Run(const std::string &folder, std::vector<std::string> words)
{
    std::vector<char *> arguments(words.size() + 1);
    std::ranges::transform(words, arguments.begin(), [](std::string &word) { return word.data(); });
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    rusage usage = {};
    if (status != 0 || ::wait4(child, &status, 0, &usage) != child || status != 0)
        std::abort();
    return double(usage.ru_maxrss) / 1024;
}

// Gives back the memory that holds the files of an earlier sample, for those of the next.
void Empty(const std::string &folder)
{
    if (!std::filesystem::exists(folder))
        return;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            std::filesystem::resize_file(entry.path(), 0);
}

// A program that we start counts the most that we held as its own (proc(5): clear_refs).
void ForgetPeak()
{
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

void Compare(benchmark::State &state, const std::function<Corpus()> &make, int rounds)
{
    const TempFolder folder;
    const std::string tree = folder.Native("tree");
    WriteFiles(make(), tree);
    ForgetPeak();
    const std::string program = NativeProgramFolder() + "/workbench-cli";
    int samples = 0;
    const auto newSample = [&] { return folder.Native(std::to_string(++samples)); };

    std::string zipFile;
    std::string pkgFile;
    std::string target;
    double packPeak = 0;
    double unpackPeak = 0;
    const auto zip = [&] {
        zipFile = newSample() + ".zip";
        Run(tree, {"zip", "-q", "-r", "-6", zipFile, "."});
    };
    const auto pack = [&] {
        pkgFile = newSample() + ".pkg";
        packPeak = std::max(packPeak, Run(tree, {program, "pack", "--quiet", ".", pkgFile}));
    };
    const auto unzip = [&] {
        target = newSample();
        Run(tree, {"unzip", "-q", zipFile, "-d", target});
    };
    const auto unpack = [&] {
        target = newSample();
        unpackPeak = std::max(unpackPeak, Run(tree, {program, "unpack", "--quiet", pkgFile, target}));
    };
    for ([[maybe_unused]] auto _ : state) {
        state.counters["pack"] = MedianRatio(zip, pack, rounds);
        state.counters["unpack"] = MedianRatio(unzip, unpack, rounds, [&] { Empty(target); });
    }
    state.counters["size"] =
        double(std::filesystem::file_size(pkgFile)) / double(std::filesystem::file_size(zipFile));
    state.counters["pack_peak_mb"] = packPeak;
    state.counters["unpack_peak_mb"] = unpackPeak;
}
BENCHMARK_CAPTURE(Compare, LargeFiles, MakeCorpus, 5)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(
    Compare, SmallFiles, [] { return MakeSmallFiles(10'000); }, 5)
    ->Iterations(1)
    ->Unit(benchmark::kSecond);

} // namespace
