#include "common/json.h"

#include "common/bytes.h"
#include "common/memorybudget.h"

#include <QStringDecoder>
#include <QUtf8StringView>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>

namespace wb
{

namespace
{

constexpr char EscapeLetters[] = "\"\\/bfnrt";
constexpr char EscapedUnits[] = "\"\\/\b\f\n\r\t";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// The value of four hexadecimal digits, -1 for anything else.
int UnitOf(ByteView digits)
{
    const auto *first = reinterpret_cast<const char *>(digits.data());
    int unit = 0;
    const auto [end, error] = std::from_chars(first, first + digits.size(), unit, 16);
    return digits.size() == 4 && end == first + 4 && *first != '-' ? unit : -1;
}

bool IsSame(ByteView bytes, std::string_view text)
{
    return std::string_view{reinterpret_cast<const char *>(bytes.data()), bytes.size()} == text;
}

void AppendUnit(ByteArray &json, char16_t unit)
{
    static constexpr char digits[] = "0123456789abcdef";
    const char escape[] = {
        '\\', 'u', digits[unit >> 12], digits[unit >> 8 & 15], digits[unit >> 4 & 15], digits[unit & 15]};
    AppendBytes(json, std::string_view{escape, sizeof escape});
}

} // namespace

class JsonText::Reader
{
public:
    Reader(ByteView text, std::int64_t memoryLimit) : m_text(text), m_budget(memoryLimit) {}

    // Values come one after another; what is open is kept in a list of its own, not on the stack.
    bool Read()
    {
        TakeWord(ByteOrderMark);
        if (!ReadValue())
            return false;
        while (!m_open.empty()) {
            const bool isObject = m_values[m_open.back()].type == Object;
            const bool isFirst = m_values.size() == m_open.back() + 1;
            Blanks();
            if (Take(isObject ? '}' : ']')) {
                m_values[m_open.back()].end = std::uint32_t(m_values.size());
                m_open.pop_back();
                continue;
            }
            if ((!isFirst && !Take(',')) || (isObject && !ReadKey()) || !ReadValue())
                return false;
        }
        Blanks();
        return m_at == m_text.size();
    }

    std::vector<Value> TakeValues() { return std::move(m_values); }

private:
    int Peek() const { return m_at < m_text.size() ? m_text[m_at] : -1; }

    bool Take(char character)
    {
        const bool isThere = Peek() == character;
        m_at += isThere ? 1 : 0;
        return isThere;
    }

    void Blanks()
    {
        while (m_at < m_text.size() && std::strchr(" \t\r\n", m_text[m_at]) != nullptr && m_text[m_at] != 0)
            ++m_at;
    }

    void Digits()
    {
        while (m_at < m_text.size() && m_text[m_at] >= '0' && m_text[m_at] <= '9')
            ++m_at;
    }

    bool TakeWord(std::string_view word)
    {
        const bool isThere = IsSame(m_text.subspan(m_at, std::min(word.size(), m_text.size() - m_at)), word);
        m_at += isThere ? word.size() : 0;
        return isThere;
    }

    void TakeMemory(std::size_t bytes)
    {
        // What grows is there twice for a moment.
        if (!m_budget.Take(2 * std::int64_t(bytes)))
            throw std::bad_alloc();
    }

    bool Add(Type type, std::size_t start, std::size_t end)
    {
        TakeMemory(sizeof(Value));
        m_values.push_back(
            {std::uint32_t(start), std::uint32_t(end - start), std::uint32_t(m_values.size() + 1), type});
        return true;
    }

    bool Open(Type type)
    {
        m_open.push_back(m_values.size());
        if (m_open.size() > m_deepest) {
            m_deepest = m_open.size();
            TakeMemory(sizeof m_open[0]);
        }
        ++m_at;
        return Add(type, m_at - 1, m_at);
    }

    bool ReadKey()
    {
        Blanks();
        if (!ReadString())
            return false;
        Blanks();
        return Take(':');
    }

    bool ReadValue()
    {
        Blanks();
        const std::size_t start = m_at;
        switch (Peek()) {
        case '{':
            return Open(Object);
        case '[':
            return Open(Array);
        case '"':
            return ReadString();
        case 't':
            return TakeWord("true") && Add(True, start, m_at);
        case 'f':
            return TakeWord("false") && Add(False, start, m_at);
        case 'n':
            return TakeWord("null") && Add(Null, start, m_at);
        default:
            return ReadNumber() && Add(Number, start, m_at);
        }
    }

    bool ReadNumber()
    {
        const auto digits = [this] {
            const std::size_t start = m_at;
            Digits();
            return m_at > start;
        };
        Take('-');
        if (!Take('0') && !digits())
            return false;
        if (Take('.') && !digits())
            return false;
        if (Take('e') || Take('E')) {
            if (!Take('+'))
                Take('-');
            return digits();
        }
        return true;
    }

    bool ReadEscape()
    {
        const int letter = Peek();
        if (letter == 'u') {
            const ByteView digits =
                m_text.subspan(m_at + 1, std::min<std::size_t>(4, m_text.size() - m_at - 1));
            m_at += 5;
            return UnitOf(digits) >= 0;
        }
        ++m_at;
        return letter > 0 && std::strchr(EscapeLetters, letter) != nullptr;
    }

    bool ReadString()
    {
        if (!Take('"'))
            return false;
        const std::size_t start = m_at;
        while (Peek() != '"') {
            if (Peek() < ' ') // the end as well
                return false;
            if (Take('\\') && !ReadEscape())
                return false;
            while (Peek() >= ' ' && Peek() != '"' && Peek() != '\\')
                ++m_at;
        }
        const std::size_t end = m_at++;
        const auto *bytes = reinterpret_cast<const char *>(m_text.data() + start);
        return QUtf8StringView(bytes, qsizetype(end - start)).isValidUtf8() && Add(String, start, end);
    }

    ByteView m_text;
    MemoryBudget m_budget;
    std::size_t m_at = 0;
    std::vector<Value> m_values;
    std::vector<std::size_t> m_open; // arrays and objects, from the outermost in
    std::size_t m_deepest = 0;       // as long as it has been
};

std::optional<JsonText> JsonText::Read(ByteView text, std::int64_t memoryLimit)
{
    Reader reader(text, memoryLimit);
    if (!reader.Read())
        return std::nullopt;
    JsonText json;
    json.m_text = text;
    json.m_values = reader.TakeValues();
    return json;
}

ByteView JsonText::Bytes(int index) const
{
    const Value &value = m_values[std::size_t(index)];
    return m_text.subspan(value.at, value.length);
}

std::optional<int> JsonText::Member(int index, QLatin1StringView key) const
{
    if (TypeOf(index) != Object)
        return std::nullopt;
    std::optional<int> found;
    for (int member = index + 1; member < End(index); member = End(member + 1)) {
        const ByteView bytes = Bytes(member);
        const bool isEscaped = std::ranges::find(bytes, '\\') != bytes.end();
        if (isEscaped ? Text(member) == key : IsSame(bytes, {key.data(), std::size_t(key.size())}))
            found = member + 1;
    }
    return found;
}

std::optional<std::int32_t> JsonText::Long(int index) const
{
    const ByteView bytes = Bytes(index);
    const auto *first = reinterpret_cast<const char *>(bytes.data());
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(first, first + bytes.size(), number);
    const bool isLong = TypeOf(index) == Number && error == std::errc() && end == first + bytes.size();
    return isLong ? std::optional(number) : std::nullopt;
}

QString JsonText::Text(int index) const
{
    const ByteView bytes = Bytes(index);
    QString text;
    // A byte order mark is a character like any other here.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t run =
            std::size_t(std::find(bytes.begin() + std::ptrdiff_t(at), bytes.end(), '\\') - bytes.begin());
        text += decode(QByteArrayView(bytes.data() + at, qsizetype(run - at)));
        at = run;
        if (at == bytes.size())
            break;
        const char letter = char(bytes[at + 1]);
        if (letter == 'u') {
            text += QChar(UnitOf(bytes.subspan(at + 2, 4)));
            at += 6;
        } else {
            text += QLatin1Char(EscapedUnits[std::strchr(EscapeLetters, letter) - EscapeLetters]);
            at += 2;
        }
    }
    return text;
}

void AppendJsonString(ByteArray &json, QStringView text)
{
    AppendBytes(json, "\"");
    for (qsizetype start = 0; start < text.size();) {
        const auto isPlain = [](QChar c) { return c >= u' ' && c != u'"' && c != u'\\' && !c.isSurrogate(); };
        const auto rest = text.sliced(start);
        const qsizetype plain = std::ranges::find_if_not(rest, isPlain) - rest.begin();
        const QByteArray run = rest.first(plain).toUtf8();
        AppendBytes(json, std::string_view{run.constData(), std::size_t(run.size())});
        start += plain;
        if (start == text.size())
            break;
        const char16_t unit = text[start++].unicode();
        if (unit == u'"' || unit == u'\\') {
            const char escape[] = {'\\', char(unit)};
            AppendBytes(json, std::string_view{escape, sizeof escape});
        } else if (QChar::isHighSurrogate(unit) && start < text.size() && text[start].isLowSurrogate()) {
            const QByteArray pair = text.sliced(start - 1, 2).toUtf8();
            AppendBytes(json, std::string_view{pair.constData(), std::size_t(pair.size())});
            ++start;
        } else {
            AppendUnit(json, unit);
        }
    }
    AppendBytes(json, "\"");
}

} // namespace wb
