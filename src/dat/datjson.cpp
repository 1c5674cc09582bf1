#include "dat/datjson.h"

#include "common/bytes.h"
#include "common/json.h"
#include "dat/datwriter.h"

#include <string_view>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

constexpr std::size_t LongestFile = 2'000'000'000;

class JsonWriter
{
public:
    explicit JsonWriter(const DatTree &tree) : m_tree(tree) {}

    ByteArray Write()
    {
        Add(m_tree.IsZL ? "{\"zl\": true,\n\"root\": " : "{\"zl\": false,\n\"root\": ");
        OpenBlock(0);
        for (std::int32_t item = 1; !m_open.empty();) {
            const std::int32_t block = m_open.back();
            if (item == m_tree.Item(block).End) {
                m_open.pop_back();
                Add(block == 0 ? "]}" : "]}}");
            } else {
                Add(item == block + 1 ? "\n" : ",\n");
                WriteChild(item++);
            }
        }
        Add("}\n");
        return std::move(m_json);
    }

private:
    void Add(std::string_view text) { AppendBytes(m_json, text); }
    void Add(std::int32_t number) { Add(std::to_string(number)); }

    void OpenBlock(std::int32_t item)
    {
        m_open.push_back(item);
        Add(m_tree.Item(item).Kind == DatNodeList ? R"({"kind": "nodes", "children": [)"
                                                  : R"({"kind": "pairs", "children": [)");
    }

    void WriteChild(std::int32_t item)
    {
        const DatNode &node = m_tree.Item(item);
        Add(R"({"type": )");
        if (m_tree.Item(node.Parent).Kind == DatNodeList) {
            Add(node.OpensBlock ? R"("block", "id": )" : R"("value", "id": )");
            Add(node.Id);
            Add(R"(, "aux": )");
            Add(node.Aux);
        } else {
            Add(std::int32_t(node.Type));
        }
        Add(R"(, "name": )");
        AppendJsonString(m_json, m_tree.Name(item));
        if (node.OpensBlock) {
            Add(R"(, "block": )");
            OpenBlock(item);
        } else {
            Add(R"(, "value": )");
            AppendJsonString(m_json, m_tree.Value(item));
            Add("}");
        }
    }

    const DatTree &m_tree;
    ByteArray m_json;
    std::vector<std::int32_t> m_open; // blocks, from the root down
};

class JsonReader
{
public:
    JsonReader(const JsonText &json, DatFromJsonResult &result)
        : m_json(json), m_result(result), m_bytes(result.Plain)
    {
    }

    bool Read()
    {
        const auto isZL = m_json.Member(0, "zl"_L1);
        const auto root = m_json.Member(0, "root"_L1);
        if (!isZL || (m_json.TypeOf(*isZL) != JsonText::True && m_json.TypeOf(*isZL) != JsonText::False))
            return Fail(u"\"zl\" is neither true nor false"_s);
        m_result.IsZL = m_json.TypeOf(*isZL) == JsonText::True;
        if (!OpenBlock(root, {}))
            return false;
        while (!m_open.empty()) {
            Level &level = m_open.back();
            const int child = level.next;
            if (child == level.end) {
                m_open.pop_back();
                continue;
            }
            level.next = m_json.End(child);
            ++level.number;
            if (!(level.isNodes ? ReadNode(child) : ReadPair(child)))
                return false;
        }
        return true;
    }

private:
    struct Level {
        QString name; // of the block
        int next;     // of its children
        int end;
        int number; // of the child that is read
        bool isNodes;
    };

    // Children without a name yet are told by their number.
    bool Fail(const QString &problem, const QString &name = {})
    {
        QString path;
        for (std::size_t i = 1; i < m_open.size(); ++i)
            path += m_open[i].name + u'\\';
        if (!m_open.empty() && m_open.back().number > 0)
            path += name.isEmpty() ? u"child %1"_s.arg(m_open.back().number) : name;
        m_result.Problem = path.isEmpty() ? problem : path + u": "_s + problem;
        return false;
    }

    std::optional<int> Member(int object, QLatin1StringView key, JsonText::Type type) const
    {
        const auto member = m_json.Member(object, key);
        return member && m_json.TypeOf(*member) == type ? member : std::nullopt;
    }

    // A text of the child; nothing, with a problem told, when it is not there or can't be written. What a
    // child has besides its texts never goes beyond what an array of bytes holds.
    std::optional<QString> Text(int child, QLatin1StringView key, const QString &name = {})
    {
        const auto member = Member(child, key, JsonText::String);
        if (!member) {
            Fail(u"has no text \"%1\""_s.arg(key), name);
            return std::nullopt;
        }
        QString text = m_json.Text(*member);
        if (m_bytes.size() + 2 * std::size_t(text.size()) > LongestFile) {
            Fail(u"more than a file can hold"_s);
            return std::nullopt;
        }
        if (text.contains(u'\0')) {
            Fail(u"its %1 holds a zero character, which ends a text"_s.arg(key), name);
            return std::nullopt;
        }
        return text;
    }

    bool OpenBlock(std::optional<int> block, const QString &name)
    {
        const auto kind = block ? Member(*block, "kind"_L1, JsonText::String) : std::nullopt;
        const auto children = block ? Member(*block, "children"_L1, JsonText::Array) : std::nullopt;
        const QString kindText = kind ? m_json.Text(*kind) : QString();
        const bool isNodes = kindText == "nodes"_L1;
        if (!children || (!isNodes && kindText != "pairs"_L1))
            return Fail(u"has no block of a known kind with children"_s, name);
        std::int32_t count = 0;
        for (int child = *children + 1; child < m_json.End(*children); child = m_json.End(child))
            ++count;
        AddByte(isNodes ? DatNodeList : DatPairList);
        AddLong(count);
        m_open.push_back({name, *children + 1, m_json.End(*children), 0, isNodes});
        return true;
    }

    bool ReadNode(int child)
    {
        const auto name = Text(child, "name"_L1);
        if (!name)
            return false;
        const auto type = Member(child, "type"_L1, JsonText::String);
        const QString typeText = type ? m_json.Text(*type) : QString();
        const bool isBlock = typeText == "block"_L1;
        if (!isBlock && typeText != "value"_L1)
            return Fail(u"its type is neither \"value\" nor \"block\""_s, *name);
        for (const QLatin1StringView key : {"id"_L1, "aux"_L1}) {
            const auto member = m_json.Member(child, key);
            const auto number = member ? m_json.Long(*member) : std::nullopt;
            if (!number)
                return Fail(u"has no whole number \"%1\" of 32 bits"_s.arg(key), *name);
            AddLong(*number);
        }
        AddByte(isBlock ? DatBlock : DatValue);
        DatWriteText(m_bytes, *name);
        return isBlock ? OpenBlock(m_json.Member(child, "block"_L1), *name) : AddValue(child, *name);
    }

    bool ReadPair(int child)
    {
        const auto name = Text(child, "name"_L1);
        if (!name)
            return false;
        const auto member = m_json.Member(child, "type"_L1);
        const std::int32_t type = member ? m_json.Long(*member).value_or(-1) : -1;
        if (type < 0 || type > UINT8_MAX)
            return Fail(u"its type is no number from 0 to 255"_s, *name);
        AddByte(type);
        DatWriteText(m_bytes, *name);
        return AddValue(child, *name);
    }

    bool AddValue(int child, const QString &name)
    {
        const auto value = Text(child, "value"_L1, name);
        if (value)
            DatWriteText(m_bytes, *value);
        return value.has_value();
    }

    void AddByte(std::int32_t value)
    {
        std::int32_t end = ByteCount(m_bytes);
        AppendByte(m_bytes, end, std::uint8_t(value));
    }
    void AddLong(std::int32_t value)
    {
        std::int32_t end = ByteCount(m_bytes);
        AppendLong(m_bytes, end, value);
    }

    const JsonText &m_json;
    DatFromJsonResult &m_result;
    ByteArray &m_bytes;
    std::vector<Level> m_open; // blocks, from the root down
};

} // namespace

ByteArray DatToJson(const DatTree &tree)
{
    return JsonWriter(tree).Write();
}

DatFromJsonResult DatFromJson(ByteView json)
{
    DatFromJsonResult result;
    const auto text = JsonText::Read(json);
    if (!text)
        result.Problem = u"is no JSON"_s;
    else if (!JsonReader(*text, result).Read())
        result.Plain.clear();
    return result;
}

} // namespace wb
