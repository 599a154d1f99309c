#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include <xcb/xcb.h>

/// Asks the window of a title to close, as the close button of a window manager does.
///
/// Arguments: the title. The display is that of DISPLAY.
namespace {

struct Free {
    void operator()(void* reply) const
    {
        std::free(reply); // NOLINT(cppcoreguidelines-no-malloc): xcb allocates its replies so
    }
};
template<typename T>
using Reply = std::unique_ptr<T, Free>;

xcb_atom_t atom(xcb_connection_t* server, std::string_view name)
{
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply->atom;
}

std::string titleOf(xcb_connection_t* server, xcb_window_t window)
{
    constexpr std::uint32_t MAX_WORDS = 64;
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        server,
        xcb_get_property(
            server, 0, window, atom(server, "_NET_WM_NAME"), XCB_ATOM_ANY, 0, MAX_WORDS),
        nullptr));
    if (reply == nullptr)
        return {};
    return {
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

void askToClose(xcb_connection_t* server, xcb_window_t window)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(server, "WM_PROTOCOLS");
    event.data.data32[0] = atom(server, "WM_DELETE_WINDOW");
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(
        server, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    // The answer says that the server has done what it was asked for.
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
}

} // namespace

int main(int argc, char** argv)
{
    xcb_connection_t* const server = xcb_connect(nullptr, nullptr);
    if (argc != 2 || xcb_connection_has_error(server) != 0)
        return EXIT_FAILURE;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(server, xcb_query_tree(server, root), nullptr));
    int result = EXIT_FAILURE;
    const xcb_window_t* const windows = xcb_query_tree_children(tree.get());
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index)
        if (titleOf(server, windows[index]) == argv[1]) {
            askToClose(server, windows[index]);
            result = EXIT_SUCCESS;
        }
    xcb_disconnect(server);
    return result;
}
