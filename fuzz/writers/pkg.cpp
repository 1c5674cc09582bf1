// A folder that is packed has in the archive the files it had on disk.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "fuzz/support/silent.h"
#include "fuzz/support/target.h"

#include "archive/packjob.h"
#include "archive/pkgreader.h"

#include <algorithm>
#include <map>

namespace wb
{

namespace
{

constexpr const char *Folders[] = {"", "a/", "a/b/", "c/"};

std::map<QString, ByteArray> MakeFiles(FuzzInput &input)
{
    for (const char *folder : Folders)
        Scratch().MakeFolder(std::string("in/") + folder);
    std::map<QString, ByteArray> files;
    while (files.size() < 8 && !input.IsAtEnd()) {
        const std::string name = Folders[input.Byte() % 4] + std::to_string(files.size());
        const std::int32_t repeats = 1 + input.Byte();
        const ByteView part = input.Take(input.Number(2000));
        ByteArray bytes;
        for (std::int32_t i = 0; i < repeats; ++i)
            bytes.insert(bytes.end(), part.begin(), part.end());
        ScratchFile(("in/" + name).c_str(), bytes);
        files[QString::fromStdString(name).replace(u'/', u'\\')] = std::move(bytes);
    }
    return files;
}

} // namespace

void FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const bool storeOnly = input.Flag();
    const std::map<QString, ByteArray> files = MakeFiles(input);

    const QString path = Scratch().Path(QStringLiteral("made.pkg"));
    SilentProgress progress;
    PackJob job(progress, 1);
    const PackOrder order = {path, Scratch().Path(QStringLiteral("in")), storeOnly};
    Require(job.Run(order, SilentReport()) == JobEnd::Done, "the folder is packed");
    std::filesystem::remove_all(Scratch().Native("in"));

    FileError error = FileError::None;
    const PkgHandle archive = PkgOpenRead(path, error);
    Require(archive != nullptr, "the archive opens");
    std::size_t found = 0;
    for (const PkgEntry &entry : PkgReadTree(*archive, archive->RootOffset)) {
        if (entry.Type == PkgFolder)
            continue;
        const auto file = files.find(entry.FullPath());
        ByteArray data;
        Require(file != files.end() && PkgReadEntryData(*archive, data, entry) && data == file->second,
                "a file comes back");
        ++found;
    }
    Require(found == files.size(), "every file is there");
}

} // namespace wb
