// A sound that is decoded from memory, to its end and once more from its beginning.
#include "fuzz/support/target.h"

#include "soundlib/soundfile.h"

#include <array>

void wb::FuzzOne(ByteView bytes)
{
    using namespace soundlib;
    const auto sound =
        SoundFile::Open(SoundSource::OfMemory(bytes.data(), static_cast<std::int64_t>(bytes.size())));
    if (sound == nullptr)
        return;
    std::array<float, std::size_t(SoundFile::MaxChannels) * 256> samples;
    constexpr int MostReads = 20'000;
    for (int reads = 0; reads < MostReads && !sound->Read(samples).empty(); ++reads) {
    }
    sound->Rewind();
    sound->Read(samples);
}
