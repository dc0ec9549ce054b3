// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

// Starts a program and prints how many milliseconds later a window of it has something painted in
// it, then ends the program. The screen must have no other window, and a window manager.
//
//     first-frame PROGRAM

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenLooks{1};
constexpr std::chrono::seconds kMost{30};

struct Free {
    void operator()(void* memory) const { std::free(memory); }  // NOLINT: the library's way
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

/// The screen as any client sees it.
class Screen {
 public:
    Screen() : connection_(xcb_connect(nullptr, nullptr)) {
        if (!works()) return;
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
        constexpr std::string_view kName = "_NET_CLIENT_LIST";
        const Reply<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(
            connection_.get(),
            xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(kName.size()),
                            kName.data()),
            nullptr));
        if (answer) list_ = answer->atom;
    }

    [[nodiscard]] bool works() const { return xcb_connection_has_error(connection_.get()) == 0; }

    /// The window that the window manager has managed the longest.
    [[nodiscard]] std::optional<xcb_window_t> firstWindow() const {
        const Reply<xcb_get_property_reply_t> answer(xcb_get_property_reply(
            connection_.get(),
            xcb_get_property(connection_.get(), 0, root_, list_, XCB_ATOM_WINDOW, 0, 1), nullptr));
        if (!answer || xcb_get_property_value_length(answer.get()) == 0) return std::nullopt;
        xcb_window_t window = XCB_NONE;
        std::memcpy(&window, xcb_get_property_value(answer.get()), sizeof window);
        return window;
    }

    /// Whether a line down the middle of a window, where it shows, has more than one colour. A
    /// window that has painted nothing is as blank as the screen was.
    [[nodiscard]] bool isPainted(xcb_window_t window) const {
        const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(
            connection_.get(), xcb_get_geometry(connection_.get(), window), nullptr));
        if (!size) return false;
        const auto middle = static_cast<std::int16_t>(size->width / 2);
        const Reply<xcb_get_image_reply_t> image(
            xcb_get_image_reply(connection_.get(),
                                xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                              middle, 0, 1, size->height, ~std::uint32_t{0}),
                                nullptr));
        if (!image) return false;  // it is not mapped yet
        std::vector<std::uint32_t> pixels(size->height);
        const auto bytes = static_cast<std::size_t>(xcb_get_image_data_length(image.get()));
        std::memcpy(pixels.data(), xcb_get_image_data(image.get()),
                    std::min(bytes, pixels.size() * sizeof pixels[0]));
        return std::ranges::any_of(pixels, [&](auto pixel) { return pixel != pixels.front(); });
    }

 private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t root_ = XCB_NONE;
    xcb_atom_t list_ = XCB_NONE;
};

/// Looks again and again until there is something; false where there never is.
template <typename Look>
bool waitFor(Look look) {
    const auto end = Clock::now() + kMost;
    while (!look()) {
        if (Clock::now() > end) return false;
        std::this_thread::sleep_for(kBetweenLooks);
    }
    return true;
}

int fail(const char* text) {
    std::cerr << "first-frame: " << text << '\n';
    return 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: first-frame PROGRAM\n";
        return 2;
    }
    const Screen screen;
    if (!screen.works()) return fail("there is no screen");
    // One that was ended a moment ago may still be there.
    if (!waitFor([&] { return !screen.firstWindow(); })) return fail("there is another window");

    const auto start = Clock::now();
    pid_t program = 0;
    std::array<char*, 2> arguments{argv[1], nullptr};
    if (posix_spawn(&program, argv[1], nullptr, nullptr, arguments.data(), environ) != 0)
        return fail("the program cannot be started");
    const bool painted = waitFor([&] {
        const auto window = screen.firstWindow();
        return window && screen.isPainted(*window);
    });
    const std::chrono::duration<double, std::milli> time = Clock::now() - start;
    kill(program, SIGTERM);
    waitpid(program, nullptr, 0);
    if (!painted) return fail("the program shows nothing");
    std::cout << "start " << time.count() << '\n';
    return 0;
}
