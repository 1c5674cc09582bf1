#include "rastgl/filebytes.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

namespace rastgl
{

namespace
{

namespace fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Opens a new file beside `path` under a name that nothing has yet; `name` gets it.
File CreateBeside(const std::string &path, std::string &name)
{
    constexpr int Attempts = 20;
    std::random_device random;
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        name = path + '.' + std::to_string(random()) + ".tmp";
        if (File file{std::fopen(name.c_str(), "wbx")})
            return file;
    }
    return nullptr;
}

bool WriteAndClose(File file, Bytes bytes)
{
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}

} // namespace

std::optional<std::vector<std::uint8_t>> ReadFileBytes(const char *path)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    const File file(std::fopen(path, "rb"));
    if (error || !file)
        return std::nullopt;
    std::vector<std::uint8_t> bytes(size);
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        return std::nullopt;
    return bytes;
}

bool ReplaceFile(const char *path, Bytes bytes)
{
    // A link stays a link: the file it leads to is the one that is replaced.
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    if (error)
        return false;
    const fs::file_status former = fs::status(target, error);
    if (fs::exists(former) && !fs::is_regular_file(former))
        return false;

    std::string name;
    File file = CreateBeside(target.string(), name);
    if (!file)
        return false;
    bool complete = WriteAndClose(std::move(file), bytes);
    if (complete && fs::exists(former))
        fs::permissions(name, former.permissions(), error);
    if (complete) {
        fs::rename(name, target, error);
        complete = !error;
    }
    if (!complete)
        fs::remove(name, error);
    return complete;
}

} // namespace rastgl
