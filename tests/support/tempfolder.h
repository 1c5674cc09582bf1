// A folder of a test's own, in TMPDIR or /tmp; removed with all it holds.
#pragma once

#include "common/bytearray.h"
#include "platform/nativepath.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace wb
{

class TempFolder
{
public:
    TempFolder() { m_path = ::mkdtemp(m_path.data()) != nullptr ? m_path : std::string(); }
    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    // Native paths of the folder and of what lies in it.
    const std::string &Native() const { return m_path; }
    std::string Native(std::string_view name) const { return m_path + '/' + std::string(name); }

    // The same as paths of the program.
    QString Path() const { return FromNativePath(m_path); }
    QString Path(const QString &name) const { return Path() + u'\\' + name; }

    void Put(std::string_view name, std::string_view bytes = "x") const
    {
        std::ofstream(Native(name), std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    }

    std::string Get(std::string_view name) const
    {
        std::ostringstream bytes;
        bytes << std::ifstream(Native(name), std::ios::binary).rdbuf();
        return bytes.str();
    }

    void MakeFolder(std::string_view name) const { std::filesystem::create_directories(Native(name)); }

    void MakePipe(std::string_view name) const { ::mkfifo(Native(name).c_str(), 0600); }

    std::size_t EntryCount() const
    {
        return std::size_t(std::distance(std::filesystem::directory_iterator(m_path), {}));
    }

private:
    std::string m_path = std::filesystem::temp_directory_path() / "workbench-test-XXXXXX";
};

// Text as a failed test shows it.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline ByteView BytesOf(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()};
}

inline ByteArray ArrayOf(std::string_view text)
{
    return {text.begin(), text.end()};
}

inline std::string TextOf(ByteView bytes)
{
    return {bytes.begin(), bytes.end()};
}

} // namespace wb
