// What libFuzzer calls for a changed file, in the targets whose files are taken apart.
#include "fuzz/support/inner.h"

#include <algorithm>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t room);

namespace wb
{

namespace
{

void ChangeBytes(ByteArray &bytes)
{
    constexpr std::size_t MostGrowth = 64;

    const std::size_t size = bytes.size();
    bytes.resize(size + MostGrowth);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
}

// The longer a part, the likelier.
std::vector<FilePart>::iterator ChosenPart(std::vector<FilePart> &parts, std::size_t choice)
{
    std::size_t all = 0;
    for (const FilePart &part : parts)
        all += 1 + part.bytes.size();
    auto chosen = parts.begin();
    for (std::size_t left = choice % std::max<std::size_t>(all, 1); left > chosen->bytes.size(); ++chosen)
        left -= 1 + chosen->bytes.size();
    return chosen;
}

// Changes a part; now and then leaves it out, or repeats it elsewhere.
void ChangeParts(std::vector<FilePart> &parts, unsigned choice)
{
    const auto part = ChosenPart(parts, choice / 16);
    if (choice % 16 == 0)
        parts.erase(part);
    else if (choice % 16 == 1)
        parts.insert(parts.begin() + choice % parts.size(), FilePart(*part));
    else
        ChangeBytes(part->bytes);
}

} // namespace

} // namespace wb

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t room,
                                               unsigned seed)
{
    std::vector<wb::FilePart> parts;
    if (seed % 16 != 0) // now and then checksums are to be wrong
        parts = wb::TakeApart({data, size}, seed / 16 % 2 == 0);
    if (parts.empty())
        return LLVMFuzzerMutate(data, size, room);
    wb::ChangeParts(parts, seed / 32);
    const wb::ByteArray file = wb::PutTogether(parts);
    if (file.empty() || file.size() > room)
        return LLVMFuzzerMutate(data, size, room);
    std::ranges::copy(file, data);
    return file.size();
}
