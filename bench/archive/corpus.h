// The files that the archive benchmarks pack: made up to be like the game's, the same on every run.
#pragma once

#include "common/bytearray.h"

#include <string>
#include <vector>

namespace wb::bench
{

struct CorpusFile {
    std::string name; // with its folder
    ByteArray bytes;
};

using Corpus = std::vector<CorpusFile>;

// More than 100 MB: pictures of all GI types, texts, sounds that are compressed already, and sparse tables.
Corpus MakeCorpus();

// So many files of 200 to 4,000 bytes, 100 in a folder: pieces of the same.
Corpus MakeSmallFiles(int count);

std::size_t SizeOf(const Corpus &corpus);

// Writes the files below the folder.
void WriteFiles(const Corpus &corpus, const std::string &folder);

} // namespace wb::bench
