// Writes DAT files (datreader.h). What was not changed is written as it was read, byte for byte.
#pragma once

#include "dat/dattree.h"
#include "dat/datwork.h"

#include <QStringView>

namespace wb
{

// The bytes of the file, plain or compressed as the tree says. None for a document that no file can hold, one
// that shrinks so far that it would not be read again (DatMemoryFor), or when memory does not suffice.
ByteArray DatSerialize(const DatTree &tree, const DatWork &work = {});

// Makes the document the whole file. An older file is replaced only by the complete new one: False on any
// error, with the older file as it was.
bool DatSaveFile(const QString &path, const DatTree &tree, const DatWork &work = {});

// Appends the block that the item `index` opens, and moves the index to the last item that it holds.
void DatWriteBlock(ByteArray &bytes, const DatTree &tree, std::int32_t &index, const DatWork &work = {});

// Appends the text, which holds no unit of zero, and its terminator.
void DatWriteText(ByteArray &bytes, QStringView text);

} // namespace wb
