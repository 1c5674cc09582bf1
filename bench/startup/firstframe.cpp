// Measures how long programs with a window take from their start to their first frame on an X display:
// bench_startup. One line a program, in milliseconds, and the ratio to a window of Qt's with one line of
// text.
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int Runs = 15;
constexpr int LeastWidth = 1000; // of the window looked for
constexpr auto Patience = std::chrono::seconds(20);

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename Reply>
using ReplyPtr = std::unique_ptr<Reply, Free>;

class Display
{
public:
    Display() : m_connection(xcb_connect(nullptr, nullptr)) {}
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;
    ~Display() { xcb_disconnect(m_connection); }

    bool IsOpen() const { return xcb_connection_has_error(m_connection) == 0; }

    // Whether a large window shows anything: its frame's top-left part has other pixels than black.
    bool ShowsAWindow() const
    {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const ReplyPtr<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, root), nullptr));
        if (!tree)
            return false;
        const xcb_window_t *windows = xcb_query_tree_children(tree.get());
        return std::any_of(windows, windows + xcb_query_tree_children_length(tree.get()),
                           [this, root](xcb_window_t window) { return IsShown(window, root); });
    }

private:
    bool IsShown(xcb_window_t window, xcb_window_t root) const
    {
        const ReplyPtr<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
        if (!place || place->width < LeastWidth)
            return false;
        constexpr int Side = 24;
        const ReplyPtr<xcb_get_image_reply_t> image(xcb_get_image_reply(
            m_connection,
            xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root,
                          std::int16_t(std::max<int>(place->x, 0) + Side),
                          std::int16_t(std::max<int>(place->y, 0) + Side), Side, Side, ~0U),
            nullptr));
        if (!image)
            return false;
        const std::uint8_t *bytes = xcb_get_image_data(image.get());
        return std::any_of(bytes, bytes + xcb_get_image_data_length(image.get()),
                           [](std::uint8_t byte) { return byte != 0 && byte != 255; });
    }

    xcb_connection_t *m_connection;
};

// Waits until the display shows a window, or none; nothing when that does not come.
std::optional<double> WaitFor(const Display &display, bool shown)
{
    const auto start = Clock::now();
    while (display.ShowsAWindow() != shown) {
        if (Clock::now() - start > Patience)
            return std::nullopt;
        std::this_thread::sleep_for(std::chrono::microseconds(300));
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// From the start of the program to its first frame.
std::optional<double> Measure(const Display &display, const std::string &program)
{
    pid_t child = 0;
    std::string name = program;
    char *arguments[] = {name.data(), nullptr};
    const auto start = Clock::now();
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0)
        return std::nullopt;
    const bool isShown = WaitFor(display, true).has_value();
    const double time = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    WaitFor(display, false);
    return isShown ? std::optional(time) : std::nullopt;
}

std::optional<double> MedianOf(const Display &display, const std::string &program)
{
    std::vector<double> times;
    for (int run = 0; run < Runs; ++run)
        if (const std::optional<double> time = Measure(display, program))
            times.push_back(*time);
    if (times.size() < Runs) {
        std::fprintf(stderr, "%s: no window\n", program.c_str());
        return std::nullopt;
    }
    std::nth_element(times.begin(), times.begin() + Runs / 2, times.end());
    return times[Runs / 2];
}

} // namespace

int main()
{
    const Display display;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    if (!display.IsOpen()) {
        std::fprintf(stderr, "no display\n");
        return 2;
    }
    const std::optional<double> bare = MedianOf(display, folder / "bare_window");
    const std::optional<double> whole = MedianOf(display, folder / "workbench");
    if (!bare || !whole)
        return 1;
    std::printf("start to first frame: a window with a line of text %.0f ms, workbench %.0f ms, %.2f times\n",
                *bare, *whole, *whole / *bare);
    return 0;
}
