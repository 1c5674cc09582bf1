// JSON text read and written without losing anything: a code unit that is no half of a pair stays as its
// escape, which common readers replace. Depth is the text's to choose.
#pragma once

#include "common/bytearray.h"

#include <QLatin1StringView>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace wb
{

// What a JSON text holds, as one array: each array or object is followed by its elements, an object's by
// turns key and value.
class JsonText
{
public:
    enum Type : std::uint8_t { Null, False, True, Number, String, Array, Object };

    // Takes the text apart, which must stay where it is. A byte order mark in front of it is passed over.
    // Nothing when it is no JSON. Throws std::bad_alloc when it has more values than the memory holds: that
    // many bytes, or for 0 half of what is free.
    static std::optional<JsonText> Read(ByteView text, std::int64_t memoryLimit = 0);

    // The value `index`; 0 is the whole.
    Type TypeOf(int index) const { return m_values[std::size_t(index)].type; }

    // The index behind the value and all that it holds: that of the next one beside it, if there is one.
    int End(int index) const { return int(m_values[std::size_t(index)].end); }

    // The value of an object's key, the last one when it is there again; nothing when it has none, or when
    // `index` is no object.
    std::optional<int> Member(int index, QLatin1StringView key) const;

    // The value of a number that is whole and of 32 bits.
    std::optional<std::int32_t> Long(int index) const;

    // The text of a string.
    QString Text(int index) const;

private:
    class Reader;
    struct Value {
        std::uint32_t at; // of the first byte, which for strings is behind the quote
        std::uint32_t length;
        std::uint32_t end;
        Type type;
    };

    ByteView Bytes(int index) const;

    ByteView m_text;
    std::vector<Value> m_values;
};

// Appends the text as a JSON string.
void AppendJsonString(ByteArray &json, QStringView text);

} // namespace wb
