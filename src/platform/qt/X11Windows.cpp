#include "platform/qt/X11Windows.h"

#include <QGuiApplication>

#if defined(SONNEL_XCB) && QT_CONFIG(xcb)

#include "platform/Text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <string_view>

#include <xcb/xcb.h>

namespace sonnel {
namespace {

/// Longest property that is read, in units of four bytes.
constexpr std::uint32_t PropertyLimit = 16384;
/// Longest title that is shown, in characters.
constexpr std::size_t TitleLimit = 200;
/// The source of an activation request: the user. Window managers may refuse that of an ordinary
/// program.
constexpr std::uint32_t OnTheUsersBehalf = 2;
/// The desktop of a window that all of them show.
constexpr std::uint32_t EveryDesktop = 0xFFFFFFFF;

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Freed>;

/// The X server behind Qt's own connection. What the server refuses is as if it were not there.
class X11Display {
  public:
    /// Nothing when Qt draws on something else.
    static std::optional<X11Display> Own();

    /// Top-level windows, oldest first.
    [[nodiscard]] std::vector<xcb_window_t> Windows() const;
    /// The two names in a window's class, folded, without domains.
    [[nodiscard]] std::vector<std::string> ProgramNames(xcb_window_t window) const;
    [[nodiscard]] std::string Title(xcb_window_t window) const;
    [[nodiscard]] bool Activate(xcb_window_t window) const;

  private:
    X11Display(xcb_connection_t* connection, xcb_window_t root)
        : connection_(connection), root_(root) {}

    [[nodiscard]] xcb_atom_t Atom(std::string_view name) const;
    [[nodiscard]] std::string Bytes(xcb_window_t window, std::string_view property) const;
    [[nodiscard]] std::vector<std::uint32_t> Words(xcb_window_t window,
                                                   std::string_view property) const;
    /// Whether a window manager is running that knows this part of EWMH.
    [[nodiscard]] bool Supports(std::string_view feature) const;
    [[nodiscard]] Reply<xcb_get_window_attributes_reply_t> Attributes(xcb_window_t window) const;
    [[nodiscard]] std::vector<xcb_window_t> UnmanagedWindows() const;
    /// Sends the window manager a request about a window; false when the server refuses it.
    [[nodiscard]] bool Ask(xcb_window_t window, std::string_view request, std::uint32_t data) const;
    [[nodiscard]] bool ShowDesktopOf(xcb_window_t window) const;

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

std::optional<X11Display> X11Display::Own() {
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* const connection = x11 == nullptr ? nullptr : x11->connection();
    if (connection == nullptr || xcb_connection_has_error(connection) != 0) {
        return {};
    }
    return X11Display(connection, xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root);
}

xcb_atom_t X11Display::Atom(std::string_view name) const {
    const auto length = static_cast<std::uint16_t>(name.size());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_, xcb_intern_atom(connection_, 1, length, name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string X11Display::Bytes(xcb_window_t window, std::string_view property) const {
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_,
                               xcb_get_property(connection_, 0, window, Atom(property),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, PropertyLimit),
                               nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<std::uint32_t> X11Display::Words(xcb_window_t window, std::string_view property) const {
    const std::string bytes = Bytes(window, property);
    std::vector<std::uint32_t> words(bytes.size() / sizeof(std::uint32_t));
    if (!words.empty()) {
        std::memcpy(words.data(), bytes.data(), words.size() * sizeof(std::uint32_t));
    }
    return words;
}

bool X11Display::Supports(std::string_view feature) const {
    // What a window manager says on the root window outlives it; its own window does not.
    constexpr std::string_view check = "_NET_SUPPORTING_WM_CHECK";
    const auto manager = Words(root_, check);
    if (manager.empty() || Words(manager.front(), check) != manager) {
        return false;
    }
    const auto features = Words(root_, "_NET_SUPPORTED");
    return std::find(features.begin(), features.end(), Atom(feature)) != features.end();
}

Reply<xcb_get_window_attributes_reply_t> X11Display::Attributes(xcb_window_t window) const {
    return Reply<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
}

std::vector<xcb_window_t> X11Display::UnmanagedWindows() const {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
    std::vector<xcb_window_t> windows;
    if (tree) {
        const xcb_window_t* const children = xcb_query_tree_children(tree.get());
        // Toolkits keep windows that never show and carry the program's name all the same.
        std::copy_if(children, children + xcb_query_tree_children_length(tree.get()),
                     std::back_inserter(windows), [this](xcb_window_t window) {
                         const auto attributes = Attributes(window);
                         return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
                     });
    }
    return windows;
}

std::vector<xcb_window_t> X11Display::Windows() const {
    return Supports("_NET_CLIENT_LIST") ? Words(root_, "_NET_CLIENT_LIST") : UnmanagedWindows();
}

std::vector<std::string> X11Display::ProgramNames(xcb_window_t window) const {
    const std::string bytes = Bytes(window, "WM_CLASS");
    std::vector<std::string> names;
    for (auto begin = bytes.begin(); begin != bytes.end();) {
        const auto end = std::find(begin, bytes.end(), '\0');
        const std::string name(begin, end);
        names.push_back(FoldCase(name.substr(name.rfind('.') + 1)));
        begin = end == bytes.end() ? end : end + 1;
    }
    return names;
}

std::string X11Display::Title(xcb_window_t window) const {
    std::string title = Bytes(window, "_NET_WM_NAME");
    if (title.empty()) {
        title = Bytes(window, "WM_NAME");
    }
    const std::string text = IsValidUtf8(title) ? title : FromWindows1252(title);
    return std::string(FirstCodePoints(text, TitleLimit));
}

bool X11Display::Ask(xcb_window_t window, std::string_view request, std::uint32_t data) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = Atom(request);
    event.data.data32[0] = data;
    constexpr std::uint32_t toWindowManager =
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    const Reply<xcb_generic_error_t> error(xcb_request_check(
        connection_, xcb_send_event_checked(connection_, 0, root_, toWindowManager,
                                            reinterpret_cast<const char*>(&event))));
    return !error;
}

bool X11Display::ShowDesktopOf(xcb_window_t window) const {
    const auto desktop = Words(window, "_NET_WM_DESKTOP");
    const bool shows = desktop.empty() || desktop.front() == EveryDesktop ||
                       desktop == Words(root_, "_NET_CURRENT_DESKTOP");
    return shows || Ask(root_, "_NET_CURRENT_DESKTOP", desktop.front());
}

bool X11Display::Activate(xcb_window_t window) const {
    if (!Supports("_NET_ACTIVE_WINDOW") || !Attributes(window)) {
        return false;
    }
    // Some window managers activate only what is on the desktop that shows.
    return ShowDesktopOf(window) && Ask(window, "_NET_ACTIVE_WINDOW", OnTheUsersBehalf);
}

}  // namespace

std::optional<OpenWindow> FindX11Window(const std::vector<std::string>& programs) {
    const auto display = X11Display::Own();
    if (!display) {
        return {};
    }
    const auto windows = display->Windows();
    std::vector<std::vector<std::string>> names(windows.size());
    std::transform(windows.begin(), windows.end(), names.begin(),
                   [&](xcb_window_t window) { return display->ProgramNames(window); });
    for (const std::string& program : programs) {
        const std::string folded = FoldCase(program);
        for (std::size_t i = 0; i < windows.size(); ++i) {
            if (std::find(names[i].begin(), names[i].end(), folded) != names[i].end()) {
                return OpenWindow{windows[i], display->Title(windows[i])};
            }
        }
    }
    return {};
}

bool ActivateX11Window(std::uint32_t id) {
    const auto display = X11Display::Own();
    return display && display->Activate(id);
}

}  // namespace sonnel

#else

namespace sonnel {

std::optional<OpenWindow> FindX11Window(const std::vector<std::string>& /*programs*/) {
    return {};
}

bool ActivateX11Window(std::uint32_t /*id*/) {
    return false;
}

}  // namespace sonnel

#endif
